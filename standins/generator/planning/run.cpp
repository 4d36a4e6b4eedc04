#include "generator/planning/run.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace plant::generator {

namespace {

Joint jointOf(Ends ends) {
    switch (ends) {
    case Ends::Weld:
        return Joint::Weld;
    case Ends::Flange:
        return Joint::Flange;
    default:
        return Joint::Socket;
    }
}

Vector unit(const Vector& v) {
    return v / v.length();
}

Point middle(const Point& a, const Point& b) {
    return a + (b - a) * 0.5;
}

// Centre to the end of a tee's branch, which shrinks with its size.
double branchLength(const PipeSize& run, const PipeSize& branch) {
    constexpr double share = 0.35;
    return std::round(run.tee - (run.tee - branch.tee) * share);
}

}  // namespace

Run::Run(PipelinePlan& plan, Ids& ids, const Start& start)
    : plan_(&plan), ids_(&ids), at_(start.at), along_(start.along), size_(start.size), forward_(start.forward),
      branch_(plan.branches.size()) {
    plan.branches.emplace_back();
}

double Run::distanceTo(double coordinate) const {
    const Vector& a = along_;
    const double here = std::abs(a.x) > 0.5 ? at_.x : std::abs(a.y) > 0.5 ? at_.y : at_.z;
    return (coordinate - here) * (a.x + a.y + a.z);
}

// ------------------------------------------------------------------------------------------------------------- joining

Part& Run::put(Family family, Ends ends) {
    Part& part = plan_->parts.emplace_back();
    part.family = family;
    part.ends = ends;
    part.id = ids_->next();
    part.size1 = part.size2 = static_cast<std::uint8_t>(size_);
    part.along = along_;
    part.across = acrossOf(along_);
    plan_->branches[branch_].push_back(part.id);
    return part;
}

PlanPoint& Run::point(int no) {
    return last().points[last().slotOf(no)];
}

// Joins the end of the pipe and a point of the last part.
void Run::connect(PlanPoint& in) {
    if (end_.nozzle != nullptr) {
        in.to = end_.nozzle->id;
        end_.nozzle->to = last().id;
    } else if (end_.part >= 0) {
        Part& before = plan_->parts[static_cast<std::size_t>(end_.part)];
        in.to = before.id;
        before.points[end_.slot].to = last().id;
    }
}

void Run::link(int in, int out, Joint exit) {
    PlanPoint& entry = point(in);
    entry.flow = inFlow();
    connect(entry);
    end_ = {static_cast<int>(plan_->parts.size()) - 1, 0, nullptr, exit};
    if (out >= 0) {
        point(out).flow = outFlow();
        end_.slot = last().slotOf(out);
    }
}

void Run::straight(double length, int in, int out, Joint exit) {
    const Point far = rounded(ahead(length));
    Part& part = last();
    part.length = length;
    part.add(0, rounded(middle(at_, far)));
    part.add(in, at_);
    part.add(out, far);
    link(in, out, exit);
    at_ = far;
}

void Run::join(Joint next) {
    if (end_.joint == Joint::Weld && next == Joint::Weld) {
        weld();
    } else if (end_.joint == Joint::Flange && next == Joint::Flange) {
        gasket();
    }
}

void Run::weld() {
    Part& part = put(Family::Weld, Ends::Weld);
    part.fieldWeld = fieldWeld_;
    part.number = ++plan_->welds;
    straight(weldGap, forward_ ? 1 : 2, forward_ ? 2 : 1, Joint::None);
}

void Run::gasket(Family family) {
    Part* before = end_.part >= 0 ? &plan_->parts[static_cast<std::size_t>(end_.part)] : nullptr;
    if (family == Family::Gasket) {
        const bool onFlange = before != nullptr && before->family == Family::Flange && before->bolts == 0;
        if (onFlange) {
            addBolts(*before);
        }
        boltsPending_ = !onFlange;
    }
    put(family, Ends::Flange);
    straight(gasketThickness, 1, 2, Joint::None);
}

