#include "navisworks/geometry/node.h"

#include "tolmar/code_page.h"

namespace nv {

namespace {

constexpr int plainSection = 0;
constexpr double textLift = 5.0;
constexpr const char* usualFont = "黑体";

// A geometry node under construction with its one stream.
class GeometryNode {
public:
    GeometryNode() : geometry_(LiNwcGeometryCreate()), stream_(LiNwcGeometryOpenStream(geometry_.get())) {}
    ~GeometryNode() { close(); }
    GeometryNode(const GeometryNode&) = delete;
    GeometryNode& operator=(const GeometryNode&) = delete;

    LiNwcGeometryStream stream() const { return stream_; }
    void close() {
        if (stream_ != nullptr) {
            LiNwcGeometryCloseStream(geometry_.get(), std::exchange(stream_, nullptr));
        }
    }
    void addTo(LiNwcGroup group) {
        close();
        LiNwcGroupAddNode(group, geometry_.get());
    }
    void paintAndAddTo(LiNwcGroup group, LiNwcMaterial material) {
        close();
        LiNwcNodeAddAttribute(geometry_.get(), material);
        addTo(group);
    }
    OwnedShape shape() const { return OwnedShape(LiNwcGeometryShape(geometry_.get())); }

private:
    OwnedGeometry geometry_;
    LiNwcGeometryStream stream_;
};

void addStripVertex(LiNwcGeometryStream stream, const TlGePoint3d& point) {
    LiNwcGeometryStreamLineStripVertex(stream, point.x, point.y, point.z);
}

// Lines and circles carry their colour in the stream.
void beginRed(LiNwcGeometryStream stream) {
    LiNwcGeometryStreamBegin(stream, LI_NWC_HAS_COLOR);
    LiNwcGeometryStreamColor(stream, 1, 0, 0, 0);
}

void setTransform(LiNwcGeometryStream stream, const TextFrame& frame) {
    const auto& [x, y, n, o] = frame;
    const double matrix[16] = {x.x, x.y, x.z, 0, y.x, y.y, y.z, 0, n.x, n.y, n.z, 0, o.x, o.y, o.z, 1};
    LiNwcGeometryStreamSetTransform(stream, matrix);
}

OwnedTextStyle styleOf(const TlDbText& text) {
    const std::string font = text.textStyle();
    OwnedTextStyle style(LiNwcTextStyleCreate(tolmar::toWide(font.empty() ? usualFont : font).c_str()));
    LiNwcTextStyleSetFontHeight(style.get(), text.height());
    return style;
}

}  // namespace

OwnedShape streamMesh(const MeshView& mesh, LiNwcMaterial material, LiNwcGroup group) {
    GeometryNode node;
    const LiNwcGeometryStream stream = node.stream();
    LiNwcGeometryStreamBegin(stream, plainSection);
    LiNwcGeometryStreamIndexedVertices(stream, mesh.positions.data(), mesh.positions.size() / 3);
    LiNwcGeometryStreamTriangleIndices(stream, mesh.indices.data(), mesh.indices.size());
    LiNwcGeometryStreamEnd(stream);
    node.paintAndAddTo(group, material);
    return node.shape();
}

void streamPolyline(const TlDbPolyline& polyline, LiNwcMaterial material, LiNwcGroup group) {
    GeometryNode node;
    const LiNwcGeometryStream stream = node.stream();
    LiNwcGeometryStreamBegin(stream, plainSection);
    for (unsigned i = 0; i < polyline.numVerts(); ++i) {
        TlGePoint3d point;
        polyline.getPointAt(i, point);
        addStripVertex(stream, point);
    }
    for (unsigned i = 0; i < polyline.numVerts(); ++i) {
        LiNwcGeometryStreamLineStripIndex(stream, static_cast<int>(i));
    }
    LiNwcGeometryStreamEnd(stream);
    node.paintAndAddTo(group, material);
}

void streamLine(const TlDbLine& line, LiNwcGroup group) {
    GeometryNode node;
    const LiNwcGeometryStream stream = node.stream();
    beginRed(stream);
    addStripVertex(stream, line.startPoint());
    addStripVertex(stream, line.endPoint());
    LiNwcGeometryStreamLineStripIndex(stream, 0);
    LiNwcGeometryStreamLineStripIndex(stream, 1);
    LiNwcGeometryStreamEnd(stream);
    node.addTo(group);
}

void streamCircle(const TlDbCircle& circle, LiNwcGroup group) {
    TlGeVector3d normal = circle.normal().normal();
    if (normal.isZeroLength()) {
        normal = TlGeVector3d::kZAxis;
    }
    const double center[3] = {circle.center().x, circle.center().y, circle.center().z};
    const double direction[3] = {normal.x, normal.y, normal.z};
    GeometryNode node;
    const LiNwcGeometryStream stream = node.stream();
    beginRed(stream);
    LiNwcGeometryStreamCircle(stream, center, direction, circle.radius());
    LiNwcGeometryStreamEnd(stream);
    node.addTo(group);
}

void streamText(const TlDbText& text, LiNwcMaterial material, LiNwcGroup group) {
    GeometryNode node;
    const LiNwcGeometryStream stream = node.stream();
    LiNwcGeometryStreamBegin(stream, plainSection);
    LiNwcGeometryStreamPushTransform(stream);
    setTransform(stream, textFrame(text));
    OwnedTextStyle style = styleOf(text);
    LiNwcGeometryStreamBeginText(stream, style.get());
    LiNwcGeometryStreamAddText(stream, tolmar::toWide(text.textString()).c_str());
    LiNwcGeometryStreamEndText(stream);
    LiNwcGeometryStreamEnd(stream);
    style.reset();
    LiNwcGeometryStreamPopTransform(stream);
    node.paintAndAddTo(group, material);
}

TextFrame textFrame(const TlDbText& text) {
    const TlGeVector3d up = TlGeVector3d::kZAxis;
    TextFrame frame;
    frame.normal = text.normal().isZeroLength() ? up : text.normal().normal();
    frame.origin = text.position() + frame.normal * textLift;
    if (frame.normal.isEqualTo(up)) {
        frame.x = TlGeVector3d::kXAxis;
        frame.y = TlGeVector3d::kYAxis;
    } else if (frame.normal.isEqualTo(-up)) {
        frame.x = -TlGeVector3d::kXAxis;
        frame.y = -TlGeVector3d::kYAxis;
    } else {
        frame.x = up.crossProduct(frame.normal);
        frame.y = frame.normal.crossProduct(frame.x);
    }
    frame.x = frame.x.rotatedBy(text.rotation(), frame.normal);
    frame.y = frame.y.rotatedBy(text.rotation(), frame.normal);
    return frame;
}

}  // namespace nv
