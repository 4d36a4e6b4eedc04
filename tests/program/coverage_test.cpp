// What docs/coverage.md says of each primitive class, held against what the exports write of it.
#include "real_module.h"

#include <algorithm>
#include <cstring>
#include <functional>
#include <map>
#include <vector>

namespace {

using namespace realmodule;

constexpr const char* none = "left out";

std::map<std::string, std::string> samples() {
    std::map<std::string, std::string> found;
    std::istringstream lines(readFile(fs::path(TESSARO_SOURCE_DIR) / "tests/program/primitive_samples.txt"));
    for (std::string name, json; lines >> name && std::getline(lines, json);) {
        found[name] = json;
    }
    return found;
}

// An equipment of one object of one primitive, and a tee of the same.
std::string plantOf(const std::string& primitive) {
    return R"({"format": "tessaro-plant", "version": 1, "project": {"name": "C", "currentManager": 4},
        "databases": [{"name": "P", "root": 1}], "objects": [{"id": 1, "class": "HextWorld", "name": "W"},
        {"id": 2, "class": "HextSite", "in": 1, "name": "S"}, {"id": 3, "class": "HextZone", "in": 2, "name": "Z"},
        {"id": 4, "class": "HextEquipe", "in": 3, "name": "E"}, {"id": 5, "class": "HxDbEquipment", "in": 4,
        "name": "B", "points": [{"no": 1, "at": [0, 0, 0]}], "primitives": [)" +
           primitive + R"(]}, {"id": 6, "class": "HextPipeline", "in": 3, "name": "L", "branches": [[7]]},
        {"id": 7, "class": "HxDbTubeModelSpec", "in": 6, "attrs": {"item": "TEE", "smrtln": "Tee", "size1": "50",
        "specname": "S", "lineno": "6", "minsul": "0"}, "points": [{"no": 0, "at": [0, 0, 0]}, {"no": 1,
        "at": [-50, 0, 0]}, {"no": 2, "at": [50, 0, 0]}, {"no": 3, "at": [0, 50, 0]}], "primitives": [)" +
           primitive + "]}]}";
}

bool holds(const std::string& text, std::string_view part) {
    return text.find(part) != std::string::npos;
}

std::string wordOfMacros(const std::string& equipment) {
    return equipment.empty() ? none : "written";
}

// Solids stand between the line that enters their set and the first point.
std::string wordOfCatalogue(const std::string& cata) {
    const std::size_t entered = cata.rfind("OLD /");
    const std::size_t next = entered != std::string::npos ? cata.find('\n', entered) + 1 : cata.size();
    return cata.substr(std::min(next, cata.size())).rfind("call !!ORNACataPtaxi", 0) == 0 ? none : "written";
}

// The kind of a primitive stands 28 bytes behind the start of its chunk, big-endian; 11 is a list of facets.
std::string wordOfRvm(const std::string& bytes) {
    const std::size_t chunk = bytes.find(std::string_view("\0\0\0P\0\0\0R\0\0\0I\0\0\0M", 16));
    if (chunk == std::string::npos || bytes.size() < chunk + 32) {
        return none;
    }
    return bytes[chunk + 31] == 11 ? "meshed" : "written";
}

// Modes of glTF: 2 and 3 are polylines, none is triangles.
std::string wordOfScene(const std::string& bytes) {
    if (!holds(bytes, "POSITION")) {
        return none;
    }
    return holds(bytes, "\"mode\":2") || holds(bytes, "\"mode\":3") ? "written" : "meshed";
}

std::string wordOfEem(const std::string& bytes) {
    const std::size_t list = bytes.find("GEO:");
    std::int32_t count = 0;
    if (list != std::string::npos && bytes.size() >= list + 8) {
        std::memcpy(&count, bytes.data() + list + 4, sizeof count);
    }
    return count > 0 ? "written" : none;
}

std::string meshedIf(bool isMeshed) {
    return isMeshed ? "meshed" : none;
}

struct Column {
    const char* title;
    const char* file;  // in the folder of the run
    std::function<std::string(const std::string&)> word;
};
const Column columns[] = {
    {"`HEXTOUT` design", "install/temp/hext/equip.txt", wordOfMacros},
    {"`HEXTOUT` catalogue", "install/temp/hext/cata.txt", wordOfCatalogue},
    {"`RVMOUT`", "out/C.rvm", wordOfRvm},
    {"`NVOUT`", "out/C.nwc", wordOfScene},
    {"`OBMOUT`", "out/C.pmodel", [](const std::string& bytes) { return meshedIf(holds(bytes, "POSITION")); }},
    {"`ORNAOUT`", "out/C.eem", wordOfEem},
    {"`MAXOUT`", "out/C.orna", [](const std::string& bytes) { return meshedIf(holds(bytes, "<meshGroup")); }},
    {"`XDBOUT`", "out/C.xdb.json",
     [](const std::string& json) {
         return meshedIf(holds(json, "\"indices\": [\n    [") && !holds(json, "\"indices\": [\n    []"));
     }},
};

std::vector<std::string> cellsOf(const std::string& line) {
    std::vector<std::string> cells;
    std::istringstream parts(line);
    for (std::string cell; std::getline(parts, cell, '|');) {
        const std::size_t first = cell.find_first_not_of(' ');
        cells.push_back(first == std::string::npos ? "" : cell.substr(first, cell.find_last_not_of(' ') - first + 1));
    }
    return cells;
}

// Rows of the page's table of primitives: class, then title of the column, then the words there.
std::map<std::string, std::map<std::string, std::string>> documented() {
    std::map<std::string, std::map<std::string, std::string>> rows;
    std::vector<std::string> titles;
    std::istringstream lines(readFile(fs::path(TESSARO_SOURCE_DIR) / "docs/coverage.md"));
    for (std::string line; std::getline(lines, line);) {
        const std::vector<std::string> cells = cellsOf(line);
        if (cells.size() > 2 && cells[1] == "primitive") {
            titles = cells;
        } else if (cells.size() == titles.size() && cells.size() > 2 && cells[1].rfind("`Hext", 0) == 0) {
            for (std::size_t i = 2; i < cells.size(); ++i) {
                rows[cells[1].substr(1, cells[1].size() - 2)][titles[i]] = cells[i];
            }
        }
    }
    return rows;
}

// An approximation is told by measuring (tests/design), not by the text: here it counts as written.
bool agrees(const std::string& stated, const std::string& found) {
    return stated.rfind(found, 0) == 0 || (stated.rfind("approximated", 0) == 0 && found == "written");
}

class Coverage : public RealModule {};

TEST_F(Coverage, EveryPrimitiveGoesOutAsThePageSays) {
    auto rows = documented();
    const auto primitives = samples();
    EXPECT_EQ(primitives.size(), 22U);
    EXPECT_EQ(rows.size(), primitives.size());
    for (const auto& [name, json] : primitives) {
        fs::remove_all(out());
        std::ofstream(folder() / "one.json") << plantOf(json);
        const int status = tessaro(
            "run HEXTOUT RVMOUT NVOUT OBMOUT ORNAOUT MAXOUT XDBOUT --input a --input b -q --model '" +
            (folder() / "one.json").string() + "' --root '" + root().string() + "' --out '" + out().string() + "'");
        EXPECT_EQ(status, 3) << name << ": " << said();
        for (const Column& column : columns) {
            const std::string found = column.word(readFile(folder() / column.file));
            EXPECT_TRUE(agrees(rows[name][column.title], found))
                << name << " in " << column.title << " is " << found << ", not " << rows[name][column.title];
        }
    }
}

}  // namespace
