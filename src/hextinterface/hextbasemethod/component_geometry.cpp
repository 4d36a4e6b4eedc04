#include "hextinterface/hextbasemethod/component_geometry.h"

#include "frame/exceptions.h"
#include "hextinterface/hextbasemethod/component_classes.h"
#include "hextinterface/hextbasemethod/macro_text.h"
#include "platform/attribute_cache.h"
#include "platform/hxcom.h"
#include "platform/model_tests.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace {

using component::at;
using component::flowAt;

constexpr const char* invalidDirection = "无效方向";
constexpr double shortestAxis = 1e-6;
constexpr double shortestX = 1e-5;
constexpr TlGeTol nearlyParallel(1e-5, 1e-5);

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
        hxcad::hextPrintf("\nID:%lld<无效方向>", static_cast<long long>(entity->objectId().toInt()));
    }
    throw ExportException(invalidDirection);
}

// Coordinates at the end of what numbers hold give no direction.
bool isFinite(const HxGeVector3D& v) {
    return std::isfinite(v.length());
}

HxGePoint3D middleOf(const HxDbSmrtlnEntity* entity) {
    if (getBomValue(entity, "item") != "PIPE") {
        return at(entity, 0);
    }
    const HxGePoint3D first = at(entity, 1);
    return first + (at(entity, 2) - first) * 0.5;
}

HxGeVector3D armTowards(const HxDbSmrtlnEntity* entity, int number, const IdMarks& componentIds) {
    const HxDbSmrtlnEntity* neighbour = entity->getConnSmrtln(number, 0);
    const bool known = neighbour != nullptr && componentIds.contains(neighbour->objectId());
    return (known ? middleOf(neighbour) : at(entity, number)) - middleOf(entity);
}

// What a weld takes its axis from: a neighbour, and the number at which the weld (or the weld between) hangs there.
struct WeldNeighbour {
    const HxDbSmrtlnEntity* object = nullptr;
    int number = noPort;
};

const HxDbSmrtlnEntity* upstreamOf(const HxDbSmrtlnEntity* weld) {
    const int near = flowAt(weld, 1) == 2 ? 1 : 2;
    const HxDbSmrtlnEntity* found = weld->getConnSmrtln(near, 0);
    return found != nullptr ? found : weld->getConnSmrtln(3 - near, 0);
}

WeldNeighbour beyondWelds(const HxDbSmrtlnEntity* weld, const HxDbSmrtlnEntity* neighbour) {
    if (!neighbour->isKindOf(HxDbTubeWeld::desc())) {
        return {neighbour, neighbour->getConnNoOfSmrtln(weld, 0)};
    }
    std::vector<HxDbObject*> connected;
    neighbour->getAllConnObject(connected);
    for (const HxDbObject* object : connected) {
        const HxDbSmrtlnEntity* entity = HxDbSmrtlnEntity::cast(object);
        if (entity != nullptr && !entity->isKindOf(HxDbTubeWeld::desc())) {
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

void axisFromPoints(const HxDbSmrtlnEntity* entity, int from, int to, HxGeVector3D& x, HxGeVector3D& y) {
    x = component::between(entity, from, to);
    if (flowAt(entity, from) != 1) {
        x = -x;
    }
    y = x.perpVector();
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

void initComp(_PCompBase& comp, const HxDbSmrtlnEntity* entity, const BranchItems* items) {
    comp.entity = entity;
    comp.items = items;
    comp.setArriveLeave(entity, items);
    comp.isAxis = true;
}

CompView makeView(const HxDbSmrtlnEntity* entity, const BranchItems* items) {
    const bool balloon = entity->isKindOf(HxDbBalloon::desc());
    CompView view;
    view.comp = makeComp(balloon ? "Balloon" : getBomValue(entity, "smrtln"));
    view.entity = entity;
    initComp(*view.comp, entity, items);
    return view;
}

std::string axesOf(CompView& view) {
    view.comp->getAxes(view.entity, view.x, view.y);
    return axesTextChecked(view.comp.get(), view.entity, view.x, view.y);
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

std::string axesWithReference(const CompView& view, const HxGeVector3D& reference, bool useAsX) {
    HxGeVector3D x;
    HxGeVector3D y;
    view.comp->getAxes(view.entity, x, y);
    if (!isFinite(x) || !isFinite(y)) {
        refuseDirection(view.entity);
    }
    x.normalize();
    y.normalize();
    if (useAsX) {
        x = reference;
    } else if (!reference.isParallelTo(x, nearlyParallel)) {
        y = reference;
    }
    return axesText(x, y);
}

std::string getConnectionAxes(const HxDbSmrtlnEntity* entity, const IdMarks& componentIds, HxGeVector3D& a,
                              HxGeVector3D& b) {
    a = armTowards(entity, 2, componentIds);
    b = armTowards(entity, 3, componentIds);
    if (!isFinite(a) || !isFinite(b)) {
        refuseDirection(entity);
    }
    return axesText(a, b);
}

void weldAxes(const HxDbSmrtlnEntity* weld, HxGeVector3D& x, HxGeVector3D& y, WeldRule rule) {
    const HxDbSmrtlnEntity* neighbour = weld->getPointOfNo(1) != nullptr ? upstreamOf(weld) : nullptr;
    if (neighbour == nullptr) {
        return;
    }
    if (neighbour->isKindOf(HxDbPipeSpec::desc())) {
        return axisFromPoints(neighbour, 1, 2, x, y);
    }
    const WeldNeighbour source = beyondWelds(weld, neighbour);
    const std::string_view family = getBomValue(source.object, "smrtln");
    for (const AxisPoints& row : axisPoints) {
        const bool excluded = rule == WeldRule::BranchEnd && row.family == "Ecc";
        if (row.family == family && !excluded) {
            return axisFromPoints(source.object, row.from == noPort ? source.number : row.from, row.to, x, y);
        }
    }
}
