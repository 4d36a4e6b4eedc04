// Records behind opaque handles. A handle names its kind, its slot and the slot's generation, so that a dead handle, a
// handle of another kind and no handle at all are all told from a living one without being followed.
#pragma once

#include <algorithm>
#include <cstdint>
#include <memory>
#include <vector>

namespace nwcreate {

inline constexpr std::uint32_t noSlot = 0xFFFFFFFF;

// Slots keep their records for reuse, so that texts and lists keep their memory; a record has clear().
template <typename Record, typename Handle>
class HandleTable {
public:
    struct Slot {
        Record record;
        std::uint32_t number = 0;
        std::uint32_t generation = 1;
        std::uint32_t references = 0;  // of callers
        std::uint32_t holders = 0;     // inside the library
    };

    explicit HandleTable(unsigned kind) : kind_(kind) {}

    // A slot with one reference.
    Slot& create() {
        if (free_.empty()) {
            grow();
        }
        Slot& slot = at(free_.back());
        free_.pop_back();
        slot.references = 1;
        ++live_;
        return slot;
    }
    Handle handle(const Slot& slot) const {
        const std::uint64_t bits =
            std::uint64_t{kind_ + 1} << 60U | std::uint64_t{slot.generation & generationMask} << 32U | slot.number;
        return reinterpret_cast<Handle>(static_cast<std::uintptr_t>(bits));
    }
    // Null when the handle is not alive.
    Slot* find(Handle handle) const {
        const auto bits = static_cast<std::uint64_t>(reinterpret_cast<std::uintptr_t>(handle));
        const std::uint64_t number = bits & 0xFFFFFFFFU;
        if (bits >> 60U != kind_ + 1 || number >= size()) {
            return nullptr;
        }
        Slot& slot = at(static_cast<std::uint32_t>(number));
        const bool isSame = (bits >> 32U & generationMask) == (slot.generation & generationMask);
        return slot.references > 0 && isSame ? &slot : nullptr;
    }
    Slot& at(std::uint32_t number) const { return chunks_[number / chunkSize][number % chunkSize]; }

    void addReference(Slot& slot) {
        ++slot.references;
        ++live_;
    }
    // True when it was the last: the handle is dead, the record is still there.
    bool release(Slot& slot) {
        --live_;
        if (--slot.references > 0) {
            return false;
        }
        ++slot.generation;
        return true;
    }
    // The record goes, too.
    void recycle(Slot& slot) {
        slot.record.clear();
        slot.holders = 0;
        free_.push_back(slot.number);
    }

    std::uint64_t live() const { return live_; }
    // Calls with every slot, free ones too.
    template <typename Visit>
    void forEach(Visit&& visit) const {
        for (const auto& chunk : chunks_) {
            std::for_each(chunk.get(), chunk.get() + chunkSize, visit);
        }
    }
    // Everything goes; the generations live on, so that old handles stay dead.
    void clear() {
        free_.clear();
        for (std::size_t i = size(); i-- > 0;) {
            Slot& slot = at(static_cast<std::uint32_t>(i));
            slot.record = Record();
            slot.generation += slot.references > 0 ? 1 : 0;
            slot.references = 0;
            slot.holders = 0;
            free_.push_back(slot.number);
        }
        live_ = 0;
    }

private:
    static constexpr std::size_t chunkSize = 32;

    std::size_t size() const { return chunks_.size() * chunkSize; }
    // A further chunk, whose first slot is the next that goes out.
    void grow() {
        const std::size_t first = size();
        free_.reserve(first + chunkSize);
        chunks_.push_back(std::make_unique<Slot[]>(chunkSize));
        for (std::size_t i = chunkSize; i-- > 0;) {
            chunks_.back()[i].number = static_cast<std::uint32_t>(first + i);
            free_.push_back(chunks_.back()[i].number);
        }
    }

    static constexpr std::uint64_t generationMask = 0xFFFFFFF;

    unsigned kind_;
    std::vector<std::unique_ptr<Slot[]>> chunks_;
    std::vector<std::uint32_t> free_;
    std::uint64_t live_ = 0;
};

}  // namespace nwcreate
