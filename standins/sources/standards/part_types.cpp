#include "sources/standards/part_types.h"

#include <algorithm>
#include <array>

namespace plant::standards {

namespace {

// clang-format off
constexpr const char* builtInRows[] = {
    "PIPE|##|PIPE|SMLS|Pipe|",
    "PIPE-FIXED|##|PIPE|SMLS|Pipe|",
    "PIPE-BLOCK-FIXED|##|PIPE|SMLS|Pipe|",
    "PIPE-BLOCK-VARIABLE|##|PIPE|SMLS|Pipe|",
    "BEND|##|ELBOW|BEND|Arc|bend",
    "ELBOW|MI##|ELBOW|MITER|Arc|",
    "ELBOW|##|ELBOW|LR|Arc|",
    "ELBOW-REDUCING|##|RELBOW|RED|Arc|",
    "ELBOW-TEED|##|TEE|TEED|Tee|",
    "ELBOW-TROUGH|##|ELBOW|LR|Arc|",
    "BEND-TEED|##|TEE|TEED|Tee|",
    "TEE|##|TEE|EQ|Tee|",
    "TEE-STUB|##|OLET|STUBIN|Normal|olet",
    "TEE-SET-ON|##|OLET|SETON|Normal|olet",
    "CROSS|##|CROSS|EQ|Cross|",
    "CROSS-SET-ON|##|OLET|SETON|Normal|olet",
    "CROSS-STUB|##|OLET|STUBIN|Normal|olet",
    "Y-PIECE|##|YTEE|Y|Y|",
    "OLET|SK##|OLET|SOCKOLET|Normal|olet",
    "OLET|TH##|OLET|THREDOLET|Normal|olet",
    "OLET|##|OLET|WELDOLET|Normal|olet",
    "REDUCER-CONCENTRIC|##|CRED|BW|Normal|",
    "REDUCER-CONCENTRIC-TEED|##|RTEE|TEED|Tee|",
    "REDUCER-ECCENTRIC|##|ERED|BW|Ecc|",
    "REDUCER-ECCENTRIC-TEED|##|RTEE|TEED|Tee|",
    "FLANGE|FLWN|FLANGE|WN|Normal|flange",
    "FLANGE|FLSO|FLANGE|SO|Normal|flange",
    "FLANGE|FLSW|FLANGE|SW|Normal|flange",
    "FLANGE|FLSC|FLANGE|THD|Normal|flange",
    "FLANGE|FLLB|FLANGE|LJ|Normal|flange",
    "FLANGE|FLSJ|FLANGE|LJ|Normal|flange",
    "FLANGE|FLBL|FLANGE|BLIND|Normal|flange",
    "FLANGE|##|FLANGE|WN|Normal|flange",
    "FLANGE-REDUCING-CONCENTRIC|##|FLANGE|RED|Normal|flange",
    "FLANGE-REDUCING-ECCENTRIC|##|FLANGE|RED|Normal|flange",
    "FLANGE-BLIND|##|FLANGE|BLIND|Normal|flange",
    "LAPJOINT-STUBEND|##|COUPLING|STUBEND|Normal|",
    "LAPJOINT-RING|##|FLANGE|LJ|Normal|flange",
    "GASKET|##|GASK|FLAT|Normal|gasket",
    "VALVE|VT##|VALVE|GATE|Normal|valve",
    "VALVE|VG##|VALVE|GLOBE|Normal|valve",
    "VALVE|VB##|VALVE|BALL|Normal|valve",
    "VALVE|VC##|VALVE|CHECK|Normal|valve",
    "VALVE|CK##|VALVE|CHECK|Normal|valve",
    "VALVE|VK##|VALVE|PLUG|Normal|valve",
    "VALVE|VP##|VALVE|PLUG|Normal|valve",
    "VALVE|VN##|VALVE|NEEDLE|Normal|valve",
    "VALVE|VR##|VALVE|SAFETY|Normal|valve",
    "VALVE|VY##|VALVE|BUTTERFLY|Normal|valve",
    "VALVE|VD##|VALVE|DIAPHRAGM|Normal|valve",
    "VALVE|##|VALVE|GENERAL|Normal|valve",
    "VALVE-ANGLE|VR##|VALVE|SAFETY|Angle|valve",
    "VALVE-ANGLE|##|VALVE|ANGLE|Angle|valve",
    "VALVE-3WAY|##|VALVE|3WAY|Tee|valve",
    "VALVE-4WAY|##|VALVE|4WAY|Cross|valve",
    "INSTRUMENT|CV##|CONTROL|GLOBE|Normal|valve",
    "INSTRUMENT|OP##|ORIFICEG|PLATE|Normal|",
    "INSTRUMENT|##|FLOWMETER|GENERAL|Normal|",
    "INSTRUMENT-ANGLE|##|FLOWMETER|ANGLE|Angle|",
    "INSTRUMENT-3WAY|##|FLOWMETER|3WAY|Tee|",
    "INSTRUMENT-4WAY|##|FLOWMETER|4WAY|Cross|",
    "FILTER|##|STRAINER|Y|Normal|",
    "FILTER-ANGLE|##|STRAINER|ANGLE|Angle|",
    "FILTER-OFFSET|##|STRAINER|Y|Normal|",
    "TRAP|##|TRAP|GENERAL|Normal|",
    "TRAP-ANGLE|##|TRAP|ANGLE|Angle|",
    "TRAP-OFFSET|##|TRAP|GENERAL|Normal|",
    "CAP|##|CAP|BW|Normal|",
    "PLUG|##|PLUG|HEX|Normal|",
    "COUPLING|##|COUPLING|FULL|Normal|",
    "UNION|##|UNION|GENERAL|Normal|",
    "CLAMP|##|COUPLING|CLAMP|Normal|",
    "MISC-COMPONENT|##|SIGHT|MISC|Normal|",
    "MISC-COMPONENT-ANGLE|##|SIGHT|MISC|Angle|",
    "SUPPORT|##|SUPPORT|GENERAL||",
    "WELD|##|WELD||Weld|",
};
// clang-format on

struct KindRow {
    std::string_view word;
    PartKind kind;
};
constexpr KindRow kindRows[] = {
    {"", PartKind::Default},      {"none", PartKind::None},     {"pipe", PartKind::Pipe},
    {"bend", PartKind::Bend},     {"gasket", PartKind::Gasket}, {"flange", PartKind::Flange},
    {"hose", PartKind::Hose},     {"boss", PartKind::Boss},     {"olet", PartKind::Olet},
    {"nozzle", PartKind::Nozzle}, {"valve", PartKind::Valve},   {"virtualGasket", PartKind::VirtualGasket},
};

struct EndRow {
    std::string_view word;
    std::string_view type;
};
constexpr EndRow endRows[] = {
    {"BW", "BW"},     {"PL", "BW"},     {"SW", "SW"},   {"SO", "SW"},   {"SC", "THD"},  {"CP", "THD"},  {"MP", "THD"},
    {"TH", "THD"},    {"THD", "THD"},   {"FL", "FLRF"}, {"FA", "FLRF"}, {"RF", "FLRF"}, {"FF", "FLFF"}, {"WF", "FLRF"},
    {"FLRF", "FLRF"}, {"FLFF", "FLFF"}, {"PE", "BW"},   {"BE", "BW"},   {"NPT", "THD"}, {"GF", "GRV"},  {"CL", "CLP"},
};

bool matches(std::string_view pattern, std::string_view key) {
    if (pattern.ends_with("##")) {
        pattern.remove_suffix(2);
        return key.size() >= pattern.size() && matches(pattern, key.substr(0, pattern.size()));
    }
    const auto same = [](char wanted, char found) { return wanted == '#' || wanted == found; };
    return std::equal(pattern.begin(), pattern.end(), key.begin(), key.end(), same);
}

}  // namespace

PartTypes::PartTypes() {
    std::string error;
    for (const char* text : builtInRows) {
        Row row;
        parse(text, row, error);
        rows_.push_back(std::move(row));
    }
}

bool PartTypes::parse(std::string_view text, Row& row, std::string& error) {
    std::array<std::string, 6> fields;
    std::size_t count = 0;
    for (std::size_t at = 0; at <= text.size(); ++count) {
        const std::size_t end = std::min(text.find('|', at), text.size());
        if (count < fields.size()) {
            fields[count] = text.substr(at, end - at);
        }
        at = end + 1;
    }
    const auto kind = std::find_if(std::begin(kindRows), std::end(kindRows),
                                   [&](const KindRow& one) { return one.word == fields.back(); });
    if (count != fields.size() || fields[0].empty() || fields[2].empty() || kind == std::end(kindRows)) {
        error = "\"" + std::string(text) + "\": keyword|key|item|itype|class|kind expected";
        return false;
    }
    row = {fields[0], fields[1], {fields[2], fields[3], fields[4], kind->kind}};
    return true;
}

bool PartTypes::putFirst(std::string_view text, std::string& error) {
    Row row;
    if (!parse(text, row, error)) {
        return false;
    }
    rows_.insert(rows_.begin(), std::move(row));
    return true;
}

const PartType* PartTypes::find(std::string_view keyword, std::string_view symbolKey) const {
    for (const Row& row : rows_) {
        if ((row.keyword == "*" || row.keyword == keyword) && matches(row.key, symbolKey)) {
            return &row.type;
        }
    }
    return nullptr;
}

std::string_view endTypeOf(std::string_view word) {
    for (const EndRow& row : endRows) {
        if (row.word == word) {
            return row.type;
        }
    }
    return {};
}

}  // namespace plant::standards
