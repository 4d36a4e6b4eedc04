// The shape of an object: primitives of its group and of the groups in it that are no objects of their own.
#pragma once

#include "sources/review/file.h"
#include "sources/rvm/convert.h"

#include <array>
#include <functional>
#include <span>
#include <vector>

namespace plant::review {

// A primitive of a branch's group, and the group's look.
struct LoosePrimitive {
    std::uint64_t offset = 0;
    std::uint32_t group = rvm::noGroup;
    bool isStraight = false;  // a cylinder or cone: `from` and `to` are its ends
    HxGePoint3D from;
    HxGePoint3D to;
};

class ShapeTeller {
public:
    ShapeTeller(File& file, ModelBuilder& builder) : file_(&file), builder_(&builder), output_(builder) {}

    // The colour of the object in hand, from its group.
    void tellColor(std::uint32_t group);
    // Exact colour and transparencies, as attributes.
    void tellLook(std::uint32_t group);
    // All primitives of a group and of the groups in it but for those that `isOwn` says are objects of their own.
    void tellGroup(std::uint32_t group, const std::function<bool(std::uint32_t group)>& isOwn);
    void tellPrimitives(std::span<const LoosePrimitive> primitives);
    // The primitives that stand in a group itself.
    std::vector<LoosePrimitive> loosePrimitives(std::uint32_t group);
    // The same with those of all groups in it.
    void addLoosePrimitives(std::uint32_t group, std::vector<LoosePrimitive>& out);

private:
    int colorOf(std::uint32_t material) const;
    int colorOfGroup(std::uint32_t group);
    void tellPrimitive(const rvm::Chunk& chunk, int color);
    bool read(const rvm::Chunk& chunk);
    void tellFolded(std::uint32_t group);
    std::uint8_t transparencyOf(std::uint32_t group) const;
    void tellTransparency(std::string_view key, std::uint8_t transparency);

    File* file_;
    ModelBuilder* builder_;
    rvm::ShapeOutput output_;
    rvm::Primitive primitive_;
    int objectColor_ = 0;
    std::uint32_t lastGroup_ = rvm::noGroup;
    int lastColor_ = 0;
};

}  // namespace plant::review
