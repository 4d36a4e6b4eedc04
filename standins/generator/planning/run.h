// Lays a pipe part by part: each call adds a component at the end of the pipe, joined to the one before it by a weld or
// a gasket where its end asks for one, and moves the end on.
#pragma once

#include "generator/planning/plan.h"

#include <utility>

namespace plant::generator {

// How an end is joined to the next one.
enum class Joint { None, Weld, Socket, Flange };

class Run {
public:
    struct Start {
        Point at;
        Vector along;
        int size = 0;
        bool forward = true;  // false: the flow runs against the order of laying
    };
    // Begins a branch of the pipeline. Plan and ids outlive the run.
    Run(PipelinePlan& plan, Ids& ids, const Start& start);

    const Point& at() const { return at_; }
    const Vector& along() const { return along_; }
    int size() const { return size_; }
    const PipeSize& pipe() const { return pipeSizes[size_]; }
    const PipelinePlan& plan() const { return *plan_; }
    bool socketWelded() const { return plan_->type().socketWelded; }
    void weldInField(bool on) { fieldWeld_ = on; }

    // The way to a coordinate of the axis along which the pipe runs.
    double distanceTo(double coordinate) const;

    void startAtStop();
    void startAt(NozzlePlan& nozzle);
    void endAt(NozzlePlan& nozzle);
    void endAtStop();

    void pipe(double length);
    // A pipe that leaves `takeoff` to the coordinate, joints counted.
    void pipeTo(double coordinate, double takeoff, bool jointBehind = true);
    void flangedPipe(double length);

    // What an elbow takes of both legs.
    double takeoff(const Vector& direction, double radius = elbowRadius) const;
    void elbow(const Vector& direction, Family family = Family::Elbow90, double radius = elbowRadius);

    // Each gives the branch that leaves the component.
    Run tee(const Vector& side, int sideSize, bool flowsOut);
    Run lateral(const Vector& side);
    Run yPiece(const Vector& side);
    Run olet(Family family, const Vector& side, int sideSize);
    // The second branch leaves on the other side.
    std::pair<Run, Run> cross(const Vector& side, int sideSize);

    void reduceTo(int size);
    // The centre line moves towards or away from `offset`, the side that stays level.
    void reduceEccentricallyTo(int size, const Vector& offset);
    void swageTo(int size);

    void flangeOut();
    void flangeIn();
    void blindFlange();
    void gasket(Family family = Family::Gasket);

    // A part with two ends along the pipe.
    void inLine(Family family, Ends ends, double length, const Vector& across, int number = 0);
    void angleValve(const Vector& direction, int number);
    void hose(double length);
    void cap();
    void plug();
    void balloon(const Vector& across, int number);

    static constexpr double elbowRadius = 1.5;

private:
    struct Port {
        int part = -1;
        std::size_t slot = 0;
        NozzlePlan* nozzle = nullptr;
        Joint joint = Joint::None;
    };

    Run branchAt(int no, const Vector& along, int size, bool flowsOut, Joint joint);
    void join(Joint next);
    void weld();
    void addBolts(Part& flange);
    void takePendingBolts();
    Part& put(Family family, Ends ends);
    Part& last() { return plan_->parts.back(); }
    Point ahead(double length) const { return at_ + along_ * length; }
    void straight(double length, int in, int out, Joint exit);
    void link(int in, int out, Joint exit);
    PlanPoint& point(int no);
    void connect(PlanPoint& in);
    std::int8_t inFlow() const { return forward_ ? 1 : 2; }
    std::int8_t outFlow() const { return forward_ ? 2 : 1; }
    Joint buttJoint() const { return socketWelded() ? Joint::Socket : Joint::Weld; }
    Ends buttEnds() const { return socketWelded() ? Ends::Socket : Ends::Weld; }

    PipelinePlan* plan_;
    Ids* ids_;
    Point at_;
    Vector along_;
    int size_;
    bool forward_;
    bool fieldWeld_ = false;
    bool boltsPending_ = false;
    std::size_t branch_;
    Port end_;
};

}  // namespace plant::generator
