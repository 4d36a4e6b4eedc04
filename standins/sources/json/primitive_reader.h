// Reads the shapes of objects. A primitive is made in the model as soon as its class is known, and its fields are
// filled by the table of the class, so nothing is copied.
#pragma once

#include "plant/building/memory_builder.h"
#include "plant/shapes/primitive_table.h"
#include "sources/json/values.h"

namespace plant {

class PrimitiveReader {
public:
    PrimitiveReader(MemoryBuilder& builder, od::document& document, Unescaper& unescape)
        : builder_(&builder), document_(&document), unescape_(&unescape) {}

    // Tells the shape of the object in hand, an array of primitives.
    void read(od::value& value);

private:
    struct Current {
        const PrimitiveClass* type = nullptr;
        HextPrimary* primitive = nullptr;
    };
    void readPrimitive(od::value& value);
    void begin(od::value& typeName, Current& current);
    void readField(od::value& value, const FieldRow& field, HextPrimary& primitive);
    std::string entityText(od::value& value);

    MemoryBuilder* builder_;
    od::document* document_;
    Unescaper* unescape_;
};

}  // namespace plant
