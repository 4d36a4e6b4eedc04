// A table by object id whose values stand in small pages, those of neighbouring ids side by side: ids that run on cost
// little more than an array, and a look-up beside the last one costs one compare.
#pragma once

#include "platform/ids.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <memory>
#include <vector>

// Values are made by default with their page, so a default value must mean "nothing known". References stay valid until
// clear. Any id is a key, the invalid one too.
template <typename Value>
class IdPages {
public:
    // The value of an id, made when there is none.
    Value& operator[](HxDbObjectId id) {
        const std::int64_t number = numberOf(id);
        Page* page = number == lastNumber_ ? last_ : known(number);
        return (page != nullptr ? page : make(number))->values[placeOf(id)];
    }
    // Null, or a value that may be a default one.
    const Value* find(HxDbObjectId id) const {
        const std::int64_t number = numberOf(id);
        const Page* page = number == lastNumber_ ? last_ : known(number);
        return page != nullptr ? &page->values[placeOf(id)] : nullptr;
    }
    // Calls use(id, value) for the values of all pages, pages in the order of their making.
    template <typename Use>
    void forEach(Use&& use) {
        for (std::size_t i = 0; i < count_; ++i) {
            Page& page = pageAt(i);
            for (std::size_t at = 0; at < pageSize; ++at) {
                use(HxDbObjectId(page.number * static_cast<std::int64_t>(pageSize) + static_cast<std::int64_t>(at)),
                    page.values[at]);
            }
        }
    }
    void clear() {
        blocks_.clear();
        blocks_.shrink_to_fit();
        slots_.assign(fewestSlots, noPage);
        slots_.shrink_to_fit();
        count_ = 0;
        last_ = nullptr;
        lastNumber_ = noNumber;
    }

private:
    static constexpr unsigned pageBits = 4;
    static constexpr std::size_t pageSize = std::size_t{1} << pageBits;
    static constexpr std::size_t pagesOfBlock = 64;
    static constexpr std::size_t fewestSlots = 64;
    static constexpr std::uint32_t noPage = 0xFFFFFFFF;
    static constexpr std::int64_t noNumber = INT64_MIN;

    struct Page {
        std::int64_t number = 0;
        std::array<Value, pageSize> values{};
    };

    static std::int64_t numberOf(HxDbObjectId id) { return id.toInt() >> pageBits; }
    static std::size_t placeOf(HxDbObjectId id) { return static_cast<std::size_t>(id.toInt()) & (pageSize - 1); }
    Page& pageAt(std::size_t index) const { return blocks_[index / pagesOfBlock][index % pagesOfBlock]; }

    // The slot of a page, or the free one where it goes. At most half of the slots are in use.
    std::size_t slotOf(std::int64_t number) const {
        const std::size_t mask = slots_.size() - 1;
        auto slot = static_cast<std::size_t>((static_cast<std::uint64_t>(number) * 0x9E3779B97F4A7C15ULL) >> 24) & mask;
        while (slots_[slot] != noPage && pageAt(slots_[slot]).number != number) {
            slot = (slot + 1) & mask;
        }
        return slot;
    }
    Page* known(std::int64_t number) const {
        const std::uint32_t index = slots_[slotOf(number)];
        if (index == noPage) {
            return nullptr;
        }
        lastNumber_ = number;
        return last_ = &pageAt(index);
    }
    Page* make(std::int64_t number) {
        if (2 * (count_ + 1) > slots_.size()) {
            grow();
        }
        if (count_ % pagesOfBlock == 0) {
            blocks_.push_back(std::make_unique<Page[]>(pagesOfBlock));
        }
        slots_[slotOf(number)] = static_cast<std::uint32_t>(count_);
        last_ = &pageAt(count_++);
        lastNumber_ = last_->number = number;
        return last_;
    }
    void grow() {
        slots_.assign(2 * slots_.size(), noPage);
        for (std::size_t i = 0; i < count_; ++i) {
            slots_[slotOf(pageAt(i).number)] = static_cast<std::uint32_t>(i);
        }
    }

    std::vector<std::unique_ptr<Page[]>> blocks_;
    std::vector<std::uint32_t> slots_ = std::vector<std::uint32_t>(fewestSlots, noPage);
    std::size_t count_ = 0;
    mutable std::int64_t lastNumber_ = noNumber;
    mutable Page* last_ = nullptr;
};

// A set of ids that only grows.
class IdMarks {
public:
    IdMarks() = default;
    IdMarks(std::initializer_list<HxDbObjectId> ids) {
        for (const HxDbObjectId id : ids) {
            insert(id);
        }
    }
    // False when the id was there.
    bool insert(HxDbObjectId id) {
        bool& mark = marks_[id];
        const bool isNew = !mark;
        mark = true;
        return isNew;
    }
    bool contains(HxDbObjectId id) const {
        const bool* mark = marks_.find(id);
        return mark != nullptr && *mark;
    }
    void clear() { marks_.clear(); }

private:
    IdPages<bool> marks_;
};
