#include "scripts/project_config.h"

#include "platform/hxcom.h"
#include "tolmar/run_report.h"

#include <exception>

namespace {

bool switchOn(const char* key) {
    return loadProjectConfig()[key].intValue() == 1;
}

// The export goes on, but not as the project wants it.
void tellUnreadable(const std::exception& fault) {
    tolmar::runReport().ended(tolmar::RunOutcome::Failed, projectConfigPath() + ": " + fault.what());
}

bool switchOnOr(const char* key, bool unreadable) {
    try {
        return switchOn(key);
    } catch (const std::exception& fault) {
        tellUnreadable(fault);
        return unreadable;
    }
}

std::string upperCase(std::string_view text) {
    std::string upper(text);
    for (char& c : upper) {
        c = c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
    }
    return upper;
}

// An empty value when the file cannot be read, so that every member reads as missing.
JsonValue configOrNothing() {
    try {
        return loadProjectConfig();
    } catch (const std::exception& fault) {
        tellUnreadable(fault);
        return {};
    }
}

}  // namespace

std::string projectConfigPath() {
    return HextSystem::getFullHextName("temp/hext/config.json");
}

JsonValue loadProjectConfig() {
    JsonValue config;
    try {
        config.load(projectConfigPath());
    } catch (const std::exception& fault) {
        throw ProjectConfigFault(fault.what());
    }
    return config;
}

bool configEqnoName() {
    return switchOn("eqnoName");
}

bool configEquipPostName() {
    return switchOnOr("equipPostName", true);
}

bool configSupportSpec() {
    return switchOnOr("supportSpec", false);
}

bool configBoltSpec() {
    return switchOnOr("boltSpec", false);
}

ConfigTexts ConfigTexts::detailTexts() {
    ConfigTexts texts;
    JsonValue config = configOrNothing();
    JsonValue member = config["detailText"];
    texts.addMembers(member, "");
    return texts;
}

ConfigTexts ConfigTexts::boltTexts() {
    ConfigTexts texts;
    JsonValue config = configOrNothing();
    JsonValue kinds = config["boltText"];
    for (const char* kind : {"BOLT", "NUT"}) {
        JsonValue member = kinds[kind];
        texts.addMembers(member, kind);
    }
    return texts;
}

std::string_view ConfigTexts::find(std::string_view key) const {
    auto found = texts_.find(upperCase(key));
    return found != texts_.end() ? std::string_view(found->second) : std::string_view();
}

void ConfigTexts::addMembers(JsonValue& object, std::string_view prefix) {
    struct Target {
        ConfigTexts& texts;
        std::string_view prefix;
    } target{*this, prefix};
    auto add = [](JsonValue& child, void* data) {
        auto& [texts, start] = *static_cast<Target*>(data);
        // The first of equal names counts, as for every other member of the file.
        texts.texts_.try_emplace(upperCase(std::string(start) + child.name()), child.stringValue());
        return true;
    };
    object.forEachChild(add, &target, false);
}
