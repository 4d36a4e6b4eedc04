#include "hextinterface/hextbasemethod/component_classes.h"

#include "platform/attribute_cache.h"
#include "platform/model_tests.h"
#include "platform/smrtln.h"

#include <algorithm>
#include <iterator>

using component::at;
using component::between;
using component::flowAt;

namespace component {

HxGePoint3D at(const HxDbSmrtlnEntity* entity, int number) {
    const HxDbSmrtlnPoint* point = entity->getPointOfNo(number);
    return point != nullptr ? point->getCoord() : HxGePoint3D();
}

int flowAt(const HxDbSmrtlnEntity* entity, int number) {
    const HxDbSmrtlnPoint* point = entity->getPointOfNo(number);
    return point != nullptr ? point->getFlow() : 0;
}

HxGeVector3D between(const HxDbSmrtlnEntity* entity, int from, int to) {
    return at(entity, to) - at(entity, from);
}

}  // namespace component

namespace {

using Entity = _PCompBase::Entity;

constexpr TlGeTol nearlyParallel(1e-5, 1e-5);

bool isWeld(Entity entity) {
    return entity->isKindOf(HxDbTubeWeld::desc());
}

// Port numbers by connection number; what lies beyond the table has no port.
template <std::size_t N>
std::uint16_t mapped(const std::uint16_t (&ports)[N], std::uint16_t number) {
    return number < N ? ports[number] : noPort;
}

template <std::size_t N>
void appendPoints(std::vector<HxGePoint3D>& out, Entity entity, const int (&numbers)[N]) {
    for (const int number : numbers) {
        out.push_back(at(entity, number));
    }
}

struct Ports {
    std::uint16_t arrive;
    std::uint16_t leave;
};

// Ports of a family whose two ends are fixed, in the direction that the flow tells; `before` where it tells none.
Ports portsByFlow(Entity entity, std::uint16_t a, std::uint16_t b, Ports before) {
    if (isWeld(entity)) {
        before = {1, 2};
    }
    if (entity->getPointOfNo(a) == nullptr || entity->getPointOfNo(b) == nullptr) {
        return before;
    }
    const int flowA = flowAt(entity, a);
    const int flowB = flowAt(entity, b);
    if (flowA == 1 || (flowA != 2 && flowB == 2)) {
        return {a, b};
    }
    if (flowA == 2 || flowB == 1) {
        return {b, a};
    }
    return before;
}

std::uint16_t otherPort(Entity entity, std::uint16_t taken) {
    if (taken != 1) {
        return 1;
    }
    return entity->getPointOfNo(2) != nullptr ? 2 : 3;
}

Ports portsFromNeighbours(Entity entity, const BranchItems* items) {
    Ports ports{0, 0};
    std::vector<HxDbObject*> connected;
    entity->getAllConnObject(connected);
    for (const HxDbObject* object : connected) {
        if (items == nullptr || !items->contains(object)) {
            continue;
        }
        const int number = entity->getConnNoOfSmrtln(object, 0);
        const int flow = number > 0 ? flowAt(entity, number) : 0;
        if (flow == 1) {
            ports.arrive = static_cast<std::uint16_t>(number);
        } else if (flow == 2) {
            ports.leave = static_cast<std::uint16_t>(number);
        }
    }
    if (ports.leave == 0) {
        // A component alone in its branch is passed from 1 on.
        ports.leave = otherPort(entity, ports.arrive == 0 ? 1 : ports.arrive);
    }
    if (ports.arrive == 0) {
        ports.arrive = otherPort(entity, ports.leave);
    }
    return ports;
}

Ports portsFromBranch(Entity entity, const BranchItems* items) {
    if (isWeld(entity) || smrtln::isNozzle(entity)) {
        return {1, 2};
    }
    if (smrtln::isPipe(entity)) {
        return flowAt(entity, 1) == 1 ? Ports{1, 2} : Ports{2, 1};
    }
    return portsFromNeighbours(entity, items);
}

// The part of `v` across `x`.
HxGeVector3D across(const HxGeVector3D& x, const HxGeVector3D& v) {
    return x.crossProduct(v).crossProduct(x);
}

// Tees and crosses.
void teeAxes(Entity of, HxGeVector3D& x, HxGeVector3D& y) {
    x = between(of, 0, 2);
    y = between(of, 0, 3);
}

// Eccentric reducers and hoses, whose ends each have a second point.
HxGeVector3D pairedDirection(Entity of, bool atArrive) {
    const bool fromFirst = (flowAt(of, 1) == 1) == atArrive;
    return fromFirst ? between(of, 1, 3) : between(of, 2, 4);
}

void appendPairedDirections(std::vector<HxGeVector3D>& out, Entity of, bool atArrive) {
    out.push_back(pairedDirection(of, atArrive).normal());
    out.push_back(pairedDirection(of, !atArrive).normal());
}

// Angles and arcs. A bend's catalogue element has its ports at 5 and 6.
std::uint16_t anglePort(Entity of, std::uint16_t number) {
    return smrtln::isBend(of) ? mapped({0, 5, noPort, 6}, number) : mapped({0, 1, noPort, 2}, number);
}

void appendTwice(std::vector<HxGeVector3D>& out, const HxGeVector3D& direction) {
    out.insert(out.end(), 2, direction.normal());
}

}  // namespace

