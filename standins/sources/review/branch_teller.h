// A branch of a pipeline: its parts in order, with the tubes between them.
#pragma once

#include "sources/review/attribute_teller.h"
#include "sources/review/part_teller.h"
#include "sources/review/piping.h"
#include "sources/review/shape_teller.h"

#include <span>
#include <string>
#include <vector>

namespace plant::review {

class BranchTeller {
public:
    // What the tellers of a file share.
    struct Tools {
        File& file;
        Tree& tree;
        const Piping& piping;
        ModelBuilder& builder;
        ShapeTeller& shapes;
        AttributeTeller& attributes;
        Specifications& specifications;
    };
    explicit BranchTeller(const Tools& tools)
        : tools_(tools), parts_(tools.builder, tools.piping, tools.specifications) {}

    // The objects of a branch; its pipeline is told already, and names them in the order of Piping.
    void tell(const Branch& branch, const Line& line);

private:
    void collectShapes(const Branch& branch);
    void assign(const Branch& branch);
    void tellItem(std::span<const Item> items, std::size_t at, const Line& line);
    std::string tubeName();
    Part partOf(std::span<const Item> items, std::size_t at);
    void tellPart(const Part& part, const Line& line);
    void tellPartShape(const Part& part, std::size_t at);
    void putTube(const Item& tube);
    void tellRest(const Branch& branch, const Line& line);

    Tools tools_;
    PartTeller parts_;
    std::vector<LoosePrimitive> loose_;
    std::vector<std::vector<LoosePrimitive>> shapeOfItem_;
    std::vector<LoosePrimitive> rest_;
    std::size_t at_ = 0;
    std::uint32_t branch_ = noNode;
    std::size_t tubes_ = 0;
};

}  // namespace plant::review
