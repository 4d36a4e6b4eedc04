// Numbers and units of a piping component file. Everything leaves here in millimetres, degrees and kilograms.
#pragma once

#include "platform/geometry.h"

#include <optional>
#include <string_view>
#include <vector>

namespace plant::pcf {

struct Record;

inline constexpr double millimetresOfInch = 25.4;

// Words of a value, parted by blanks and tabs.
std::vector<std::string_view> wordsOf(std::string_view value);

// "12.5", "12,5", "1e3", with a unit or an inch mark behind it; nothing for what does not begin with a number or is not
// finite.
std::optional<double> numberOf(std::string_view word);

// What the header says. Files without a unit mean millimetres; bores then are nominal sizes in millimetres.
struct Units {
    bool boreInInch = false;
    double coordinate = 1;    // millimetres of one
    double boltDiameter = 1;  // likewise
    double boltLength = 1;

    // Takes over a record UNITS-…; false when its value is no unit that is known.
    bool take(const Record& record);
    static bool isUnit(const Record& record);
};

// The first three words as a point; nothing when one of them is no number.
std::optional<HxGePoint3D> pointOf(const std::vector<std::string_view>& words, const Units& units);

// A direction word (NORTH, E, UP, …) as a unit vector; nothing for another word.
std::optional<HxGeVector3D> directionOf(std::string_view word);

}  // namespace plant::pcf
