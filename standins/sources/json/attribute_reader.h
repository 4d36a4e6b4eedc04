// Reads the attributes of objects and pipe runs, in the object form (each key once) or the array form (keys may repeat,
// values may be typed).
#pragma once

#include "plant/building/memory_builder.h"
#include "sources/json/values.h"

namespace plant {

class AttributeReader {
public:
    explicit AttributeReader(Unescaper& unescape) : unescape_(&unescape) {}

    // Tells the attributes, one behind the other.
    void read(od::value& value, RecordKeeper& records);
    // Tells the labels of keys.
    void readLabels(od::value& value, MemoryBuilder& builder);

private:
    // One element of the array form, whose members stand in any order.
    struct Item;

    void readObject(od::value& value, RecordKeeper& records);
    void readValue(od::value& value, RecordKeeper& records);
    void readItem(od::value& value, RecordKeeper& records);
    static void readNumber(od::value& value, Item& item);
    static void readItemValue(od::value& value, Item& item);
    void tell(const Item& item, RecordKeeper& records);

    Unescaper* unescape_;
};

}  // namespace plant
