// Ports, axes, directions and points of the component families.
#include "hextinterface/hextbasemethod/component_classes.h"

#include "hextinterface/hextbasemethod/object_tests.h"
#include "platform/attribute_cache.h"
#include "platform/model_tests.h"
#include "platform/smrtln.h"

using component::between;

namespace component {

HxGeVector3D between(const HxDbSmrtlnEntity* entity, int from, int to) {
    return entity->getCoordOfNo(to) - entity->getCoordOfNo(from);
}

}  // namespace component

namespace {

using Entity = _PCompBase::Entity;
using Port = std::uint16_t;

// Catalogue points by connection number, and ports of the catalogue element by connection number.
constexpr int pipePoints[] = {1, 1, 2};
constexpr int balloonPoints[] = {1, 1};
constexpr int pairedPoints[] = {1, 2, 3, 4};
constexpr int anglePoints[] = {0, 1, 3};
constexpr int yPoints[] = {0, 1, 4, 3};
constexpr int arms[] = {0, 1, 2, 3, 4, 5, 6};
constexpr Port armPorts[] = {0, 1, 2, 3, 4, 5, 6};
constexpr Port pairedPorts[] = {noPort, 1, 2};
constexpr Port yPorts[] = {0, 1, noPort, 3, 2};
constexpr Port uPorts[] = {noPort, 2, 1};
constexpr Port anglePorts[] = {0, 1, noPort, 2};
constexpr Port bendPorts[] = {0, 5, noPort, 6};

// Points 0 to `last`, each with the port of its number.
std::span<const int> armsTo(std::size_t last) {
    return std::span(arms).first(last + 1);
}
std::span<const Port> armPortsTo(std::size_t last) {
    return std::span(armPorts).first(last + 1);
}

Port portOf(std::span<const Port> ports, Port number) {
    return number < ports.size() ? ports[number] : noPort;
}

struct Ports {
    Port arrive;
    Port leave;
};

// Ports of a family whose two ends are fixed, in the direction that the flow tells; `before` where it tells none.
Ports portsByFlow(Entity entity, Port a, Port b, Ports before) {
    if (isWeld(entity)) {
        before = {1, 2};
    }
    if (entity->getPointOfNo(a) == nullptr || entity->getPointOfNo(b) == nullptr) {
        return before;
    }
    const int flowA = entity->getFlow(a);
    const int flowB = entity->getFlow(b);
    if (flowA == 1 || (flowA != 2 && flowB == 2)) {
        return {a, b};
    }
    if (flowA == 2 || flowB == 1) {
        return {b, a};
    }
    return before;
}

Port otherPort(Entity entity, Port taken) {
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
        const int flow = number > 0 ? entity->getFlow(number) : 0;
        if (flow == 1) {
            ports.arrive = static_cast<Port>(number);
        } else if (flow == 2) {
            ports.leave = static_cast<Port>(number);
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
        return entity->getFlow(1) == 1 ? Ports{1, 2} : Ports{2, 1};
    }
    return portsFromNeighbours(entity, items);
}

// The part of `v` across `x`.
HxGeVector3D across(const HxGeVector3D& x, const HxGeVector3D& v) {
    return x.crossProduct(v).crossProduct(x);
}

Axes straightAxes(Entity of) {
    const HxGeVector3D x = between(of, 1, 2);
    return {x, x.perpVector()};
}

}  // namespace

// ------------------------------------------------------------------------------------------------------------- base

Axes _PCompBase::getAxes(Entity) const {
    return {};
}

HxGePoint3D _PCompBase::getOrigin(Entity of) const {
    return of->getCoordOfNo(isWeld(of) || isCapItem(getBomValue(of, "item")) ? 1 : 0);
}

HxGePoint3D _PCompBase::getArrivePoint(Entity of) const {
    return of->getCoordOfNo(arrivePoint);
}

HxGePoint3D _PCompBase::getLeavePoint(Entity of) const {
    return of->getCoordOfNo(leavePoint);
}

HxGeVector3D _PCompBase::getDirection(Entity of, bool atArrive) const {
    const HxGePoint3D origin = getOrigin(of);
    return atArrive ? origin - getArrivePoint(of) : getLeavePoint(of) - origin;
}

DirectionPair _PCompBase::getDirections(Entity of, bool atArrive) const {
    const HxGePoint3D origin = getOrigin(of);
    const HxGeVector3D in = (origin - getArrivePoint(of)).normal();
    const HxGeVector3D leaving = (getLeavePoint(of) - origin).normal();
    return atArrive ? DirectionPair{in, leaving} : DirectionPair{leaving, in};
}

LocalFrame _PCompBase::buildFrame(CataPoints&) const {
    return {};
}

LocalFrame _PCompBase::buildFrameOnBranch(CataPoints&) const {
    return {};
}

void _PCompBase::setArriveLeave(Entity of, const BranchItems* branchItems) {
    const Ports ports = portsFromBranch(of, branchItems);
    arrivePoint = ports.arrive;
    leavePoint = ports.leave;
}

std::vector<HxGePoint3D> NumberedComp::getPoints() const {
    std::vector<HxGePoint3D> points;
    points.reserve(points_.size());
    for (const int number : points_) {
        points.push_back(entity->getCoordOfNo(number));
    }
    return points;
}

std::uint16_t NumberedComp::mapPointNo(std::uint16_t number) const {
    return ports_.empty() ? number : portOf(ports_, number);
}

