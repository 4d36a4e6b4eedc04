// The primitives of an object on their way into the model: made or copied in its arena, one after the other.
#pragma once

#include "plant/building/text_keeper.h"
#include "plant/model/data.h"
#include "plant/shapes/primitive_table.h"

#include <vector>

namespace plant {

class PrimitiveKeeper {
public:
    PrimitiveKeeper(Model& model, TextKeeper& texts) : model_(&model), texts_(&texts) {}

    void begin() { primitives_.clear(); }
    // A primitive with its defaults, whose fields are filled next. Texts in it live with the model.
    HextPrimary& make(const PrimitiveClass& type) { return add(type, type.construct(model_->arena)); }
    // A copy, with its texts turned from UTF-8 into the code page; what a model file could not hold is refused with the
    // name of the field.
    void copy(const HextPrimary& primitive);
    // Gives the object what came since begin, if it is anything.
    void keep(ObjectData& object);

private:
    HextPrimary& add(const PrimitiveClass& type, HextPrimary* primitive);
    void takeOver(HextPrimary& copy, const FieldRow& field);

    Model* model_;
    TextKeeper* texts_;
    std::vector<HextPrimary*> primitives_;
};

}  // namespace plant
