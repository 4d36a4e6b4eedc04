#include "sources/pcf/network.h"

#include "sources/pcf/place_index.h"

#include <algorithm>
#include <cmath>
#include <fmt/core.h>
#include <map>

namespace plant::pcf {

namespace {

constexpr double shortestLength = 0.01;
constexpr double runCell = 2000;
constexpr double weldLength = 2;
constexpr double shortestClosing = 10;
// What stands on a pipe may stand on its surface rather than on its axis.
constexpr double besideAxis = 2;

std::uint8_t otherEnd(std::uint8_t slot) {
    return slot == 0 ? 1 : 0;
}

double shareAlong(const Part& pipe, const HxGePoint3D& at) {
    const HxGeVector3D way = pipe.ends[1].at - pipe.ends[0].at;
    return (at - pipe.ends[0].at).dotProduct(way) / way.lengthSqrd();
}

HxGePoint3D pointAlong(const Part& pipe, double share) {
    return pipe.ends[0].at + (pipe.ends[1].at - pipe.ends[0].at) * share;
}

}  // namespace

HxGePoint3D innerPoint(const Part& part) {
    const HxGePoint3D middle = part.ends[0].at + (part.ends[1].at - part.ends[0].at) * 0.5;
    return part.centre.value_or(middle);
}

HxGeVector3D outward(const Part& part, std::uint8_t slot) {
    const HxGeVector3D out = (part.ends[slot].at - innerPoint(part)).normal();
    return out.isZeroLength() && slot < 2 ? (part.ends[slot].at - part.ends[otherEnd(slot)].at).normal() : out;
}

Network::Network(const Files& files, SourceReport& report) : files_(&files), report_(&report) {}

void Network::build() {
    gather();
    settleSetOns();
    joinEnds();
    closeGaps();
    spreadSizes();
    giveLengths();
    giveSecondEnds();
    findChains();
}

void Network::tell(const char* code, SourceGrade grade, const Part& part, const std::string& text) {
    const File& file = *fileOf_[part.pipeline];
    report_->tell(
        code, grade,
        {file.name + ": line " + std::to_string(part.record->line), std::string(part.record->key) + ": " + text});
}

void Network::gather() {
    for (const File& file : *files_) {
        for (const Pipeline& pipeline : file.pipelines) {
            for (const Part& part : pipeline.parts) {
                knots_.push_back({part, {}});
                knots_.back().part.pipeline = pipelines_.size();
            }
            pipelines_.push_back(&pipeline);
            fileOf_.push_back(&file);
        }
    }
}

// ------------------------------------------------------------------------------------------- what stands on a pipe

bool Network::findRun(std::uint32_t setOn, PlaceIndex& pipes, std::uint32_t& pipe) const {
    const Part& part = knots_[setOn].part;
    double nearest = 0;
    bool found = false;
    pipes.near(*part.centre, [&](std::uint32_t number) {
        const Part& run = knots_[number].part;
        const double share = shareAlong(run, *part.centre);
        const double distance = (*part.centre - pointAlong(run, std::clamp(share, 0.0, 1.0))).length();
        const bool isOwn = run.pipeline == part.pipeline;
        const double reach = std::max(besideAxis, run.ends[0].size.outer * 0.55);
        if (distance <= reach && (!found || distance + (isOwn ? 0 : reach) < nearest)) {
            nearest = distance + (isOwn ? 0 : reach);
            pipe = number;
            found = true;
        }
    });
    return found;
}

void Network::settleSetOns() {
    PlaceIndex pipes(runCell);
    for (std::uint32_t i = 0; i < knots_.size(); ++i) {
        const Part& part = knots_[i].part;
        if (part.isPipe() && part.length() > shortestLength) {
            pipes.addAlong(part.ends[0].at, part.ends[1].at, i);
        }
    }
    std::map<std::uint32_t, std::vector<std::uint32_t>> byPipe;
    for (std::uint32_t i = 0; i < knots_.size(); ++i) {
        if (knots_[i].part.kind->form != Form::SetOn || !knots_[i].part.centre) {
            continue;
        }
        std::uint32_t pipe = 0;
        if (findRun(i, pipes, pipe)) {
            byPipe[pipe].push_back(i);
        } else {
            standAlone(knots_[i].part);
        }
    }
    for (auto& [pipe, setOns] : byPipe) {
        splitPipe(pipe, setOns);
    }
}

// A foot in the air: the part is then a straight piece at whose end its branch begins.
void Network::standAlone(Part& part) {
    tell("pcf.olet-without-run", SourceGrade::Note, part, "no pipe runs where it stands; it begins its branch");
    const End outlet = part.ends[2];
    part.ends[0] = outlet;
    part.ends[0].at = *part.centre;
    part.ends[1] = outlet;
    part.ends[2] = {};
    part.centre.reset();
}

// The pipe keeps the part before the first foot; each further part is a pipe of its own.
void Network::splitPipe(std::uint32_t pipe, std::vector<std::uint32_t>& setOns) {
    const Part whole = knots_[pipe].part;
    const auto shareOf = [&](std::uint32_t i) {
        return std::clamp(shareAlong(whole, *knots_[i].part.centre), 0.0, 1.0);
    };
    std::stable_sort(setOns.begin(), setOns.end(), [&](auto a, auto b) { return shareOf(a) < shareOf(b); });
    double done = 0;
    for (std::size_t i = 0; i < setOns.size(); ++i) {
        const double share = shareOf(setOns[i]);
        const double next = i + 1 < setOns.size() ? shareOf(setOns[i + 1]) : 1 + (1 - share);
        Part& foot = knots_[setOns[i]].part;
        const double wanted = std::max(foot.ends[2].size.outer, 10.0) * 0.6 / whole.length();
        const double half = std::max(0.0, std::min({wanted, (share - done) * 0.8, (next - share) * 0.4}));
        foot.ends[0] = whole.ends[0];
        foot.ends[1] = whole.ends[1];
        foot.ends[0].at = pointAlong(whole, share - half);
        foot.ends[1].at = pointAlong(whole, share + half);
        foot.ends[0].endType = foot.ends[1].endType = "BW";
        foot.centre = pointAlong(whole, share);
        if (half * whole.length() <= shortestLength) {
            continue;  // at an end of the pipe: it lies between that and what meets it there
        }
        Knot rest{whole, {}};
        rest.part.ends[0].at = foot.ends[1].at;
        rest.part.isSynthetic = true;
        Part& before = i == 0 || done == 0 ? knots_[pipe].part : knots_.back().part;
        before.ends[1].at = foot.ends[0].at;
        knots_.push_back(std::move(rest));
        done = share + half;
    }
}

// -------------------------------------------------------------------------------------------------------- joining

bool Network::isLengthless(const Part& part) const {
    return part.length() <= joinTolerance && part.kind->form != Form::Turned && part.kind->form != Form::Branched;
}

void Network::join(Mate a, Mate b) {
    knots_[a.part].mates[a.slot] = b;
    knots_[b.part].mates[b.slot] = a;
}

// Groups of ends at one place, each told once.
void Network::joinEnds() {
    PlaceIndex places(2 * joinTolerance);
    std::vector<Mate> ends;
    for (std::uint32_t i = 0; i < knots_.size(); ++i) {
        for (std::uint8_t slot = 0; slot < 4; ++slot) {
            if (knots_[i].part.ends[slot].isThere || (slot < 2 && knots_[i].part.kind->form == Form::SetOn)) {
                knots_[i].part.ends[slot].isThere = true;
                places.add(knots_[i].part.ends[slot].at, static_cast<std::uint32_t>(ends.size()));
                ends.push_back({i, slot});
            }
        }
    }
    std::vector<bool> done(ends.size());
    for (std::uint32_t i = 0; i < ends.size(); ++i) {
        if (done[i]) {
            continue;
        }
        std::vector<std::uint32_t> here;
        places.near(endOf(ends[i]).at, [&](std::uint32_t other) {
            if (!done[other] && endOf(ends[other]).at.distanceTo(endOf(ends[i]).at) <= joinTolerance) {
                done[other] = true;
                here.push_back(other);
            }
        });
        std::sort(here.begin(), here.end());
        std::vector<Mate> group;
        std::transform(here.begin(), here.end(), std::back_inserter(group), [&](std::uint32_t at) { return ends[at]; });
        joinPlace(group);
    }
}

// Joins the ends at one place.
void Network::joinPlace(const std::vector<Mate>& ends) {
    std::vector<Mate> solid;
    std::vector<std::uint32_t> lengthless;
    for (const Mate& end : ends) {
        if (end.slot > 1 || !isLengthless(knots_[end.part].part)) {
            solid.push_back(end);
        } else if (end.slot == 0) {
            lengthless.push_back(end.part);
        }
    }
    if (solid.size() > 2) {
        pairSolid(solid);
    }
    thread(solid, lengthless);
}

// Where more than two ends meet, those that look at each other belong together, of one bore rather than of two. Leaves
// the pair whose file order comes first, for what lies between; the others are joined or told.
void Network::pairSolid(std::vector<Mate>& solid) {
    std::vector<Mate> left = solid;
    std::vector<std::pair<Mate, Mate>> pairs;
    while (left.size() > 1) {
        std::size_t best = 1;
        double bestScore = -10;
        for (std::size_t i = 1; i < left.size(); ++i) {
            const double facing = -outward(knots_[left[0].part].part, left[0].slot)
                                       .dotProduct(outward(knots_[left[i].part].part, left[i].slot));
            const bool sameBore = endOf(left[0]).size.dn == endOf(left[i]).size.dn;
            const bool sameLine = knots_[left[0].part].part.pipeline == knots_[left[i].part].part.pipeline;
            const bool samePart = left[0].part == left[i].part;
            const double score = facing + (sameBore ? 0.5 : 0) + (sameLine ? 0.25 : 0) - (samePart ? 5 : 0);
            if (score > bestScore) {
                bestScore = score;
                best = i;
            }
        }
        pairs.emplace_back(left[0], left[best]);
        left.erase(left.begin() + static_cast<std::ptrdiff_t>(best));
        left.erase(left.begin());
    }
    for (const Mate& alone : left) {
        tell("pcf.ends-meet", SourceGrade::Note, knots_[alone.part].part,
             "more ends meet at one of its ends than belong together; it stays open there");
    }
    solid = {pairs.front().first, pairs.front().second};
    for (std::size_t i = 1; i < pairs.size(); ++i) {
        join(pairs[i].first, pairs[i].second);
    }
}

// One end, the parts of no length one behind the other, the other end. A part of two bores lies so that they fit.
void Network::thread(std::vector<Mate>& solid, const std::vector<std::uint32_t>& lengthless) {
    Mate last = solid.empty() ? Mate{} : solid.front();
    for (const std::uint32_t part : lengthless) {
        const Part& between = knots_[part].part;
        const double dn = last.isThere() ? endOf(last).size.dn : 0;
        const bool turned = dn > 0 && between.ends[0].size.dn != dn && between.ends[1].size.dn == dn;
        const std::uint8_t in = turned ? 1 : 0;
        if (last.isThere()) {
            join(last, {part, in});
        }
        last = {part, otherEnd(in)};
    }
    if (solid.size() > 1) {
        join(last, solid.back());
    }
}

bool Network::isTold(const Part& part, const HxGePoint3D& at) const {
    const std::vector<HxGePoint3D>& told = pipelines_[part.pipeline]->told;
    return std::any_of(told.begin(), told.end(),
                       [&](const HxGePoint3D& one) { return one.distanceTo(at) <= gapTolerance; });
}

// Ends that nearly meet, of neighbours in one pipeline.
void Network::closeGaps() {
    PlaceIndex open(gapTolerance);
    std::vector<Mate> ends;
    for (std::uint32_t i = 0; i < knots_.size(); ++i) {
        for (std::uint8_t slot = 0; slot < 4; ++slot) {
            if (knots_[i].part.ends[slot].isThere && !knots_[i].mates[slot].isThere()) {
                open.add(knots_[i].part.ends[slot].at, static_cast<std::uint32_t>(ends.size()));
                ends.push_back({i, slot});
            }
        }
    }
    for (const Mate& end : ends) {
        Mate best;
        double bestGap = gapTolerance;
        const auto consider = [&](std::uint32_t number) {
            const Mate& other = ends[number];
            const double gap = endOf(other).at.distanceTo(endOf(end).at);
            const bool fits = other.part != end.part && !knots_[other.part].mates[other.slot].isThere() &&
                              knots_[other.part].part.pipeline == knots_[end.part].part.pipeline;
            const bool isBetter = gap < bestGap || (gap == bestGap && best.isThere() && other.part < best.part);
            if (fits && isBetter) {
                bestGap = gap;
                best = other;
            }
        };
        if (knots_[end.part].mates[end.slot].isThere()) {
            continue;
        }
        open.near(endOf(end).at, consider);
        if (best.isThere()) {
            const HxGeVector3D out = outward(knots_[end.part].part, end.slot);
            const bool apart = (endOf(best).at - endOf(end).at).dotProduct(out) >= 0;
            tell("pcf.gap", SourceGrade::Note, knots_[end.part].part,
                 fmt::format("{} of {:.2f} mm to the next part (tolerance {} mm); joined",
                             apart ? "a gap" : "an overlap", bestGap, joinTolerance));
            join(end, best);
        }
    }
}

// ------------------------------------------------------------------------------------------------- sizes and lengths

// A bore that is not told is that of the other end of the part, or of what hangs there.
void Network::spreadSizes() {
    std::vector<Mate> known;
    for (std::uint32_t i = 0; i < knots_.size(); ++i) {
        for (std::uint8_t slot = 0; slot < 4; ++slot) {
            if (knots_[i].part.ends[slot].size.dn > 0) {
                known.push_back({i, slot});
            }
        }
    }
    for (std::size_t at = 0; at < known.size(); ++at) {
        const Mate from = known[at];
        const standards::PipeSize size = endOf(from).size;
        const Mate beside[] = {knots_[from.part].mates[from.slot],
                               from.slot < 2 ? Mate{from.part, otherEnd(from.slot)} : Mate{}};
        for (const Mate& to : beside) {
            if (to.isThere() && endOf(to).isThere && endOf(to).size.dn == 0) {
                knots_[to.part].part.ends[to.slot].size = size;
                known.push_back(to);
            }
        }
    }
}

// Shortens a pipe at one end, when enough of it is left.
bool Network::takeLength(std::uint32_t part, std::uint8_t slot, double length) {
    Part& pipe = knots_[part].part;
    if (!pipe.isPipe() || pipe.length() < 2 * length) {
        return false;
    }
    pipe.ends[slot].at += outward(pipe, slot) * -length;
    return true;
}

// A part that has a shape but no length takes one from a pipe beside it: without, it would have no direction.
void Network::giveLengths() {
    for (std::uint32_t i = 0; i < knots_.size(); ++i) {
        Part& part = knots_[i].part;
        if (part.kind->form == Form::Turned || part.length() > shortestLength) {
            continue;
        }
        const bool isWeld = part.kind->form == Form::Weld;
        const double usual = std::max({part.ends[0].size.outer, part.ends[1].size.outer, 20.0}) * 0.5;
        const double wanted = isWeld ? weldLength : usual;
        bool given = false;
        for (std::uint8_t slot = 0; slot < 2 && !given; ++slot) {
            const Mate beside = knots_[i].mates[slot];
            for (double length = wanted; beside.isThere() && !given && length > 1; length /= 2) {
                given = takeLength(beside.part, beside.slot, length);
            }
            if (given) {
                part.ends[slot].at = endOf(beside).at;
                part.centre.reset();
            }
        }
        if (isWeld) {
            continue;  // welds have none in any file
        }
        tell("pcf.no-length", SourceGrade::Note, part,
             given ? fmt::format("has no length; {:.1f} mm of the pipe beside it are taken for it", part.length())
                   : "has no length, and no pipe beside it has one to spare");
    }
}

// Caps and blind flanges of one end go on behind it, away from what they close.
void Network::giveSecondEnds() {
    for (Knot& knot : knots_) {
        Part& part = knot.part;
        if (part.kind->form != Form::Closing || part.ends[1].isThere || !knot.mates[0].isThere()) {
            continue;
        }
        const Mate mate = knot.mates[0];
        const bool isFlange = part.type->item == "FLANGE";
        const standards::PipeSize& size = part.ends[0].size;
        part.ends[1] = part.ends[0];
        part.ends[1].at += outward(knots_[mate.part].part, mate.slot) *
                           std::max(isFlange ? size.flangeThickness : size.outer / 2, shortestClosing);
    }
}

// --------------------------------------------------------------------------------------------------------- chains

// The step before a step: what hangs at the slot by which it is entered, when one goes through that part's run.
Mate Network::before(const Step& step) const {
    const Mate mate = knots_[step.part].mates[step.from];
    const bool goesOn =
        mate.isThere() && mate.slot < 2 && knots_[mate.part].part.pipeline == knots_[step.part].part.pipeline;
    return goesOn ? mate : Mate{};
}

Chain Network::chainThrough(std::uint32_t part, std::vector<bool>& met) const {
    Step first{part, 0};
    for (Mate mate = before(first); mate.isThere() && mate.part != part && !met[mate.part]; mate = before(first)) {
        first = {mate.part, otherEnd(mate.slot)};
    }
    Chain chain;
    for (Step step = first; !met[step.part];) {
        met[step.part] = true;
        chain.push_back(step);
        const Mate next = before({step.part, otherEnd(step.from)});
        if (!next.isThere()) {
            break;
        }
        step = {next.part, next.slot};
    }
    return chain;
}

// Flow runs as the file goes; a part alone flows away from what it branches off.
void Network::orient(Chain& chain) const {
    std::ptrdiff_t rising = 0;
    for (std::size_t i = 1; i < chain.size(); ++i) {
        const std::size_t a = knots_[chain[i - 1].part].part.order;
        const std::size_t b = knots_[chain[i].part].part.order;
        rising += a < b ? 1 : a > b ? -1 : 0;
    }
    const Step& last = chain.back();
    const bool endsAtBranch = knots_[last.part].mates[otherEnd(last.from)].slot >= 2;
    if (rising < 0 || (rising == 0 && endsAtBranch)) {
        std::reverse(chain.begin(), chain.end());
        for (Step& step : chain) {
            step.from = otherEnd(step.from);
        }
    }
}

void Network::findChains() {
    chains_.resize(pipelines_.size());
    std::vector<bool> met(knots_.size());
    for (std::uint32_t i = 0; i < knots_.size(); ++i) {
        if (!met[i]) {
            Chain chain = chainThrough(i, met);
            orient(chain);
            chains_[knots_[i].part.pipeline].push_back(std::move(chain));
        }
    }
}

}  // namespace plant::pcf
