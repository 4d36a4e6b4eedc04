#include "plant/memory/name_rows.h"

#include <cassert>
#include <utility>

namespace plant {

NameRows::NameRows(std::string title, std::vector<Name> names) : title_(std::move(title)), names_(std::move(names)) {
    assert(names_.size() <= mostNames);
    slots_.fill(none);
    for (std::size_t row = 0; row < names_.size(); ++row) {
        const std::string_view text = names_[row].text;
        char padded[lettersOfKey] = {};
        std::memcpy(padded, text.data(), std::min(text.size(), lettersOfKey));
        keys_.push_back({firstLetters(padded, text.size()), text.size()});
        std::size_t slot = slotOf(keys_.back().start, text.size());
        while (slots_[slot] != none) {
            slot = (slot + 1) % slotCount;
        }
        slots_[slot] = static_cast<std::int8_t>(row);
        required_ |= std::uint64_t{names_[row].required} << row;
    }
}

}  // namespace plant