void Run::addBolts(Part& flange) {
    flange.bolts = ids_->next();
    ++plan_->boltSets;
}

void Run::takePendingBolts() {
    if (boltsPending_) {
        addBolts(last());
        boltsPending_ = false;
    }
}

// ---------------------------------------------------------------------------------------------------------------- ends

void Run::startAtStop() {
    Part& part = put(Family::Stop, Ends::Weld);
    part.along = -along_;
    part.add(1, at_).flow = outFlow();
    end_ = {static_cast<int>(plan_->parts.size()) - 1, 0, nullptr, Joint::None};
}

void Run::endAtStop() {
    put(Family::Stop, Ends::Weld).add(1, at_);
    link(1, -1, Joint::None);
}

void Run::startAt(NozzlePlan& nozzle) {
    nozzle.faceFlow = outFlow();
    end_ = {-1, 0, &nozzle, Joint::Flange};
}

void Run::endAt(NozzlePlan& nozzle) {
    gasket();
    boltsPending_ = false;
    PlanPoint& face = last().points[end_.slot];
    face.to = nozzle.id;
    nozzle.to = last().id;
    nozzle.faceFlow = inFlow();
    end_ = {};
}

Run Run::branchAt(int no, const Vector& along, int size, bool flowsOut, Joint joint) {
    PlanPoint& port = point(no);
    port.flow = flowsOut ? 2 : 1;
    Run branch(*plan_, *ids_, {port.at, along, size, flowsOut});
    branch.end_ = {static_cast<int>(plan_->parts.size()) - 1, last().slotOf(no), nullptr, joint};
    return branch;
}

// --------------------------------------------------------------------------------------------------------------- pipes

void Run::pipe(double length) {
    join(buttJoint());
    Part& part = put(Family::Pipe, buttEnds());
    const Point far = rounded(ahead(length));
    part.length = length;
    part.add(1, at_);
    part.add(2, far);
    link(1, 2, buttJoint());
    at_ = far;
}

void Run::pipeTo(double coordinate, double takeoff, bool jointBehind) {
    const double before = end_.joint == Joint::Weld && !socketWelded() ? weldGap : 0;
    const double behind = jointBehind && !socketWelded() ? weldGap : 0;
    pipe(distanceTo(coordinate) - takeoff - before - behind);
}

void Run::flangedPipe(double length) {
    join(Joint::Flange);
    Part& part = put(Family::FlangedPipe, Ends::Flange);
    const Point far = rounded(ahead(length));
    part.length = length;
    part.add(1, at_);
    part.add(2, far);
    link(1, 2, Joint::Flange);
    at_ = far;
}

double Run::takeoff(const Vector& direction, double radius) const {
    return radius * pipe().dn * std::tan(along_.angleTo(direction) / 2);
}

void Run::elbow(const Vector& direction, Family family, double radius) {
    join(buttJoint());
    const double leg = takeoff(direction, radius);
    Part& part = put(family, buttEnds());
    part.bendRadius = radius;
    part.angle = family == Family::Elbow45 ? 45 : 90;
    part.across = unit(direction);
    const Point corner = rounded(ahead(leg));
    const Point far = rounded(corner + part.across * leg);
    part.add(0, corner);
    part.add(1, at_);
    if (family == Family::Bend) {
        part.add(2, at_);  // where the arc begins
    }
    part.add(3, far);
    along_ = part.across;
    link(1, 3, buttJoint());
    at_ = far;
}

// ------------------------------------------------------------------------------------------------------------ branches

Run Run::tee(const Vector& side, int sideSize, bool flowsOut) {
    join(buttJoint());
    const bool even = sideSize == size_;
    const PipeSize& branch = pipeSizes[sideSize];
    const Point center = rounded(ahead(pipe().tee));
    Part& part = put(even ? Family::Tee : Family::ReducingTee, buttEnds());
    part.layout = even ? Layout::Even : Layout::ReducedTee;
    part.size2 = static_cast<std::uint8_t>(sideSize);
    part.across = side;
    part.add(0, center);
    part.add(1, at_);
    part.add(2, rounded(ahead(2 * pipe().tee)));
    part.add(3, rounded(center + side * branchLength(pipe(), branch)));
    at_ = part.at(2);
    link(1, 2, buttJoint());
    return branchAt(3, side, sideSize, flowsOut, buttJoint());
}

