// Plans a pipeline along a path of corners: elbows at the corners, valves, branches and the like on the legs.
#pragma once

#include "generator/planning/plan.h"
#include "generator/planning/random.h"
#include "generator/planning/run.h"

#include <array>

namespace plant::generator {

// Corners of a path whose legs run along the axes of the world. An end without a nozzle is free.
struct Route {
    std::array<Point, 8> corners;
    int count = 0;
    NozzlePlan* from = nullptr;
    NozzlePlan* to = nullptr;
    int size = 0;
    bool forward = true;

    void add(const Point& corner) { corners[static_cast<std::size_t>(count++)] = corner; }
    const Point& corner(int i) const { return corners[static_cast<std::size_t>(i)]; }
    Vector leg(int i) const { return (corner(i + 1) - corner(i)).normal(); }
};

class Router {
public:
    Router(Random& random, Ids& ids) : random_(&random), ids_(&ids) {}

    // Fills the plan, which has its pipeline's id, class and service, with about `limit` objects; a path with many
    // corners may need more.
    void lay(PipelinePlan& plan, const Route& route, int limit);
    // Objects that the path takes with nothing on its legs.
    static int leastObjects(const Route& route);

    struct Group;

private:
    // Where a leg ends, and what its end takes of it.
    struct Leg {
        double coordinate;
        double takeoff;
        bool mayShift;
        int reserve;  // objects that the rest of the path needs
    };

    void begin(Run& run, const Route& route);
    void turn(Run& run, const Route& route, int leg);
    void finish(Run& run, const Route& route);
    void furnish(Run& run, const Leg& leg, int legsLeft);
    bool addGroup(Run& run, const Leg& leg);
    int freeObjects(const Run& run) const { return limit_ - run.plan().objects(); }

    void valve(Run& run);
    void weldedValve(Run& run);
    void teeBranch(Run& run);
    void oletBranch(Run& run);
    void instrument(Run& run);
    void reduce(Run& run);
    void reduceEccentrically(Run& run);
    void spool(Run& run);
    void orifice(Run& run);
    void strainer(Run& run);
    void control(Run& run);
    void hose(Run& run);
    void cross(Run& run);
    void lateral(Run& run);
    void trap(Run& run);
    void socketValve(Run& run);
    void coupling(Run& run);
    void socketUnion(Run& run);
    void nothing(Run& run);

    void valveBetweenFlanges(Run& run, Family family, double length);
    void finishBranch(Run& branch, const Vector& sideways, bool flowsOut);
    void drain(Run& branch);
    void blindedValve(Run& branch);
    void smallBore(Run& branch);
    void relief(Run& branch, const Vector& sideways);
    void yVent(Run& branch, const Vector& sideways);
    void takeOff(Run& branch, const Vector& sideways);
    void gauge(Run& branch, Ends ends);
    Vector sideOf(const Run& run);
    int smallerSize(int size);
    double pipeLength(double most);

    static const Group groups[];
    static const Group socketGroups[];

    Random* random_;
    Ids* ids_;
    int limit_ = 0;
    int tag_ = 100;
};

}  // namespace plant::generator
