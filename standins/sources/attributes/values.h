// What the texts of attributes say: numbers with units, positions, directions, orientations.
#pragma once

#include "platform/geometry.h"

#include <optional>
#include <string_view>

namespace plant::attributes {

enum class Quantity : std::uint8_t { Plain, Length, Angle, Temperature, Pressure };

// A number in the unit of its quantity: millimetres, degrees, degrees Celsius, megapascal; plain without a unit.
struct Measure {
    double value = 0;
    Quantity quantity = Quantity::Plain;
};

// "1336.5mm", "2 in", "-12", "1.5E3"; nothing where more than a number and a known unit stands.
std::optional<Measure> readMeasure(std::string_view text);
// A length in millimetres; a number without unit counts as that.
std::optional<double> readLength(std::string_view text);
// A nominal bore in millimetres as it is written in pipe work: "2in" is 50.
std::optional<double> readBore(std::string_view text);

// "E 152984mm N 154899.8mm U 1336.5mm": W, S and D count negative, a missing letter is 0, what follows " WRT " or
// " in " does not count.
std::optional<HxGePoint3D> readPosition(std::string_view text);
// "N", "E 45 N", "N 30 U": a letter, then pairs of an angle in degrees and a letter towards which it turns.
std::optional<HxGeVector3D> readDirection(std::string_view text);

struct Orientation {
    HxGeVector3D x, y, z;
};
// "Y is N and Z is U": the third axis follows by the right hand.
std::optional<Orientation> readOrientation(std::string_view text);

}  // namespace plant::attributes
