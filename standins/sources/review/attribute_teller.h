// The attributes of a block to the object in hand, each under its own key. What is a number with a unit, or a
// position, is told a second time as plain number or point, under the key and the unit: "HEIG" is "123mm", "HEIG.mm"
// is 123.
#pragma once

#include "sources/attributes/lines.h"
#include "sources/review/file.h"

#include <string>

namespace plant::review {

// Keys whose value is taken over as something else than an attribute.
enum class Held : std::uint8_t { None, Class, ClassAndLine };

class AttributeTeller {
public:
    AttributeTeller(File& file, ModelBuilder& builder) : file_(&file), builder_(&builder) {}

    void tellBlock(std::uint32_t block, Held held);
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
