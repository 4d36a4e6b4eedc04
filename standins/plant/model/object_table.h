// The objects of a model in file order.
#pragma once

#include "plant/memory/id_index.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace plant {

class Arena;
struct ObjectData;

// Objects stay where they are, in the arena.
class ObjectTable {
public:
    explicit ObjectTable(Arena& arena) : arena_(&arena) {}
    ObjectTable(const ObjectTable&) = delete;
    ObjectTable& operator=(const ObjectTable&) = delete;

    std::size_t size() const { return size_; }
    std::int64_t largestId() const { return largestId_; }
    ObjectData& operator[](std::size_t index) const;
    // A new object at the end, without an id.
    ObjectData& append();
    // Gives the last object its id; false when another one has it already.
    bool giveId(ObjectData& last, std::int64_t id);
    // Null when no object has the id.
    ObjectData* find(std::int64_t id) const {
        const std::uint32_t index = ids_.find(id);
        return index == IdIndex::none ? nullptr : &(*this)[index];
    }
    // Costs a search through the chunks; for messages.
    std::size_t indexOf(const ObjectData& object) const;

private:
    static constexpr std::size_t chunkSize = 256;

    Arena* arena_;
    std::vector<ObjectData*> chunks_;
    std::size_t size_ = 0;
    std::int64_t largestId_ = 0;
    IdIndex ids_;
};

}  // namespace plant
