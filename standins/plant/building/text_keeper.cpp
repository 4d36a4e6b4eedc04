#include "plant/building/text_keeper.h"

#include "plant/refusal.h"
#include "tolmar/code_page.h"

#include <algorithm>

namespace plant {

namespace {

bool isAscii(std::string_view text) {
    return std::none_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) >= 0x80; });
}

void refuseZero(std::string_view text) {
    if (text.find('\0') != std::string_view::npos) {
        refuse("a text holds a zero character");
    }
}

}  // namespace

std::string_view TextKeeper::keep(std::string_view utf8) {
    refuseZero(utf8);
    return isAscii(utf8) ? std::string_view(arena_->copyText(utf8), utf8.size()) : convert(utf8);
}

std::string_view TextKeeper::convert(std::string_view utf8) {
    constexpr std::size_t mostRemembered = 1 << 16;
    if (const auto at = converted_.find(utf8); at != converted_.end()) {
        return at->second;
    }
    const std::string text = tolmar::fromUtf8(utf8);
    const std::string_view kept(arena_->copyText(text), text.size());
    if (converted_.size() < mostRemembered) {
        converted_.emplace(std::string_view(spellings_.copyText(utf8), utf8.size()), kept);
    }
    return kept;
}

std::string inCodePage(std::string_view utf8) {
    refuseZero(utf8);
    return tolmar::fromUtf8(utf8);
}

}  // namespace plant
