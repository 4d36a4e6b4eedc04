#include "sources/json/text_keeper.h"

#include "tolmar/code_page.h"

namespace plant {

std::string_view TextKeeper::convert(const RawText& text) {
    constexpr std::size_t mostRemembered = 1 << 16;
    if (const auto at = converted_.find(text.view()); at != converted_.end()) {
        return at->second;
    }
    const std::string inCodePage = tolmar::fromUtf8((*unescape_)(text));
    const std::string_view kept(arena_->copyText(inCodePage), inCodePage.size());
    if (converted_.size() < mostRemembered) {
        converted_.emplace(std::string_view(spellings_.copyText(text.view()), text.size), kept);
    }
    return kept;
}

}  // namespace plant
