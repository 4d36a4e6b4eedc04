#include "generator/planning/route.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace plant::generator {

namespace {

constexpr double shortestPipe = 150;
constexpr double longestPipe = 6000;
constexpr int smallestButtWeld = 4;  // DN 50
constexpr int largestBend = 7;       // DN 150

bool isLevel(const Vector& v) {
    return std::abs(v.z) < 0.5;
}

double axisCoordinate(const Point& at, const Vector& along) {
    return std::abs(along.x) > 0.5 ? at.x : std::abs(along.y) > 0.5 ? at.y : at.z;
}

struct ValveKind {
    Family family;
    double length;
};

ValveKind valveKind(const PipeSize& size, int kind) {
    const ValveKind kinds[] = {{Family::Gate, size.valve.gate},
                               {Family::Globe, size.valve.globe},
                               {Family::Ball, size.valve.ball},
                               {Family::Check, size.valve.check},
                               {Family::Butterfly, size.valve.butterfly}};
    return kinds[kind];
}

// Two flanges, two gaskets and the welds around them.
double betweenFlanges(const Run& run, double length) {
    return length + 2 * (run.pipe().flange.neck + gasketThickness + weldGap);
}

double longestValve(const Run& run) {
    const auto& valve = run.pipe().valve;
    return std::max({valve.gate, valve.globe, valve.ball, valve.check});
}

double strainerLength(const Run& run) {
    return run.pipe().valve.globe;
}
double controlLength(const Run& run) {
    return std::round(run.pipe().valve.globe * 0.9);
}

constexpr double spoolLength = 800;
constexpr double orificeLength = 12;
constexpr double hoseLength = 900;
constexpr double trapLength = 150;

}  // namespace

// What can stand on a leg. `objects` counts the pipe before it and the joints; branches come on top.
struct Router::Group {
    int weight;
    int objects;
    int largestSize;
    bool shifts;
    double (*length)(const Run&);
    void (Router::*place)(Run&);
};

const Router::Group Router::groups[] = {
    {22, 2, 11, false, [](const Run&) { return 0.0; }, &Router::nothing},
    {14, 11, 11, false, [](const Run& run) { return betweenFlanges(run, longestValve(run)); }, &Router::valve},
    {6, 4, 8, false, [](const Run& run) { return run.pipe().valve.globe + 2 * weldGap; }, &Router::weldedValve},
    {12, 10, 11, false, [](const Run& run) { return 2 * (run.pipe().tee + weldGap); }, &Router::teeBranch},
    {8, 9, 11, false, [](const Run& run) { return run.pipe().outer + 40; }, &Router::oletBranch},
    {6, 6, 11, false, [](const Run&) { return 80.0; }, &Router::instrument},
    {6, 4, 11, false, [](const Run& run) { return run.pipe().reducer * 2; }, &Router::reduce},
    {4, 4, 11, true, [](const Run& run) { return run.pipe().reducer + 2 * weldGap; }, &Router::reduceEccentrically},
    {3, 11, 9, false, [](const Run& run) { return betweenFlanges(run, spoolLength); }, &Router::spool},
    {2, 11, 10, false, [](const Run& run) { return betweenFlanges(run, orificeLength); }, &Router::orifice},
    {3, 11, 9, false, [](const Run& run) { return betweenFlanges(run, strainerLength(run)); }, &Router::strainer},
    {3, 11, 8, false, [](const Run& run) { return betweenFlanges(run, controlLength(run)); }, &Router::control},
    {2, 11, 6, false, [](const Run& run) { return betweenFlanges(run, hoseLength); }, &Router::hose},
    {2, 14, 9, false, [](const Run& run) { return 2 * (run.pipe().tee + weldGap); }, &Router::cross},
    {1, 15, 8, false, [](const Run& run) { return run.pipe().tee * 3.4; }, &Router::lateral},
    {2, 4, 5, false, [](const Run&) { return trapLength + 2 * weldGap; }, &Router::trap},
};

const Router::Group Router::socketGroups[] = {
    {20, 2, 3, false, [](const Run&) { return 60.0; }, &Router::coupling},
    {14, 2, 3, false, [](const Run& run) { return run.pipe().valve.globe; }, &Router::socketValve},
    {8, 2, 3, false, [](const Run&) { return 60.0; }, &Router::socketUnion},
    {10, 6, 3, false, [](const Run& run) { return 2 * run.pipe().tee; }, &Router::teeBranch},
};

