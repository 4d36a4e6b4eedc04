#include "generator/pipework.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace plant::generator {

namespace {

constexpr double firstLane = 14000;
constexpr double laneSpacing = 400;
constexpr double firstLevel = 5600;
constexpr double levelSpacing = 350;
constexpr int laneCount = 20;
constexpr int fewestObjects = 3;

}  // namespace

double PipeWork::lane() const {
    return origin_.y + firstLane + laneSpacing * (static_cast<int>(used_) % laneCount);
}

double PipeWork::level() const {
    return firstLevel + levelSpacing * (static_cast<int>(used_) % laneCount);
}

PipelinePlan& PipeWork::nextPlan() {
    if (used_ == pipelines_.size()) {
        pipelines_.emplace_back();
    }
    PipelinePlan& plan = pipelines_[used_];
    plan.parts.clear();
    plan.branches.clear();
    plan.welds = plan.boltSets = 0;
    plan.id = ids_->next();
    plan.number = ++number_;
    plan.service = random_->below(serviceCount);
    plan.pipingClass = plan.carries().pipingClass;
    plan.insulated = plan.carries().insulationCode != nullptr && random_->chance(80);
    return plan;
}

int PipeWork::plan(int count) {
    int objects = 0;
    while (count - objects >= fewestObjects) {
        const int most = std::min(count - objects, random_->between(30, 110));
        PipelinePlan& plan = nextPlan();
        const Route path = route(plan, most);
        nameAfter(plan, path);
        router_->lay(plan, path, most);
        plan.start = path.corner(0);
        plan.end = path.corner(path.count - 1);
        if (!path.forward && random_->chance(50)) {
            std::swap(plan.start, plan.end);
            std::reverse(plan.branches[0].begin(), plan.branches[0].end());
        }
        noteSupports(plan);
        objects += plan.objects();
        ++used_;
    }
    return objects;
}

NozzlePlan* PipeWork::freeNozzle(Id otherThan) {
    for (NozzlePlan& nozzle : *nozzles_) {
        if (nozzle.to == 0 && nozzle.equipment != otherThan) {
            return &nozzle;
        }
    }
    return nullptr;
}

Route PipeWork::route(const PipelinePlan& plan, int most) {
    Route route;
    route.forward = random_->chance(70);
    NozzlePlan* from = plan.type().socketWelded ? nullptr : freeNozzle(0);
    NozzlePlan* to = from != nullptr && random_->chance(65) ? freeNozzle(from->equipment) : nullptr;
    if (from != nullptr && to != nullptr) {
        between(route, *from, *to);
    } else if (from != nullptr) {
        toBoundary(route, *from);
    }
    if (route.count == 0 || Router::leastObjects(route) > most) {
        route = {};
        route.forward = random_->chance(70);
        across(route);
        route.size = plan.type().socketWelded ? random_->below(4) : random_->between(4, 9);
    }
    return route;
}

// From the nozzle up to the level of the line and over to its lane.
void PipeWork::leave(Route& route, const NozzlePlan& nozzle) const {
    constexpr double clearance = 1800;
    Point at = nozzle.face;
    route.add(at);
    if (std::abs(nozzle.along.y) > 0.5) {
        at.y += clearance;
        route.add(at);
    }
    at.z = level();
    route.add(at);
}

void PipeWork::between(Route& route, NozzlePlan& from, NozzlePlan& to) const {
    Route back;
    leave(route, from);
    leave(back, to);
    route.add({from.face.x, lane(), level()});
    route.add({to.face.x, lane(), level()});
    for (int i = back.count; i-- > 0;) {
        route.add(back.corner(i));
    }
    route.from = &from;
    route.to = &to;
    route.size = std::max(from.size, to.size);
}

void PipeWork::toBoundary(Route& route, NozzlePlan& from) const {
    leave(route, from);
    const bool west = from.face.x - origin_.x > unitWidth / 2;
    route.add({from.face.x, lane(), level()});
    route.add({origin_.x + (west ? 500 : unitWidth - 4500), lane(), level()});
    route.from = &from;
    route.size = from.size;
}

// A header along the rack, with a step up on its way.
void PipeWork::across(Route& route) {
    constexpr double step = 2400;
    const double west = origin_.x + 500;
    const double turn = origin_.x + random_->between(12000, 26000, 100);
    route.add({west, lane(), level()});
    if (random_->chance(40)) {
        route.add({turn, lane(), level()});
        route.add({turn, lane(), level() + step});
        route.add({origin_.x + unitWidth - 4500, lane(), level() + step});
    } else {
        route.add({origin_.x + unitWidth - 4500, lane(), level()});
    }
}

// "CWS-1001-150-A1B"; one name in fifty is that of the pipeline before.
void PipeWork::nameAfter(PipelinePlan& plan, const Route& route) {
    if (lastName_.empty() || !random_->chance(2)) {
        lastName_ = std::string(plan.carries().code) + "-" + std::to_string(plan.number) + "-" +
                    std::to_string(pipeSizes[route.size].dn) + "-" + plan.type().name;
    }
    plan.name = lastName_;
}

// Level pipes inside a branch, long enough for a support.
void PipeWork::noteSupports(const PipelinePlan& plan) {
    constexpr double shortest = 500;
    for (const Part& part : plan.parts) {
        const bool pipe = part.family == Family::Pipe && part.length >= shortest && std::abs(part.along.z) < 0.5;
        if (pipe && part.points[0].to != 0 && part.points[1].to != 0) {
            supports_.push_back(
                {part.id, rounded(part.at(1) + (part.at(2) - part.at(1)) * 0.5), part.along, part.size1});
        }
    }
    for (const std::vector<Id>& branch : plan.branches) {
        std::erase_if(supports_,
                      [&](const SupportPoint& s) { return s.pipe == branch.front() || s.pipe == branch.back(); });
    }
}

}  // namespace plant::generator
