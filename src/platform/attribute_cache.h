// Attributes of objects as text, through a process-wide cache that one call of the platform fills for each object.
//
// The cache has no invalidation but clearBomCache: a second export in the same process sees the attributes of the
// first. Results are views of storage that stays valid until clearBomCache.
#pragma once

#include "platform/hxcom.h"
#include "platform/objects.h"
#include "platform/smrtln.h"

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

// The text of one attribute; empty for a null object and a missing key. Keys compare exactly, the first of equal keys
// counts. A HxDbBalloon without "item" (asked for in any case of letters) reads "Balloon".
std::string_view getBomValue(const HxDbObject* object, std::string_view key);

// Several attributes in one pass over those of an object. Made once for a list of keys, which it does not own and of
// which no two are equal; at most 64.
class BomFields {
public:
    explicit BomFields(std::span<const std::string_view> keys) : keys_(keys) {}
    // What getBomValue gives for key i goes to out[i].
    void read(const HxDbObject* object, std::span<std::string_view> out);

private:
    void findNumbers();

    static constexpr std::uint8_t noField = 0xFF;
    std::span<const std::string_view> keys_;
    std::vector<std::uint8_t> fields_;  // place of a key by its number on the platform
    std::uint64_t generation_ = 0;      // of the cache, when the numbers were found
};

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
