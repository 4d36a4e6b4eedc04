#include "sources/json/attribute_reader.h"

#include "tolmar/code_page.h"

#include <array>
#include <limits>

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

}  // namespace

AttributeReader::AttributeReader(Model& model, TextKeeper& texts) : model_(&model), texts_(&texts), keys_(1) {}

AttributeList AttributeReader::read(od::value& value) {
    records_.clear();
    ++list_;
    if (typeOf(value) == od::json_type::array) {
        readArray(value);
    } else {
        readObject(value);
    }
    return keepList();
}

AttributeList AttributeReader::keepList() {
    return {model_->arena.copy(records_), static_cast<std::uint32_t>(records_.size())};
}

void AttributeReader::readObject(od::value& value) {
    std::uint32_t previous = 0;
    eachEntry(value, "an object or an array", [&](const RawText& raw, od::value& entry) {
        previous = keyAfter(previous, raw);
        Key& key = keys_[previous];
        if (key.inList == list_) [[unlikely]] {
            refuse("stands twice; repeated keys need the array form");
        }
        key.inList = list_;
        smrtln::BomRecord& record = records_.emplace_back();
        record.key = key.number;
        if (readValue(entry, key, record) == Form::Point) {
            refuse("a text or a number expected, an array found");
        }
    });
}

std::uint32_t AttributeReader::keyAfter(std::uint32_t previous, const RawText& raw) {
    const std::uint32_t guess = keys_[previous].next;
    const std::string_view guessed = keys_[guess].raw;
    if (guess != 0 && guessed.size() == raw.size && sameText(guessed.data(), raw.data, raw.size)) [[likely]] {
        return guess;
    }
    const std::uint32_t key = keyOf(raw);
    keys_[previous].next = key;
    return key;
}

std::uint32_t AttributeReader::keyOf(const RawText& raw) {
    if (const auto at = keysByText_.find(raw.view()); at != keysByText_.end()) {
        return at->second;
    }
    const std::string text = raw.plain ? std::string(raw.view()) : tolmar::fromUtf8(texts_->unescape()(raw));
    const auto number = model_->attributes.keys.intern(text, model_->texts);
    if (!number) {
        refuse("too many different attribute keys");
    }
    const auto index = static_cast<std::uint32_t>(keys_.size());
    const std::string_view spelling(spellings_.copyText(raw.view()), raw.size);
    keys_.push_back({.raw = spelling, .number = *number});
    keysByText_.emplace(spelling, index);
    return index;
}

AttributeReader::Form AttributeReader::readValue(od::value& value, Key& key, smrtln::BomRecord& record) {
    od::raw_json_string text;
    if (value.get_raw_json_string().get(text) == simdjson::SUCCESS) [[likely]] {
        readText(scanText(text.raw()), key, record);
        return Form::Text;
    }
    switch (typeOf(value)) {
    case od::json_type::number:
        return readNumber(value, record);
    case od::json_type::array:
        record.type = KVParams::Point;
        record.point = readPoint(value);
        return Form::Point;
    default:
        refuseValue(value, "a text or a number");
    }
}

void AttributeReader::readText(const RawText& raw, Key& key, smrtln::BomRecord& record) {
    const std::string_view last = key.lastText;
    if (!raw.plain || raw.size != last.size() || !sameText(raw.data, last.data(), raw.size)) {
        key.lastText = texts_->keep(raw);
    }
    if (key.lastText.size() > mostTextBytes) [[unlikely]] {
        refuse("a text of at most " + std::to_string(mostTextBytes) + " bytes expected");
    }
    record.type = KVParams::Text;
    record.text = key.lastText.data();
    record.length = static_cast<std::uint32_t>(key.lastText.size()) & mostTextBytes;
}

AttributeReader::Form AttributeReader::readNumber(od::value& value, smrtln::BomRecord& record) {
    od::number number;
    if (value.get_number().get(number) != simdjson::SUCCESS) {
        refuseValue(value, "a finite number, or a whole number of 64 bits,");
    }
    if (number.is_int64()) {
        const std::int64_t whole = number.get_int64();
        record.type = fits<std::int32_t>(whole) ? KVParams::Int : KVParams::Int64;
        record.integer = whole;
        return Form::Whole;
    }
    if (!number.is_double()) {
        refuseValue(value, "a finite number, or a whole number of 64 bits,");
    }
    record.type = KVParams::Double;
    record.number = number.get_double();
    return Form::Real;
}

const double* AttributeReader::readPoint(od::value& value) {
    double numbers[3];
    readTriple(value, {&numbers[0], &numbers[1], &numbers[2]});
    return model_->arena.copy(std::span<const double>(numbers));
}

void AttributeReader::readArray(od::value& value) {
    eachElement(value, "an object or an array", [&](od::value& item) { readItem(item); });
}

// Gives a value the type that the file asks for. False when it is no value of that type.
bool AttributeReader::convert(smrtln::BomRecord& record, std::int64_t type, Form form) {
    record.type = static_cast<std::uint32_t>(type) & 15U;
    switch (type) {
    case KVParams::Short:
    case KVParams::ShortAlias:
        return form == Form::Whole && fits<std::int16_t>(record.integer);
    case KVParams::Double:
        if (form == Form::Whole) {
            record.number = static_cast<double>(record.integer);
        }
        return form == Form::Whole || form == Form::Real;
    case KVParams::Point:
        return form == Form::Point;
    case KVParams::Text:
    case KVParams::Bytes:
        return form == Form::Text;
    case KVParams::Int:
        return form == Form::Whole && fits<std::int32_t>(record.integer);
    case KVParams::Int64:
        return form == Form::Whole;
    case KVParams::Pointer:
        record.pointer = reinterpret_cast<const void*>(static_cast<std::uintptr_t>(record.integer));
        return form == Form::Whole;
    default:
        return false;
    }
}

void AttributeReader::readItem(od::value& value) {
    using Row = shapes::Attribute;
    Key noKey;
    Form form = Form::Text;
    smrtln::BomRecord& record = records_.emplace_back();
    std::uint16_t number = 0;
    std::uint16_t description = 0;
    std::int64_t type = 0;
    eachMember(value, shapes::attribute(), texts_->unescape(), [&](int row, od::value& member) {
        switch (static_cast<Row>(row)) {
        case Row::Key:
            number = keys_[keyOf(rawText(member))].number;
            break;
        case Row::Value:
            form = readValue(member, noKey, record);
            break;
        case Row::Type:
            type = wholeNumber(member, 1, static_cast<std::int64_t>(typeWords.size()));
            break;
        case Row::Description:
            description = descriptionOf(member);
            break;
        }
    });
    if (type != 0 && !convert(record, type, form)) {
        refuse("type " + std::to_string(type) + " takes " + typeWords[static_cast<std::size_t>(type - 1)]);
    }
    record.key = number;
    record.description = description;
}

std::uint16_t AttributeReader::descriptionOf(od::value& value) {
    const RawText raw = rawText(value);
    const std::string text = raw.plain ? std::string(raw.view()) : tolmar::fromUtf8(texts_->unescape()(raw));
    const auto number = model_->attributes.descriptions.intern(text, model_->texts);
    if (!number) {
        refuse("too many different descriptions");
    }
    return *number;
}

void AttributeReader::readLabels(od::value& value) {
    eachEntry(value, "an object of texts", [&](const RawText& raw, od::value& label) {
        const std::uint16_t key = keys_[keyOf(raw)].number;
        const std::string_view text = texts_->keep(rawText(label));
        if (!model_->attributes.labels.emplace(key, text).second) {
            refuse("stands twice");
        }
    });
}

}  // namespace plant
