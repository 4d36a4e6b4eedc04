// Profile files: any bytes can be read, and a value that was written is read back while the rest is still there.
#include "scratch_file.h"
#include "tolmar/system.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const fuzz::Root root("plugins/options.ini");
    root.put(fuzz::asText(data, size));
    const std::string file = root.file();
    for (const char* section : {"Control", "NodePrefix", ""}) {
        tolmar::getPrivateProfileInt(section, "outWeld", 0, file);
        tolmar::getPrivateProfileString(section, "HextSite", "none", 40, file);
    }
    const std::string other = tolmar::getPrivateProfileString("NodePrefix", "HextSite", "none", 1000, file);
    fuzz::require(tolmar::writePrivateProfileString("Control", "outWeld", "1", file));
    fuzz::require(tolmar::getPrivateProfileInt("Control", "outWeld", 0, file) == 1);
    fuzz::require(tolmar::getPrivateProfileString("NodePrefix", "HextSite", "none", 1000, file) == other);
    return 0;
}
