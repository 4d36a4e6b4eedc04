// Attributes of objects as text, through a process-wide cache that one call of the platform fills for each object.
//
// The cache has no invalidation but clearBomCache: a second export in the same process sees the attributes of the
// first. Results are views of storage that stays valid until clearBomCache.
#pragma once

#include "platform/hxcom.h"
#include "platform/objects.h"
#include "platform/smrtln.h"

#include <string_view>
#include <vector>

// The text of one attribute; empty for a null object and a missing key. Keys compare exactly, the first of equal keys
// counts. A HxDbBalloon without "item" (asked for in any case of letters) reads "Balloon".
std::string_view getBomValue(const HxDbObject* object, std::string_view key);

// All attributes of an object.
void getBomData(HxDbObjectId id, std::vector<KVParams>& out);

void clearBomCache();

// A zero-terminated number text read as atof and atoi read it: leading blanks, then as much as is a number, else 0.
// Decimal points only, whatever the locale.
double numberOf(std::string_view text);
int integerOf(std::string_view text);
// An object id held as decimal text: read as floating point and cut to an integer.
HxDbObjectId idOf(std::string_view text);
// The object whose id stands in attribute `key`; null when it does not open as a T.
template <typename T>
T* openByAttribute(const HxDbObject* object, std::string_view key) {
    return openAs<T>(idOf(getBomValue(object, key)));
}
