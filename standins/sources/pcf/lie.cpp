// How a part lies in its chain: which end is point 1, where the flow enters, what its ends are.
#include "sources/pcf/plant_teller.h"

#include <algorithm>

namespace plant::pcf {

namespace {

struct NumberRow {
    std::string_view smrtln;
    PointNumbers numbers;
};
constexpr PointNumbers straightNumbers{0, {1, 2, 3, 4}};
constexpr NumberRow numberRows[] = {
    {"Pipe", {-1, {1, 2, 3, 4}}}, {"Ecc", {-1, {1, 2, 5, 6}}}, {"Arc", {0, {1, 3, 4, 5}}},
    {"Angle", {0, {1, 3, 4, 5}}}, {"Y", {0, {1, 3, 4, 5}}},
};

PointNumbers numbersOf(const std::string& smrtln) {
    const auto at = std::find_if(std::begin(numberRows), std::end(numberRows),
                                 [&](const NumberRow& row) { return row.smrtln == smrtln; });
    return at == std::end(numberRows) ? straightNumbers : at->numbers;
}

std::uint8_t other(std::uint8_t slot) {
    return slot == 0 ? 1 : 0;
}

// Types of flanges by the ends that are welded or screwed to the pipe.
std::string_view neckOf(const standards::PartType& type) {
    struct Row {
        std::string_view itype;
        std::string_view end;
    };
    constexpr Row rows[] = {{"SO", "SW"}, {"SW", "SW"}, {"THD", "THD"}, {"BLIND", "NONE"}};
    const auto at =
        std::find_if(std::begin(rows), std::end(rows), [&](const Row& row) { return row.itype == type.itype; });
    return at == std::end(rows) ? "BW" : at->end;
}

}  // namespace

bool PlantTeller::endsInFlange(const Part& part, std::string_view endType) const {
    return part.type->item == "GASK" || part.type->item == "FLANGE" || endType.starts_with("FL");
}

// The side of a gasket or of another flange; else the side that the file calls one; else the first.
std::uint8_t PlantTeller::flangeFace(std::uint32_t index) const {
    const Knot& knot = network_->knots()[index];
    for (const std::uint8_t slot : {0, 1}) {
        const Mate mate = knot.mates[slot];
        if (mate.isThere()) {
            const Part& beside = network_->knots()[mate.part].part;
            if (!beside.isPipe() && endsInFlange(beside, beside.ends[mate.slot].endType)) {
                return slot;
            }
        }
    }
    for (const std::uint8_t slot : {0, 1}) {
        const Mate mate = knot.mates[slot];
        const Form form = mate.isThere() ? network_->knots()[mate.part].part.kind->form : Form::Straight;
        const bool isFixed = mate.isThere() && (network_->knots()[mate.part].part.isPipe() || form == Form::Weld ||
                                                form == Form::Turned || form == Form::Branched);
        if (isFixed) {
            return other(slot);
        }
    }
    return 0;
}

std::string_view PlantTeller::endTypeOf(std::uint32_t index, std::uint8_t slot) const {
    const Knot& knot = network_->knots()[index];
    const Part& part = knot.part;
    if (part.type->item == "FLANGE") {
        return slot == flangeFace(index) ? "FLRF" : neckOf(*part.type);
    }
    if (part.type->item == "GASK") {
        return "FLRF";
    }
    if (part.kind->form == Form::Closing && slot == (knot.mates[1].isThere() && !knot.mates[0].isThere() ? 0 : 1)) {
        return "NONE";
    }
    if (!part.ends[slot].endType.empty() && !part.isPipe()) {
        return part.ends[slot].endType;
    }
    const Mate mate = knot.mates[slot];
    if (part.isPipe() && mate.isThere()) {
        const std::string_view beside = network_->knots()[mate.part].part.ends[mate.slot].endType;
        return beside == "SW" || beside == "THD" ? beside : "BW";
    }
    return "BW";
}

HxGeVector3D PlantTeller::acrossOf(const Part& part) const {
    const HxGeVector3D run = (part.ends[1].at - part.ends[0].at).normal();
    for (const std::string_view key : {"SPINDLE-DIRECTION", "FLAT-DIRECTION"}) {
        const auto told = directionOf(part.record->valueOf(key));
        if (told && !told->isParallelTo(run)) {
            return (*told - run * told->dotProduct(run)).normal();
        }
    }
    const HxGeVector3D up(0, 0, 1);
    const HxGeVector3D level = up - run * up.dotProduct(run);
    return level.length() > 0.1 ? level.normal() : HxGeVector3D(0, 1, 0);
}

// The offset is what the ends are apart across the axis of the wide one.
void PlantTeller::findOffset(const Part& part, std::uint32_t index, Lie& lie) const {
    constexpr double smallestOffset = 0.05;
    const HxGeVector3D way = part.ends[other(lie.first)].at - part.ends[lie.first].at;
    HxGeVector3D axis;
    for (const std::uint8_t slot : {lie.first, other(lie.first)}) {
        const Mate mate = network_->knots()[index].mates[slot];
        const HxGeVector3D out = mate.isThere() ? outward(network_->knots()[mate.part].part, mate.slot) : axis;
        if (!out.isZeroLength() && axis.isZeroLength()) {
            axis = slot == lie.first ? out : -out;
        }
    }
    if (axis.isZeroLength()) {
        const auto flat = directionOf(part.record->valueOf("FLAT-DIRECTION"));
        axis = flat ? (way - *flat * way.dotProduct(*flat)).normal() : way.normal();
    }
    const HxGeVector3D offset = way - axis * way.dotProduct(axis);
    lie.offset = offset.length() > smallestOffset ? offset.normal() : HxGeVector3D();
}

PlantTeller::Lie PlantTeller::lieOf(std::uint32_t index) const {
    const Knot& knot = network_->knots()[index];
    const Part& part = knot.part;
    Lie lie;
    lie.in = inSlot_[index];
    lie.first = lie.in;
    if (part.type->item == "FLANGE") {
        lie.first = flangeFace(index);
    } else if (part.kind->form == Form::Closing) {
        lie.first = knot.mates[1].isThere() && !knot.mates[0].isThere() ? 1 : 0;
    } else if (part.ends[0].size.dn != part.ends[1].size.dn) {
        lie.first = part.ends[0].size.dn > part.ends[1].size.dn ? 0 : 1;
    }
    lie.type = part.type;
    if (part.type->smrtln == "Ecc") {
        findOffset(part, index, lie);
        lie.type = lie.offset.isZeroLength() ? settings_->types.find("REDUCER-CONCENTRIC", {}) : part.type;
    }
    lie.numbers = numbersOf(lie.type->smrtln);
    for (const std::uint8_t slot : {0, 1, 2, 3}) {
        lie.ends[slot] = endTypeOf(index, slot);
    }
    lie.across = acrossOf(part);
    return lie;
}

// What branches off flows away from the run unless its own chain ends here.
int PlantTeller::flowAt(std::uint32_t index, std::uint8_t slot, const Lie& lie) const {
    if (slot < 2) {
        return slot == lie.in ? 1 : 2;
    }
    const Mate mate = network_->knots()[index].mates[slot];
    return mate.isThere() && mate.slot < 2 && inSlot_[mate.part] != mate.slot ? 1 : 2;
}

}  // namespace plant::pcf
