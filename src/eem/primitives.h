// Primitives as the records of an EEM file.
#pragma once

#include "eem/file.h"
#include "exportbase/material_code.h"
#include "platform/primitives.h"

#include <cstdint>
#include <vector>

namespace eem {

// A primitive without a record, and why.
struct LeftOut {
    const HextPrimary* primitive;
    const char* why;
};

class PrimitiveEncoder {
public:
    explicit PrimitiveEncoder(EemFile& file) : file_(file) {}

    // Number of records written. Classes are told apart by identity, so a class derived from one that has a record has
    // none. A record that would hold a number that is not finite is not written.
    std::int32_t encodeList(HextPrimaryView list, const ObjectColor& color);
    // The items of the last list that got no record.
    const std::vector<LeftOut>& leftOut() const { return leftOut_; }

private:
    const char* encode(const HextPrimary& primitive, const ObjectColor& color);

    EemFile& file_;
    std::vector<LeftOut> leftOut_;
};

}  // namespace eem
