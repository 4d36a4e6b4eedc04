#include "hextinterface/ornatohextprocess/specs/conn_table.h"

#include "platform/attribute_cache.h"

#include <set>
#include <string>
#include <utility>

namespace {

using Pairs = std::set<std::pair<std::string, std::string>>;

constexpr const char* endKeys[] = {"end1", "end2", "end3", "end4"};
constexpr const char* partners[] = {"ATT", "OPEN"};
constexpr std::pair<const char*, const char*> fixedPairs[] = {
    {"ATT", "CLAM"}, {"ATT", "NONE"}, {"CATT", "WELD"}, {"NONE", "WELD"}, {"ATT", "ATT"}, {"CATT", "CATT"},
};

std::set<std::string> endTypesOf(const ComponentList& objects) {
    std::set<std::string> types;
    for (const HxDbSmrtlnEntity* object : objects) {
        for (const char* key : endKeys) {
            if (const std::string_view type = getBomValue(object, key); !type.empty()) {
                types.emplace(type);
            }
        }
    }
    return types;
}

Pairs allowedPairs(const ComponentList& objects, const NameManager& names) {
    Pairs pairs(std::begin(fixedPairs), std::end(fixedPairs));
    for (const std::string& type : endTypesOf(objects)) {
        const std::string kept = names.joints.keepName(type);
        for (const std::string partner : partners) {
            pairs.insert(partner < kept ? std::pair(partner, kept) : std::pair(kept, partner));
        }
    }
    return pairs;
}

}  // namespace

void ConnTableWriter::writeBranchConnections(const ComponentList& objects) {
    const std::string table = names_.joints.getConnTableName();
    if (objects.empty() || !names_.markIfNotCreated(table)) {
        return;
    }
    out_.line("NEW CCTA /", table);
    for (const auto& [a, b] : allowedPairs(objects, names_)) {
        const std::string name = names_.joints.getCocoName(a, b);
        if (names_.markIfNotCreated(name)) {
            out_.line("NEW COCO /", name);
            out_.line("CTYPE ", a, " ", b);
            out_.line("END");
        }
    }
    out_.line("END");
}
