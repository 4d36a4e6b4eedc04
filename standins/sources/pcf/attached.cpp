// What hangs on a line and is no part of its run: bolts on flanges, supports under pipes.
#include "sources/pcf/plant_teller.h"
#include "sources/pcf/shapes.h"

#include <algorithm>
#include <cmath>
#include <fmt/core.h>

namespace plant::pcf {

namespace {

constexpr std::int64_t mostBolts = 1000;

double valueOf(const Record& record, std::string_view key, double unit, double otherwise) {
    const std::optional<double> value = numberOf(record.valueOf(key));
    return value && *value > 0 ? *value * unit : otherwise;
}

// The point of a piece that is nearest to another.
HxGePoint3D footOn(const Part& pipe, const HxGePoint3D& at) {
    const HxGeVector3D way = pipe.ends[1].at - pipe.ends[0].at;
    const double share = way.lengthSqrd() > 0 ? (at - pipe.ends[0].at).dotProduct(way) / way.lengthSqrd() : 0;
    return pipe.ends[0].at + way * std::clamp(share, 0.0, 1.0);
}

}  // namespace

void PlantTeller::indexPlaces() {
    for (std::uint32_t i = 0; i < network_->knots().size(); ++i) {
        const Part& part = network_->knots()[i].part;
        if (part.type->item == "FLANGE") {
            faces_.add(part.ends[flangeFace(i)].at, i);
        } else if (part.isPipe()) {
            pipes_.addAlong(part.ends[0].at, part.ends[1].at, i);
        }
    }
}

// The flange of the line whose face is nearest and has no bolts yet.
std::optional<std::uint32_t> PlantTeller::flangeAt(const Line& line, const HxGePoint3D& at) const {
    std::optional<std::uint32_t> best;
    double nearest = boltReach;
    faces_.near(at, [&](std::uint32_t index) {
        const Part& part = network_->knots()[index].part;
        const double distance = part.ends[flangeFace(index)].at.distanceTo(at);
        const bool fits = part.pipeline == line.number && boltIds_[index] == 0;
        if (fits && (distance < nearest || (distance == nearest && best && index < *best))) {
            nearest = distance;
            best = index;
        }
    });
    return best;
}

// Bolts are told before the parts, which refer to them.
void PlantTeller::tellBolts(const Line& line) {
    for (const Placed& placed : line.pipeline->bolts) {
        const Record& record = *placed.record;
        const std::optional<std::uint32_t> index = flangeAt(line, placed.at);
        if (!index) {
            note("pcf.bolts-without-flange", SourceGrade::Loss, *line.file, record.line,
                 "BOLT: no flange without bolts stands at its place; left out");
            continue;
        }
        const Part& flange = network_->knots()[*index].part;
        const std::uint8_t face = flangeFace(*index);
        const standards::PipeSize& size = flange.ends[face].size;
        const double wanted = valueOf(record, "BOLT-QUANTITY", 1, std::max(size.bolts, 4));
        const auto count = static_cast<std::int64_t>(std::min(wanted, static_cast<double>(mostBolts)));
        const double diameter = valueOf(record, "BOLT-DIA", line.file->units.boltDiameter, size.bolt);
        const double length =
            valueOf(record, "BOLT-LENGTH", line.file->units.boltLength, 2 * (size.flangeThickness + diameter));
        const Library::BoltIds ids =
            library_->bolts({std::round(diameter * 10) / 10, std::round(length), count, size.dn});
        boltIds_[*index] = builder_->newId();
        builder_->beginObject(boltIds_[*index], "HxDbBoltNutModel");
        builder_->reference(ReferenceMember::Owner, line.id);
        builder_->reference(ReferenceMember::Bolt, ids.bolt);
        builder_->reference(ReferenceMember::Nut, ids.nut);
        builder_->reference(ReferenceMember::Flange, ids.flange);
        tellMembers(record);
        standards::PipeSize drawn = size;
        drawn.bolt = diameter;
        tellBoltShape(flange.ends[face].at, outward(flange, face), drawn, static_cast<int>(count), *builder_);
        builder_->endObject();
    }
}

void PlantTeller::tellSupports(const Line& line) {
    if (line.pipeline->supports.empty()) {
        return;
    }
    const ObjectId manager = builder_->newId();
    builder_->beginObject(manager, "HextSupport");
    builder_->parent(line.zone);
    builder_->name(line.name + "-SUPPORTS");
    builder_->endObject();
    std::size_t number = 0;
    for (const Placed& support : line.pipeline->supports) {
        tellSupport(line, support, manager, ++number);
    }
}

// A pipe of the line that the support stands at: the nearest whose surface is within reach.
std::optional<std::uint32_t> PlantTeller::pipeAt(const Line& line, const HxGePoint3D& at) const {
    constexpr double reachBeyond = 50;
    std::optional<std::uint32_t> best;
    double nearest = 0;
    pipes_.near(at, [&](std::uint32_t index) {
        const Part& part = network_->knots()[index].part;
        const double distance = footOn(part, at).distanceTo(at);
        const bool fits = part.pipeline == line.number && distance <= part.ends[0].size.outer + reachBeyond;
        if (fits && (!best || distance < nearest || (distance == nearest && index < *best))) {
            nearest = distance;
            best = index;
        }
    });
    return best;
}

void PlantTeller::tellSupport(const Line& line, const Placed& support, ObjectId manager, std::size_t number) {
    const Record& record = *support.record;
    std::string_view type = record.valueOf("SKEY");
    type = type.empty() ? std::string_view("SUPPORT") : type;
    const ObjectId item = library_->supportItem(std::string(type));
    std::string_view name = record.valueOf("NAME");
    name = name.empty() ? record.valueOf("SUPPORT_NAME") : name;
    const std::optional<std::uint32_t> pipe = pipeAt(line, support.at);
    const std::string no = std::to_string(number);
    builder_->beginObject(builder_->newId(), "HxDbSupportModel");
    builder_->parent(manager);
    builder_->name(name.empty() ? line.name + "-S" + no : std::string(name));
    builder_->text(TextMember::No, no);
    builder_->reference(ReferenceMember::SupItem, item);
    builder_->attribute("item", std::string_view("SUPPORT"));
    builder_->attribute("itype", type);
    builder_->attribute("smrtln", std::string_view("Normal"));
    if (pipe) {
        const std::string size = fmt::format("{}", network_->knots()[*pipe].part.ends[0].size.dn);
        builder_->attribute("size", std::string_view(size));
        builder_->attribute("size1", std::string_view(size));
    } else {
        note("pcf.support-without-pipe", SourceGrade::Note, *line.file, record.line,
             "SUPPORT: no pipe of its line is near; it stands alone");
    }
    tellMembers(record);
    tellPoint(1, support.at, 0, pipe ? Mate{*pipe, 0} : Mate{});
    builder_->shape();
    if (pipe) {
        tellSupportShape(network_->knots()[*pipe].part, support.at, *builder_);
    }
    builder_->endObject();
}

}  // namespace plant::pcf
