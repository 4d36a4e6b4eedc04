#include "hextinterface/hextbasemethod/component_geometry.h"

#include "frame/exceptions.h"
#include "hextinterface/hextbasemethod/component_classes.h"
#include "hextinterface/hextbasemethod/macro_text.h"
#include "hextinterface/hextbasemethod/object_tests.h"
#include "platform/attribute_cache.h"
#include "platform/hxcom.h"
#include "platform/model_tests.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace {

constexpr const char* invalidDirection = "无效方向";
constexpr double shortestAxis = 1e-6;
constexpr double shortestX = 1e-5;

template <typename Class>
std::unique_ptr<_PCompBase> make() {
    return std::make_unique<Class>();
}

struct Family {
    std::string_view word;
    std::unique_ptr<_PCompBase> (*make)();
};
constexpr Family families[] = {
    {"Pipe", make<_PCompPipe>}, {"Weld", make<_PCompNormal>},     {"Normal", make<_PCompNormal>},
    {"Tee", make<_PCompTee>},   {"Latera", make<_PCompLatera>},   {"Ecc", make<_PCompEcc>},
    {"Y", make<_PCompY>},       {"Cross", make<_PCompCross>},     {"Cross3", make<_PCompCross3>},
    {"Ru", make<_PCompU>},      {"Angle", make<_PCompAngle>},     {"Arc", make<_PCompArc>},
    {"Hose", make<_PCompHose>}, {"Balloon", make<_PCompBalloon>},
};

[[noreturn]] void refuseDirection(const HxDbSmrtlnEntity* entity) {
    if (entity != nullptr) {
        hxcad::hextPrintf("\nID:%lld<无效方向>", idNumber(entity));
    }
    throw ExportException(invalidDirection);
}

// Coordinates at the end of what numbers hold give no direction.
bool isFinite(const HxGeVector3D& v) {
    return std::isfinite(v.length());
}

HxGePoint3D middleOf(const HxDbSmrtlnEntity* entity) {
    if (getBomValue(entity, "item") != "PIPE") {
        return entity->getCoordOfNo(0);
    }
    const HxGePoint3D first = entity->getCoordOfNo(1);
    return first + (entity->getCoordOfNo(2) - first) * 0.5;
}

HxGeVector3D armTowards(const HxDbSmrtlnEntity* entity, int number, const IdMarks& componentIds) {
    const HxDbSmrtlnEntity* neighbour = entity->getConnSmrtln(number, 0);
    const bool known = neighbour != nullptr && componentIds.contains(neighbour->objectId());
    return (known ? middleOf(neighbour) : entity->getCoordOfNo(number)) - middleOf(entity);
}

// What a weld takes its axis from: a neighbour, and the number at which the weld (or the weld between) hangs there.
struct WeldNeighbour {
    const HxDbSmrtlnEntity* object = nullptr;
    int number = noPort;
};

// What the flow leaves the weld towards; what it comes from where there is nothing.
const HxDbSmrtlnEntity* neighbourDownstream(const HxDbSmrtlnEntity* weld) {
    const int leaving = weld->getFlow(1) == 2 ? 1 : 2;
    const HxDbSmrtlnEntity* found = weld->getConnSmrtln(leaving, 0);
    return found != nullptr ? found : weld->getConnSmrtln(3 - leaving, 0);
}

WeldNeighbour beyondWelds(const HxDbSmrtlnEntity* weld, const HxDbSmrtlnEntity* neighbour) {
    if (!isWeld(neighbour)) {
        return {neighbour, neighbour->getConnNoOfSmrtln(weld, 0)};
    }
    std::vector<HxDbObject*> connected;
    neighbour->getAllConnObject(connected);
    for (const HxDbObject* object : connected) {
        const HxDbSmrtlnEntity* entity = HxDbSmrtlnEntity::cast(object);
        if (entity != nullptr && !isWeld(entity)) {
            return {entity, entity->getConnNoOfSmrtln(neighbour, 0)};
        }
    }
    return {neighbour, noPort};
}

