#include "scripts/options.h"

#include "platform/hxcom.h"
#include "tolmar/system.h"

namespace {

constexpr const char* section = "Control";
constexpr const char* optionFile = "plugins\\nvoutplugins.ini";

}  // namespace

bool optionOn(const char* key) {
    return tolmar::getPrivateProfileInt(section, key, 0, HextSystem::getFullHextName(optionFile)) == 1;
}

bool setOption(const char* key, bool on) {
    return tolmar::writePrivateProfileString(section, key, on ? "1" : "0", HextSystem::getFullHextName(optionFile));
}
