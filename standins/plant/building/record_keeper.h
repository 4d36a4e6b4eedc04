// Attributes on their way into the model: a value after the other becomes a record of 16 bytes.
//
// Objects of a kind have the same keys in the same order, often with the same values, so each key remembers what came
// behind it and its last text: most keys are found by one comparison, most texts are kept once.
#pragma once

#include "plant/building/text_keeper.h"
#include "plant/model/data.h"

#include <cstdint>
#include <string_view>
#include <tsl/robin_map.h>
#include <vector>

namespace plant {

// The keys of a model as they are spelt in UTF-8.
class AttributeKeys {
public:
    struct Key {
        std::string_view spelling;
        std::string_view lastText = noText();  // one that is the same in UTF-8 and in the code page
        std::uint32_t next = 0;                // the key that came behind this one
        std::uint32_t inList = 0;              // the last list that it stood in, of all lists numbered from 1
        std::uint16_t number = 0;              // in the model's table
    };
    AttributeKeys(Model& model, TextKeeper& texts) : model_(&model), texts_(&texts), keys_(1) {}

    // Where the key behind `previous` stands; 0 is the start of a list. A new one is put in.
    template <typename Text>
    std::uint32_t keyAfter(std::uint32_t previous, Text spelling) {
        const std::uint32_t guess = keys_[previous].next;
        if (guess != 0 && isSame(keys_[guess].spelling, spelling)) [[likely]] {
            return guess;
        }
        const std::uint32_t key = find(viewOf(spelling));
        keys_[previous].next = key;
        return key;
    }
    // Where a key stands, wherever it comes from.
    std::uint32_t find(std::string_view spelling);
    Key& operator[](std::uint32_t key) { return keys_[key]; }
    std::uint32_t nextList() { return ++lists_; }
    Model& model() { return *model_; }
    TextKeeper& texts() { return *texts_; }

    static bool isSame(std::string_view kept, PlainText text) {
        return kept.size() == text.size && sameText(kept.data(), text.data, text.size);
    }
    static bool isSame(std::string_view kept, std::string_view text) { return kept == text; }
    static std::string_view viewOf(PlainText text) { return text.view(); }
    static std::string_view viewOf(std::string_view text) { return text; }

private:
    static std::string_view noText() {
        static constexpr char blank[roomBehindText] = {};
        return {blank, 0};
    }

    Model* model_;
    TextKeeper* texts_;
    std::vector<Key> keys_;  // the first one stands for the start of a list
    tsl::robin_map<std::string_view, std::uint32_t> bySpelling_;
    Arena spellings_;
    std::uint32_t lists_ = 0;
};

// The records of one object or run in the order in which they are told: begin; for each key and value, then type or
// description where there is one; keep.
class RecordKeeper {
public:
    explicit RecordKeeper(AttributeKeys& keys) : keys_(&keys) {}

    void begin() {
        records_.clear();
        list_ = keys_->nextList();
        last_ = 0;
    }
    // A new record, whose value is told next. False when the key stands earlier in the list.
    template <typename Text>
    bool key(Text spelling) {
        last_ = keys_->keyAfter(last_, spelling);
        AttributeKeys::Key& key = (*keys_)[last_];
        const bool isNew = key.inList != list_;
        key.inList = list_;
        records_.emplace_back().key = key.number;
        return isNew;
    }
    template <typename Text>
    void text(Text value) {
        AttributeKeys::Key& key = (*keys_)[last_];
        if (AttributeKeys::isSame(key.lastText, value)) {
            return setText(key.lastText);
        }
        const std::string_view kept = keys_->texts().keep(value);
        if (AttributeKeys::isSame(kept, value)) {
            key.lastText = kept;
        }
        setText(kept);
    }
    void whole(std::int64_t value);
    void real(double value);
    void point(const Triple& value);
    // The type that is asked for, 1 to 9; refused when the value told is none of that type.
    void type(std::int64_t type);
    void description(std::string_view text);
    // The records, which live with the model.
    AttributeList keep();

private:
    void setText(std::string_view kept);

    AttributeKeys* keys_;
    std::vector<smrtln::BomRecord> records_;
    std::uint32_t list_ = 0;
    std::uint32_t last_ = 0;  // the key told last
};

}  // namespace plant
