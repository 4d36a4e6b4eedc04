#include "sources/json/rows.h"

namespace plant {

namespace rows {

const NameRows& top() {
    static const NameRows names("the file", {{"format", true},
                                             {"version", true},
                                             {"project"},
                                             {"attributeLabels"},
                                             {"databases", true},
                                             {"objects", true}});
    return names;
}

const NameRows& project() {
    static const NameRows names("the project", {{"name"},
                                                {"path"},
                                                {"user"},
                                                {"module"},
                                                {"database"},
                                                {"designItems"},
                                                {"projectItems"},
                                                {"weldColor"},
                                                {"currentManager"},
                                                {"platformPath"}});
    return names;
}

const NameRows& database() {
    static const NameRows names("a database", {{"name", true}, {"shortName"}, {"main"}, {"root"}});
    return names;
}

const NameRows& attribute() {
    static const NameRows names("an attribute", {{"key", true}, {"value", true}, {"type"}, {"description"}});
    return names;
}

const NameRows& point() {
    static const NameRows names("a point", {{"no", true}, {"at", true}, {"flow"}, {"to"}});
    return names;
}

const NameRows& keyPoint() {
    static const NameRows names("a key point", {{"no", true}, {"at", true}});
    return names;
}

const NameRows& insulation() {
    static const NameRows names("an insulation", {{"thickness"}, {"material"}, {"code"}});
    return names;
}

const NameRows& end() {
    static const NameRows names("an end", {{"size"}, {"endType"}, {"outer"}, {"inner"}, {"section"}});
    return names;
}

const NameRows& run() {
    static const NameRows names("a run", {{"name", true}, {"items"}, {"attrs"}});
    return names;
}

}  // namespace rows

}  // namespace plant
