// Reads the shapes of objects.
#pragma once

#include "plant/model/data.h"
#include "plant/shapes/primitive_table.h"
#include "sources/json/text_keeper.h"

#include <vector>

namespace plant {

class PrimitiveReader {
public:
    PrimitiveReader(Model& model, od::document& document, TextKeeper& texts)
        : model_(&model), document_(&document), texts_(&texts) {}

    // Gives the object its shape, an array of primitives.
    void read(od::value& value, ObjectData& object);

private:
    struct Current {
        const PrimitiveClass* type = nullptr;
        HextPrimary* primitive = nullptr;
    };
    HextPrimary* readPrimitive(od::value& value);
    void begin(od::value& typeName, Current& current);
    void readField(od::value& value, const FieldRow& field, HextPrimary& primitive);
    std::string ownText(od::value& value);
    std::string entityText(od::value& value);

    Model* model_;
    od::document* document_;
    TextKeeper* texts_;
    std::vector<HextPrimary*> primitives_;
};

}  // namespace plant
