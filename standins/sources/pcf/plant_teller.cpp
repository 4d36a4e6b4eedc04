#include "sources/pcf/plant_teller.h"

#include "sources/pcf/shapes.h"

#include <algorithm>
#include <fmt/core.h>

namespace plant::pcf {

namespace {

constexpr double degreesOfRadian = 57.29577951308232;

Triple triple(const HxGePoint3D& p) {
    return {p.x, p.y, p.z};
}
Triple triple(const HxGeVector3D& v) {
    return {v.x, v.y, v.z};
}

std::string number(double value) {
    return fmt::format("{}", value);
}

std::string_view headerValue(const Pipeline& pipeline, std::string_view key) {
    const std::string_view told = pipeline.record == nullptr ? std::string_view{} : pipeline.record->valueOf(key);
    if (!told.empty()) {
        return told;
    }
    const auto at = std::find_if(pipeline.header.begin(), pipeline.header.end(),
                                 [&](const Record* record) { return record->key == key; });
    return at == pipeline.header.end() ? std::string_view{} : (*at)->value;
}

// The first of several members that is there.
template <std::size_t Count>
std::string_view firstOf(const Record& record, const std::string_view (&keys)[Count]) {
    for (const std::string_view key : keys) {
        if (const std::string_view value = record.valueOf(key); !value.empty()) {
            return value;
        }
    }
    return {};
}

constexpr std::string_view tagKeys[] = {"TAG", "NAME", "SUPPORT_NAME", "COMPONENT-IDENTIFIER"};
constexpr std::string_view materialKeys[] = {"MATERIAL-IDENTIFIER", "ITEM-CODE"};

// A line without a specification still needs one, as its parts are picked from it.
constexpr std::string_view noSpecification = "NOSPEC";

// HEXT puts the slash before every name itself.
std::string nameOf(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of('/'), text.size()));
    return std::string(text);
}

bool isOff(std::string_view word) {
    return word == "OFF" || word == "off" || word == "Off";
}

}  // namespace

void PlantTeller::note(const char* code, SourceGrade grade, const File& file, std::uint32_t lineNumber,
                       std::string text) {
    report_->tell(code, grade, {file.name + ": line " + std::to_string(lineNumber), std::move(text)});
}

void PlantTeller::tell(ObjectId world, ModelBuilder& builder) {
    Library library(builder);
    builder_ = &builder;
    library_ = &library;
    giveIds();
    indexPlaces();
    std::size_t firstPipeline = 0;
    for (const File& file : *files_) {
        tellFile(file, firstPipeline, world);
        firstPipeline += file.pipelines.size();
    }
}

void PlantTeller::giveIds() {
    const std::vector<Knot>& knots = network_->knots();
    ids_.resize(knots.size());
    boltIds_.assign(knots.size(), 0);
    inSlot_.assign(knots.size(), 0);
    std::generate(ids_.begin(), ids_.end(), [this] { return builder_->newId(); });
    for (const std::vector<Chain>& chains : network_->chains()) {
        for (const Chain& chain : chains) {
            for (const Step& step : chain) {
                inSlot_[step.part] = step.from;
            }
        }
    }
}

void PlantTeller::tellFile(const File& file, std::size_t firstPipeline, ObjectId world) {
    const ObjectId site = builder_->newId();
    builder_->beginObject(site, "HextSite");
    builder_->parent(world);
    builder_->name(file.stem);
    for (const Record* record : file.header) {
        if (!record->key.empty()) {
            builder_->attribute(record->key, record->value);
        }
    }
    builder_->endObject();
    const ObjectId zone = builder_->newId();
    builder_->beginObject(zone, "HextZone");
    builder_->parent(site);
    builder_->name(file.stem + "-PIPING");
    builder_->endObject();
    for (std::size_t i = 0; i < file.pipelines.size(); ++i) {
        tellLine(lineOf(file, file.pipelines[i], firstPipeline + i, zone));
    }
}

PlantTeller::Line PlantTeller::lineOf(const File& file, const Pipeline& pipeline, std::size_t number,
                                      ObjectId zone) const {
    Line line;
    line.file = &file;
    line.pipeline = &pipeline;
    line.number = number;
    line.id = builder_->newId();
    line.zone = zone;
    line.name = nameOf(pipeline.name);
    line.specification = headerValue(pipeline, "PIPING-SPEC");
    if (line.specification.empty()) {
        line.specification = headerValue(pipeline, "NOMINAL-CLASS");
    }
    if (line.specification.empty()) {
        line.specification = noSpecification;
    }
    line.insulation = headerValue(pipeline, "INSULATION-SPEC");
    const auto type = settings_->insulation.find(line.insulation);
    line.insulationType = type == settings_->insulation.end() ? nullptr : &type->second;
    return line;
}

