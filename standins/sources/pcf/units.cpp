#include "sources/pcf/units.h"

#include "sources/pcf/records.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <strings.h>

namespace plant::pcf {

namespace {

constexpr double millimetresOfMetre = 1000;
constexpr double millimetresOfFoot = 304.8;

struct UnitRow {
    std::string_view word;
    double millimetres;
};
constexpr UnitRow unitRows[] = {{"MM", 1},
                                {"MMS", 1},
                                {"INCH", millimetresOfInch},
                                {"INCHES", millimetresOfInch},
                                {"IN", millimetresOfInch},
                                {"M", millimetresOfMetre},
                                {"METRE", millimetresOfMetre},
                                {"FEET", millimetresOfFoot},
                                {"FT", millimetresOfFoot}};

bool sameWord(std::string_view a, std::string_view b) {
    return a.size() == b.size() && ::strncasecmp(a.data(), b.data(), a.size()) == 0;
}

std::optional<double> unitOf(std::string_view word) {
    for (const UnitRow& row : unitRows) {
        if (sameWord(row.word, word)) {
            return row.millimetres;
        }
    }
    return {};
}

struct DirectionRow {
    std::string_view word;
    HxGeVector3D direction;
};
constexpr DirectionRow directionRows[] = {
    {"EAST", {1, 0, 0}}, {"WEST", {-1, 0, 0}}, {"NORTH", {0, 1, 0}}, {"SOUTH", {0, -1, 0}},
    {"UP", {0, 0, 1}},   {"DOWN", {0, 0, -1}}, {"E", {1, 0, 0}},     {"W", {-1, 0, 0}},
    {"N", {0, 1, 0}},    {"S", {0, -1, 0}},    {"U", {0, 0, 1}},     {"D", {0, 0, -1}},
};

}  // namespace

std::vector<std::string_view> wordsOf(std::string_view value) {
    std::vector<std::string_view> words;
    for (std::size_t at = value.find_first_not_of(" \t"); at != std::string_view::npos;) {
        const std::size_t end = std::min(value.find_first_of(" \t", at), value.size());
        words.push_back(value.substr(at, end - at));
        at = value.find_first_not_of(" \t", end);
    }
    return words;
}

std::optional<double> numberOf(std::string_view word) {
    char digits[64];
    if (word.starts_with('+')) {
        word.remove_prefix(1);
    }
    const std::size_t size = std::min(word.size(), sizeof digits);
    std::replace_copy(word.begin(), word.begin() + static_cast<std::ptrdiff_t>(size), digits, ',', '.');
    double value = 0;
    const auto [end, error] = std::from_chars(digits, digits + size, value);
    if (error != std::errc() || !std::isfinite(value)) {
        return {};
    }
    return value;
}

bool Units::isUnit(const Record& record) {
    return record.key.starts_with("UNITS-");
}

bool Units::take(const Record& record) {
    const std::optional<double> unit = unitOf(record.value);
    if (record.key == "UNITS-BORE") {
        boreInInch = unit == millimetresOfInch;
    } else if (record.key == "UNITS-CO-ORDS") {
        coordinate = unit.value_or(1);
    } else if (record.key == "UNITS-BOLT-DIA") {
        boltDiameter = unit.value_or(1);
    } else if (record.key == "UNITS-BOLT-LENGTH") {
        boltLength = unit.value_or(1);
    } else {
        return true;  // weights stay what they are: attributes
    }
    return unit.has_value();
}

std::optional<HxGePoint3D> pointOf(const std::vector<std::string_view>& words, const Units& units) {
    if (words.size() < 3) {
        return {};
    }
    const std::optional<double> x = numberOf(words[0]);
    const std::optional<double> y = numberOf(words[1]);
    const std::optional<double> z = numberOf(words[2]);
    if (!x || !y || !z) {
        return {};
    }
    return HxGePoint3D(*x * units.coordinate, *y * units.coordinate, *z * units.coordinate);
}

std::optional<HxGeVector3D> directionOf(std::string_view word) {
    for (const DirectionRow& row : directionRows) {
        if (sameWord(row.word, word)) {
            return row.direction;
        }
    }
    return {};
}

}  // namespace plant::pcf
