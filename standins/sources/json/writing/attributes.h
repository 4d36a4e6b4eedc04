// Writes a list of attributes in the shorter of the two forms that a model file has for it: an object as long as that
// can say what is told, else an array. The form is found out on the way; what stands there already is written anew.
//
//   {"item":"VALVE","size1":"50"}
//   [{"key":"item","value":"STRUCT"},{"key":"P2","value":[1,2,3],"type":3,"description":"corner"}]
#pragma once

#include "plant/model_builder.h"
#include "sources/json/writing/output_text.h"

#include <cstdint>
#include <string>
#include <vector>

namespace plant {

// The keys of one list by their hashes. Two keys of one hash count as one key told twice, which costs nothing but the
// shorter form.
class KeySet {
public:
    KeySet() : slots_(128) {}

    void clear() {
        ++list_;
        count_ = 0;
    }
    // False when it is there already.
    bool add(std::uint64_t hash);

private:
    struct Slot {
        std::uint64_t hash = 0;
        std::uint64_t list = 0;  // slots of other lists are free
    };
    void grow();

    std::vector<Slot> slots_;  // a power of two, at most half of them taken
    std::uint64_t list_ = 1;
    std::size_t count_ = 0;
};

class AttributeWriter {
public:
    explicit AttributeWriter(OutputText& text) : text_(&text) {}

    bool isOpen() const { return isOpen_; }
    // Adds to the list, which the first attribute opens where the text ends.
    void add(const AttributeFacts& facts);
    void close();

private:
    void open();
    bool tryEntry(const AttributeFacts& facts);
    void item(const AttributeFacts& facts);
    void value(const AttributeFacts& facts);
    void entriesToItems();

    OutputText* text_;
    KeySet keys_;
    std::string entries_;
    std::size_t start_ = 0;  // of the list in the text
    bool isOpen_ = false;
    bool isObject_ = true;
};

}  // namespace plant