void PlantTeller::tellLine(const Line& line) {
    builder_->beginObject(line.id, "HextPipeline");
    builder_->parent(line.zone);
    builder_->name(line.name);
    tellLineAttributes(line);
    tellBranches(line);
    builder_->endObject();
    tellBolts(line);
    tellParts(line);
    tellSupports(line);
}

void PlantTeller::tellLineAttributes(const Line& line) {
    if (line.specification == noSpecification) {
        note("pcf.specification-missing", SourceGrade::Note, *line.file,
             line.pipeline->record == nullptr ? 1 : line.pipeline->record->line,
             "PIPELINE-REFERENCE: no PIPING-SPEC; its parts stand in the specification \"" +
                 std::string(noSpecification) + "\"");
    }
    builder_->attribute("lineno", std::string_view(line.name));
    builder_->attribute("specname", std::string_view(line.specification));
    builder_->attribute("zoneid", std::string_view(std::to_string(line.zone)));
    builder_->attribute("insul", line.insulationType != nullptr ? std::string_view("1") : std::string_view("0"));
    if (line.insulationType != nullptr) {
        builder_->attribute("insulcode", std::string_view(line.insulationType->code));
    } else if (!line.insulation.empty()) {
        note("pcf.insulation-unknown", SourceGrade::Loss, *line.file,
             line.pipeline->record == nullptr ? 1 : line.pipeline->record->line,
             "INSULATION-SPEC " + line.insulation +
                 ": its thickness is told nowhere; sys/sources.json, \"insulation\", takes it; kept as an attribute");
    }
    if (const std::string_view temperature = headerValue(*line.pipeline, "PIPELINE-TEMP"); !temperature.empty()) {
        builder_->attribute("destemp", temperature);
        builder_->attribute("oprtemp", temperature);
    }
    if (line.pipeline->record != nullptr) {
        tellMembers(*line.pipeline->record);
    }
    for (const Record* record : line.pipeline->header) {
        if (!record->key.empty() && !record->value.empty()) {
            builder_->attribute(record->key, record->value);
        }
        tellMembers(*record);
    }
}

void PlantTeller::tellMembers(const Record& record) {
    for (const Member& member : record.members) {
        if (!member.key.empty()) {
            builder_->attribute(member.key, member.value);
        }
    }
}

void PlantTeller::tellBranches(const Line& line) {
    std::vector<ObjectId> items;
    for (const Chain& chain : network_->chains()[line.number]) {
        items.clear();
        std::transform(chain.begin(), chain.end(), std::back_inserter(items),
                       [this](const Step& step) { return ids_[step.part]; });
        builder_->branch(items);
    }
}

void PlantTeller::tellParts(const Line& line) {
    for (const Chain& chain : network_->chains()[line.number]) {
        for (const Step& step : chain) {
            tellPart(line, step.part);
        }
    }
}

void PlantTeller::tellPart(const Line& line, std::uint32_t index) {
    if (network_->knots()[index].part.kind->form == Form::Weld) {
        tellWeld(line, index);
    } else {
        tellComponent(line, index);
    }
}