// ------------------------------------------------------------------------------------------------------------- base

void _PCompBase::getAxes(Entity, HxGeVector3D&, HxGeVector3D&) const {}

HxGePoint3D _PCompBase::getOrigin(Entity of) const {
    return at(of, isWeld(of) || isCapItem(getBomValue(of, "item")) ? 1 : 0);
}

HxGePoint3D _PCompBase::getArrivePoint(Entity of) const {
    return at(of, arrivePoint);
}

HxGePoint3D _PCompBase::getLeavePoint(Entity of) const {
    return at(of, leavePoint);
}

HxGeVector3D _PCompBase::getDirection(Entity of, bool atArrive) const {
    const HxGePoint3D origin = getOrigin(of);
    return atArrive ? origin - getArrivePoint(of) : getLeavePoint(of) - origin;
}

void _PCompBase::getDirections(std::vector<HxGeVector3D>& out, Entity of, bool atArrive) const {
    const HxGePoint3D origin = getOrigin(of);
    const HxGeVector3D in = (origin - getArrivePoint(of)).normal();
    const HxGeVector3D leaving = (getLeavePoint(of) - origin).normal();
    out.push_back(atArrive ? in : leaving);
    out.push_back(atArrive ? leaving : in);
}

void _PCompBase::buildFrame(CataPoints&, HxGeVector3D&, HxGeVector3D&, HxGeVector3D&) const {}

void _PCompBase::getPoints(std::vector<HxGePoint3D>&) const {}

void _PCompBase::setArriveLeave(Entity of, const BranchItems* branchItems) {
    const Ports ports = portsFromBranch(of, branchItems);
    arrivePoint = ports.arrive;
    leavePoint = ports.leave;
}

std::uint16_t _PCompBase::mapPointNo(std::uint16_t number) const {
    return number;
}

// ------------------------------------------------------------------------------------------------------------- pipe

void _PCompPipe::getAxes(Entity of, HxGeVector3D& x, HxGeVector3D& y) const {
    x = between(of, 1, 2);
    y = x.perpVector();
}

HxGePoint3D _PCompPipe::getOrigin(Entity of) const {
    return at(of, 1);
}

HxGeVector3D _PCompPipe::getDirection(Entity of, bool atArrive) const {
    const HxGeVector3D along = getLeavePoint(of) - getArrivePoint(of);
    return atArrive ? along : -along;
}

void _PCompPipe::getDirections(std::vector<HxGeVector3D>& out, Entity of, bool atArrive) const {
    appendTwice(out, getDirection(of, atArrive));
}

void _PCompPipe::getPoints(std::vector<HxGePoint3D>& out) const {
    appendPoints(out, entity, {1, 1, 2});
}

// ----------------------------------------------------------------------------------------------------------- normal

void _PCompNormal::getAxes(Entity of, HxGeVector3D& x, HxGeVector3D& y) const {
    if (isWeld(of)) {
        return weldAxes(of, x, y);
    }
    x = between(of, 1, 2);
    y = x.perpVector();
}

