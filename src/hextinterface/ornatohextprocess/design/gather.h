// From the sorted selection to the records of equipment, structures, supports and nozzles.
#pragma once

#include "hextinterface/hextbasemethod/object_lists.h"
#include "hextinterface/ornatohextprocess/design/records.h"

// Each runs after the nozzle catalogue, since only nozzles of its list are gathered. How far a failure reaches: in an
// equipment one primitive, in a support one member, elsewhere the equipment or the container. Each is printed and goes
// to the run report, as does everything else that is passed over.
namespace design {
void gatherEquipment(const ObjectList& equipment, DesignMacroSet& set);
// Structures, and pipelines with Hvac or Cable objects.
void gatherStructures(const ObjectMap& containers, DesignMacroSet& set);
void gatherSupports(const ObjectList& supports, DesignMacroSet& set);
}  // namespace design
