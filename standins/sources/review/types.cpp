#include "sources/review/types.h"

#include "sources/text_decoder.h"

#include <algorithm>
#include <iterator>
#include <tsl/robin_map.h>

namespace plant::review {

namespace {

constexpr TypeRow typeRows[] = {
    {"WORL", "WORLD", Role::World, "", "", "", ""},
    {"SITE", "", Role::Site, "HextSite", "", "", "WORL"},
    {"ZONE", "", Role::Zone, "HextZone", "", "", "SITE"},
    // Managers.
    {"EQUI", "EQUIPMENT", Role::Manager, "HextEquipe", "HxDbEquipment", "", "ZONE"},
    {"STRU", "STRUCTURE", Role::Manager, "HextStruct", "HxDbStruct", "", "ZONE"},
    {"PIPE", "", Role::Manager, "HextPipeline", "HxDbTubeModelSpec", "Piping", "ZONE"},
    {"HVAC", "", Role::Manager, "HextPipeline", "HxDbTubeModelSpec", "Hvac", "ZONE"},
    {"CWAY", "CABLEWAY", Role::Manager, "HextPipeline", "HxDbTubeModelSpec", "Cable", "ZONE"},
    {"CTRAY", "", Role::Manager, "HextPipeline", "HxDbTubeModelSpec", "Cable", "ZONE"},
    {"SUPPO", "SUPPORT", Role::Manager, "HextSupport", "HxDbSupportModel", "", "ZONE"},
    {"REST", "RESTRAINT", Role::Manager, "HextSupport", "HxDbSupportModel", "", "ZONE"},
    {"HANG", "HANGER", Role::Manager, "HextSupport", "HxDbSupportModel", "", ""},
    {"BRAN", "BRANCH", Role::Branch, "", "", "", "PIPE"},
    {"CWBRAN", "", Role::Branch, "", "", "", "CWAY"},
    // Objects that are of another class than their manager's, or whose names tell what holds them.
    {"NOZZ", "NOZZLE", Role::Object, "HxDbNozzleModel", "", "", "EQUI"},
    {"SUBE", "SUBEQUIPMENT", Role::Object, "", "", "", "EQUI"},
    {"FRMW", "FRAMEWORK", Role::Object, "", "", "", "STRU"},
    {"SBFR", "SUBFRAMEWORK", Role::Object, "", "", "", "FRMW"},
    {"SCTN", "SECTION", Role::Object, "", "", "", ""},
    {"GENSEC", "", Role::Object, "", "", "", ""},
    {"PANE", "PANEL", Role::Object, "", "", "", ""},
    {"FLOOR", "", Role::Object, "", "", "", ""},
    {"WALL", "", Role::Object, "", "", "", ""},
    {"GWALL", "", Role::Object, "", "", "", ""},
    {"SCREED", "", Role::Object, "", "", "", ""},
    {"FIXING", "", Role::Object, "", "", "", ""},
    {"FITT", "FITTING", Role::Object, "", "", "", ""},
    {"PFIT", "", Role::Object, "", "", "", ""},
    {"PNOD", "", Role::Object, "", "", "", ""},
    {"SNOD", "", Role::Object, "", "", "", ""},
    {"HANDRA", "HANDRAIL", Role::Object, "", "", "", ""},
    {"BOX", "", Role::Object, "", "", "", "", true},
    {"NBOX", "", Role::Object, "", "", "", "", true},
    {"CYLI", "CYLINDER", Role::Object, "", "", "", "", true},
    {"SLCY", "", Role::Object, "", "", "", "", true},
    {"NCYL", "", Role::Object, "", "", "", "", true},
    {"CONE", "", Role::Object, "", "", "", "", true},
    {"NCON", "", Role::Object, "", "", "", "", true},
    {"DISH", "", Role::Object, "", "", "", "", true},
    {"PYRA", "PYRAMID", Role::Object, "", "", "", "", true},
    {"SNOU", "SNOUT", Role::Object, "", "", "", "", true},
    {"CTOR", "CTORUS", Role::Object, "", "", "", "", true},
    {"RTOR", "RTORUS", Role::Object, "", "", "", "", true},
    {"EXTR", "EXTRUSION", Role::Object, "", "", "", "", true},
    {"NXTR", "", Role::Object, "", "", "", "", true},
    {"REVO", "REVOLUTION", Role::Object, "", "", "", "", true},
    {"POHE", "POLYHEDRON", Role::Object, "", "", "", "", true},
    {"LOOP", "", Role::Object, "", "", "", "", true},
    {"TEXP", "", Role::Object, "", "", "", "", true},
    // Run-time classes.
    {"HextWorld", "", Role::World, "", "", "", ""},
    {"HextSite", "", Role::Site, "HextSite", "", "", ""},
    {"HextZone", "", Role::Zone, "HextZone", "", "", ""},
    {"HextStdFloor", "", Role::Zone, "HextStdFloor", "", "", ""},
    {"HextZoneDirectory", "", Role::Directory, "HextZoneDirectory", "", "", ""},
    {"HextUnit", "", Role::Directory, "HextUnit", "", "", ""},
    {"HextItem", "", Role::Directory, "HextItem", "", "", ""},
    {"HextEquipe", "", Role::Manager, "HextEquipe", "HxDbEquipment", "", ""},
    {"HextStruct", "", Role::Manager, "HextStruct", "HxDbStruct", "", ""},
    {"HextPipeline", "", Role::Manager, "HextPipeline", "HxDbTubeModelSpec", "Piping", ""},
    {"HextSupport", "", Role::Manager, "HextSupport", "HxDbSupportModel", "", ""},
    {"HextAxiss", "", Role::Manager, "HextAxiss", "HxDbAxissLine", "", ""},
    {"HextPIDPaperManager", "", Role::Manager, "HextPIDPaperManager", "HxDbAcadSerialObject", "", ""},
    {"HxDbTubeModel", "", Role::Object, "HxDbTubeModel", "", "", ""},
    {"HxDbTubeModelSpec", "", Role::Object, "HxDbTubeModelSpec", "", "", ""},
    {"HxDbPipeSpec", "", Role::Object, "HxDbPipeSpec", "", "", ""},
    {"HxDbNozzleModel", "", Role::Object, "HxDbNozzleModel", "", "", ""},
    {"HxDbTubeGeneral", "", Role::Object, "HxDbTubeGeneral", "", "", ""},
    {"HxDbTubeWeld", "", Role::Object, "HxDbTubeWeld", "", "", ""},
    {"HxDbTubeStop", "", Role::Object, "HxDbTubeStop", "", "", ""},
    {"HxDbBalloon", "", Role::Object, "HxDbBalloon", "", "", ""},
    {"HxDbAssembly", "", Role::Object, "HxDbAssembly", "", "", ""},
    {"HxDbSupportModel", "", Role::Object, "HxDbSupportModel", "", "", ""},
    {"HxDbEquipment", "", Role::Object, "HxDbEquipment", "", "", ""},
    {"HxDbStruct", "", Role::Object, "HxDbStruct", "", "", ""},
    {"HxDbAxissLine", "", Role::Object, "HxDbAxissLine", "", "", ""},
    {"HxDbXGModel", "", Role::Object, "HxDbXGModel", "", "", ""},
    {"HxDbNonTube", "", Role::Object, "HxDbNonTube", "", "", ""},
    {"HxDbAcadSerialObject", "", Role::Object, "HxDbAcadSerialObject", "", "", ""},
    {"HextAcadEntitySer", "", Role::Object, "HextAcadEntitySer", "", "", ""},
};

constexpr TypeRow plainRow = {"", "", Role::Manager, "HextStruct", "HxDbStruct", "", ""};

constexpr PartRow partRows[] = {
    {"ELBO",
     "ELBOW",
     "90LR",
     "Arc",
     PartKind::Default,
     {"BW", "BW", "BW"},
     "fitting",
     "HxDbTubeModelSpec",
     Ports::Bent},
    {"BEND", "PIPE", "BEND", "Arc", PartKind::Bend, {"BW", "BW", "BW"}, "pipe", "HxDbTubeModelSpec", Ports::Bent},
    {"TEE", "TEE", "EQ", "Tee", PartKind::Default, {"BW", "BW", "BW"}},
    {"OLET", "OLET", "WELDOLET", "Normal", PartKind::Olet, {"BW", "BW", "BW"}},
    {"CROS", "CROSS", "EQ", "Cross", PartKind::Default, {"BW", "BW", "BW"}},
    {"REDU", "CRED", "BW", "Normal", PartKind::Default, {"BW", "BW", ""}},
    {"FLAN", "FLANGE", "WN", "Normal", PartKind::Flange, {"FLRF", "BW", ""}},
    {"LJSE", "FLANGE", "LJ", "Normal", PartKind::Flange, {"FLRF", "BW", ""}},
    {"FBLI", "FLANGE", "BLIND", "Normal", PartKind::Flange, {"FLRF", "NONE", ""}},
    {"GASK", "GASK", "SPIRAL", "Normal", PartKind::Gasket, {"FLRF", "FLRF", ""}},
    {"VALV", "VALVE", "GATE", "Normal", PartKind::Valve, {"FLRF", "FLRF", ""}, "valve"},
    {"VTWA", "VALVE", "3WAY", "Tee", PartKind::Valve, {"FLRF", "FLRF", "FLRF"}, "valve"},
    {"VFWA", "VALVE", "4WAY", "Cross", PartKind::Valve, {"FLRF", "FLRF", "FLRF"}, "valve"},
    {"INST", "FLOWMETER", "INLINE", "Normal", PartKind::Default, {"FLRF", "FLRF", ""}},
    {"FILT", "STRAINER", "Y", "Normal", PartKind::Default, {"FLRF", "FLRF", ""}},
    {"TRAP", "TRAP", "FLOAT", "Normal", PartKind::Default, {"FLRF", "FLRF", ""}},
    {"PCOM", "EXPJOINT", "PCOM", "Normal", PartKind::Default, {"BW", "BW", ""}},
    {"CAP", "CAP", "HEAD", "Normal", PartKind::Default, {"BW", "NONE", ""}},
    {"COUP", "COUPLING", "FULL", "Normal", PartKind::Default, {"SW", "SW", ""}},
    {"UNIO", "UNION", "SW", "Normal", PartKind::Default, {"SW", "SW", ""}},
    {"PLUG", "PLUG", "HEX", "Normal", PartKind::Default, {"THD", "NONE", ""}},
    {"CLOS", "PLUG", "CLOSURE", "Normal", PartKind::Default, {"BW", "NONE", ""}},
    {"WELD", "WELD", "", "Weld", PartKind::Default, {"BW", "BW", ""}, "weld", "HxDbTubeWeld"},
    {"ATTA", "SUPPORT", "ATTACHMENT", "Normal", PartKind::Default, {"NONE", "NONE", ""}},
    {"TUBI", "PIPE", "SMLS", "Pipe", PartKind::Default, {"BW", "BW", ""}, "pipe", "HxDbPipeSpec"},
    {"TUBE", "PIPE", "SMLS", "Pipe", PartKind::Default, {"BW", "BW", ""}, "pipe", "HxDbPipeSpec"},
    {"FTUB", "PIPE", "SPOOL", "Pipe", PartKind::Default, {"FLRF", "FLRF", ""}, "pipe", "HxDbPipeSpec"},
    {"DUCT", "DUCT", "STRAIGHT", "Normal", PartKind::Default, {"DF", "DF", ""}, "duct"},
    {"STRT", "DUCT", "STRAIGHT", "Normal", PartKind::Default, {"DF", "DF", ""}, "duct"},
    {"TAPE", "DUCT", "TRANS", "Normal", PartKind::Default, {"DF", "DF", ""}, "duct"},
    {"TRNS", "DUCT", "TRANS", "Normal", PartKind::Default, {"DF", "DF", ""}, "duct"},
    {"DAMP", "DUCT", "DAMPER", "Normal", PartKind::Default, {"DF", "DF", ""}, "duct"},
    {"GRIL", "DUCT", "GRILLE", "Normal", PartKind::Default, {"DF", "NONE", ""}, "duct"},
};

struct PartWord {
    std::string_view word;
    std::string_view type;
};
constexpr PartWord partWords[] = {
    {"ELBOW", "ELBO"},   {"FLANGE", "FLAN"},     {"GASKET", "GASK"},     {"VALVE", "VALV"},    {"REDUCER", "REDU"},
    {"CROSS", "CROS"},   {"INSTRUMENT", "INST"}, {"FILTER", "FILT"},     {"COUPLING", "COUP"}, {"UNION", "UNIO"},
    {"CLOSURE", "CLOS"}, {"ATTACHMENT", "ATTA"}, {"PCOMPONENT", "PCOM"},
};

struct ItemKind {
    std::string_view item;
    std::string_view itype;  // empty for any
    PartKind kind;
};
constexpr ItemKind itemKinds[] = {
    {"FLANGE", "", PartKind::Flange}, {"GASK", "VIRTUAL", PartKind::VirtualGasket},
    {"GASK", "", PartKind::Gasket},   {"VALVE", "", PartKind::Valve},
    {"CONTROL", "", PartKind::Valve}, {"HOSE", "", PartKind::Hose},
    {"PIPE", "BEND", PartKind::Bend},
};

constexpr std::string_view valveTypes[] = {"GATE",   "GLOBE",  "BALL",   "CHECK", "BUTTERFLY",
                                           "SAFETY", "RELIEF", "NEEDLE", "PLUG"};

template <typename Row, std::size_t N>
auto tableOf(const Row (&rows)[N], std::string_view Row::*key) {
    tsl::robin_map<std::string_view, const Row*> table;
    for (const Row& row : rows) {
        if (!(row.*key).empty()) {
            table.emplace(row.*key, &row);
        }
    }
    return table;
}

template <typename Table>
auto found(const Table& table, std::string_view key) -> typename Table::mapped_type {
    const auto at = table.find(key);
    return at != table.end() ? at->second : nullptr;
}

bool isDigits(std::string_view text) {
    return !text.empty() && std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

}  // namespace

const TypeRow* typeRow(std::string_view type) {
    static const auto table = tableOf(typeRows, &TypeRow::type);
    return found(table, type);
}

const TypeRow* typeRowOfWord(std::string_view word) {
    static const auto table = tableOf(typeRows, &TypeRow::word);
    const TypeRow* row = found(table, word);
    return row != nullptr ? row : typeRow(word);
}

const TypeRow& plainManager() {
    return plainRow;
}

const PartRow* partRow(std::string_view type) {
    static const auto table = tableOf(partRows, &PartRow::type);
    static const auto words = tableOf(partWords, &PartWord::word);
    const PartWord* word = found(words, type);
    return found(table, word != nullptr ? word->type : type);
}

const PartRow& tubeRow() {
    static const PartRow& row = *partRow("TUBI");
    return row;
}

PartKind kindOfItem(std::string_view item, std::string_view itype) {
    const auto* row = std::find_if(std::begin(itemKinds), std::end(itemKinds), [&](const ItemKind& one) {
        return one.item == item && (one.itype.empty() || one.itype == itype);
    });
    return row != std::end(itemKinds) ? row->kind : PartKind::Default;
}

std::string_view valveTypeOf(std::string_view text) {
    const auto holds = [&](std::string_view word) {
        return std::search(text.begin(), text.end(), word.begin(), word.end(), [](char a, char b) {
                   return (a >= 'a' && a <= 'z' ? a - 'a' + 'A' : a) == b;
               }) != text.end();
    };
    const auto* type = std::find_if(std::begin(valveTypes), std::end(valveTypes), holds);
    if (type == std::end(valveTypes)) {
        return {};
    }
    return *type == "RELIEF" ? "SAFETY" : *type;
}

UngivenName readUngivenName(std::string_view name) {
    const std::size_t of = name.find(" of ");
    const std::size_t blank = name.find(' ');
    if (of == std::string_view::npos || blank >= of || !isDigits(name.substr(blank + 1, of - blank - 1))) {
        return {};
    }
    const std::string_view owner = name.substr(of + 4);
    const std::size_t word = owner.find(' ');
    if (word == std::string_view::npos) {
        return {name.substr(0, blank), name.substr(blank + 1, of - blank - 1), {}, owner};
    }
    return {name.substr(0, blank), name.substr(blank + 1, of - blank - 1), owner.substr(0, word),
            owner.substr(word + 1)};
}

}  // namespace plant::review
