#include "navisworks/scene/grid_system.h"

#include "navisworks/library/handles.h"
#include "navisworks/library/session.h"
#include "platform/hxcom.h"
#include "platform/left_out.h"
#include "platform/primaries.h"
#include "platform/smrtln.h"
#include "tolmar/code_page.h"
#include "tolmar/text.h"

#include <algorithm>

namespace nv {

namespace {

constexpr double origin[3] = {0, 0, 0};
constexpr double xAxis[3] = {1, 0, 0};
constexpr double yAxis[3] = {0, 1, 0};
constexpr const char16_t* levelName = u"Base";
constexpr double levelHeight = 0;

std::u16string numberOf(const HxDbAxissLine& line) {
    return tolmar::toWide(tolmar::textOrEmpty(line.getNo()));
}

// The first line of a shape; null when there is none.
const HextPrimaryLine* firstLine(const HxDbAxissLine& line, PrimaryList& shape) {
    if (smrtln::getSmrtlnGraphy(&line, "reality", shape.list(), nullptr) != Hext::eOk) {
        return nullptr;
    }
    const auto found = std::find_if(shape.begin(), shape.end(), [](const HextPrimary* primitive) {
        return primitive->isKindOf(HextPrimaryLine::desc());
    });
    return found != shape.end() ? HextPrimaryLine::cast(*found) : nullptr;
}

void addLine(const HxDbAxissLine& axis, LiNwcGridSystem system) {
    PrimaryList shape;
    const HextPrimaryLine* segment = firstLine(axis, shape);
    if (segment == nullptr) {
        reportLeftOut(&axis, "grid line", "its shape holds no line");
        return;
    }
    const double start[3] = {segment->startPoint.x, segment->startPoint.y, segment->startPoint.z};
    const double end[3] = {segment->endPoint.x, segment->endPoint.y, segment->endPoint.z};
    const OwnedGridLine line(LiNwcGridLineCreate(numberOf(axis).c_str()));
    LiNwcGridLineAddLinearSegment(line.get(), start, end);
    LiNwcGridSystemAddGridLine(system, line.get());
}

}  // namespace

void addGrid(const HxDbObject& axissObject, const HxDbTreeNode* treeNode, const std::string& name, LiNwcScene scene) {
    const OwnedGridSystem system(LiNwcGridSystemCreate(tolmar::toWide(name).c_str(), origin, xAxis, yAxis));
    std::vector<HxDbObject*> objects;
    getAllSubObjects(treeNode, objects, nullptr);
    for (const HxDbObject* object : objects) {
        if (const HxDbAxissLine* axis = HxDbAxissLine::cast(object)) {
            LibrarySession::setCurrentObject(axis);
            addLine(*axis, system.get());
        } else if (!object->isKindOf(HextNameNode::desc())) {
            reportLeftOut(object, "object", "a grid system holds nothing but lines");
        }
    }
    LibrarySession::setCurrentObject(&axissObject);
    const OwnedGridLevel level(LiNwcGridLevelCreate(levelName, levelHeight));
    LiNwcGridSystemAddGridLevel(system.get(), level.get());
    LiNwcSceneAddGridSystem(scene, system.get());
    LibrarySession::setCurrentObject(nullptr);
    LibrarySession::check();
}

}  // namespace nv
