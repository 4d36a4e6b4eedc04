#include "sources/json/writing/attributes.h"

#include "platform/kvparams.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>

namespace plant {

namespace {

std::uint64_t hashOf(std::string_view text) {
    constexpr std::uint64_t mixer = 0x9E3779B97F4A7C15U;
    std::uint64_t hash = text.size() * mixer;
    std::uint64_t word = 0;
    for (; text.size() > sizeof word; text.remove_prefix(sizeof word)) {
        std::memcpy(&word, text.data(), sizeof word);
        hash = ((hash ^ word) * mixer) ^ (hash >> 29U);
    }
    word = 0;
    for (const char letter : text) {
        word = word << 8U | static_cast<unsigned char>(letter);
    }
    hash = (hash ^ word) * mixer;
    return hash ^ hash >> 32U;
}

// A number that a reader takes for a whole one.
bool looksWhole(double value) {
    return std::trunc(value) == value && std::abs(value) < firstWithExponent && !(value == 0 && std::signbit(value));
}

bool isInt(std::int64_t value) {
    return value >= std::numeric_limits<std::int32_t>::min() && value <= std::numeric_limits<std::int32_t>::max();
}

// The type that a reader gives to the value as it stands.
int readAs(const AttributeFacts& facts) {
    switch (facts.form) {
    case AttributeFacts::Form::Text:
        return KVParams::Text;
    case AttributeFacts::Form::Whole:
        return isInt(facts.whole) ? KVParams::Int : KVParams::Int64;
    case AttributeFacts::Form::Real:
        return !looksWhole(facts.number) ? KVParams::Double : KVParams::Int64;
    case AttributeFacts::Form::Point:
        break;
    }
    return 0;
}

// The type that the attribute is meant to have.
int meantAs(const AttributeFacts& facts) {
    if (facts.type != 0) {
        return facts.type;
    }
    switch (facts.form) {
    case AttributeFacts::Form::Real:
        return KVParams::Double;
    case AttributeFacts::Form::Point:
        return KVParams::Point;
    default:
        return readAs(facts);
    }
}

// Behind the text in quotes, or the number, that stands at a place.
std::size_t endOfValue(std::string_view json, std::size_t at) {
    if (json[at] != '"') {
        return std::min(json.find(',', at), json.size());
    }
    for (++at; json[at] != '"'; ++at) {
        at += json[at] == '\\' ? 1 : 0;
    }
    return at + 1;
}

}  // namespace

bool KeySet::add(std::uint64_t hash) {
    if (2 * (count_ + 1) > slots_.size()) [[unlikely]] {
        grow();
    }
    const std::size_t mask = slots_.size() - 1;
    for (std::size_t i = hash & mask;; i = (i + 1) & mask) {
        Slot& slot = slots_[i];
        if (slot.list != list_) {
            slot = {hash, list_};
            ++count_;
            return true;
        }
        if (slot.hash == hash) {
            return false;
        }
    }
}

void KeySet::grow() {
    std::vector<Slot> before(2 * slots_.size());
    before.swap(slots_);
    count_ = 0;
    for (const Slot& slot : before) {
        if (slot.list == list_) {
            add(slot.hash);
        }
    }
}

void AttributeWriter::open() {
    start_ = text_->size();
    isOpen_ = true;
    isObject_ = true;
    keys_.clear();
}

void AttributeWriter::add(const AttributeFacts& facts) {
    if (!isOpen_) {
        open();
    }
    if (isObject_ && !tryEntry(facts)) {
        entriesToItems();
        isObject_ = false;
    }
    if (!isObject_) {
        item(facts);
    }
}

void AttributeWriter::close() {
    text_->raw(isObject_ ? '}' : ']');
    isOpen_ = false;
}

bool AttributeWriter::tryEntry(const AttributeFacts& facts) {
    if (meantAs(facts) != readAs(facts) || !facts.description.empty() || !keys_.add(hashOf(facts.key))) {
        return false;
    }
    text_->raw(text_->size() == start_ ? '{' : ',').quoted(facts.key).raw(':');
    value(facts);
    return true;
}

void AttributeWriter::item(const AttributeFacts& facts) {
    text_->raw(text_->size() == start_ ? '[' : ',').raw("{\"key\":").quoted(facts.key).raw(",\"value\":");
    value(facts);
    if (meantAs(facts) != readAs(facts)) {
        text_->raw(",\"type\":").whole(meantAs(facts));
    }
    if (!facts.description.empty()) {
        text_->raw(",\"description\":").quoted(facts.description);
    }
    text_->raw('}');
}

void AttributeWriter::value(const AttributeFacts& facts) {
    switch (facts.form) {
    case AttributeFacts::Form::Text:
        text_->quoted(facts.text);
        break;
    case AttributeFacts::Form::Whole:
        text_->whole(facts.whole);
        break;
    case AttributeFacts::Form::Real:
        text_->number(facts.number);
        break;
    case AttributeFacts::Form::Point:
        text_->raw('[').numbers(facts.point[0], facts.point[1], facts.point[2]).raw(']');
        break;
    }
}

// `{"a":"b","c":1` becomes `[{"key":"a","value":"b"},{"key":"c","value":1}`.
void AttributeWriter::entriesToItems() {
    entries_ = text_->from(start_);
    text_->cutTo(start_);
    const std::string_view entries = entries_;
    for (std::size_t at = 1; at < entries.size();) {
        const std::size_t colon = endOfValue(entries, at);
        const std::size_t end = endOfValue(entries, colon + 1);
        text_->raw(at == 1 ? '[' : ',').raw("{\"key\":").raw(entries.substr(at, colon - at));
        text_->raw(",\"value\":").raw(entries.substr(colon + 1, end - colon - 1)).raw('}');
        at = end + 1;
    }
}

}  // namespace plant
