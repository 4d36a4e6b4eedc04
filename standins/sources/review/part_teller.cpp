#include "sources/review/part_teller.h"

#include "sources/attributes/values.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace plant::review {

namespace {

// Ends that coincide give a part no direction: it is told this much longer, in millimetres.
constexpr double leastPassage = 0.02;
constexpr double clearAngle = 1e-3;
constexpr double steepElbow = 67.5;

bool isFlanged(std::string_view end) {
    return end.starts_with("FL");
}

bool hasOutlet(const PartRow& row) {
    return row.smrtln == "Tee" || row.smrtln == "Cross" || row.kind == PartKind::Olet;
}

}  // namespace

std::string shortNumber(double number) {
    char text[64];
    std::snprintf(text, sizeof text, "%.3f", number);
    std::string shortest(text);
    shortest.erase(shortest.find_last_not_of('0') + 1);
    if (shortest.back() == '.') {
        shortest.pop_back();
    }
    return shortest;
}

void PartTeller::prepare(const Part& part, const Line& line) {
    part_ = &part;
    line_ = &line;
    points_.clear();
    isEccentric_ = false;
    composeItem();
    composeReducer();
    composePoints();
    composeEnds();
    const std::string_view own =
        specificationName(part.item->isTube() ? part.item->specification : part.facts[Key::SpecificationPart]);
    const std::string_view name = own.empty() ? std::string_view(line.specification) : own;
    specification_ = part.row->className == "HxDbTubeWeld" ? 0 : specifications_->idOf(decoder_.decode(name), ends_);
}

// What kind of part it is, as far as its texts and sizes say.
void PartTeller::composeItem() {
    const Facts& facts = part_->facts;
    item_ = part_->row->item;
    itype_ = part_->row->itype;
    smrtln_ = part_->row->smrtln;
    const auto angle = attributes::readMeasure(facts[Key::Angle]);
    if (item_ == "ELBOW" && angle && angle->value < steepElbow) {
        itype_ = "45LR";
    }
    if (part_->row->kind == PartKind::Valve && smrtln_ == "Normal") {
        for (const std::string_view text :
             {facts[Key::DetailText], facts[Key::Description], facts[Key::SpecificationPart]}) {
            if (const std::string_view type = valveTypeOf(text); !type.empty()) {
                itype_ = type;
                break;
            }
        }
    }
}

// Eccentric when the ends do not stand on one line with the way in.
void PartTeller::composeReducer() {
    if (item_ != "CRED" || !part_->item->isPlaced) {
        return;
    }
    const Vector through = part_->item->to - part_->item->from;
    const Vector along = part_->in.isZeroLength() ? part_->out : part_->in;
    isEccentric_ = !along.isZeroLength() && !through.isZeroLength() &&
                   along.crossProduct(through.normal()).length() > clearAngle && through.dotProduct(along) > samePlace;
    if (isEccentric_) {
        item_ = "ERED";
        smrtln_ = "Ecc";
    }
}

std::int16_t PartTeller::ownNumber(std::uint8_t number) const {
    constexpr std::uint8_t lastOfTee = 3;
    const std::uint8_t other = number == part_->item->arrive ? part_->item->leave : part_->item->arrive;
    const bool isLower = number < other;
    if (part_->row->ports == Ports::Bent) {
        return isLower ? 1 : 3;
    }
    const bool isOfTee = hasOutlet(*part_->row) && number <= lastOfTee && other <= lastOfTee;
    return isOfTee ? number : isLower ? std::int16_t{1} : std::int16_t{2};
}

PartTeller::PlacedPoint& PartTeller::point(std::int16_t no, const Point& at, std::int8_t flow) {
    return points_.emplace_back(PlacedPoint{no, at, flow, {}});
}

