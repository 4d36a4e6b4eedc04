// The installation root and everything named relative to it.
#include "platform/hxcom.h"
#include "tolmar/code_page.h"
#include "tolmar/paths.h"
#include "tolmar/system.h"

#include <algorithm>
#include <cstring>
#include <string>
#include <string_view>

namespace {

std::string fullName(const char* relative) {
    std::string_view rest = relative == nullptr ? "" : relative;
    rest.remove_prefix(std::min(rest.find_first_not_of("\\/"), rest.size()));
    const std::string& root = tolmar::installationRoot();
    return tolmar::fromUtf8(tolmar::resolvePath(rest.empty() ? root : root + "/" + std::string(rest)).string());
}

struct Session {
    std::string root = ".";
    bool dryRun = false;
};

Session& session() {
    static Session session;
    return session;
}

}  // namespace

namespace tolmar {

void setInstallationRoot(std::string_view codePagePath) {
    session().root = codePagePath;
}

const std::string& installationRoot() {
    return session().root;
}

std::string currentProjectName() {
    const char* name = HextSystem::getCurrentProjName();
    return name == nullptr ? "" : name;
}

void setDryRun(bool on) {
    session().dryRun = on;
}

bool dryRun() {
    return session().dryRun;
}

}  // namespace tolmar

const char* HextSystem::getFullHextName(const char* relative) {
    static std::string name;
    name = fullName(relative);
    return name.c_str();
}

void HextSystem::getFullHextName(const char* relative, char* buffer, int size) {
    if (buffer == nullptr || size <= 0) {
        return;
    }
    const std::string name = fullName(relative);
    const std::size_t length = std::min(name.size(), static_cast<std::size_t>(size) - 1);
    std::memcpy(buffer, name.data(), length);
    buffer[length] = '\0';
}

const char* HextSystem::hextEnv() {
    return tolmar::installationRoot().c_str();
}
