// Records behind opaque handles. A handle names its kind, its slot and the slot's generation, so that a dead handle, a
// handle of another kind and no handle at all are all told from a living one without being followed.
#pragma once

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
            slots_.push_back(std::make_unique<Slot>());
            slots_.back()->number = static_cast<std::uint32_t>(slots_.size() - 1);
            free_.reserve(slots_.size());
            free_.push_back(slots_.back()->number);
        }
        Slot& slot = *slots_[free_.back()];
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
        if (bits >> 60U != kind_ + 1 || number >= slots_.size()) {
            return nullptr;
        }
        Slot* slot = slots_[number].get();
        return slot->references > 0 && (bits >> 32U & generationMask) == (slot->generation & generationMask) ? slot
                                                                                                             : nullptr;
    }
    Slot& at(std::uint32_t number) const { return *slots_[number]; }

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
    const std::vector<std::unique_ptr<Slot>>& slots() const { return slots_; }
    // Everything goes; the generations live on, so that old handles stay dead.
    void clear() {
        free_.clear();
        for (std::size_t i = slots_.size(); i-- > 0;) {
            slots_[i]->record = Record();
            slots_[i]->generation += slots_[i]->references > 0 ? 1 : 0;
            slots_[i]->references = 0;
            slots_[i]->holders = 0;
            free_.push_back(slots_[i]->number);
        }
        live_ = 0;
    }

private:
    static constexpr std::uint64_t generationMask = 0xFFFFFFF;

    unsigned kind_;
    std::vector<std::unique_ptr<Slot>> slots_;
    std::vector<std::uint32_t> free_;
    std::uint64_t live_ = 0;
};

}  // namespace nwcreate
