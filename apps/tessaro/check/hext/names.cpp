#include "tessaro/check/hext/names.h"

#include "readers/hext/folder.h"

#include <map>
#include <set>

namespace check {

namespace {

using readers::hext::Mention;
using readers::hext::NameMention;

constexpr std::size_t longestName = 51;

class Names {
public:
    explicit Names(readers::Findings& findings) : findings_(findings) {}

    void take(const NameMention& mention) {
        const std::string name(mention.name);
        switch (mention.what) {
        case Mention::Created:
            return create(name, mention.place);
        case Mention::Entered:
            if (rows_.contains(name)) {
                return;
            }
            [[fallthrough]];
        case Mention::Referred:
            return expect(name == "*" || name == "Nulref" || created_.contains(name), mention,
                          "no element " + name + " so far");
        case Mention::RowCreated:
            expect(rows_.insert(name).second, mention, "the row " + name + " stands twice");
            return expect(name.size() <= longestName, mention,
                          "the row name " + name + " has " + std::to_string(name.size()) + " bytes");
        case Mention::RowReferred:
            return expect(rows_.contains(name), mention, "no specification row " + name);
        case Mention::AttributeDefined:
            attributes_.insert(name);
            return;
        case Mention::AttributeUsed:
            return expect(attributes_.contains(name), mention, "the attribute " + name + " is not defined");
        }
    }

private:
    void expect(bool isGood, const NameMention& mention, const std::string& text) {
        if (!isGood) {
            readers::note(findings_, mention.place, text);
        }
    }
    void create(const std::string& name, const std::string& place) {
        if (name.size() > longestName) {
            readers::note(findings_, place, "the name " + name + " has " + std::to_string(name.size()) + " bytes");
        }
        const auto [at, isNew] = created_.try_emplace(name, place);
        if (!isNew) {
            readers::note(findings_, place, "the name " + name + " was created at " + at->second + " already");
        }
    }

    readers::Findings& findings_;
    std::map<std::string, std::string> created_;  // name to the place of its creation
    std::set<std::string> rows_;                  // of specifications
    // Of the user; the target defines two itself.
    std::set<std::string> attributes_{"OpePress", "OpeTemp"};
};

}  // namespace

void hextNames(const std::filesystem::path& folder, readers::Findings& findings) {
    Names names(findings);
    readers::hext::readFolder(
        folder, [&names](const NameMention& mention) { names.take(mention); }, findings);
}

}  // namespace check
