#include "plant/model/object_table.h"

#include "plant/model/data.h"

#include <algorithm>
#include <functional>

namespace plant {

ObjectData& ObjectTable::append() {
    static_assert(std::is_trivially_destructible_v<ObjectData>);
    if (size_ % chunkSize == 0) {
        chunks_.push_back(arena_->allocate<ObjectData>(chunkSize));
    }
    ++size_;
    return *new (&(*this)[size_ - 1]) ObjectData;
}

bool ObjectTable::giveId(ObjectData& last, std::int64_t id) {
    if (!ids_.insert(id, static_cast<std::uint32_t>(size_ - 1))) {
        return false;
    }
    last.id = id;
    largestId_ = std::max(largestId_, id);
    return true;
}

std::size_t ObjectTable::indexOf(const ObjectData& object) const {
    const std::less_equal<const ObjectData*> before;
    for (std::size_t chunk = 0; chunk < chunks_.size(); ++chunk) {
        const ObjectData* first = chunks_[chunk];
        if (before(first, &object) && before(&object, first + chunkSize - 1)) {
            return chunk * chunkSize + static_cast<std::size_t>(&object - first);
        }
    }
    return size_;
}

}  // namespace plant
