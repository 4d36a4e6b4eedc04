// Reads the attributes of objects and pipe runs.
#pragma once

#include "plant/model/class_table.h"
#include "plant/model/data.h"
#include "sources/json/text_keeper.h"

#include <cstdint>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace plant {

class AttributeReader {
public:
    AttributeReader(Model& model, TextKeeper& texts);

    // Object form (each key once) or array form (keys may repeat, values may be typed). The records lie in the model's
    // arena.
    AttributeList read(od::value& value);
    // The labels of keys.
    void readLabels(od::value& value);

private:
    // A key as it is spelt in the file. Objects of a kind have the same keys in the same order, often with the same
    // values, so each key remembers what came behind it and its last text.
    struct Key {
        std::string_view raw;
        std::string_view lastText = noText();
        std::uint32_t next = 0;    // in keys_
        std::uint32_t inList = 0;  // the last list that it stood in, of all lists numbered from 1
        std::uint16_t number = 0;
    };
    static std::string_view noText() {
        static constexpr char blank[roomBehindText] = {};
        return {blank, 0};
    }
    // What a value is before a type is asked for.
    enum class Form { Text, Whole, Real, Point };

    void readObject(od::value& value);
    void readArray(od::value& value);
    void readItem(od::value& value);
    std::uint32_t keyAfter(std::uint32_t previous, const RawText& raw);
    std::uint32_t keyOf(const RawText& raw);
    Form readValue(od::value& value, Key& key, smrtln::BomRecord& record);
    void readText(const RawText& raw, Key& key, smrtln::BomRecord& record);
    static Form readNumber(od::value& value, smrtln::BomRecord& record);
    static bool convert(smrtln::BomRecord& record, std::int64_t type, Form form);
    const double* readPoint(od::value& value);
    std::uint16_t descriptionOf(od::value& value);
    AttributeList keepList();

    Model* model_;
    TextKeeper* texts_;
    std::vector<Key> keys_;  // the first one stands for the start of a list
    std::unordered_map<std::string_view, std::uint32_t> keysByText_;
    Arena spellings_;
    std::uint32_t list_ = 0;
    std::vector<smrtln::BomRecord> records_;
};

}  // namespace plant