// Which two points of a neighbour tell its axis, by family; noPort stands for the number of the connection.
struct AxisPoints {
    std::string_view family;
    int from;
    int to;
};
constexpr AxisPoints axisPoints[] = {
    {"Normal", 1, 2}, {"Ecc", 1, 2}, {"Arc", noPort, 0}, {"Tee", noPort, 0}, {"Cross", noPort, 0},
};

Axes axesFromPoints(const HxDbSmrtlnEntity* entity, int from, int to) {
    const HxGeVector3D along = component::between(entity, from, to);
    const HxGeVector3D x = entity->getFlow(from) != 1 ? -along : along;
    return {x, x.perpVector()};
}

}  // namespace

std::unique_ptr<_PCompBase> makeComp(std::string_view typeWord) {
    const auto* family = std::find_if(std::begin(families), std::end(families),
                                      [&](const Family& row) { return equalNoCase(row.word, typeWord); });
    if (family == std::end(families)) {
        throw ExportException("智能线类型元件" + std::string(typeWord) + "不能转换为HEXT元件");
    }
    return family->make();
}

CompView makeView(const HxDbSmrtlnEntity* entity, const BranchItems* items) {
    const bool balloon = entity->isKindOf(HxDbBalloon::desc());
    CompView view;
    view.comp = makeComp(balloon ? "Balloon" : getBomValue(entity, "smrtln"));
    view.entity = entity;
    view.comp->entity = entity;
    view.comp->setArriveLeave(entity, items);
    return view;
}

std::string axesOf(CompView& view) {
    view.axes = view.comp->getAxes(view.entity);
    return axesTextChecked(view.comp.get(), view.entity, view.axes.x, view.axes.y);
}

std::string axesTextChecked(_PCompBase* comp, const HxDbSmrtlnEntity* entity, HxGeVector3D x, HxGeVector3D y) {
    if (!isFinite(x) || !isFinite(y) || x.length() < shortestAxis || y.length() < shortestAxis) {
        refuseDirection(entity);
    }
    x.normalize();
    y.normalize();
    if (x.length() < shortestX) {
        return {};
    }
    bool xIsAxis = false;
    bool yIsAxis = false;
    const std::string xText = directionText(x, &xIsAxis);
    const std::string yText = directionText(y, &yIsAxis);
    if (comp != nullptr && !(xIsAxis && yIsAxis)) {
        comp->isAxis = false;
    }
    return "X is " + xText + " and Y is " + yText;
}

std::string axesWithReference(const CompView& view, const HxGeVector3D& reference) {
    auto [x, y] = view.comp->getAxes(view.entity);
    if (!isFinite(x) || !isFinite(y)) {
        refuseDirection(view.entity);
    }
    x.normalize();
    y.normalize();
    if (!reference.isParallelTo(x, nearlyParallel)) {
        y = reference;
    }
    return axesText(x, y);
}

Axes getConnectionAxes(const HxDbSmrtlnEntity* entity, const IdMarks& componentIds) {
    const Axes axes{armTowards(entity, 2, componentIds), armTowards(entity, 3, componentIds)};
    if (!isFinite(axes.x) || !isFinite(axes.y)) {
        refuseDirection(entity);
    }
    return axes;
}

Axes weldAxes(const HxDbSmrtlnEntity* weld, WeldRule rule) {
    const HxDbSmrtlnEntity* neighbour = weld->getPointOfNo(1) != nullptr ? neighbourDownstream(weld) : nullptr;
    if (neighbour == nullptr) {
        return {};
    }
    if (neighbour->isKindOf(HxDbPipeSpec::desc())) {
        return axesFromPoints(neighbour, 1, 2);
    }
    const WeldNeighbour source = beyondWelds(weld, neighbour);
    const std::string_view family = getBomValue(source.object, "smrtln");
    for (const AxisPoints& row : axisPoints) {
        const bool excluded = rule == WeldRule::BranchEnd && row.family == "Ecc";
        if (row.family == family && !excluded) {
            return axesFromPoints(source.object, row.from == noPort ? source.number : row.from, row.to);
        }
    }
    return {};
}
