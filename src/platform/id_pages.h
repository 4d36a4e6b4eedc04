// A table by object id whose values stand in small pages, those of neighbouring ids side by side: the ids of a model
// run on, so that a table costs little more than an array, and a look-up beside the last one costs one compare.
#pragma once

#include "platform/ids.h"

#include <tsl/robin_map.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <initializer_list>

// Values are made by default with their page, so a default value must mean "nothing known". References stay valid until
// clear. Any id is a key, the invalid one too.
template <typename Value>
class IdPages {
public:
    // The value of an id, made when there is none.
    Value& operator[](HxDbObjectId id) {
        const std::int64_t number = numberOf(id);
        if (last_ == nullptr || last_->number != number) {
            last_ = &pageOf(number);
        }
        return last_->values[placeOf(id)];
    }
    // Null, or a value that may be a default one.
    const Value* find(HxDbObjectId id) const {
        const std::int64_t number = numberOf(id);
        if (last_ == nullptr || last_->number != number) {
            const auto known = index_.find(number);
            if (known == index_.end()) {
                return nullptr;
            }
            last_ = known->second;
        }
        return &last_->values[placeOf(id)];
    }
    // Calls use(id, value) for the values of all pages, pages in the order of their making.
    template <typename Use>
    void forEach(Use&& use) {
        for (Page& page : pages_) {
            for (std::size_t at = 0; at < pageSize; ++at) {
                use(HxDbObjectId(page.number * static_cast<std::int64_t>(pageSize) + static_cast<std::int64_t>(at)),
                    page.values[at]);
            }
        }
    }
    void clear() { *this = IdPages(); }

private:
    static constexpr unsigned pageBits = 4;
    static constexpr std::size_t pageSize = std::size_t{1} << pageBits;

    struct Page {
        std::int64_t number = 0;
        std::array<Value, pageSize> values{};
    };

    static std::int64_t numberOf(HxDbObjectId id) { return id.toInt() >> pageBits; }
    static std::size_t placeOf(HxDbObjectId id) { return static_cast<std::size_t>(id.toInt()) & (pageSize - 1); }

    Page& pageOf(std::int64_t number) {
        const auto [known, isNew] = index_.try_emplace(number, nullptr);
        if (isNew) {
            known.value() = &pages_.emplace_back();
            known.value()->number = number;
        }
        return *known.value();
    }

    std::deque<Page> pages_;
    tsl::robin_map<std::int64_t, Page*> index_;
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
