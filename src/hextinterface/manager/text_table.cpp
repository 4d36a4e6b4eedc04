#include "hextinterface/manager/text_table.h"

namespace naming {

void FlatIndex::place(Slot slot) {
    std::size_t at = slot.tag & mask_;
    while (slots_[at].number != none) {
        at = (at + 1) & mask_;
    }
    slots_[at] = slot;
}

void FlatIndex::add(std::uint64_t hash, std::uint32_t number) {
    if (++used_ * 2 > slots_.size()) {
        std::vector<Slot> old(slots_.size() * 2);
        old.swap(slots_);
        mask_ = slots_.size() - 1;
        for (const Slot& slot : old) {
            if (slot.number != none) {
                place(slot);
            }
        }
    }
    place({tagOf(hash), number});
}

TextTable::Added TextTable::add(std::string_view text) {
    const std::uint64_t hash = std::hash<std::string_view>()(text);
    const std::uint32_t known = find(text, hash);
    if (known != none) {
        return {known, false};
    }
    const auto number = static_cast<std::uint32_t>(texts_.size());
    texts_.emplace_back(text);
    index_.add(hash, number);
    return {number, true};
}

std::uint32_t TextTable::find(std::string_view text) const {
    return find(text, std::hash<std::string_view>()(text));
}

std::uint32_t TextCounters::next(std::string_view text) {
    const auto [number, isNew] = texts_.add(text);
    if (isNew) {
        counts_.push_back(0);
    }
    return ++counts_[number];
}

}  // namespace naming