// ------------------------------------------------------------------------------------------------------------ the path

int Router::leastObjects(const Route& route) {
    constexpr int atNozzle = 6;
    constexpr int aLeg = 4;
    const int nozzles = (route.from != nullptr ? 1 : 0) + (route.to != nullptr ? 1 : 0);
    return route.count * aLeg + nozzles * atNozzle;
}

void Router::lay(PipelinePlan& plan, const Route& route, int limit) {
    limit_ = limit;
    const Run::Start start{route.corner(0), route.leg(0), route.from != nullptr ? route.from->size : route.size,
                           route.forward};
    Run run(plan, *ids_, start);
    begin(run, route);
    for (int leg = 0; leg + 2 < route.count; ++leg) {
        turn(run, route, leg);
    }
    finish(run, route);
}

void Router::begin(Run& run, const Route& route) {
    if (route.from == nullptr) {
        return run.startAtStop();
    }
    run.startAt(*route.from);
    run.flangeIn();
    if (run.size() != route.size) {
        run.reduceTo(route.size);
    }
}

void Router::turn(Run& run, const Route& route, int leg) {
    constexpr double farLeg = 4000;
    constexpr double bendRadius = 3;
    const Vector next = route.leg(leg + 1);
    const double coordinate = axisCoordinate(route.corner(leg + 1), run.along());
    const bool mayBend = run.size() <= largestBend && run.distanceTo(coordinate) > farLeg && !run.socketWelded() &&
                         route.corner(leg + 1).distanceTo(route.corner(leg + 2)) > farLeg;
    const bool bend = mayBend && random_->chance(8);
    const bool miter = !bend && run.size() > largestBend && random_->chance(6);
    const double radius = bend ? bendRadius : Run::elbowRadius;
    bool laterVertical = route.to == nullptr;
    for (int i = leg + 1; i + 1 < route.count; ++i) {
        laterVertical = laterVertical || !isLevel(route.leg(i));
    }
    const int legsLeft = route.count - 1 - leg;
    furnish(run, {coordinate, run.takeoff(next, radius), laterVertical, legsLeft * 4 + 6}, legsLeft);
    run.pipeTo(coordinate, run.takeoff(next, radius));
    run.elbow(next, bend ? Family::Bend : miter ? Family::Miter : Family::Elbow90, radius);
}

void Router::finish(Run& run, const Route& route) {
    const double coordinate = axisCoordinate(route.corner(route.count - 1), run.along());
    if (route.to == nullptr) {
        furnish(run, {coordinate, 0, true, 4}, 1);
        const int ending = freeObjects(run) > 6 && !run.socketWelded() ? random_->below(4) : 0;
        run.pipeTo(coordinate, 0, ending > 1);
        if (ending < 2) {
            return run.endAtStop();
        }
        if (ending == 2) {
            return run.cap();
        }
        run.flangeOut();
        return run.blindFlange();
    }
    NozzlePlan& nozzle = *route.to;
    const PipeSize& size = pipeSizes[nozzle.size];
    const double atFace = size.flange.neck + gasketThickness;
    furnish(run, {coordinate, atFace + pipeSizes[sizeCount - 1].reducer, false, 10}, 1);
    const int larger = std::max(run.size(), nozzle.size);
    const bool reduces = run.size() != nozzle.size;
    run.pipeTo(coordinate, reduces ? atFace + weldGap + pipeSizes[larger].reducer : atFace);
    if (reduces) {
        run.reduceTo(nozzle.size);
    }
    run.flangeOut();
    run.endAt(nozzle);
}

// Puts things on a leg until it, or the leg's share of the objects that are left, is used up.
void Router::furnish(Run& run, const Leg& leg, int legsLeft) {
    constexpr int mostFailures = 4;
    const int share = std::max(0, freeObjects(run) - leg.reserve) / legsLeft;
    const int most = run.plan().objects() + share;
    int failures = 0;
    while (failures < mostFailures && run.plan().objects() < most) {
        failures = addGroup(run, leg) ? 0 : failures + 1;
    }
}

