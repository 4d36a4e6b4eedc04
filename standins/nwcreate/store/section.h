// One section of a geometry stream: what stands between Begin and End, until it becomes pieces of a shape.
#pragma once

#include "nwcreate/numbers/number_list.h"
#include "nwcreate/numbers/vectors.h"
#include "nwcreate/store/scene.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace nwcreate {

struct TextStyle {
    std::string font;  // the inside of a JSON string
    double height = 1.0;
};

// Positions are flat lists, three numbers a vertex.
struct Section {
    NumberList<double> vertices;
    NumberList<std::uint32_t> triangles;
    NumberList<double> stripVertices;
    NumberList<std::uint32_t> strip;
    NumberList<double> loopVertices;
    std::vector<std::size_t> loopEnds;  // in loopVertices
    std::string texts;                  // JSON objects, separated by commas
    const char* fault = nullptr;        // of a circle or text
    bool hasColor = false;
    Material color;

    void clear();
};

void addCircle(Section& section, const Matrix& transform, const Vec3& center, const Vec3& normal, double radius);
// A text on the X axis of the transform; its frame becomes a loop.
void addText(Section& section, const Matrix& transform, const TextStyle& style, std::u16string_view text);

// What the sections of one node become.
struct NodeShape {
    std::vector<Piece> pieces;
    bool hasOrigin = false;
    Vec3 origin{};      // of the local positions, in scene units
    std::string texts;  // JSON objects, separated by commas

    void clear();
};

// Why the section cannot be used; null when it can.
const char* faultOf(const Section& section);
// Adds a section without faults.
void addSection(SceneStore& store, const Section& section, NodeShape& shape);
// Adds line segments: pairs of vertices.
void addSegments(SceneStore& store, const std::vector<double>& vertices, NodeShape& shape);

}  // namespace nwcreate
