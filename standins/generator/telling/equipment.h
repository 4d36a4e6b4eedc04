// Plans and tells equipment: a manager, its body and its nozzles.
#pragma once

#include "generator/planning/plan.h"
#include "generator/planning/random.h"
#include "generator/telling/parts.h"

#include <span>
#include <string>
#include <vector>

namespace plant::generator {

struct EquipmentPlan {
    int kind = 0;
    int number = 0;
    Id id = 0;
    Id body = 0;
    Point at;  // on the ground
    double diameter = 0;
    double length = 0;  // of the shell
    std::string name;   // such as "P-101"
};

// Adds an equipment of a drawn kind, and its nozzles to the list.
EquipmentPlan planEquipment(Random& random, Ids& ids, const Point& at, int number, std::vector<NozzlePlan>& nozzles);
// The nozzles are those of this equipment.
void tellEquipment(ModelBuilder& model, Library& library, const EquipmentPlan& plan, Id zone,
                   std::span<const NozzlePlan> nozzles);

}  // namespace plant::generator
