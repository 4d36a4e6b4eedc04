#include "platform/param_list.h"

#include <cstring>

namespace {
constexpr std::size_t smallestBlock = 4096;
}

void ParamList::clear() {
    entries_.clear();
    block_ = 0;
    used_ = 0;
    skipped_ = 0;
}

void ParamList::addText(std::string_view key, std::string_view text, std::string_view description) {
    KVParams& entry = append(key, description);
    entry.valueType = KVParams::Text;
    entry.value.text = keep(text).data();
}

void ParamList::addInteger(std::string_view key, std::int64_t number, std::string_view description) {
    KVParams& entry = append(key, description);
    entry.valueType = KVParams::Int64;
    entry.value.int64Value = number;
}

void ParamList::addDouble(std::string_view key, double number, std::string_view description) {
    KVParams& entry = append(key, description);
    entry.valueType = KVParams::Double;
    entry.value.doubleValue = number;
}

KVParams& ParamList::append(std::string_view key, std::string_view description) {
    KVParams& entry = entries_.emplace_back();
    entry.key = keep(key);
    entry.description = keep(description);
    return entry;
}

// Copies the text up to its first zero byte, with one behind it.
std::string_view ParamList::keep(std::string_view text) {
    text = text.substr(0, text.find('\0'));
    if (text.empty()) {
        return {"", 0};
    }
    const std::size_t needed = text.size() + 1;
    if (block_ >= blocks_.size() || blocks_[block_].size - used_ < needed) {
        nextBlock(needed);
    }
    char* place = blocks_[block_].bytes.get() + used_;
    std::memcpy(place, text.data(), text.size());
    place[text.size()] = '\0';
    used_ += needed;
    return {place, text.size()};
}

// Goes on to a block with room for `needed` bytes; each new one doubles the last.
void ParamList::nextBlock(std::size_t needed) {
    used_ = 0;
    block_ = blocks_.empty() ? 0 : block_ + 1;
    while (block_ < blocks_.size() && blocks_[block_].size < needed) {
        ++block_;
    }
    if (block_ < blocks_.size()) {
        return;
    }
    std::size_t size = blocks_.empty() ? smallestBlock : blocks_.back().size * 2;
    while (size < needed) {
        size *= 2;
    }
    blocks_.push_back({std::make_unique_for_overwrite<char[]>(size), size});
}
