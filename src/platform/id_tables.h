// Ordered tables keyed by object id, kept as sorted arrays: filled once, then read. A search that goes on where the
// last one ended costs one step, which is what walks in tree order mostly do.
#pragma once

#include "platform/ids.h"

#include <algorithm>
#include <cstddef>
#include <utility>
#include <vector>

// A map whose keys are put in by `assign`.
template <typename Value>
class IdMap {
public:
    using Entry = std::pair<HxDbObjectId, Value>;
    using const_iterator = typename std::vector<Entry>::const_iterator;

    // Takes the entries; of equal keys the last one counts.
    void assign(std::vector<Entry> entries) {
        const auto byKey = [](const Entry& a, const Entry& b) { return a.first < b.first; };
        if (!std::is_sorted(entries.begin(), entries.end(), byKey)) {
            std::stable_sort(entries.begin(), entries.end(), byKey);
        }
        std::size_t kept = 0;
        for (Entry& entry : entries) {
            kept -= kept > 0 && entries[kept - 1].first == entry.first ? 1 : 0;
            if (&entries[kept] != &entry) {
                entries[kept] = std::move(entry);
            }
            ++kept;
        }
        entries.erase(entries.begin() + static_cast<std::ptrdiff_t>(kept), entries.end());
        entries_ = std::move(entries);
        next_ = 0;
    }
    // Does not change the map, but notes where the search ended: not for several threads at once.
    const_iterator find(HxDbObjectId key) const {
        std::size_t at = next_;
        if (at >= entries_.size() || entries_[at].first != key) {
            at = static_cast<std::size_t>(
                std::lower_bound(entries_.begin(), entries_.end(), key,
                                 [](const Entry& entry, HxDbObjectId wanted) { return entry.first < wanted; }) -
                entries_.begin());
        }
        if (at >= entries_.size() || entries_[at].first != key) {
            return entries_.end();
        }
        next_ = at + 1;
        return entries_.begin() + static_cast<std::ptrdiff_t>(at);
    }
    const_iterator begin() const { return entries_.begin(); }
    const_iterator end() const { return entries_.end(); }
    std::size_t size() const { return entries_.size(); }
    bool empty() const { return entries_.empty(); }
    std::size_t count(HxDbObjectId key) const { return find(key) == end() ? 0 : 1; }
    void clear() {
        entries_.clear();
        entries_.shrink_to_fit();
        next_ = 0;
    }

private:
    std::vector<Entry> entries_;
    mutable std::size_t next_ = 0;
};

// A set that is filled by a sequence of insertions and removals; the last word on an id counts.
class IdSet {
public:
    class Builder {
    public:
        void insert(HxDbObjectId id) { words_.emplace_back(id, true); }
        void erase(HxDbObjectId id) { words_.emplace_back(id, false); }
        IdSet build() {
            IdMap<bool> last;
            last.assign(std::move(words_));
            std::vector<std::pair<HxDbObjectId, char>> kept;
            for (const auto& [id, in] : last) {
                if (in) {
                    kept.emplace_back(id, 0);
                }
            }
            IdSet set;
            set.ids_.assign(std::move(kept));
            return set;
        }

    private:
        std::vector<std::pair<HxDbObjectId, bool>> words_;
    };

    bool contains(HxDbObjectId id) const { return ids_.count(id) != 0; }
    std::size_t count(HxDbObjectId id) const { return ids_.count(id); }
    std::size_t size() const { return ids_.size(); }
    bool empty() const { return ids_.empty(); }
    void clear() { ids_.clear(); }

private:
    IdMap<char> ids_;
};
