#include "navisworks/library/session.h"

#include "nwcreate/nwcreate.h"
#include "platform/hxcom.h"
#include "platform/left_out.h"

namespace nv {

namespace {

LibrarySession* current = nullptr;

}  // namespace

LibrarySession::LibrarySession() {
    current = this;
    LiNwcApiErrorInitialise();
    isReady_ = LiNwcApiInitialise() == LI_NWC_OK;
    if (isReady_) {
        LiNwcApiSetErrorHandler(&LibrarySession::handle, nullptr);
    }
}

LibrarySession::~LibrarySession() {
    object_ = nullptr;
    if (isReady_) {
        LiNwcApiTerminate();
    }
    current = nullptr;
}

void LibrarySession::setCurrentObject(const HxDbObject* object) {
    if (current != nullptr) {
        current->object_ = object;
    }
}

void LibrarySession::check() {
    if (current != nullptr && !current->error_.empty()) {
        throw LibraryError(current->error_);
    }
}

// After the first error nothing more is said: what follows from it until the next check tells nobody anything.
void LibrarySession::handle(int kind, const char* text) {
    if (current == nullptr || !current->error_.empty()) {
        return;
    }
    if (kind == LI_NWC_WARNING) {
        hxcad::hextPrintf("Warning: %s\n", text);
        reportLeftOut(current->object_, "geometry", text);
        return;
    }
    hxcad::hextPrintf(kind == LI_NWC_ERROR ? "Error: %s\n" : "UNKNOWN: %s\n", text);
    current->error_ = std::string("the scene library: ") + text;
}

}  // namespace nv
