#include "tessaro/run/screen_ui.h"

#include <dlfcn.h>

std::unique_ptr<tolmar::HostUi> openScreenUi(tolmar::HostUi& console, std::string& error) {
    using Create = tolmar::HostUi* (*)(tolmar::HostUi&);
    void* library = ::dlopen("libtessaro-qt.so", RTLD_NOW | RTLD_LOCAL);
    if (library == nullptr) {
        error = std::string("no dialogs on the screen here; leave --interactive out (") + ::dlerror() + ")";
        return nullptr;
    }
    const auto create = reinterpret_cast<Create>(::dlsym(library, "tessaroCreateQtUi"));
    if (create == nullptr) {
        error = "libtessaro-qt.so is none of this program's libraries";
        return nullptr;
    }
    std::unique_ptr<tolmar::HostUi> screen(create(console));
    if (screen == nullptr) {
        error = "there is no screen to show dialogs on; set DISPLAY or leave --interactive out";
    }
    return screen;
}
