// Texts of a model file on their way into the model: unescaped, in the code page, zero-terminated.
#pragma once

#include "plant/model/arena.h"
#include "sources/json/values.h"

#include <string_view>
#include <unordered_map>

namespace plant {

class TextKeeper {
public:
    TextKeeper(Arena& arena, Unescaper& unescape) : arena_(&arena), unescape_(&unescape) {}

    // The view's data is zero-terminated and lives with the arena.
    std::string_view keep(const RawText& text) {
        if (text.plain) [[likely]] {
            return {arena_->copyPaddedText(text.data, text.size), text.size};
        }
        return convert(text);
    }
    const char* keep(od::value& value) { return keep(rawText(value)).data(); }
    Unescaper& unescape() { return *unescape_; }

private:
    std::string_view convert(const RawText& text);

    Arena* arena_;
    Unescaper* unescape_;
    // What was converted, by its text in the file: names repeat, and converting costs.
    std::unordered_map<std::string_view, std::string_view> converted_;
    Arena spellings_;
};

}  // namespace plant
