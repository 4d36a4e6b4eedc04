#include "sources/json/attribute_reader.h"

#include "sources/json/rows.h"

#include <tsl/robin_set.h>

namespace plant {

namespace {

constexpr std::int64_t lastType = 9;

}  // namespace

struct AttributeReader::Item {
    enum class Form : std::uint8_t { Text, Whole, Real, Point };
    RawText key{};
    Form form = Form::Text;
    RawText text{};
    std::int64_t whole = 0;
    double number = 0;
    Triple point{};
    std::int64_t type = 0;
    RawText description{};
    bool isDescribed = false;
};

void AttributeReader::read(od::value& value, RecordKeeper& records) {
    if (typeOf(value) == od::json_type::array) {
        eachElement(value, "an object or an array", [&](od::value& item) { readItem(item, records); });
    } else {
        readObject(value, records);
    }
}

void AttributeReader::readObject(od::value& value, RecordKeeper& records) {
    eachEntry(value, "an object or an array", [&](const RawText& raw, od::value& entry) {
        bool isNew = true;
        unescape_->tell(raw, [&](auto key) { isNew = records.key(key); });
        if (!isNew) [[unlikely]] {
            refuse("stands twice; repeated keys need the array form");
        }
        readValue(entry, records);
    });
}

void AttributeReader::readValue(od::value& value, RecordKeeper& records) {
    od::raw_json_string raw;
    if (value.get_raw_json_string().get(raw) == simdjson::SUCCESS) [[likely]] {
        unescape_->tell(scanText(raw.raw()), [&](auto text) { records.text(text); });
        return;
    }
    Item item;
    readItemValue(value, item);
    if (item.form == Item::Form::Point) {
        refuse("a text or a number expected, an array found");
    }
    item.form == Item::Form::Whole ? records.whole(item.whole) : records.real(item.number);
}

void AttributeReader::readItemValue(od::value& value, Item& item) {
    od::raw_json_string raw;
    if (value.get_raw_json_string().get(raw) == simdjson::SUCCESS) {
        item.text = scanText(raw.raw());
        return;
    }
    switch (typeOf(value)) {
    case od::json_type::number:
        return readNumber(value, item);
    case od::json_type::array:
        item.form = Item::Form::Point;
        item.point = readTriple(value);
        return;
    default:
        refuseValue(value, "a text or a number");
    }
}

void AttributeReader::readNumber(od::value& value, Item& item) {
    od::number number;
    const bool isRead = value.get_number().get(number) == simdjson::SUCCESS;
    if (isRead && number.is_int64()) {
        item.form = Item::Form::Whole;
        item.whole = number.get_int64();
    } else if (isRead && number.is_double()) {
        item.form = Item::Form::Real;
        item.number = number.get_double();
    } else {
        refuseValue(value, "a finite number, or a whole number of 64 bits,");
    }
}

void AttributeReader::readItem(od::value& value, RecordKeeper& records) {
    using Row = rows::Attribute;
    Item item;
    eachMember(value, rows::attribute(), *unescape_, [&](int row, od::value& member) {
        switch (static_cast<Row>(row)) {
        case Row::Key:
            item.key = rawText(member);
            break;
        case Row::Value:
            readItemValue(member, item);
            break;
        case Row::Type:
            item.type = wholeNumber(member, 1, lastType);
            break;
        case Row::Description:
            item.description = rawText(member);
            item.isDescribed = true;
            break;
        }
    });
    tell(item, records);
}

void AttributeReader::tell(const Item& item, RecordKeeper& records) {
    unescape_->tell(item.key, [&](auto key) { records.key(key); });
    switch (item.form) {
    case Item::Form::Text:
        unescape_->tell(item.text, [&](auto text) { records.text(text); });
        break;
    case Item::Form::Whole:
        records.whole(item.whole);
        break;
    case Item::Form::Real:
        records.real(item.number);
        break;
    case Item::Form::Point:
        records.point(item.point);
        break;
    }
    if (item.type != 0) {
        records.type(item.type);
    }
    if (item.isDescribed) {
        records.description((*unescape_)(item.description));
    }
}

void AttributeReader::readLabels(od::value& value, MemoryBuilder& builder) {
    tsl::robin_set<std::string> keys;
    eachEntry(value, "an object of texts", [&](const RawText& raw, od::value& label) {
        const std::string_view key = (*unescape_)(raw);
        if (!keys.emplace(key).second) {
            refuse("stands twice");
        }
        builder.attributeLabel(key, (*unescape_)(rawText(label)));
    });
}

}  // namespace plant
