#include "sources/pcf/parts.h"

#include <algorithm>
#include <cmath>

namespace plant::pcf {

namespace {

constexpr std::string_view kindOfRecord = "records";

constexpr ComponentKind kinds[] = {
    {"PIPE", Form::Straight},
    {"PIPE-FIXED", Form::Straight},
    {"PIPE-BLOCK-FIXED", Form::Straight},
    {"PIPE-BLOCK-VARIABLE", Form::Straight},
    {"BEND", Form::Turned},
    {"BEND-TEED", Form::Branched},
    {"ELBOW", Form::Turned},
    {"ELBOW-REDUCING", Form::Turned},
    {"ELBOW-TEED", Form::Branched},
    {"ELBOW-TROUGH", Form::Turned},
    {"TEE", Form::Branched},
    {"TEE-SET-ON", Form::SetOn},
    {"TEE-STUB", Form::SetOn},
    {"OLET", Form::SetOn},
    {"CROSS", Form::Branched},
    {"CROSS-SET-ON", Form::SetOn},
    {"CROSS-STUB", Form::SetOn},
    {"Y-PIECE", Form::Branched},
    {"REDUCER-CONCENTRIC", Form::Straight},
    {"REDUCER-CONCENTRIC-TEED", Form::Branched},
    {"REDUCER-ECCENTRIC", Form::Straight},
    {"REDUCER-ECCENTRIC-TEED", Form::Branched},
    {"FLANGE", Form::Straight},
    {"FLANGE-REDUCING-CONCENTRIC", Form::Straight},
    {"FLANGE-REDUCING-ECCENTRIC", Form::Straight},
    {"FLANGE-BLIND", Form::Closing},
    {"LAPJOINT-STUBEND", Form::Straight},
    {"LAPJOINT-RING", Form::Straight},
    {"GASKET", Form::Straight},
    {"VALVE", Form::Straight},
    {"VALVE-ANGLE", Form::Turned},
    {"VALVE-3WAY", Form::Branched},
    {"VALVE-4WAY", Form::Branched},
    {"INSTRUMENT", Form::Straight},
    {"INSTRUMENT-ANGLE", Form::Turned},
    {"INSTRUMENT-3WAY", Form::Branched},
    {"INSTRUMENT-4WAY", Form::Branched},
    {"FILTER", Form::Straight},
    {"FILTER-OFFSET", Form::Straight},
    {"FILTER-ANGLE", Form::Turned},
    {"TRAP", Form::Straight},
    {"TRAP-OFFSET", Form::Straight},
    {"TRAP-ANGLE", Form::Turned},
    {"CAP", Form::Closing},
    {"PLUG", Form::Closing},
    {"COUPLING", Form::Straight},
    {"UNION", Form::Straight},
    {"CLAMP", Form::Straight},
    {"MISC-COMPONENT", Form::Straight},
    {"MISC-COMPONENT-ANGLE", Form::Turned},
    {"WELD", Form::Weld},
    {"SUPPORT", Form::Place},
    {"BOLT", Form::Place},
};

// What a component that no word fits becomes.
constexpr ComponentKind unknownKind{"MISC-COMPONENT", Form::Straight};

// Records that say more of the pipeline although they stand in the first column.
constexpr std::string_view headerWords[] = {
    "PIPING-SPEC",        "INSULATION-SPEC", "TRACING-SPEC", "PAINTING-SPEC",   "PIPELINE-TEMP",
    "PIPELINE-TYPE",      "NOMINAL-CLASS",   "AREA",         "REVISION",        "DATE-DMY",
    "PROJECT-IDENTIFIER", "START-CO-ORDS",   "SPOOL-PREFIX", "NOMINAL-RATING",  "BEND-RADIUS",
    "PIPELINE-REVISION",  "ISOGEN-FILES",    "FLUID",        "SPECIFIC-GRAVITY"};
constexpr std::string_view headerPrefixes[] = {"ATTRIBUTE", "MISC-SPEC", "ITEM-ATTRIBUTE", "UNITS-",
                                               "INFORMATION-ITEM"};

// What is drawn beside a line and is no part of it.
constexpr std::string_view notePrefixes[] = {"MESSAGE",           "FLOW-ARROW",       "LOCATION-POINT",
                                             "INSULATION-SYMBOL", "SCOPE-CHANGE",     "REFERENCE-",
                                             "FLOOR-SYMBOL",      "SPOOL-IDENTIFIER", "UNIVERSAL-SYMBOL"};

constexpr std::string_view lineEndPrefixes[] = {"END-CONNECTION-", "END-POSITION-"};

template <std::size_t Count>
bool startsWithOne(std::string_view key, const std::string_view (&prefixes)[Count]) {
    return std::any_of(std::begin(prefixes), std::end(prefixes),
                       [&](std::string_view prefix) { return key.starts_with(prefix); });
}

bool isHeaderWord(std::string_view key) {
    return std::find(std::begin(headerWords), std::end(headerWords), key) != std::end(headerWords) ||
           startsWithOne(key, headerPrefixes);
}

bool isOrigin(const HxGePoint3D& point) {
    return point.x == 0 && point.y == 0 && point.z == 0;
}

std::string upperCase(std::string_view text) {
    std::string upper(text);
    std::transform(upper.begin(), upper.end(), upper.begin(),
                   [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; });
    return upper;
}

// "<SKEY>" and its like stand for none.
std::string_view symbolKeyOf(const Record& record) {
    const std::string_view key = record.valueOf("SKEY");
    return key.starts_with('<') || upperCase(key) == "SKEY" ? std::string_view{} : key.substr(0, 4);
}

}  // namespace

const ComponentKind* componentKind(std::string_view word) {
    const auto at =
        std::find_if(std::begin(kinds), std::end(kinds), [&](const ComponentKind& kind) { return kind.word == word; });
    return at == std::end(kinds) ? nullptr : &*at;
}

void Interpreter::tell(const char* code, const Record& record, std::uint32_t line, std::string text,
                       const char* outcome) {
    const bool isLoss = std::string_view(outcome) == "left out";
    report_->tell(code, isLoss ? SourceGrade::Loss : SourceGrade::Note,
                  {file_->name + ": line " + std::to_string(line),
                   std::string(record.key) + ": " + std::move(text) + "; " + outcome});
}

void Interpreter::run() {
    const auto materials = std::find_if(file_->records.begin(), file_->records.end(),
                                        [](const Record& record) { return record.key == "MATERIALS"; });
    const auto count = static_cast<std::size_t>(materials - file_->records.begin());
    readHeader();
    readMaterials(count);
    SourceCount& balance = report_->balance(kindOfRecord);
    balance.read += file_->records.size();
    balance.taken += file_->records.size() - count;
    for (std::size_t i = 0; i < count; ++i) {
        readRecord(file_->records[i]);
    }
}

// Units hold for the whole file, wherever they stand.
void Interpreter::readHeader() {
    for (const Record& record : file_->records) {
        if (Units::isUnit(record) && !file_->units.take(record)) {
            tell("pcf.unit-unknown", record, record.line, "no unit \"" + std::string(record.value) + "\"",
                 "taken for millimetres");
        }
    }
}

void Interpreter::readMaterials(std::size_t first) {
    for (std::size_t i = first; i < file_->records.size(); ++i) {
        const Record& record = file_->records[i];
        std::string_view code = record.key == "ITEM-CODE" ? record.value : std::string_view{};
        for (const Member& member : record.members) {
            if (member.key == "ITEM-CODE") {
                code = member.value;
            } else if (member.key == "DESCRIPTION" && !code.empty()) {
                file_->materials.emplace(code, member.value);
            }
        }
    }
}

Pipeline& Interpreter::current() {
    if (file_->pipelines.empty()) {
        file_->pipelines.emplace_back().name = file_->stem;
    }
    return file_->pipelines.back();
}

void Interpreter::readRecord(const Record& record) {
    SourceCount& balance = report_->balance(kindOfRecord);
    if (record.key == "PIPELINE-REFERENCE") {
        beginPipeline(record);
    } else if (record.key.empty() || isHeaderWord(record.key)) {
        (file_->pipelines.empty() ? file_->header : file_->pipelines.back().header).push_back(&record);
    } else if (startsWithOne(record.key, lineEndPrefixes)) {
        readLineEnd(record);
    } else if (startsWithOne(record.key, notePrefixes)) {
        tell("pcf.note", record, record.line, "a note or symbol of the drawing", "not taken over");
        ++balance.told;
        return;
    } else if (const ComponentKind* kind = componentKind(record.key); kind == nullptr) {
        return readUnknown(record);
    } else if (kind->form == Form::Place) {
        return readPlace(record);
    } else {
        return readPart(record, *kind);
    }
    ++balance.taken;
}

void Interpreter::beginPipeline(const Record& record) {
    Pipeline& pipeline = file_->pipelines.emplace_back();
    pipeline.record = &record;
    pipeline.name = record.value.empty() ? file_->stem : std::string(record.value);
    lastEnd_.reset();
}

void Interpreter::readLineEnd(const Record& record) {
    if (const Member* place = record.find("CO-ORDS")) {
        if (const auto at = pointOf(wordsOf(place->value), file_->units)) {
            current().told.push_back(*at);
        }
    }
}

void Interpreter::readUnknown(const Record& record) {
    if (record.find("END-POINT") == nullptr) {
        tell("pcf.record-unknown", record, record.line, "no record of this name is known and it has no END-POINT",
             "left out");
        ++report_->balance(kindOfRecord).told;
        return;
    }
    tell("pcf.component-unknown", record, record.line, "no component of this name is known",
         "taken over as a general component");
    readPart(record, unknownKind);
}

void Interpreter::readPart(const Record& record, const ComponentKind& kind) {
    SourceCount& balance = report_->balance(kindOfRecord);
    std::optional<Part> part = makePart(record, kind);
    if (!part) {
        ++balance.told;
        return;
    }
    ++balance.taken;
    part->pipeline = (current(), file_->pipelines.size() - 1);
    part->order = order_++;
    placeWithoutCoordinates(*part);
    lastEnd_ = part->ends[1].isThere ? part->ends[1].at : part->ends[0].at;
    current().parts.push_back(*part);
}

std::optional<Part> Interpreter::makePart(const Record& record, const ComponentKind& kind) {
    Part part;
    part.record = &record;
    part.kind = &kind;
    part.symbolKey = symbolKeyOf(record);
    part.type = settings_->types.find(kind.word, upperCase(part.symbolKey));
    if (part.type == nullptr) {
        tell("pcf.type-unknown", record, record.line, "no type for this component", "left out");
        return {};
    }
    if (const Member* centre = record.find("CENTRE-POINT")) {
        part.centre = pointOf(wordsOf(centre->value), file_->units);
        if (!part.centre) {
            tell("pcf.point-unreadable", record, centre->line, "CENTRE-POINT \"" + std::string(centre->value) + "\"",
                 "taken for missing");
        }
    }
    return readEnds(part) ? std::optional(part) : std::nullopt;
}

bool Interpreter::readEnds(Part& part) {
    std::size_t run = 0;
    for (const Member& member : part.record->members) {
        const bool isRun = member.key == "END-POINT";
        const std::size_t slot = isRun                           ? run
                                 : member.key == "BRANCH1-POINT" ? 2
                                 : member.key == "BRANCH2-POINT" ? 3
                                                                 : 4;
        if (slot > 3 || (isRun && run > 1)) {
            continue;
        }
        part.ends[slot] = readEnd(member, part.symbolKey);
        if (!part.ends[slot].isThere) {
            tell("pcf.point-unreadable", *part.record, member.line,
                 std::string(member.key) + " \"" + std::string(member.value) + "\"", "taken for missing");
        }
        run += isRun && part.ends[slot].isThere ? 1 : 0;
    }
    if (part.kind->form == Form::SetOn && !part.centre && run > 0) {
        part.centre = part.ends[0].at;
    }
    if (part.kind->form == Form::SetOn && !part.ends[2].isThere && run > 1) {
        part.ends[2] = part.ends[1];  // some producers write foot and outlet of an olet as its ends
    }
    const bool isOneEnough = part.kind->form == Form::Closing || part.kind->form == Form::Weld;
    const bool good = part.kind->form == Form::SetOn ? part.centre.has_value() : run > (isOneEnough ? 0U : 1U);
    if (!good) {
        tell("pcf.ends-missing", *part.record, part.record->line, "too few points to stand anywhere", "left out");
    }
    if (part.kind->form == Form::Weld && run == 1) {
        part.ends[1] = part.ends[0];
    }
    return good;
}

End Interpreter::readEnd(const Member& member, std::string_view symbolKey) {
    const std::vector<std::string_view> words = wordsOf(member.value);
    End end;
    const auto at = pointOf(words, file_->units);
    if (!at) {
        return end;
    }
    end.isThere = true;
    end.at = *at;
    if (words.size() > 3) {
        end.bore = words[3];
        end.size = sizeOf(member, words[3]);
    }
    const std::string_view told = words.size() > 4 ? words[4] : std::string_view{};
    end.endType = standards::endTypeOf(upperCase(told));
    if (end.endType.empty() && symbolKey.size() == 4) {
        end.endType = standards::endTypeOf(upperCase(symbolKey.substr(2)));
    }
    return end;
}

standards::PipeSize Interpreter::sizeOf(const Member& member, std::string_view bore) {
    const std::optional<double> value = numberOf(bore);
    if (!value || *value <= 0) {
        report_->tell("pcf.bore-missing", SourceGrade::Note,
                      {file_->name + ": line " + std::to_string(member.line),
                       "bore \"" + std::string(bore) + "\"; that of the neighbours is taken"});
        return {};
    }
    return file_->units.boreInInch ? settings_->sizes.ofInches(*value) : settings_->sizes.ofMillimetres(*value);
}

// A part all of whose coordinates are 0 stands where the part before it ends.
void Interpreter::placeWithoutCoordinates(Part& part) {
    const bool anywhere = std::any_of(std::begin(part.ends), std::end(part.ends),
                                      [](const End& end) { return end.isThere && !isOrigin(end.at); }) ||
                          (part.centre && !isOrigin(*part.centre));
    if (anywhere || !lastEnd_ || isOrigin(*lastEnd_)) {
        return;
    }
    part.hasPlace = false;
    for (End& end : part.ends) {
        end.at = *lastEnd_;
    }
    part.centre.reset();
    tell("pcf.no-place", *part.record, part.record->line, "all coordinates are 0", "set where the part before it ends");
}

void Interpreter::readPlace(const Record& record) {
    SourceCount& balance = report_->balance(kindOfRecord);
    const Member* place = record.find("CO-ORDS");
    place = place == nullptr ? record.find("END-POINT") : place;
    const auto at = place == nullptr ? std::nullopt : pointOf(wordsOf(place->value), file_->units);
    const standards::PartType* type = settings_->types.find(record.key, upperCase(symbolKeyOf(record)));
    if (!at) {
        tell("pcf.ends-missing", record, record.line, "no CO-ORDS that can be read", "left out");
        ++balance.told;
        return;
    }
    ++balance.taken;
    Pipeline& pipeline = current();
    (record.key == "BOLT" ? pipeline.bolts : pipeline.supports)
        .push_back({&record, type, *at, file_->pipelines.size() - 1});
}

}  // namespace plant::pcf
