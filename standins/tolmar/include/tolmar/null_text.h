// The platform's calls take and give null where there is no text.
#pragma once

namespace tolmar {

// The text itself, or the empty one for null.
inline const char* orEmpty(const char* text) {
    return text != nullptr ? text : "";
}

}  // namespace tolmar
