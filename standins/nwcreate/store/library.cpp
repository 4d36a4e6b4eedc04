#include "nwcreate/store/library.h"

#include "gltf/json_escape.h"

#include <type_traits>

namespace nwcreate {

namespace {

LiNwcStatus tell(const Library& lib, int kind, LiNwcStatus status, const std::string& text) {
    if (lib.handler != nullptr) {
        lib.handler(kind, text.c_str());
    }
    return status;
}

std::string message(const char* call, std::string_view why) {
    return std::string(call).append(": ").append(why);
}

}  // namespace

Library theLibrary;

std::uint64_t Library::live() {
    std::uint64_t count = 0;
    forEachTable([&count](auto& table) { count += table.live(); });
    return count;
}

void Library::reset() {
    forEachTable([](auto& table) { table.clear(); });
    current = nullptr;
    classes.clear();
}

LiNwcStatus badHandle(const char* call) {
    Library& lib = library();
    ++lib.misused;
    return tell(lib, LI_NWC_ERROR, LI_NWC_BAD_HANDLE, message(call, "the handle is dead or of another kind"));
}

LiNwcStatus badOrder(const char* call, std::string_view why) {
    return tell(library(), LI_NWC_ERROR, LI_NWC_BAD_ORDER, message(call, why));
}

LiNwcStatus badValue(const char* call, std::string_view why) {
    return tell(library(), LI_NWC_WARNING, LI_NWC_BAD_VALUE, message(call, why));
}

LiNwcStatus outOfMemory(const char* call, const char* why) {
    return tell(library(), LI_NWC_ERROR, LI_NWC_FAILED, message(call, why));
}

std::string escapedText(const char16_t* text) {
    std::string inside;
    gltf::appendEscaped(inside, textOf(text));
    return inside;
}

}  // namespace nwcreate

using namespace nwcreate;

LiNwcStatus LiNwcApiErrorInitialise(void) {
    library().handler = nullptr;
    return LI_NWC_OK;
}

LiNwcStatus LiNwcApiInitialise(void) {
    Library& lib = library();
    if (lib.isReady) {
        return badOrder("LiNwcApiInitialise", "the library is initialised already");
    }
    lib.isReady = true;
    lib.spoolFolder.clear();
    lib.fileLimit = 0;
    lib.given = lib.left = lib.misused = 0;
    return LI_NWC_OK;
}

LiNwcStatus LiNwcApiSetErrorHandler(LiNwcErrorHandler handler, void*) {
    library().handler = handler;
    return LI_NWC_OK;
}

LiNwcStatus LiNwcApiTerminate(void) {
    return guarded("LiNwcApiTerminate", [](Library& lib) -> LiNwcStatus {
        lib.left = lib.live();
        lib.reset();
        lib.isReady = false;
        if (lib.left > 0) {
            tell(lib, LI_NWC_WARNING, LI_NWC_OK,
                 "LiNwcApiTerminate: " + std::to_string(lib.left) + " references were not given back");
        }
        lib.handler = nullptr;
        return LI_NWC_OK;
    });
}
