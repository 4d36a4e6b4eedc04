#include "hextinterface/manager/register/numbered_texts.h"

namespace naming {

TextTable::Added TextTable::add(std::string_view text) {
    const std::uint32_t known = find(text);
    if (known != none) {
        return {known, false};
    }
    const auto number = static_cast<std::uint32_t>(texts_.size());
    numbers_.emplace(texts_.emplace_back(text), number);
    return {number, true};
}

std::uint32_t TextTable::find(std::string_view text) const {
    const auto known = numbers_.find(text);
    return known == numbers_.end() ? none : known->second;
}

std::uint32_t TextCounters::next(std::string_view text) {
    const auto [number, isNew] = texts_.add(text);
    if (isNew) {
        counts_.push_back(0);
    }
    return ++counts_[number];
}

}  // namespace naming
