// What the gatherers of design records share.
#pragma once

#include "hextinterface/ornatohextprocess/design/records.h"
#include "platform/objects.h"
#include "platform/primitives.h"

#include <string>
#include <string_view>

namespace design {

// To be called when one manager is done, whatever came of it.
void finishManager(const DesignMacroSet& set);

// Adds the groups of one primitive; what gives none is told to the run report. Exceptions of the conversion pass.
void addPrimitive(EquipRecord& record, const HextPrimary& primitive, const HxDbObject* source);
void addPrimitives(EquipRecord& record, const HextPrimaryArray& list, const HxDbObject* source);

// A colour function, such as "CLREQUI3".
std::string colourFunction(const char* word, int index);

// An object's member of any class; null, and told to the run report, when it does not open.
HxDbObject* openMember(HxDbObjectId id);

}  // namespace design