bool Router::addGroup(Run& run, const Leg& leg) {
    const bool socket = run.socketWelded();
    const Group* rows = socket ? socketGroups : groups;
    const std::size_t count = socket ? std::size(socketGroups) : std::size(groups);
    int total = 0;
    for (std::size_t i = 0; i < count; ++i) {
        total += rows[i].weight;
    }
    int drawn = random_->below(total);
    const Group* group = rows;
    for (; drawn >= group->weight; ++group) {
        drawn -= group->weight;
    }
    const double room = run.distanceTo(leg.coordinate) - leg.takeoff - group->length(run) - 2 * shortestPipe - 20;
    const bool fits = room > 0 && run.size() <= group->largestSize &&
                      group->objects + leg.reserve <= freeObjects(run) &&
                      (!group->shifts || (leg.mayShift && isLevel(run.along())));
    if (!fits) {
        return false;
    }
    run.weldInField(random_->chance(12));
    run.pipe(shortestPipe + pipeLength(room));
    run.weldInField(false);
    (this->*group->place)(run);
    return true;
}

double Router::pipeLength(double most) {
    constexpr int step = 10;
    const int steps = static_cast<int>(std::min(most, longestPipe)) / step;
    return step * random_->below(steps + 1);
}

// ----------------------------------------------------------------------------------------------------- groups on a leg

void Router::nothing(Run&) {}

void Router::valveBetweenFlanges(Run& run, Family family, double length) {
    run.flangeOut();
    run.inLine(family, Ends::Flange, length, isLevel(run.along()) ? up : acrossOf(run.along()), ++tag_);
    run.flangeIn();
}

void Router::valve(Run& run) {
    const ValveKind kind = valveKind(run.pipe(), random_->below(5));
    valveBetweenFlanges(run, kind.family, kind.length);
}

void Router::weldedValve(Run& run) {
    const ValveKind kind = valveKind(run.pipe(), random_->below(3) == 0 ? 1 : 0);
    run.inLine(kind.family, Ends::Weld, kind.length, isLevel(run.along()) ? up : acrossOf(run.along()), ++tag_);
}

Vector Router::sideOf(const Run& run) {
    const Vector sides[] = {up, -up, north, -north, east, -east};
    const bool level = isLevel(run.along());
    const Vector side = level ? sides[random_->below(2)] : sides[2 + random_->below(4)];
    return std::abs(side.dotProduct(run.along())) > 0.5 ? -up : side;
}

int Router::smallerSize(int size) {
    const int smallest = smallestButtWeld;
    return size <= smallest ? size : smallest + random_->below(std::min(size - smallest + 1, 4));
}

void Router::teeBranch(Run& run) {
    const Vector main = run.along();
    const bool out = run.socketWelded() || random_->chance(75);
    const int size = run.socketWelded() ? run.size() : smallerSize(run.size());
    Run branch = run.tee(sideOf(run), size, out);
    if (run.socketWelded()) {
        branch.pipe(200);
        return gauge(branch, Ends::Socket);
    }
    finishBranch(branch, main, out);
}

void Router::oletBranch(Run& run) {
    if (run.size() > smallestButtWeld && random_->chance(60)) {
        Run branch = run.olet(Family::Weldolet, sideOf(run), smallestButtWeld);
        return finishBranch(branch, run.along(), true);
    }
    constexpr int smallBoreSize = 2;  // DN 25
    Run branch = run.olet(Family::Sockolet, sideOf(run), smallBoreSize);
    branch.inLine(Family::Ball, Ends::Socket, branch.pipe().valve.ball, acrossOf(branch.along()), ++tag_);
    branch.plug();
}

void Router::instrument(Run& run) {
    const bool pressure = random_->chance(60);
    Run branch = run.olet(pressure ? Family::PressureBoss : Family::ThermoBoss, sideOf(run), 1);
    if (pressure) {
        return gauge(branch, Ends::Thread);
    }
    branch.balloon(acrossOf(branch.along()), ++tag_);
}

void Router::gauge(Run& branch, Ends ends) {
    branch.inLine(Family::Globe, ends, branch.pipe().valve.globe, acrossOf(branch.along()), ++tag_);
    branch.balloon(acrossOf(branch.along()), ++tag_);
}

void Router::reduce(Run& run) {
    const int size = smallerSize(run.size());
    if (size != run.size()) {
        run.reduceTo(size);
    }
}

void Router::reduceEccentrically(Run& run) {
    const int size = smallerSize(run.size());
    if (size != run.size()) {
        run.reduceEccentricallyTo(size, random_->chance(50) ? up : -up);
    }
}

