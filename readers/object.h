// An object of a plant as an output tells it: one shape of plain values for all formats, so that two outputs can be put
// side by side, drawn or counted without knowing what they were written in.
//
//   file(s) of a format  ->  reader of the room  ->  Object after Object  ->  ObjectVisitor
//
// Texts are UTF-8, lengths world millimetres with Z up, in double. Parents come before their children, in the order of
// the file. What a format has no place for stays empty.
#pragma once

#include "readers/finding.h"

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace readers {

using Point = std::array<double, 3>;

// How something is shown.
struct Look {
    // Red, green, blue from 0 to 1, as the format has them (sRGB). None where it keeps a number alone.
    std::optional<std::array<double, 3>> color{};
    // The material's number (RVM, lines of EEM) or id (package), as text.
    std::string material{};
    double transparency = 0;  // 0: opaque, 1: not seen
};

struct Attribute {
    std::string group;  // category, class of a property set; empty where the format has none
    std::string key;
    std::string value;
    std::string groupNote;  // internal name of the class
    std::string keyNote;    // internal key, description
    std::string valueNote;  // internal value, type of the value
};

// A lettering, which formats without fonts keep as text.
struct Text {
    std::string text;
    std::string font;
    double height = 0;
    std::vector<double> transform;  // images of X, Y, Z and the origin, four numbers each
};

// Local coordinates into world millimetres: the images of X, Y and Z, then the origin.
struct Placement {
    std::array<Point, 3> axes{{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}};
    Point origin{};

    Point at(const Point& local) const;
    // Leaves out the origin.
    Point along(const Point& local) const;
};

struct OutlineVertex {
    std::int32_t kind = 0;  // as the EEM format numbers them
    Point point{};
};

enum class SolidForm {
    Rvm,        // a kind and parameters, in the frame of `placement`
    Eem,        // a code and its fields; points are world millimetres already
    Triangles,  // `indices` are corners, three a triangle
    Lines,      // `indices` are ends, two a line
    Points,     // `points` alone
};

// One shape of an object. `kind`, `numbers`, `integers` and `outlines` are those of the format for the first two forms
// (readers/rvm/file.h and readers/eem/file.h tell what they mean), `points` and `indices` of the others.
struct Solid {
    SolidForm form = SolidForm::Triangles;
    std::string name{};
    Look look{};
    bool isObstruction = false;
    bool isInsulation = false;

    std::int32_t kind = 0;
    Placement placement{};
    std::vector<double> numbers{};
    std::vector<std::int32_t> integers{};
    std::vector<std::vector<OutlineVertex>> outlines{};
    // EEM: 0 for a left-handed frame, 1 for a right-handed one.
    std::int32_t handedness = 1;

    std::vector<Point> points{};
    std::vector<std::uint32_t> indices{};

    std::string place{};  // in the file, as in findings
};

// No tree of a plant has more levels; what stands deeper in a file was not written by an export.
inline constexpr std::size_t deepestTree = 210;

struct Object {
    // Names from the root down to its own.
    std::vector<std::string> path{};
    std::string name{};
    std::string id{};         // as text; empty where the format keeps none
    std::string className{};  // likewise
    bool isLayer = false;     // the format marks it as what a receiver selects
    Look look{};              // of its own; its solids carry theirs, too
    std::vector<Attribute> attributes{};
    std::vector<Text> texts{};
    std::vector<Solid> solids{};
    std::string place{};  // in the chief file, as in findings

    // Names with "/" between.
    std::string pathText() const;
};

// The object lives until the call ends.
using ObjectVisitor = std::function<void(const Object& object)>;

// Turns text of the code page in which an output was written into UTF-8. Null where the bytes are UTF-8 already.
using ToUtf8 = std::string (*)(std::string_view text);

}  // namespace readers
