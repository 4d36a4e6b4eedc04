// Plans the pipelines of one process unit: what they connect, where they run, what they are called.
#pragma once

#include "generator/planning/plan.h"
#include "generator/planning/random.h"
#include "generator/planning/route.h"
#include "generator/telling/structure.h"

#include <span>
#include <string>
#include <vector>

namespace plant::generator {

inline constexpr double unitWidth = 44000;
inline constexpr double unitDepth = 32000;

// The pipelines of one unit and what they connect.
class PipeWork {
public:
    PipeWork(Random& random, Ids& ids, Router& router) : random_(&random), ids_(&ids), router_(&router) {}

    void begin(const Point& origin, std::vector<NozzlePlan>& nozzles) {
        origin_ = origin;
        nozzles_ = &nozzles;
        used_ = 0;
        supports_.clear();
    }
    // Plans pipelines until about `count` objects stand in them; gives their number.
    int plan(int count);
    std::span<PipelinePlan> pipelines() { return {pipelines_.data(), used_}; }
    const std::vector<SupportPoint>& supportPoints() const { return supports_; }

private:
    PipelinePlan& nextPlan();
    Route route(const PipelinePlan& plan, int most);
    void nameAfter(PipelinePlan& plan, const Route& route);
    void between(Route& route, NozzlePlan& from, NozzlePlan& to) const;
    void toBoundary(Route& route, NozzlePlan& from) const;
    void across(Route& route);
    void leave(Route& route, const NozzlePlan& nozzle) const;
    NozzlePlan* freeNozzle(Id otherThan);
    void noteSupports(const PipelinePlan& plan);
    double lane() const;
    double level() const;

    Random* random_;
    Ids* ids_;
    Router* router_;
    Point origin_;
    std::vector<NozzlePlan>* nozzles_ = nullptr;
    std::vector<PipelinePlan> pipelines_;  // the first `used_` are in use
    std::size_t used_ = 0;
    std::vector<SupportPoint> supports_;
    int number_ = 1000;
    std::string lastName_;
};

}  // namespace plant::generator
