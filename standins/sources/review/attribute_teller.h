// The attributes of a block to the object in hand, each under its own key. What is a number with a unit, or a
// position, is told a second time as plain number or point, under the key and the unit: "HEIG" is "123mm", "HEIG.mm"
// is 123.
#pragma once

#include "sources/attributes/lines.h"
#include "sources/review/file.h"

#include <string>

namespace plant::review {

// What RVMOUT's files say in terms of their own model.
struct OwnTerms {
    bool hasClass = false;  // "Class" is the object's class and no attribute
    std::string line;       // in the place of the value of "lineno", an id
};

class AttributeTeller {
public:
    AttributeTeller(File& file, ModelBuilder& builder) : file_(&file), builder_(&builder) {}

    void tellBlock(std::uint32_t block, const OwnTerms& terms = {});
    // To a run of a pipeline.
    void tellRunBlock(std::uint32_t block);

private:
    void tell(std::string_view key, std::string_view value, bool toRun);
    void tellMeasure(std::string_view key, std::string_view value, bool toRun);
    void put(const AttributeFacts& facts, bool toRun);
    std::string_view key(std::string_view text);

    File* file_;
    ModelBuilder* builder_;
    TextDecoder values_;
    std::string measureKey_;
};

}  // namespace plant::review
