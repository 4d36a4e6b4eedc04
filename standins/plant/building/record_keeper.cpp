#include "plant/building/record_keeper.h"

#include "plant/refusal.h"

#include <array>
#include <limits>
#include <string>

namespace plant {

namespace {

constexpr std::size_t mostTextBytes = (std::size_t{1} << 28) - 1;

// What each type of value takes, from type 1 on.
constexpr std::array<const char*, 9> typeWords = {"a whole number of 16 bits",
                                                  "a number",
                                                  "an array of three numbers",
                                                  "a text",
                                                  "a whole number of 32 bits",
                                                  "a whole number",
                                                  "a whole number",
                                                  "a whole number of 16 bits",
                                                  "a text"};

template <typename Whole>
bool fits(std::int64_t value) {
    return value >= std::numeric_limits<Whole>::min() && value <= std::numeric_limits<Whole>::max();
}

// Gives a value the type that is asked for. False when it is no value of that type.
bool convert(smrtln::BomRecord& record, std::int64_t type) {
    const std::uint32_t told = record.type;
    const bool isWhole = told == KVParams::Int || told == KVParams::Int64;
    record.type = static_cast<std::uint32_t>(type) & 15U;
    switch (type) {
    case KVParams::Short:
    case KVParams::ShortAlias:
        return isWhole && fits<std::int16_t>(record.integer);
    case KVParams::Double:
        if (isWhole) {
            record.number = static_cast<double>(record.integer);
        }
        return isWhole || told == KVParams::Double;
    case KVParams::Point:
        return told == KVParams::Point;
    case KVParams::Text:
    case KVParams::Bytes:
        return told == KVParams::Text;
    case KVParams::Int:
        return told == KVParams::Int;
    case KVParams::Int64:
        return isWhole;
    case KVParams::Pointer:
        record.pointer = reinterpret_cast<const void*>(static_cast<std::uintptr_t>(record.integer));
        return isWhole;
    default:
        return false;
    }
}

}  // namespace

std::uint32_t AttributeKeys::find(std::string_view spelling) {
    if (const auto at = bySpelling_.find(spelling); at != bySpelling_.end()) {
        return at->second;
    }
    const auto number = model_->attributes.keys.intern(inCodePage(spelling), model_->texts);
    if (!number) {
        refuse("too many different attribute keys");
    }
    const auto index = static_cast<std::uint32_t>(keys_.size());
    const std::string_view kept(spellings_.copyText(spelling), spelling.size());
    keys_.push_back({.spelling = kept, .number = *number});
    bySpelling_.emplace(kept, index);
    return index;
}

void RecordKeeper::setText(std::string_view kept) {
    if (kept.size() > mostTextBytes) [[unlikely]] {
        refuse("a text of at most " + std::to_string(mostTextBytes) + " bytes expected");
    }
    smrtln::BomRecord& record = records_.back();
    record.type = KVParams::Text;
    record.text = kept.data();
    record.length = static_cast<std::uint32_t>(kept.size()) & mostTextBytes;
}

void RecordKeeper::whole(std::int64_t value) {
    records_.back().type = fits<std::int32_t>(value) ? KVParams::Int : KVParams::Int64;
    records_.back().integer = value;
}

void RecordKeeper::real(double value) {
    records_.back().type = KVParams::Double;
    records_.back().number = value;
}

void RecordKeeper::point(const Triple& value) {
    records_.back().type = KVParams::Point;
    records_.back().point = keys_->model().arena.copy(std::span<const double>(value));
}

void RecordKeeper::type(std::int64_t type) {
    if (!convert(records_.back(), type)) {
        const bool isKnown = type >= 1 && type <= static_cast<std::int64_t>(typeWords.size());
        refuse("type " + std::to_string(type) +
               (isKnown ? std::string(" takes ") + typeWords[static_cast<std::size_t>(type - 1)] : " is none"));
    }
}

void RecordKeeper::description(std::string_view text) {
    const auto number = keys_->model().attributes.descriptions.intern(inCodePage(text), keys_->model().texts);
    if (!number) {
        refuse("too many different descriptions");
    }
    records_.back().description = *number;
}

AttributeList RecordKeeper::keep() {
    return {keys_->model().arena.copy(records_), static_cast<std::uint32_t>(records_.size())};
}

}  // namespace plant