void PartTeller::connect(PlacedPoint& point, End end) const {
    const auto add = [&](ObjectId id) {
        if (id != 0 && id != part_->item->id && std::find(point.to.begin(), point.to.end(), id) == point.to.end()) {
            point.to.push_back(id);
        }
    };
    add(end == End::Arrive ? part_->before : end == End::Leave ? part_->behind : 0);
    for (const Link& link : piping_->linksOf(part_->item->id)) {
        if (link.end == end) {
            add(link.to);
        }
    }
}

// The way through the part, of length 1: where its ends coincide, that of the branch.
Vector PartTeller::through() const {
    const Vector own = part_->item->to - part_->item->from;
    if (own.length() >= leastPassage) {
        return own.normal();
    }
    const Vector along = part_->in.isZeroLength() ? part_->out : part_->in;
    return along.isZeroLength() ? Vector::kXAxis : along;
}

void PartTeller::addPassage(Point from, Point to) {
    if (from.distanceTo(to) < leastPassage) {
        const Vector half = through() * (leastPassage / 2);
        from = from - half;
        to = to + half;
    }
    connect(point(ownNumber(part_->item->arrive), from, 1), End::Arrive);
    connect(point(ownNumber(part_->item->leave), to, 2), End::Leave);
}

// Where the branch stands that hangs at the part; without one, across its passage.
Point PartTeller::outletPlace(Point center) const {
    for (const Link& link : piping_->linksOf(part_->item->id)) {
        if (link.end == End::Outlet && link.hasPlace && link.place.distanceTo(center) > samePlace) {
            return link.place;
        }
    }
    const double reach = std::max(part_->item->from.distanceTo(part_->item->to) / 2, 1.0);
    return center + through().perpVector().normal() * reach;
}

void PartTeller::addOutlet() {
    // The third of the numbers 1, 2 and 3.
    const int outlet = 6 - ownNumber(part_->item->arrive) - ownNumber(part_->item->leave);
    const Point center = points_.front().at;
    connect(point(static_cast<std::int16_t>(outlet), outletPlace(center), 2), End::Outlet);
    if (smrtln_ == "Cross") {
        const Vector back = center - points_.back().at;
        point(4, center + back, 2);
    }
}

// On the axis of either end, half way.
void PartTeller::addEccentricPoints() {
    const Vector along = part_->in.isZeroLength() ? part_->out : part_->in;
    const Vector half = along * ((part_->item->to - part_->item->from).dotProduct(along) / 2);
    const bool isForward = ownNumber(part_->item->arrive) == 1;
    point(isForward ? 3 : 4, part_->item->from + half, 0);
    point(isForward ? 4 : 3, part_->item->to - half, 0);
}

void PartTeller::composePoints() {
    const Item& item = *part_->item;
    if (!item.isPlaced) {
        return;
    }
    const std::optional<Point> told = attributes::readPosition(part_->facts[Key::Position]);
    if (!item.isTube() && !isEccentric_ && part_->row->smrtln != "Pipe") {
        point(0, told ? *told : item.from + (item.to - item.from) / 2, 0);
    }
    addPassage(item.from, item.to);
    if (hasOutlet(*part_->row)) {
        addOutlet();
    }
    if (isEccentric_) {
        addEccentricPoints();
    }
}

double PartTeller::outletBore() const {
    const auto bore = attributes::readBore(part_->facts[Key::Bore]);
    return bore && *bore > 0 ? *bore : part_->item->boreIn;
}

// By our numbers of points. A flange turns its face to what is flanged.
void PartTeller::composeEnds() {
    const Item& item = *part_->item;
    const std::string in = item.boreIn > 0 ? shortNumber(item.boreIn) : "";
    const std::string out = item.boreOut > 0 ? shortNumber(item.boreOut) : in;
    const bool isArriveFirst = item.arrive <= item.leave;
    ends_.count = part_->row->ports == Ports::Bent || hasOutlet(*part_->row) ? 3 : 2;
    ends_.sizes = {isArriveFirst ? in : out, isArriveFirst ? out : in, out, out};
    if (hasOutlet(*part_->row)) {
        ends_.sizes[2] = shortNumber(outletBore());
    }
    ends_.types = {part_->row->ends[0], part_->row->ends[1], part_->row->ends[2], {}};
    const bool isFaced = isFlanged(ends_.types[0]) && !isFlanged(ends_.types[1]);
    const bool faceBehind = part_->isFlangedBehind && !part_->isFlangedBefore;
    if (isFaced && faceBehind == isArriveFirst) {
        std::swap(ends_.types[0], ends_.types[1]);
    }
}

