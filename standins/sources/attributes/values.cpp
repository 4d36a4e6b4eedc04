#include "sources/attributes/values.h"

#include "sources/text_decoder.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <iterator>

namespace plant::attributes {

namespace {

struct Unit {
    std::string_view name;  // in capitals
    Quantity quantity;
    double factor;
    double offset = 0;
};
constexpr double inch = 25.4;
constexpr double foot = 304.8;
constexpr Unit units[] = {
    {"MM", Quantity::Length, 1},
    {"M", Quantity::Length, 1000},
    {"CM", Quantity::Length, 10},
    {"IN", Quantity::Length, inch},
    {"INCH", Quantity::Length, inch},
    {"\"", Quantity::Length, inch},
    {"FT", Quantity::Length, foot},
    {"FOOT", Quantity::Length, foot},
    {"DEG", Quantity::Angle, 1},
    {"DEGREE", Quantity::Angle, 1},
    {"DEGREES", Quantity::Angle, 1},
    {"\xC2\xB0", Quantity::Angle, 1},
    {"DEGC", Quantity::Temperature, 1},
    {"DEGF", Quantity::Temperature, 5.0 / 9, -160.0 / 9},
    {"DEGK", Quantity::Temperature, 1, -273.15},
    {"KELVIN", Quantity::Temperature, 1, -273.15},
    {"PASCAL", Quantity::Pressure, 1e-6},
    {"PA", Quantity::Pressure, 1e-6},
    {"KPA", Quantity::Pressure, 1e-3},
    {"MPA", Quantity::Pressure, 1},
    {"BAR", Quantity::Pressure, 0.1},
    {"BARG", Quantity::Pressure, 0.1},
    {"PSI", Quantity::Pressure, 0.006894757293168},
};

struct Nominal {
    double inches;
    double bore;
};
constexpr Nominal nominals[] = {
    {0.125, 6}, {0.25, 8}, {0.375, 10}, {0.5, 15}, {0.75, 20}, {1, 25},   {1.25, 32}, {1.5, 40},
    {2, 50},    {2.5, 65}, {3, 80},     {3.5, 90}, {4, 100},   {5, 125},  {6, 150},   {8, 200},
    {10, 250},  {12, 300}, {14, 350},   {16, 400}, {18, 450},  {20, 500}, {22, 550},  {24, 600},
};

bool isLetter(char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

// Takes a number off the front; a sign may stand before it.
std::optional<double> takeNumber(std::string_view& text) {
    text = trimmed(text);
    if (text.starts_with('+')) {
        text.remove_prefix(1);
    }
    double value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || !std::isfinite(value)) {
        return std::nullopt;
    }
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    return value;
}

const Unit* findUnit(std::string_view name) {
    const auto* unit = std::find_if(std::begin(units), std::end(units),
                                    [&](const Unit& row) { return equalIgnoringCase(name, row.name); });
    return unit != std::end(units) ? unit : nullptr;
}

// Takes a length with its unit, as far as letters reach; without unit millimetres.
std::optional<double> takeLength(std::string_view& text) {
    const std::optional<double> number = takeNumber(text);
    if (!number) {
        return std::nullopt;
    }
    const auto* end = std::find_if_not(text.begin(), text.end(), isLetter);
    const auto size = static_cast<std::size_t>(end - text.begin());
    const Unit* unit = size > 0 ? findUnit(text.substr(0, size)) : nullptr;
    if (size > 0 && (unit == nullptr || unit->quantity != Quantity::Length)) {
        return size == 1 ? number : std::nullopt;
    }
    text.remove_prefix(size);
    return unit != nullptr ? *number * unit->factor : *number;
}

// Where a letter of the compass points to; no length for others.
HxGeVector3D directionOfLetter(char letter) {
    switch (letter) {
    case 'E':
        return {1, 0, 0};
    case 'W':
        return {-1, 0, 0};
    case 'N':
        return {0, 1, 0};
    case 'S':
        return {0, -1, 0};
    case 'U':
        return {0, 0, 1};
    case 'D':
        return {0, 0, -1};
    default:
        return {};
    }
}

std::optional<HxGeVector3D> takeLetter(std::string_view& text) {
    text = trimmed(text);
    const char letter = text.empty() ? ' ' : text.front();
    const HxGeVector3D direction = directionOfLetter(letter);
    if (direction.isZeroLength() || (text.size() > 1 && isLetter(text[1]))) {
        return std::nullopt;
    }
    text.remove_prefix(1);
    return direction;
}

std::string_view withoutTail(std::string_view text) {
    for (const std::string_view word : {" WRT ", " wrt ", " in "}) {
        text = text.substr(0, text.find(word));
    }
    return trimmed(text);
}

struct AxisText {
    char name = 0;
    HxGeVector3D direction;
};

// "Y is N"
std::optional<AxisText> readAxis(std::string_view text) {
    text = trimmed(text);
    const std::size_t is = text.find(" is ");
    if (is != 1 || text.front() < 'X' || text.front() > 'Z') {
        return std::nullopt;
    }
    const auto direction = readDirection(text.substr(is + 4));
    return direction ? std::optional<AxisText>({text.front(), *direction}) : std::nullopt;
}

}  // namespace

std::optional<Measure> readMeasure(std::string_view text) {
    const std::optional<double> number = takeNumber(text);
    if (!number) {
        return std::nullopt;
    }
    const std::string_view name = trimmed(text);
    if (name.empty()) {
        return Measure{*number, Quantity::Plain};
    }
    const Unit* unit = findUnit(name);
    return unit != nullptr ? std::optional<Measure>({*number * unit->factor + unit->offset, unit->quantity})
                           : std::nullopt;
}

std::optional<double> readLength(std::string_view text) {
    const std::optional<Measure> measure = readMeasure(text);
    const bool isLength = measure && (measure->quantity == Quantity::Length || measure->quantity == Quantity::Plain);
    return isLength ? std::optional<double>(measure->value) : std::nullopt;
}

std::optional<double> readBore(std::string_view text) {
    const std::optional<double> length = readLength(text);
    if (!length || text.find_first_of("iI\"") == std::string_view::npos) {
        return length;
    }
    constexpr double nearness = 1e-3;
    const auto* row = std::find_if(std::begin(nominals), std::end(nominals), [&](const Nominal& nominal) {
        return std::fabs(nominal.inches * inch - *length) < nearness;
    });
    return row != std::end(nominals) ? std::optional<double>(row->bore) : length;
}

std::optional<HxGePoint3D> readPosition(std::string_view text) {
    text = withoutTail(text);
    HxGePoint3D at;
    if (text.empty()) {
        return std::nullopt;
    }
    while (!text.empty()) {
        const std::optional<HxGeVector3D> direction = takeLetter(text);
        const std::optional<double> length = direction ? takeLength(text) : std::nullopt;
        if (!length) {
            return std::nullopt;
        }
        at += *direction * *length;
        text = trimmed(text);
    }
    return at;
}

std::optional<HxGeVector3D> readDirection(std::string_view text) {
    text = withoutTail(text);
    std::optional<HxGeVector3D> direction = takeLetter(text);
    while (direction && !trimmed(text).empty()) {
        const std::optional<double> angle = takeNumber(text);
        const std::optional<HxGeVector3D> towards = angle ? takeLetter(text) : std::nullopt;
        if (!towards) {
            return std::nullopt;
        }
        const double turn = *angle * tlGePi / 180;
        direction = (*direction * std::cos(turn) + *towards * std::sin(turn)).normal();
    }
    return direction;
}

std::optional<Orientation> readOrientation(std::string_view text) {
    const std::size_t middle = text.find(" and ");
    if (middle == std::string_view::npos) {
        return std::nullopt;
    }
    const std::optional<AxisText> first = readAxis(text.substr(0, middle));
    const std::optional<AxisText> second = readAxis(withoutTail(text.substr(middle + 5)));
    if (!first || !second || first->name == second->name) {
        return std::nullopt;
    }
    std::array<HxGeVector3D, 3> axes;
    const auto number = [](char name) { return static_cast<std::size_t>(name - 'X'); };
    const std::size_t a = number(first->name);
    const std::size_t b = number(second->name);
    axes[a] = first->direction;
    axes[b] = second->direction;
    const HxGeVector3D third = axes[a].crossProduct(axes[b]);
    axes[3 - a - b] = ((a + 1) % 3 == b ? third : -third).normal();
    return Orientation{axes[0], axes[1], axes[2]};
}

}  // namespace plant::attributes
