// Zero-terminated texts that may be missing, as the platform hands them out.
#pragma once

namespace tolmar {

// The text itself, or the empty text for null. The result lives as long as `text`.
constexpr const char* textOrEmpty(const char* text) {
    return text != nullptr ? text : "";
}

}  // namespace tolmar
