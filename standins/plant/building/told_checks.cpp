#include "plant/building/told_checks.h"

#include "plant/refusal.h"

#include <string>

namespace plant {

void refuseId(ObjectId id) {
    refuse("an object id from 1 to " + std::to_string(largestId) + " expected, " + std::to_string(id) + " found");
}

void refuseWhole(std::int64_t value, std::int64_t low, std::int64_t high) {
    refuse("a whole number from " + std::to_string(low) + " to " + std::to_string(high) + " expected, " +
           std::to_string(value) + " found");
}

void refuseNumber(double value) {
    refuse("a finite number expected, " + std::to_string(value) + " found");
}

}  // namespace plant
