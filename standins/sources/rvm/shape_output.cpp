#include "sources/rvm/shape_output.h"

#include <charconv>
#include <cmath>

namespace plant::rvm {

namespace {

constexpr int decimals = 4;
constexpr double inverseStep = 10000;
constexpr double mostFixed = 1e13;
constexpr std::size_t roomOfNumber = 32;

void appendWhole(std::string& out, std::uint32_t number) {
    char digits[16];
    out.append(digits, std::to_chars(digits, digits + sizeof digits, number).ptr);
}

// At most four decimals, without zeros at the end.
void appendFixed(std::string& out, double number) {
    char digits[roomOfNumber];
    if (!(std::fabs(number) < mostFixed)) {
        out.append(digits, std::to_chars(digits, digits + sizeof digits, number).ptr);
        return;
    }
    std::int64_t steps = std::llround(number * inverseStep);
    if (steps < 0) {
        out += '-';
        steps = -steps;
    }
    const std::int64_t whole = steps / static_cast<std::int64_t>(inverseStep);
    std::int64_t rest = steps % static_cast<std::int64_t>(inverseStep);
    out.append(digits, std::to_chars(digits, digits + sizeof digits, whole).ptr);
    if (rest == 0) {
        return;
    }
    char fraction[decimals + 1] = {'.', '0', '0', '0', '0'};
    std::size_t length = 1;
    for (int i = decimals; i > 0; --i, rest /= 10) {
        fraction[i] = static_cast<char>('0' + rest % 10);
        if (length == 1 && fraction[i] != '0') {
            length = static_cast<std::size_t>(i) + 1;
        }
    }
    out.append(fraction, length);
}

void appendPoint(std::string& out, const Point& point) {
    out += '[';
    appendFixed(out, point.x);
    out += ',';
    appendFixed(out, point.y);
    out += ',';
    appendFixed(out, point.z);
    out += ']';
}

void appendPoints(std::string& out, const std::vector<Point>& points) {
    for (std::size_t i = 0; i < points.size(); ++i) {
        if (i > 0) {
            out += ',';
        }
        appendPoint(out, points[i]);
    }
}

void appendFaces(std::string& out, const SurfaceMesh& mesh) {
    for (std::size_t i = 0; i < mesh.triangles.size(); ++i) {
        out += i == 0 ? "[" : ",[";
        appendWhole(out, mesh.triangles[i][0]);
        out += ',';
        appendWhole(out, mesh.triangles[i][1]);
        out += ',';
        appendWhole(out, mesh.triangles[i][2]);
        out += ']';
    }
}

}  // namespace

void ShapeOutput::put(HextPrimary3D& solid) {
    solid.color = color_;
    solid.material = material_;
    builder_->primitive(solid);
}

void ShapeOutput::putLine(const Point& start, const Point& end) {
    HextPrimaryAcadEntity content;
    beginEntity(content.serial, "line");
    content.serial += R"(,"startPoint":)";
    appendPoint(content.serial, start);
    content.serial += R"(,"endPoint":)";
    appendPoint(content.serial, end);
    content.serial += '}';
    put(static_cast<HextPrimary3D&>(content));
}

void ShapeOutput::beginEntity(std::string& text, std::string_view type) const {
    text.append(R"({"type":")").append(type).append("\"");
    if (color_ > 0) {
        text += R"(,"color":)";
        appendWhole(text, static_cast<std::uint32_t>(color_));
    }
}

void ShapeOutput::put(const SurfaceMesh& mesh) {
    HextPrimaryAcad content;
    std::string& text = content.serial;
    text.reserve(roomOfNumber * (mesh.points.size() + mesh.triangles.size()) + 64);
    beginEntity(text, "mesh");
    text += R"(,"points":[)";
    appendPoints(text, mesh.points);
    text += R"(],"faces":[)";
    appendFaces(text, mesh);
    text += "]}";
    put(static_cast<HextPrimary3D&>(content));
}

}  // namespace plant::rvm