// --------------------------------------------------------------------------------------------------------- straight

HxGeVector3D StraightComp::getDirection(Entity of, bool atArrive) const {
    const HxGeVector3D along = getLeavePoint(of) - getArrivePoint(of);
    return atArrive ? along : -along;
}

DirectionPair StraightComp::getDirections(Entity of, bool atArrive) const {
    const HxGeVector3D direction = getDirection(of, atArrive).normal();
    return {direction, direction};
}

_PCompPipe::_PCompPipe() : StraightComp(pipePoints, {}) {}

Axes _PCompPipe::getAxes(Entity of) const {
    return straightAxes(of);
}

HxGePoint3D _PCompPipe::getOrigin(Entity of) const {
    return of->getCoordOfNo(1);
}

_PCompNormal::_PCompNormal() : StraightComp(armsTo(2), armPortsTo(2)) {}

Axes _PCompNormal::getAxes(Entity of) const {
    return isWeld(of) ? weldAxes(of) : straightAxes(of);
}

_PCompBalloon::_PCompBalloon() : StraightComp(balloonPoints, {}) {}

Axes _PCompBalloon::getAxes(Entity of) const {
    const HxDbTubeGeneral* balloon = HxDbTubeGeneral::cast(of);
    return balloon != nullptr ? Axes{balloon->getRefvec(), -balloon->getInsvec()} : Axes();
}

HxGePoint3D _PCompBalloon::getOrigin(Entity of) const {
    return of->getCoordOfNo(1);
}

HxGePoint3D _PCompBalloon::getArrivePoint(Entity of) const {
    return of->getCoordOfNo(1);
}

HxGePoint3D _PCompBalloon::getLeavePoint(Entity of) const {
    const HxDbTubeGeneral* balloon = HxDbTubeGeneral::cast(of);
    return balloon != nullptr ? balloon->getInspt() : HxGePoint3D();
}

void _PCompBalloon::setArriveLeave(Entity, const BranchItems*) {
    arrivePoint = 1;
    leavePoint = 2;
}

// --------------------------------------------------------------------------------------------------- tees and crosses

_PCompTee::_PCompTee() : NumberedComp(armsTo(3), armPortsTo(3)) {}

Axes _PCompTee::getAxes(Entity of) const {
    return {between(of, 0, 2), between(of, 0, 3)};
}

_PCompCross::_PCompCross() : _PCompTee(armsTo(4), armPortsTo(4)) {}

_PCompCross3::_PCompCross3() : _PCompCross(armsTo(6), armPortsTo(6)) {}

_PCompLatera::_PCompLatera() : NumberedComp(armsTo(3), armPortsTo(3)) {}

Axes _PCompLatera::getAxes(Entity of) const {
    const HxGeVector3D x = between(of, 0, 2);
    return {x, across(x, between(of, 0, 3))};
}

// -------------------------------------------------------------------------------------- eccentric reducers and hoses

PairedComp::PairedComp() : NumberedComp(pairedPoints, pairedPorts) {}

HxGePoint3D PairedComp::getOrigin(Entity of) const {
    return of->getCoordOfNo(1);
}

HxGeVector3D PairedComp::getDirection(Entity of, bool atArrive) const {
    const bool fromFirst = (of->getFlow(1) == 1) == atArrive;
    return fromFirst ? between(of, 1, 3) : between(of, 2, 4);
}

DirectionPair PairedComp::getDirections(Entity of, bool atArrive) const {
    return {getDirection(of, atArrive).normal(), getDirection(of, !atArrive).normal()};
}

Axes _PCompEcc::getAxes(Entity of) const {
    return {between(of, 1, 3), between(of, 3, 4)};
}

Axes _PCompHose::getAxes(Entity of) const {
    const HxGeVector3D x = between(of, 1, 3);
    const HxGeVector3D y = between(of, 4, 3);
    return {x, y.isParallelTo(x, nearlyParallel) ? x.perpVector() : y};
}

// --------------------------------------------------------------------------------------------------- Y pieces, angles

_PCompY::_PCompY() : NumberedComp(yPoints, yPorts) {}

Axes _PCompY::getAxes(Entity of) const {
    const HxGeVector3D x = between(of, 1, 0);
    return {x, across(x, between(of, 0, 3))};
}

void _PCompY::setArriveLeave(Entity of, const BranchItems*) {
    const Ports ports = portsByFlow(of, 4, 2, {arrivePoint, leavePoint});
    arrivePoint = ports.arrive;
    leavePoint = ports.leave;
}

_PCompU::_PCompU() : NumberedComp({}, uPorts) {}

_PCompAngle::_PCompAngle() : NumberedComp(anglePoints, anglePorts) {}

Axes _PCompAngle::getAxes(Entity of) const {
    return {between(of, 1, 0), between(of, 0, 3)};
}

void _PCompAngle::setArriveLeave(Entity of, const BranchItems*) {
    const Ports ports = portsByFlow(of, 1, 3, {arrivePoint, leavePoint});
    arrivePoint = ports.arrive;
    leavePoint = ports.leave;
}

std::uint16_t _PCompAngle::mapPointNo(std::uint16_t number) const {
    return smrtln::isBend(entity) ? portOf(bendPorts, number) : NumberedComp::mapPointNo(number);
}

Axes _PCompArc::getAxes(Entity of) const {
    const HxGeVector3D x = between(of, 1, 0);
    return {x, across(x, between(of, 0, 3))};
}
