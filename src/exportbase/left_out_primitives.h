// What an export leaves out of the shape of an object, told to the run report by class.
#pragma once

#include "platform/primitives.h"

#include <vector>

// Keeps its rows from object to object.
class LeftOutPrimitives {
public:
    // `why` is kept as it stands: a literal, or a text as long-lived.
    void add(const HextPrimary& primitive, const char* why);
    // One entry for each class and reason, with their number, in the order of their first primitives. Empties the rows.
    void report(const HxDbObject& object);

private:
    struct Row {
        const TlRxClass* type;
        const char* why;
        int count;
    };
    std::vector<Row> rows_;
};
