#include "plant/memory/attribute_tables.h"

#include <limits>

namespace plant {

NumberedTexts::NumberedTexts() : texts_{std::string_view("")}, numbers_{{std::string_view(""), 0}} {}

std::optional<std::uint16_t> NumberedTexts::find(std::string_view text) const {
    const auto at = numbers_.find(text);
    return at == numbers_.end() ? std::nullopt : std::optional(at->second);
}

std::optional<std::uint16_t> NumberedTexts::intern(std::string_view text, Arena& arena) {
    if (const auto number = find(text)) {
        return number;
    }
    if (texts_.size() > std::numeric_limits<std::uint16_t>::max()) {
        return std::nullopt;
    }
    const auto number = static_cast<std::uint16_t>(texts_.size());
    texts_.emplace_back(arena.copyText(text), text.size());
    numbers_.emplace(texts_.back(), number);
    return number;
}

std::string_view AttributeTables::labelOf(std::uint16_t key) const {
    const auto at = labels.find(key);
    return at == labels.end() ? std::string_view() : at->second;
}

}  // namespace plant
