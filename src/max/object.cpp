#include "max/object.h"

#include "max/names.h"
#include "max/shape.h"
#include "platform/hxcom.h"
#include "platform/left_out.h"

namespace maxfile {

namespace {

constexpr const char* stationDescription = "站场代号";
constexpr const char* projectDescription = "项目编码";

void reportPart(const HxDbSmrtlnEntity& object, const char* what, const char* why) {
    reportLeftOut({&object, objectName(object), what}, why);
}

constexpr const char* noScript = "the script maxoutplugins.lua does not load";

}  // namespace

void MaxObjectWriter::write(const HxDbSmrtlnEntity& object, const ElementPair& parents, std::int64_t id) {
    const std::size_t before = geometry_.replacedTexts() + properties_.replacedTexts();
    writeGeometry(object, *parents.geometry, id);
    writeProperties(object, *parents.properties, id);
    if (geometry_.replacedTexts() + properties_.replacedTexts() != before) {
        reportPart(object, "text", "it holds characters that XML cannot hold");
    }
}

void MaxObjectWriter::writeGeometry(const HxDbSmrtlnEntity& object, XmlNode& parent, std::int64_t id) {
    ScriptedObject script(script_, object);
    if (!script.isLoaded()) {
        reportPart(object, "geometry", noScript);
        return;
    }
    const bool isMesh = script.isObjChangeMesh();
    XmlNode* group = nullptr;
    if (!(isMesh ? makeMesh(object, script, group) : makeSpline(object, script, group))) {
        return;
    }
    XmlNode* element = geometry_.element("object");
    geometry_.addInteger(*element, "id", id);
    geometry_.addRepeatedText(*element, "Name", objectName(object));
    if (group != nullptr) {
        element->append_node(group);
    }
    parent.append_node(element);
}

XmlNode* MaxObjectWriter::startGroup(const char* name, const HxGePoint3D* center) {
    XmlNode* group = geometry_.element(name);
    if (center != nullptr) {
        geometry_.addLength(*group, "insptX", center->x);
        geometry_.addLength(*group, "insptY", center->y);
        geometry_.addLength(*group, "insptZ", center->z);
    }
    return group;
}

void MaxObjectWriter::addColor(XmlNode& group, int colorIndex) {
    const unsigned packed = hxcad::transAcadColorIdx2RGB(colorIndex);
    geometry_.addInteger(group, "colorR", packed & 0xFFU);
    geometry_.addInteger(group, "colorG", packed >> 8U & 0xFFU);
    geometry_.addInteger(group, "colorB", packed >> 16U & 0xFFU);
}

bool MaxObjectWriter::makeMesh(const HxDbSmrtlnEntity& object, ScriptedObject& script, XmlNode*& group) {
    HxGePoint3D center;
    const bool hasCenter = script.getObjCenterPt(center);
    mesh_.clear();
    if (!meshObject(object, mesh_)) {
        reportPart(object, "geometry", "it has no shape");
        return false;
    }
    if (mesh_.vertexCount() == 0) {
        return true;
    }
    group = startGroup("meshGroup", hasCenter ? &center : nullptr);
    geometry_.addInteger(*group, "pointNum", static_cast<std::int64_t>(mesh_.vertexCount()));
    geometry_.addInteger(*group, "faceNum", static_cast<std::int64_t>(mesh_.triangleCount()));
    addColor(*group, object.getColorIdx());
    geometry_.setMesh(*group, mesh_);
    return true;
}

bool MaxObjectWriter::makeSpline(const HxDbSmrtlnEntity& object, ScriptedObject& script, XmlNode*& group) {
    HxGePoint3D center;
    const bool hasCenter = script.getObjCenterPt(center);
    const std::vector<HxGePoint3D> points = script.changeObj4Spline();
    const int partNum = script.getPartNum();
    const std::string size = script.getObjsize();
    if (partNum == 0) {
        reportPart(object, "geometry", "getPartNum gives no number of at least 1");
        return false;
    }
    group = startGroup("splineGroup", hasCenter ? &center : nullptr);
    geometry_.addInteger(*group, "pointNum", static_cast<std::int64_t>(points.size()));
    geometry_.addInteger(*group, "partNum", partNum);
    geometry_.addRepeatedText(*group, "partSize", size);
    addColor(*group, object.getColorIdx());
    for (std::size_t i = 0; i < points.size(); ++i) {
        addPoint(*group, i % static_cast<std::size_t>(partNum) == 0 ? "knot" : "interp", i, points[i]);
    }
    return true;
}

void MaxObjectWriter::addPoint(XmlNode& group, const char* type, std::size_t index, const HxGePoint3D& point) {
    XmlNode* element = geometry_.element("point");
    geometry_.addRepeatedText(*element, "type", type);
    geometry_.addInteger(*element, "index", static_cast<std::int64_t>(index));
    geometry_.addLength(*element, "pointX", point.x);
    geometry_.addLength(*element, "pointY", point.y);
    geometry_.addLength(*element, "pointZ", point.z);
    group.append_node(element);
}

void MaxObjectWriter::writeProperties(const HxDbSmrtlnEntity& object, XmlNode& parent, std::int64_t id) {
    ScriptedObject script(script_, object);
    if (!script.isLoaded()) {
        reportPart(object, "properties", noScript);
        return;
    }
    XmlNode* element = properties_.element("object");
    properties_.addInteger(*element, "id", id);
    text_ = codes_.station;
    text_.append("-").append(objectName(object)).append("_").append(std::to_string(id));
    properties_.addText(*element, "Name", text_);
    properties_.addRepeatedText(*element, "ProjectCode", codes_.project);
    properties_.addRepeatedText(*element, "stationname", codes_.station);
    XmlNode* group = properties_.element("propertyGroup");
    properties_.addRepeatedText(*group, "Name", "ORNA");
    addRow(*group, {"site_no", codes_.station, stationDescription});
    addRow(*group, {"unit_no", codes_.project, projectDescription});
    script.maxOutdata([&](const PropertyRow& row) { addRow(*group, row); });
    element->append_node(group);
    parent.append_node(element);
}

void MaxObjectWriter::addRow(XmlNode& group, const PropertyRow& row) {
    XmlNode* element = properties_.element("key_value");
    properties_.addRepeatedText(*element, "key", row.key);
    properties_.addRepeatedText(*element, "value", row.value);
    properties_.addRepeatedText(*element, "description", row.description);
    group.append_node(element);
}

}  // namespace maxfile