void PlantTeller::tellComponent(const Line& line, std::uint32_t index) {
    const Part& part = network_->knots()[index].part;
    const Lie lie = lieOf(index);
    std::vector<Library::SpecificationEnd> ends;
    for (const std::uint8_t place : {0, 1, 2, 3}) {
        const auto slot = static_cast<std::uint8_t>(place < 2 && lie.first == 1 ? 1 - place : place);
        if (part.ends[slot].isThere) {
            ends.push_back({part.ends[slot].size, lie.ends[slot]});
        }
    }
    const std::string_view ownSpec = part.record->valueOf("PIPING-SPEC");
    const std::string specName = ownSpec.empty() ? line.specification : std::string(ownSpec);
    const ObjectId specification = library_->specification(specName, ends);
    builder_->beginObject(ids_[index], part.isPipe() ? "HxDbPipeSpec" : "HxDbTubeModelSpec");
    builder_->parent(line.id);
    builder_->kind(lie.type->kind);
    builder_->text(TextMember::ObjectName, lie.type->item);
    builder_->reference(ReferenceMember::Spec, specification);
    if (boltIds_[index] != 0) {
        builder_->reference(ReferenceMember::Bolts, boltIds_[index]);
    }
    if (part.type->kind == PartKind::Valve || part.type->item == "STRAINER" || part.type->item == "TRAP" ||
        part.type->item == "FLOWMETER" || part.type->item == "ORIFICEG") {
        builder_->vector(VectorMember::RefVec, triple(lie.across));
    }
    tellInsulation(line, part);
    tellTypeAttributes(*lie.type, part);
    builder_->attribute("specname", std::string_view(specName));
    builder_->attribute("specid", std::string_view(std::to_string(specification)));
    tellSizes(part, lie);
    tellBend(part);
    tellDescription(line, part);
    tellMembers(*part.record);
    tellPoints(line, index, lie);
    const bool flangedOne = lie.ends[lie.first].starts_with("FL");
    const bool flangedTwo = lie.ends[lie.first == 0 ? 1 : 0].starts_with("FL");
    tellShape({part, lie.first, {flangedOne, flangedTwo}, part.type->smrtln == "Ecc" ? lie.offset : lie.across},
              *builder_);
    builder_->endObject();
}

void PlantTeller::tellTypeAttributes(const standards::PartType& type, const Part& part) {
    builder_->attribute("item", std::string_view(type.item));
    builder_->attribute("itype", std::string_view(type.itype));
    builder_->attribute("smrtln", std::string_view(type.smrtln));
    builder_->attribute("module", std::string_view("Piping"));
    const bool isValve = type.kind == PartKind::Valve;
    builder_->attribute("mtype", std::string_view(part.isPipe() ? "pipe" : isValve ? "valve" : "fitting"));
}

// Ends and sizes are numbered as points are, without the gap of those that have a 1 and a 3.
void PlantTeller::tellSizes(const Part& part, const Lie& lie) {
    const bool isBent = part.type->smrtln == "Arc" || part.type->smrtln == "Angle" || part.type->smrtln == "Y";
    std::vector<std::uint8_t> slots{lie.first, static_cast<std::uint8_t>(1 - lie.first)};
    if (isBent) {
        slots.insert(slots.begin() + 1, slots.back());  // number 2 stands for the way out, too
    }
    for (const std::uint8_t slot : {2, 3}) {
        if (part.ends[slot].isThere) {
            slots.push_back(slot);
        }
    }
    for (std::size_t i = 0; i < slots.size(); ++i) {
        builder_->attribute(fmt::format("end{}", i + 1), lie.ends[slots[i]]);
    }
    for (std::size_t i = 0; i < slots.size(); ++i) {
        builder_->attribute(fmt::format("size{}", i + 1), std::string_view(number(part.ends[slots[i]].size.dn)));
    }
    builder_->attribute("thick", std::string_view(number(part.ends[lie.first].size.wall)));
    if (part.isPipe()) {
        builder_->attribute("length", std::string_view(number(part.length())));
        builder_->attribute("pipelength", std::string_view(number(part.length())));
    }
}

void PlantTeller::tellBend(const Part& part) {
    const std::optional<Arc> arc = part.kind->form == Form::Turned ? arcOf(part) : std::nullopt;
    const double dn = part.ends[0].size.dn;
    if (!arc || dn <= 0) {
        return;
    }
    builder_->attribute("radius", std::string_view(fmt::format("{:.4g}", arc->radius / dn)));
    builder_->attribute("angle", std::string_view(fmt::format("{:.4g}", arc->angle * degreesOfRadian)));
}

void PlantTeller::tellDescription(const Line& line, const Part& part) {
    const Record& record = *part.record;
    const std::string_view code = firstOf(record, materialKeys);
    const auto material = line.file->materials.find(code);
    std::string_view description = record.valueOf("ITEM-DESCRIPTION");
    if (description.empty() && material != line.file->materials.end()) {
        description = material->second;
    }
    if (!code.empty()) {
        builder_->attribute("stan", code);
    }
    if (!description.empty()) {
        builder_->attribute("material", description);
    }
    if (const std::string_view tag = firstOf(record, tagKeys); !tag.empty()) {
        builder_->attribute("tag", tag);
    }
    builder_->attribute("lineno", std::string_view(std::to_string(line.id)));
}