Run Run::lateral(const Vector& side) {
    join(Joint::Weld);
    const double length = std::round(pipe().tee * 1.6);
    const Vector skew = unit(along_ + side);
    const Point center = rounded(ahead(length * 0.6));
    Part& part = put(Family::Lateral, Ends::Weld);
    part.across = skew;
    part.add(0, center);
    part.add(1, at_);
    part.add(2, rounded(ahead(length * 2)));
    part.add(3, rounded(center + skew * (length * 1.5)));
    at_ = part.at(2);
    link(1, 2, Joint::Weld);
    return branchAt(3, skew, size_, true, Joint::Weld);
}

Run Run::yPiece(const Vector& side) {
    join(Joint::Weld);
    const Vector left = unit(along_ + side);
    const Vector right = unit(along_ - side);
    const double arm = std::round(pipe().tee * 1.4);
    const Point center = rounded(ahead(pipe().tee));
    Part& part = put(Family::YPiece, Ends::Weld);
    part.across = left;
    part.add(0, center);
    part.add(1, at_);
    part.add(3, rounded(center + left * arm));
    part.add(4, rounded(center + right * arm));
    at_ = part.at(4);
    along_ = right;
    link(1, 4, Joint::Weld);
    return branchAt(3, left, size_, forward_, Joint::Weld);
}

Run Run::olet(Family family, const Vector& side, int sideSize) {
    join(Joint::Weld);
    const PipeSize& branch = pipeSizes[sideSize];
    const bool welded = family == Family::Weldolet;
    const bool socket = family == Family::Sockolet;
    const double width = branch.outer + 20;
    const double height = pipe().outer / 2 + std::round(branch.outer * 0.6 + 10);
    const Point center = rounded(ahead(width / 2));
    Part& part = put(family, welded ? Ends::Weld : socket ? Ends::WeldWeldSocket : Ends::WeldWeldThread);
    part.layout = Layout::ReducedTee;
    part.size2 = static_cast<std::uint8_t>(sideSize);
    part.across = side;
    part.add(0, center);
    part.add(1, at_);
    part.add(2, rounded(ahead(width)));
    part.add(3, rounded(center + side * height));
    at_ = part.at(2);
    link(1, 2, Joint::Weld);
    return branchAt(3, side, sideSize, true, welded ? Joint::Weld : Joint::Socket);
}

std::pair<Run, Run> Run::cross(const Vector& side, int sideSize) {
    join(Joint::Weld);
    const bool even = sideSize == size_;
    const double arm = branchLength(pipe(), pipeSizes[sideSize]);
    const Point center = rounded(ahead(pipe().tee));
    Part& part = put(even ? Family::Cross : Family::ReducingCross, Ends::Weld);
    part.layout = even ? Layout::Even : Layout::ReducedCross;
    part.size2 = static_cast<std::uint8_t>(sideSize);
    part.across = side;
    part.add(0, center);
    part.add(1, at_);
    part.add(2, rounded(ahead(2 * pipe().tee)));
    part.add(3, rounded(center + side * arm));
    part.add(4, rounded(center - side * arm));
    at_ = part.at(2);
    link(1, 2, Joint::Weld);
    Run first = branchAt(3, side, sideSize, true, Joint::Weld);
    return {first, branchAt(4, -side, sideSize, true, Joint::Weld)};
}

// ------------------------------------------------------------------------------------------------------------ reducers

void Run::reduceTo(int size) {
    join(Joint::Weld);
    const int large = std::max(size, size_);
    const bool down = size < size_;
    Part& part = put(Family::Concentric, Ends::Weld);
    part.layout = Layout::Reduced;
    part.size1 = static_cast<std::uint8_t>(large);
    part.size2 = static_cast<std::uint8_t>(std::min(size, size_));
    straight(pipeSizes[large].reducer, down ? 1 : 2, down ? 2 : 1, Joint::Weld);
    size_ = size;
}

