#include "plant/objects/last_error.h"

#include "platform/hxcom.h"

namespace {
const char* lastError = "";
}

void plant::setLastError(const char* text) {
    lastError = text;
}

const char* hxcom::getLastErrorText() {
    return lastError;
}
