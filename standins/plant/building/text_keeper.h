// Texts on their way into the model: from UTF-8 into the code page, zero-terminated.
#pragma once

#include "plant/memory/arena.h"

#include <string>
#include <string_view>
#include <tsl/robin_map.h>

namespace plant {

// A text that its source knows to be ASCII without a zero character, with `roomBehindText` readable bytes behind it: it
// is copied as it stands, in a few steps.
struct PlainText {
    const char* data;
    std::size_t size;
    std::string_view view() const { return {data, size}; }
};

class TextKeeper {
public:
    explicit TextKeeper(Arena& arena) : arena_(&arena) {}

    // The view's data is zero-terminated and lives with the arena. UTF-8 with a zero character is refused.
    std::string_view keep(PlainText text) { return {arena_->copyPaddedText(text.data, text.size), text.size}; }
    std::string_view keep(std::string_view utf8);

private:
    std::string_view convert(std::string_view utf8);

    Arena* arena_;
    // What was converted, by its text in UTF-8: names repeat, and converting costs.
    tsl::robin_map<std::string_view, std::string_view> converted_;
    Arena spellings_;
};

// The text in the code page; one with a zero character is refused.
std::string inCodePage(std::string_view utf8);

}  // namespace plant
