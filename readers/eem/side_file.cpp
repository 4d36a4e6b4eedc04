// The texts are in the code page, whose characters may hold a byte that is a backslash elsewhere; the bytes are parsed
// as they are.
#include "readers/eem/side_file.h"

#include <cjson/cJSON.h>
#include <memory>

namespace readers::eem {

namespace {

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
        readers::note(findings_, "member " + place, std::move(text));
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

}  // namespace

std::vector<SideMember> readSideFile(std::string_view bytes, Findings& findings) {
    return SideReader(findings).run(bytes);
}

}  // namespace readers::eem