void PlantTeller::tellInsulation(const Line& line, const Part& part) {
    const bool isInsulated = line.insulationType != nullptr && !isOff(part.record->valueOf("INSULATION"));
    builder_->attribute("insul", std::string_view(isInsulated ? "1" : "0"));
    builder_->attribute("minsul",
                        isInsulated ? std::string_view(line.insulationType->material) : std::string_view("0"));
    if (isInsulated) {
        builder_->insulation(
            {line.insulationType->thickness, line.insulationType->material, line.insulationType->code});
    }
}

void PlantTeller::tellPoint(std::int16_t no, const HxGePoint3D& at, int flow, Mate mate) {
    const ObjectId to[] = {mate.isThere() ? ids_[mate.part] : 0};
    PointFacts facts;
    facts.no = no;
    facts.at = triple(at);
    facts.flow = static_cast<std::int8_t>(flow);
    if (mate.isThere()) {
        facts.to = to;
    }
    builder_->point(facts);
}

void PlantTeller::tellPoints(const Line& line, std::uint32_t index, const Lie& lie) {
    const Knot& knot = network_->knots()[index];
    if (lie.numbers.centre >= 0) {
        tellPoint(lie.numbers.centre, innerPoint(knot.part));
    }
    for (const std::uint8_t place : {0, 1, 2, 3}) {
        const auto slot = static_cast<std::uint8_t>(place < 2 && lie.first == 1 ? 1 - place : place);
        if (knot.part.ends[slot].isThere) {
            tellPoint(lie.numbers.ofSlot[place], knot.part.ends[slot].at, flowAt(index, slot, lie), knot.mates[slot]);
        }
    }
    if (lie.type->smrtln == "Ecc") {
        tellEccentricPoints(knot.part, lie);
    } else if (knot.part.type->smrtln == "Ecc") {
        note("pcf.flat-side-unknown", SourceGrade::Note, *line.file, knot.part.record->line,
             "REDUCER-ECCENTRIC: nothing tells its flat side; it goes over as a concentric one");
    }
}

// Point 3 stands half way on the axis of the wide end, point 4 beside it on that of the narrow one.
void PlantTeller::tellEccentricPoints(const Part& part, const Lie& lie) {
    const HxGePoint3D& wide = part.ends[lie.first].at;
    const HxGeVector3D way = part.ends[1 - lie.first].at - wide;
    const HxGeVector3D across = lie.offset * way.dotProduct(lie.offset);
    const HxGePoint3D middle = wide + (way - across) * 0.5;
    tellPoint(3, middle);
    tellPoint(4, middle + across);
}

void PlantTeller::tellWeld(const Line& line, std::uint32_t index) {
    const Knot& knot = network_->knots()[index];
    HxGeVector3D run = (knot.part.ends[1].at - knot.part.ends[0].at).normal();
    for (const std::uint8_t slot : {0, 1}) {
        const Mate mate = knot.mates[slot];
        if (run.isZeroLength() && mate.isThere()) {
            const HxGeVector3D out = outward(network_->knots()[mate.part].part, mate.slot);
            run = slot == inSlot_[index] ? out : -out;
        }
    }
    run = run.isZeroLength() ? HxGeVector3D(1, 0, 0) : run;
    const std::uint8_t in = inSlot_[index];
    const std::string size = number(knot.part.ends[in].size.dn);
    builder_->beginObject(ids_[index], "HxDbTubeWeld");
    builder_->parent(line.id);
    builder_->text(TextMember::ObjectName, "weld_shop");
    builder_->vector(VectorMember::RefVec, triple(run.perpVector().normal()));
    builder_->vector(VectorMember::InsVec, triple(run));
    builder_->vector(VectorMember::InsPoint, triple(knot.part.ends[in].at));
    builder_->attribute("item", std::string_view("WELD"));
    builder_->attribute("smrtln", std::string_view("Weld"));
    builder_->attribute("size", std::string_view(size));
    builder_->attribute("size1", std::string_view(size));
    builder_->attribute("lineno", std::string_view(std::to_string(line.id)));
    builder_->attribute("insul", std::string_view("0"));
    builder_->attribute("minsul", std::string_view("0"));
    tellMembers(*knot.part.record);
    tellPoint(0, innerPoint(knot.part));
    tellPoint(1, knot.part.ends[in].at, 1, knot.mates[in]);
    tellPoint(2, knot.part.ends[1 - in].at, 2, knot.mates[1 - in]);
    builder_->shape();
    builder_->endObject();
}

}  // namespace plant::pcf