void Run::reduceEccentricallyTo(int size, const Vector& offset) {
    join(Joint::Weld);
    const PipeSize& large = pipeSizes[size_];
    const Vector shift = offset * ((large.outer - pipeSizes[size].outer) / 2);
    const Vector half = along_ * (large.reducer / 2);
    Part& part = put(Family::Eccentric, Ends::Weld);
    part.layout = Layout::Reduced;
    part.size2 = static_cast<std::uint8_t>(size);
    part.across = offset;
    const Point far = rounded(ahead(large.reducer) + shift);
    part.length = large.reducer;
    part.add(1, at_);
    part.add(2, far);
    part.add(3, rounded(at_ + half));
    part.add(4, rounded(far - half));
    link(1, 2, Joint::Weld);
    at_ = far;
    size_ = size;
}

void Run::swageTo(int size) {
    join(Joint::Weld);
    Part& part = put(Family::Swage, Ends::WeldSocket);
    part.layout = Layout::Reduced;
    part.size2 = static_cast<std::uint8_t>(size);
    straight(pipe().reducer, 1, 2, Joint::Socket);
    size_ = size;
}

// ------------------------------------------------------------------------------------------------- flanges and in-line

void Run::flangeOut() {
    join(Joint::Weld);
    put(Family::Flange, Ends::FlangeWeld);
    straight(pipe().flange.neck, 2, 1, Joint::Flange);
}

void Run::flangeIn() {
    join(Joint::Flange);
    put(Family::Flange, Ends::FlangeWeld);
    takePendingBolts();
    straight(pipe().flange.neck, 1, 2, Joint::Weld);
}

void Run::blindFlange() {
    join(Joint::Flange);
    put(Family::BlindFlange, Ends::FlangeBlind);
    takePendingBolts();
    straight(pipe().flange.thickness, 1, 2, Joint::None);
}

void Run::inLine(Family family, Ends ends, double length, const Vector& across, int number) {
    join(jointOf(ends));
    Part& part = put(family, ends);
    part.across = across;
    part.number = number;
    straight(length, 1, 2, jointOf(ends));
}

void Run::angleValve(const Vector& direction, int number) {
    join(Joint::Flange);
    const double leg = std::round(pipe().dn * 1.5 + 20);
    Part& part = put(Family::Safety, Ends::Flange);
    part.across = direction;
    part.number = number;
    part.angle = 90;
    const Point corner = rounded(ahead(leg));
    part.add(0, corner);
    part.add(1, at_);
    part.add(3, rounded(corner + direction * leg));
    at_ = part.at(3);
    along_ = direction;
    link(1, 3, Joint::Flange);
}

void Run::hose(double length) {
    join(Joint::Flange);
    constexpr double stub = 100;
    Part& part = put(Family::Hose, Ends::Flange);
    part.length = length;
    part.add(1, at_);
    part.add(2, rounded(ahead(length)));
    part.add(3, rounded(ahead(stub)));
    part.add(4, rounded(ahead(length - stub)));
    at_ = part.at(2);
    link(1, 2, Joint::Flange);
}

void Run::cap() {
    const bool socket = socketWelded() || end_.joint == Joint::Socket;
    join(socket ? Joint::Socket : Joint::Weld);
    put(Family::Cap, socket ? Ends::SocketNone : Ends::WeldNone);
    straight(pipe().cap, 1, 2, Joint::None);
}

void Run::plug() {
    constexpr double length = 30;
    put(Family::Plug, Ends::ThreadNone);
    straight(length, 1, 2, Joint::None);
}

void Run::balloon(const Vector& across, int number) {
    Part& part = put(Family::Balloon, Ends::Weld);
    part.across = across;
    part.number = number;
    part.add(1, at_);
    link(1, -1, Joint::None);
}

}  // namespace plant::generator
