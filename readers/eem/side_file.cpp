// The JSON file beside an EEM file. Its texts are in the code page, whose characters may hold a byte that is a
// backslash elsewhere; the bytes are parsed as they are.
#include "readers/eem/file.h"

#include <algorithm>
#include <cjson/cJSON.h>
#include <memory>

namespace eemcheck {

namespace {

constexpr std::size_t mostFindings = 100;

struct JsonDeleter {
    void operator()(cJSON* item) const { cJSON_Delete(item); }
};
using JsonPtr = std::unique_ptr<cJSON, JsonDeleter>;

class SideReader {
public:
    explicit SideReader(Findings& findings) : findings_(findings) {}

    std::vector<SideMember> run(std::string_view bytes) {
        const char* end = nullptr;
        const JsonPtr root(cJSON_ParseWithLengthOpts(bytes.data(), bytes.size(), &end, 0));
        if (!cJSON_IsObject(root.get())) {
            note("root", "no JSON object");
            return {};
        }
        if (end != bytes.data() + bytes.size()) {
            note("root", "bytes behind it");
        }
        std::vector<SideMember> members;
        for (const cJSON* item = root->child; item != nullptr; item = item->next) {
            members.push_back(readMember(*item));
        }
        return members;
    }

private:
    void note(const std::string& place, std::string text) {
        if (findings_.size() < mostFindings) {
            findings_.push_back({"member " + place, std::move(text)});
        }
    }
    SideMember readMember(const cJSON& item) {
        SideMember member;
        member.key = item.string;
        const cJSON* attributes = cJSON_IsObject(&item) ? item.child : nullptr;
        const cJSON* className = attributes != nullptr ? attributes->next : nullptr;
        const cJSON* name = className != nullptr ? className->next : nullptr;
        if (!isCalled(attributes, "attr") || !isCalled(className, "cls") || !isCalled(name, "name") ||
            name->next != nullptr || !cJSON_IsObject(attributes) || !cJSON_IsString(className) ||
            !cJSON_IsString(name)) {
            note(member.key, "attr, cls and name expected");
            return member;
        }
        readAttributes(*attributes, member);
        member.className = className->valuestring;
        member.name = name->valuestring;
        return member;
    }
    static bool isCalled(const cJSON* item, std::string_view name) { return item != nullptr && item->string == name; }
    void readAttributes(const cJSON& attributes, SideMember& member) {
        for (const cJSON* item = attributes.child; item != nullptr; item = item->next) {
            if (cJSON_IsString(item)) {
                member.attributes.emplace_back(item->string, item->valuestring);
            } else {
                note(member.key, std::string("attribute ") + item->string + " is no text");
            }
        }
    }

    Findings& findings_;
};

std::string describe(std::int64_t id, const std::string& name) {
    return std::to_string(id) + " \"" + name + "\"";
}

}  // namespace

std::vector<SideMember> readSideFile(std::string_view bytes, Findings& findings) {
    return SideReader(findings).run(bytes);
}

void checkPair(const EemContent& content, const std::vector<SideMember>& members, Findings& findings) {
    const std::size_t common = std::min(content.blocks.size(), members.size());
    for (std::size_t i = 0; i < common; ++i) {
        const Block& block = content.blocks[i];
        if (members[i].key != std::to_string(block.id) || members[i].name != block.name) {
            findings.push_back({"member " + members[i].key, "\"" + members[i].name + "\" where the EEM file has " +
                                                                describe(block.id, block.name)});
            return;
        }
    }
    if (content.blocks.size() != members.size()) {
        findings.push_back({"member " + std::to_string(common), std::to_string(members.size()) + " members beside " +
                                                                    std::to_string(content.blocks.size()) + " blocks"});
    }
}

}  // namespace eemcheck