void PartTeller::tellMembers() {
    if (part_->row->kind != PartKind::Default) {
        builder_->kind(part_->row->kind);
    }
    if (specification_ != 0) {
        builder_->reference(ReferenceMember::Spec, specification_);
    }
    if (!line_->insulation.empty()) {
        builder_->insulation({.thickness = 0, .code = std::string_view(line_->insulation)});
    }
    const auto orientation = attributes::readOrientation(part_->facts[Key::Orientation]);
    const bool isTurned = part_->row->className == "HxDbTubeModelSpec" && orientation.has_value();
    if (isTurned && part_->item->isPlaced) {
        const Vector through = (part_->item->to - part_->item->from).normal();
        const bool zIsAlong = orientation->z.crossProduct(through).length() < clearAngle;
        const Vector& axis = zIsAlong ? orientation->y : orientation->z;
        builder_->vector(VectorMember::RefVec, {axis.x, axis.y, axis.z});
    }
}

void PartTeller::tellAttributes() {
    const auto tell = [&](std::string_view key, std::string_view text) {
        if (!text.empty()) {
            builder_->attribute(key, decoder_.decode(text));
        }
    };
    constexpr std::array<std::string_view, 3> endKeys = {"end1", "end2", "end3"};
    constexpr std::array<std::string_view, 3> sizeKeys = {"size1", "size2", "size3"};
    const Facts& facts = part_->facts;
    tell("item", item_);
    tell("itype", itype_);
    tell("smrtln", smrtln_);
    tell("module", line_->module);
    const std::string_view own = specificationName(facts[Key::SpecificationPart]);
    tell("specname", own.empty() ? std::string_view(line_->specification) : own);
    tell("specid", specification_ != 0 ? std::to_string(specification_) : std::string());
    for (std::size_t i = 0; i < ends_.count; ++i) {
        tell(endKeys[i], ends_.types[i]);
    }
    tell("size", part_->row->className == "HxDbTubeWeld" ? std::string_view(ends_.sizes[0]) : std::string_view());
    for (std::size_t i = 0; i < ends_.count; ++i) {
        tell(sizeKeys[i], ends_.sizes[i]);
    }
    const auto radius = attributes::readLength(facts[Key::Radius]);
    const bool isBent = part_->row->ports == Ports::Bent;
    if (isBent && radius && part_->item->boreIn > 0) {
        tell("radius", shortNumber(*radius / part_->item->boreIn));
    }
    const auto angle = attributes::readMeasure(facts[Key::Angle]);
    if (isBent && angle) {
        tell("angle", shortNumber(angle->value));
    }
    if (smrtln_ == "Pipe" && part_->item->isPlaced) {
        const std::string length = shortNumber(part_->item->from.distanceTo(part_->item->to));
        tell("length", length);
        tell("pipelength", length);
    }
    tell("material", facts[Key::MaterialText]);
    tell("name", facts[Key::DetailText]);
    tell("tag", part_->name);
    tell("mtype", part_->row->group);
    tell("lineno", std::to_string(line_->id));
    tell("insul", line_->insulation.empty() ? "0" : "1");
    tell("minsul", "0");
}

void PartTeller::tellPoints() {
    for (const PlacedPoint& one : points_) {
        builder_->point({.no = one.no, .at = {one.at.x, one.at.y, one.at.z}, .flow = one.flow, .to = one.to});
    }
}

}  // namespace plant::review
