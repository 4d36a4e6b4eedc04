// The parts of all pipelines as one network: which end meets which.
//
// Files say where parts end, not what hangs where. Ends that stand within `joinTolerance` of each other meet. Parts of
// no length (welds, reducers and gaskets of some producers) lie between the two ends that meet at their place. What
// stands on a pipe that runs through parts the pipe. Ends that nearly meet are joined and told as a gap or an overlap,
// with its size.
#pragma once

#include "sources/pcf/parts.h"

#include <cstdint>
#include <vector>

namespace plant::pcf {

inline constexpr double joinTolerance = 0.5;  // millimetres
inline constexpr double gapTolerance = 12;

struct Mate {
    static constexpr std::uint32_t none = 0xFFFFFFFF;
    std::uint32_t part = none;
    std::uint8_t slot = 0;
    bool isThere() const { return part != none; }
};

struct Knot {
    Part part;
    Mate mates[4];
};

// A chain of parts through whose runs one goes, in order; `from` is the slot by which one enters.
struct Step {
    std::uint32_t part = 0;
    std::uint8_t from = 0;
};
using Chain = std::vector<Step>;

// The point of a run towards which an end looks away: its centre where it has one that is no end, else the other end.
HxGePoint3D innerPoint(const Part& part);
// Unit vector out of a slot's end; zero for a part of no length.
HxGeVector3D outward(const Part& part, std::uint8_t slot);

class Network {
public:
    // `files` outlive the network. Pipelines are numbered over all files, in their order.
    Network(const Files& files, SourceReport& report);

    // Does everything; to be called once.
    void build();
    const std::vector<Knot>& knots() const { return knots_; }
    // Chains of each pipeline in the order of its parts; every part stands in one.
    const std::vector<std::vector<Chain>>& chains() const { return chains_; }

private:
    void gather();
    void settleSetOns();
    void splitPipe(std::uint32_t pipe, std::vector<std::uint32_t>& setOns);
    bool findRun(std::uint32_t setOn, class PlaceIndex& pipes, std::uint32_t& pipe) const;
    void standAlone(Part& part);
    void joinEnds();
    void joinPlace(const std::vector<Mate>& ends);
    void pairSolid(std::vector<Mate>& solid);
    void thread(std::vector<Mate>& solid, const std::vector<std::uint32_t>& lengthless);
    void closeGaps();
    void join(Mate a, Mate b);
    void spreadSizes();
    void giveLengths();
    bool takeLength(std::uint32_t part, std::uint8_t slot, double length);
    void giveSecondEnds();
    void findChains();
    Chain chainThrough(std::uint32_t part, std::vector<bool>& met) const;
    Mate before(const Step& step) const;
    void orient(Chain& chain) const;
    bool isLengthless(const Part& part) const;
    const End& endOf(const Mate& mate) const { return knots_[mate.part].part.ends[mate.slot]; }
    void tell(const char* code, SourceGrade grade, const Part& part, const std::string& text);
    bool isTold(const Part& part, const HxGePoint3D& at) const;

    const Files* files_;
    SourceReport* report_;
    std::vector<const File*> fileOf_;  // by number of pipeline
    std::vector<const Pipeline*> pipelines_;
    std::vector<Knot> knots_;
    std::vector<std::vector<Chain>> chains_;
};

}  // namespace plant::pcf
