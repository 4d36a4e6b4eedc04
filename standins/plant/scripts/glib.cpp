// Items of the graphics library and system scripts, kept by name.
#include "plant/scripts/state.h"

#include "platform/hxcom.h"
#include "tolmar/file.h"

#include <map>

namespace glib {

namespace {

// An entry without a host is a script that is missing or failed; it is not tried again.
struct KeptItem {
    std::unique_ptr<HextGlibItem> item;
    Hext::GlibStatus status = eNoItem;
};
using KeptItems = std::map<std::string, KeptItem, std::less<>>;

KeptItems& keptItems() {
    static KeptItems items;
    return items;
}

bool isPlainName(std::string_view name) {
    return !name.empty() && name.find_first_of(std::string_view("/\\:\0", 4)) == std::string_view::npos;
}

KeptItem loadItem(const std::string& path) {
    std::string bytes;
    if (!tolmar::readFile(path, bytes)) {
        return {};
    }
    KeptItem kept{std::make_unique<HextGlibItem>(), 0};
    if (kept.item->getLuaScriptor()->loadFile(path.c_str(), 0) != 0) {
        kept = {nullptr, eItemFailed};
    }
    return kept;
}

const KeptItem& itemOf(const char* folder, const char* name) {
    static const KeptItem none;
    if (name == nullptr || !isPlainName(name)) {
        return none;
    }
    const std::string relative = std::string(folder) + name + ".lua";
    auto found = keptItems().find(relative);
    if (found == keptItems().end()) {
        found = keptItems().emplace(relative, loadItem(HextSystem::getFullHextName(relative.c_str()))).first;
    }
    return found->second;
}

}  // namespace

HextGlibScriptor* initSysScriptor(const char* name) {
    const KeptItem& kept = itemOf("sys/", name);
    return kept.item != nullptr ? kept.item->getLuaScriptor() : nullptr;
}

Hext::GlibStatus getGlibItem(const char* name, Plant::ObjectType, HextGlibItem*& item, int) {
    const KeptItem& kept = itemOf("glib/", name);
    item = kept.item.get();
    return kept.status;
}

void clearItems() {
    keptItems().clear();
}

}  // namespace glib
