// The installation root and everything named relative to it.
#include "platform/hxcom.h"
#include "tolmar/code_page.h"
#include "tolmar/paths.h"
#include "tolmar/system.h"
#include "tolmar/text.h"

#include <algorithm>
#include <cstring>
#include <string>
#include <string_view>

namespace {

struct Session {
    std::string root = ".";
    bool dryRun = false;
    bool scriptsTrusted = false;
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

std::string installedPath(std::string_view relative) {
    relative.remove_prefix(std::min(relative.find_first_not_of("\\/"), relative.size()));
    const std::string& root = installationRoot();
    return fromUtf8(resolvePath(relative.empty() ? root : root + "/" + std::string(relative)).string());
}

std::string currentProjectName() {
    const char* name = HextSystem::getCurrentProjName();
    return tolmar::textOrEmpty(name);
}

void setDryRun(bool on) {
    session().dryRun = on;
}

bool dryRun() {
    return session().dryRun;
}

void setScriptsTrusted(bool on) {
    session().scriptsTrusted = on;
}

bool scriptsTrusted() {
    return session().scriptsTrusted;
}

}  // namespace tolmar

const char* HextSystem::getFullHextName(const char* relative) {
    static std::string name;
    name = tolmar::installedPath(tolmar::textOrEmpty(relative));
    return name.c_str();
}

void HextSystem::getFullHextName(const char* relative, char* buffer, int size) {
    if (buffer == nullptr || size <= 0) {
        return;
    }
    const std::string name = tolmar::installedPath(tolmar::textOrEmpty(relative));
    const std::size_t length = std::min(name.size(), static_cast<std::size_t>(size) - 1);
    std::memcpy(buffer, name.data(), length);
    buffer[length] = '\0';
}

const char* HextSystem::hextEnv() {
    return tolmar::installationRoot().c_str();
}