HxGeVector3D _PCompNormal::getDirection(Entity of, bool atArrive) const {
    const HxGeVector3D along = getLeavePoint(of) - getArrivePoint(of);
    return atArrive ? along : -along;
}

void _PCompNormal::getDirections(std::vector<HxGeVector3D>& out, Entity of, bool atArrive) const {
    appendTwice(out, getDirection(of, atArrive));
}

std::uint16_t _PCompNormal::mapPointNo(std::uint16_t number) const {
    return mapped({0, 1, 2}, number);
}

// --------------------------------------------------------------------------------------------------- tees and crosses

void _PCompTee::getAxes(Entity of, HxGeVector3D& x, HxGeVector3D& y) const {
    teeAxes(of, x, y);
}

void _PCompTee::getPoints(std::vector<HxGePoint3D>& out) const {
    appendPoints(out, entity, {0, 1, 2, 3});
}

std::uint16_t _PCompTee::mapPointNo(std::uint16_t number) const {
    return mapped({0, 1, 2, 3}, number);
}

void _PCompLatera::getAxes(Entity of, HxGeVector3D& x, HxGeVector3D& y) const {
    x = between(of, 0, 2);
    y = across(x, between(of, 0, 3));
}

void _PCompLatera::getPoints(std::vector<HxGePoint3D>& out) const {
    appendPoints(out, entity, {0, 1, 2, 3});
}

std::uint16_t _PCompLatera::mapPointNo(std::uint16_t number) const {
    return mapped({0, 1, 2, 3}, number);
}

void _PCompCross::getAxes(Entity of, HxGeVector3D& x, HxGeVector3D& y) const {
    teeAxes(of, x, y);
}

void _PCompCross::getPoints(std::vector<HxGePoint3D>& out) const {
    appendPoints(out, entity, {0, 1, 2, 3, 4});
}

std::uint16_t _PCompCross::mapPointNo(std::uint16_t number) const {
    return mapped({0, 1, 2, 3, 4}, number);
}

void _PCompCross3::getAxes(Entity of, HxGeVector3D& x, HxGeVector3D& y) const {
    teeAxes(of, x, y);
}

void _PCompCross3::getPoints(std::vector<HxGePoint3D>& out) const {
    appendPoints(out, entity, {0, 1, 2, 3, 4, 5, 6});
}

std::uint16_t _PCompCross3::mapPointNo(std::uint16_t number) const {
    return mapped({0, 1, 2, 3, 4, 5, 6}, number);
}

// -------------------------------------------------------------------------------------- eccentric reducers and hoses

void _PCompEcc::getAxes(Entity of, HxGeVector3D& x, HxGeVector3D& y) const {
    x = between(of, 1, 3);
    y = between(of, 3, 4);
}

HxGePoint3D _PCompEcc::getOrigin(Entity of) const {
    return at(of, 1);
}

HxGeVector3D _PCompEcc::getDirection(Entity of, bool atArrive) const {
    return pairedDirection(of, atArrive);
}

void _PCompEcc::getDirections(std::vector<HxGeVector3D>& out, Entity of, bool atArrive) const {
    appendPairedDirections(out, of, atArrive);
}

void _PCompEcc::getPoints(std::vector<HxGePoint3D>& out) const {
    appendPoints(out, entity, {1, 2, 3, 4});
}

std::uint16_t _PCompEcc::mapPointNo(std::uint16_t number) const {
    return mapped({noPort, 1, 2}, number);
}

void _PCompHose::getAxes(Entity of, HxGeVector3D& x, HxGeVector3D& y) const {
    x = between(of, 1, 3);
    y = between(of, 4, 3);
    if (y.isParallelTo(x, nearlyParallel)) {
        y = x.perpVector();
    }
}

HxGePoint3D _PCompHose::getOrigin(Entity of) const {
    return at(of, 1);
}

HxGeVector3D _PCompHose::getDirection(Entity of, bool atArrive) const {
    return pairedDirection(of, atArrive);
}

void _PCompHose::getDirections(std::vector<HxGeVector3D>& out, Entity of, bool atArrive) const {
    appendPairedDirections(out, of, atArrive);
}

