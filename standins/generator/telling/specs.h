// The specification objects, bolts and support items that a generated plant shares. Each is told when something
// needs it first; its id follows from what it is.
#pragma once

#include "generator/planning/plan.h"
#include "plant/model_builder.h"

#include <vector>

namespace plant::generator {

class Library {
public:
    explicit Library(ModelBuilder& model);

    // Ids of objects that are told after the call. Never to be called in the middle of an object.
    Id specification(int pipingClass, Ends ends, Layout layout, int size1, int size2);
    struct BoltIds {
        Id bolt;
        Id nut;
        Id flange;
    };
    BoltIds bolts(int pipingClass, int size);
    static constexpr int supportKinds = 3;
    Id supportItem(int kind);

private:
    void tellSpecification(Id id, int pipingClass, Ends ends, Layout layout, const int (&sizes)[2]);
    void tellBolt(Id id, int size, std::int64_t sortNo);
    void tellNut(Id id, int size, std::int64_t sortNo);
    void tellBoltedFlange(const BoltIds& ids, int pipingClass, int size);

    ModelBuilder* model_;
    std::vector<bool> specifications_;
    std::vector<bool> bolts_;
    std::vector<bool> supportItems_;
};

// The row of pipeSizes at an end, numbered from 0.
int sizeAtEnd(Layout layout, int size1, int size2, int end);
// What kinds of support are called: "SHOE" and the like.
const char* supportKindName(int kind);
// Standard of all supports and their items.
inline constexpr const char* supportStandard = "HG/T 21629";

}  // namespace plant::generator
