// What the platform knows of the current project, design and user.
#include "plant/model/data.h"
#include "platform/hxcom.h"
#include "tolmar/text.h"

#include <string_view>

namespace {

const plant::ProjectData& project() {
    static const plant::ProjectData none;
    return plant::currentModel() != nullptr ? plant::currentModel()->project : none;
}

const char* itemOf(const plant::TextMap& items, std::string_view key, const char* otherwise) {
    const auto at = items.find(key);
    return at != items.end() ? at->second : otherwise;
}

const char* currentDatabase() {
    if (project().database != nullptr) {
        return project().database;
    }
    return plant::currentModel() != nullptr ? plant::currentModel()->main->name : "";
}

}  // namespace

const char* HextSystem::getCurrentProjName() {
    return project().name;
}
const char* HextSystem::getCurrentProjPath() {
    return project().path;
}
const char* HextSystem::getCurrentUser() {
    return project().user;
}
const char* HextSystem::hextFullPlatformPath() {
    return project().platformPath;
}

const char* HextSystem::getCurrentDesignItem(const char* key, bool) {
    const std::string_view wanted = tolmar::textOrEmpty(key);
    return itemOf(project().designItems, wanted, wanted == "CurSelDatabase" ? currentDatabase() : "");
}

const char* HextSystem::getCurrentProjItem(const char* key, bool) {
    const std::string_view wanted = tolmar::textOrEmpty(key);
    return itemOf(project().projectItems, wanted, wanted == "name" ? project().name : "");
}