void _PCompHose::getPoints(std::vector<HxGePoint3D>& out) const {
    appendPoints(out, entity, {1, 2, 3, 4});
}

std::uint16_t _PCompHose::mapPointNo(std::uint16_t number) const {
    return mapped({noPort, 1, 2}, number);
}

// --------------------------------------------------------------------------------------------------- Y pieces, angles

void _PCompY::getAxes(Entity of, HxGeVector3D& x, HxGeVector3D& y) const {
    x = between(of, 1, 0);
    y = across(x, between(of, 0, 3));
}

void _PCompY::getPoints(std::vector<HxGePoint3D>& out) const {
    appendPoints(out, entity, {0, 1, 4, 3});
}

void _PCompY::setArriveLeave(Entity of, const BranchItems*) {
    const Ports ports = portsByFlow(of, 4, 2, {arrivePoint, leavePoint});
    arrivePoint = ports.arrive;
    leavePoint = ports.leave;
}

std::uint16_t _PCompY::mapPointNo(std::uint16_t number) const {
    return mapped({0, 1, noPort, 3, 2}, number);
}

void _PCompAngle::getAxes(Entity of, HxGeVector3D& x, HxGeVector3D& y) const {
    x = between(of, 1, 0);
    y = between(of, 0, 3);
}

void _PCompAngle::getPoints(std::vector<HxGePoint3D>& out) const {
    appendPoints(out, entity, {0, 1, 3});
}

void _PCompAngle::setArriveLeave(Entity of, const BranchItems*) {
    const Ports ports = portsByFlow(of, 1, 3, {arrivePoint, leavePoint});
    arrivePoint = ports.arrive;
    leavePoint = ports.leave;
}

std::uint16_t _PCompAngle::mapPointNo(std::uint16_t number) const {
    return anglePort(entity, number);
}

void _PCompArc::getAxes(Entity of, HxGeVector3D& x, HxGeVector3D& y) const {
    x = between(of, 1, 0);
    y = across(x, between(of, 0, 3));
}

void _PCompArc::getPoints(std::vector<HxGePoint3D>& out) const {
    appendPoints(out, entity, {0, 1, 3});
}

void _PCompArc::setArriveLeave(Entity of, const BranchItems*) {
    const Ports ports = portsByFlow(of, 1, 3, {arrivePoint, leavePoint});
    arrivePoint = ports.arrive;
    leavePoint = ports.leave;
}

std::uint16_t _PCompArc::mapPointNo(std::uint16_t number) const {
    return anglePort(entity, number);
}

std::uint16_t _PCompU::mapPointNo(std::uint16_t number) const {
    return mapped({noPort, 2, 1}, number);
}

// ---------------------------------------------------------------------------------------------------------- balloons

void _PCompBalloon::getAxes(Entity of, HxGeVector3D& x, HxGeVector3D& y) const {
    if (const HxDbTubeGeneral* balloon = HxDbTubeGeneral::cast(of)) {
        x = balloon->getRefvec();
        y = -balloon->getInsvec();
    }
}

HxGePoint3D _PCompBalloon::getOrigin(Entity of) const {
    return at(of, 1);
}

HxGePoint3D _PCompBalloon::getArrivePoint(Entity of) const {
    return at(of, 1);
}

HxGePoint3D _PCompBalloon::getLeavePoint(Entity of) const {
    const HxDbTubeGeneral* balloon = HxDbTubeGeneral::cast(of);
    return balloon != nullptr ? balloon->getInspt() : HxGePoint3D();
}

HxGeVector3D _PCompBalloon::getDirection(Entity of, bool atArrive) const {
    const HxGeVector3D along = getLeavePoint(of) - getArrivePoint(of);
    return atArrive ? along : -along;
}

void _PCompBalloon::getDirections(std::vector<HxGeVector3D>& out, Entity of, bool atArrive) const {
    appendTwice(out, getDirection(of, atArrive));
}

void _PCompBalloon::getPoints(std::vector<HxGePoint3D>& out) const {
    appendPoints(out, entity, {1, 1});
}

void _PCompBalloon::setArriveLeave(Entity, const BranchItems*) {
    arrivePoint = 1;
    leavePoint = 2;
}
