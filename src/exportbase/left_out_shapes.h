// What exports that write shapes leave out, told to the run report: objects by their class, and primitives of an object
// gathered by theirs.
#pragma once

#include "platform/objects.h"
#include "platform/primitives.h"

#include <vector>

// Tells of an object that is no smart one and so can have no shape. Not of null, and not of managers and other nodes of
// the tree, since they are walked themselves.
void reportNoSmartObject(const HxDbObject* object);

// The primitives of an object that are left out: add them, then report. Keeps its rows from object to object.
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
