// Nozzles of equipment: points, specification and attributes as the exports read them.
#pragma once

#include "sources/review/piping.h"
#include "sources/review/shape_teller.h"
#include "sources/review/specifications.h"

#include <string>

namespace plant::review {

class NozzleTeller {
public:
    NozzleTeller(ModelBuilder& builder, const Piping& piping, ShapeTeller& shapes, Specifications& specifications)
        : builder_(&builder), piping_(&piping), shapes_(&shapes), specifications_(&specifications) {}

    // Tells its specification, so no object is in hand.
    void prepare(const Node& nozzle, const Facts& facts, std::string_view name, std::string_view equipment);
    void tellMembers();
    void tellAttributes();
    void tellPoints();

private:
    void place(const Node& nozzle, const Facts& facts);
    void findInner(const Node& nozzle);

    ModelBuilder* builder_;
    const Piping* piping_;
    ShapeTeller* shapes_;
    Specifications* specifications_;
    TextDecoder decoder_;
    ObjectId id_ = 0;
    ObjectId specification_ = 0;
    std::string name_, equipment_, specificationName_, size_;
    bool isPlaced_ = false;
    Point face_;
    Point inner_;
};

}  // namespace plant::review