void Router::spool(Run& run) {
    run.flangeOut();
    run.flangedPipe(spoolLength);
    if (random_->chance(50)) {
        run.gasket(Family::VirtualGasket);
    }
    run.flangeIn();
}

void Router::orifice(Run& run) {
    valveBetweenFlanges(run, Family::Orifice, orificeLength);
}

void Router::strainer(Run& run) {
    run.flangeOut();
    run.inLine(Family::Strainer, Ends::Flange, strainerLength(run), isLevel(run.along()) ? -up : acrossOf(run.along()),
               ++tag_);
    run.flangeIn();
}

void Router::control(Run& run) {
    valveBetweenFlanges(run, Family::Control, controlLength(run));
}

void Router::hose(Run& run) {
    run.flangeOut();
    run.hose(hoseLength);
    run.flangeIn();
}

void Router::cross(Run& run) {
    auto branches = run.cross(sideOf(run), smallerSize(run.size()));
    drain(branches.first);
    branches.second.pipe(300);
    branches.second.cap();
}

void Router::lateral(Run& run) {
    const Vector side = sideOf(run);
    Run branch = run.lateral(side);
    branch.pipe(pipeLength(600) + shortestPipe);
    branch.elbow(side, Family::Elbow45);
    drain(branch);
}

void Router::trap(Run& run) {
    run.inLine(Family::Trap, Ends::Weld, trapLength, acrossOf(run.along()), ++tag_);
}

void Router::socketValve(Run& run) {
    run.inLine(random_->chance(50) ? Family::Ball : Family::Globe, Ends::Socket, run.pipe().valve.globe,
               acrossOf(run.along()), ++tag_);
}

void Router::coupling(Run& run) {
    run.inLine(Family::Coupling, Ends::Socket, 48, acrossOf(run.along()));
}

void Router::socketUnion(Run& run) {
    run.inLine(Family::Union, Ends::Socket, 60, acrossOf(run.along()));
}

// ------------------------------------------------------------------------------------------------------------ branches

void Router::finishBranch(Run& branch, const Vector& sideways, bool flowsOut) {
    if (!flowsOut) {
        return takeOff(branch, sideways);
    }
    switch (random_->below(7)) {
    case 0:
    case 1:
        return drain(branch);
    case 2:
        return blindedValve(branch);
    case 3:
        return smallBore(branch);
    case 4:
        return relief(branch, sideways);
    case 5:
        return branch.size() <= largestBend && random_->chance(30) ? yVent(branch, sideways) : drain(branch);
    default:
        return takeOff(branch, sideways);
    }
}

void Router::drain(Run& branch) {
    branch.pipe(shortestPipe + pipeLength(300));
    const ValveKind kind = valveKind(branch.pipe(), random_->below(2));
    branch.inLine(kind.family, Ends::Weld, kind.length, acrossOf(branch.along()), ++tag_);
    branch.cap();
}

void Router::blindedValve(Run& branch) {
    branch.flangeOut();
    branch.inLine(Family::Ball, Ends::Flange, branch.pipe().valve.ball, acrossOf(branch.along()), ++tag_);
    branch.blindFlange();
}

void Router::smallBore(Run& branch) {
    branch.pipe(shortestPipe + pipeLength(200));
    branch.swageTo(2);
    branch.inLine(Family::Ball, Ends::Socket, branch.pipe().valve.ball, acrossOf(branch.along()), ++tag_);
    branch.plug();
}

void Router::relief(Run& branch, const Vector& sideways) {
    branch.flangeOut();
    branch.angleValve(sideways, ++tag_);
    branch.flangeIn();
    branch.pipe(shortestPipe + pipeLength(1000));
    branch.endAtStop();
}

void Router::yVent(Run& branch, const Vector& sideways) {
    branch.pipe(shortestPipe + pipeLength(300));
    Run second = branch.yPiece(sideways);
    for (Run* run : {&branch, &second}) {
        run->pipe(300);
        run->endAtStop();
    }
}

void Router::takeOff(Run& branch, const Vector& sideways) {
    branch.pipe(shortestPipe + pipeLength(1000));
    branch.elbow(sideways);
    branch.pipe(shortestPipe + pipeLength(2000));
    branch.endAtStop();
}

}  // namespace plant::generator
