// Writes primitives as a model file has them: the class, the fields of the class as the table of primitive classes has
// them, and last what all classes have (color, handedness, material). A field that equals its default is left out,
// unless a reader asks for it.
//
// Axes belong together: where one of them is not the default, all of them stand.
#pragma once

#include "platform/primitives.h"
#include "sources/json/writing/entity_text.h"
#include "sources/json/writing/output_text.h"

namespace plant {

class PrimitiveWriter {
public:
    explicit PrimitiveWriter(OutputText& text);

    // Refuses a class that the table does not have, a number that is not finite and a text that is not UTF-8.
    void write(const HextPrimary& primitive);

    struct Field;
    struct Class;

private:
    const Class& classOf(const HextPrimary& primitive);
    void field(const Field& field, HextPrimary& primitive);
    void entity(const std::string& serial);

    OutputText* text_;
    const Class* last_ = nullptr;
    EntityCheck entities_;
};

}  // namespace plant
