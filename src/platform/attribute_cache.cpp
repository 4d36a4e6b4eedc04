#include "platform/attribute_cache.h"

#include "platform/id_pages.h"
#include "platform/model_tests.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <unordered_map>

namespace {

using Records = std::span<const smrtln::BomRecord>;

// Numbers of attribute keys. Callers ask with literals, so the place of a text in memory finds its slot, and the text
// itself says whether the slot is the right one.
class KeyNumbers {
public:
    static constexpr std::uint32_t none = 0xFFFFFFFF;

    std::uint32_t find(std::string_view key) {
        const auto keys = smrtln::bomKeys();
        Slot& slot = slots_[slotOf(key)];
        const bool known =
            slot.number < keys.size() ? keys[slot.number] == key : slot.keyCount == keys.size() && slot.missing == key;
        if (!known) {
            fill(slot, keys, key);
        }
        return slot.number;
    }
    void clear() { slots_.assign(slotCount, {}); }

private:
    struct Slot {
        std::uint32_t number = none;
        std::size_t keyCount = 0;  // when `missing` was not among the keys
        std::string missing;
    };
    static constexpr std::size_t slotCount = 2048;

    static std::size_t slotOf(std::string_view key) {
        const auto place = static_cast<std::uint64_t>(reinterpret_cast<std::uintptr_t>(key.data()));
        return static_cast<std::size_t>((place * 0x9E3779B97F4A7C15ULL) >> 53);
    }
    static void fill(Slot& slot, std::span<const std::string_view> keys, std::string_view key) {
        const auto at = std::find(keys.begin(), keys.end(), key);
        slot.number = at == keys.end() ? none : static_cast<std::uint32_t>(at - keys.begin());
        slot.keyCount = keys.size();
        slot.missing = at == keys.end() ? key : std::string_view();
    }

    std::vector<Slot> slots_{slotCount};
};

// The platform keeps the records of a list as long as the model lives, so the cache holds views, and the text forms of
// values that are no text.
class BomCache {
public:
    Records recordsOf(const HxDbObject* object) {
        if (object != lastObject_) {
            last_ = listOf(object);
            lastObject_ = object;
        }
        return last_;
    }

    std::string_view textOf(const smrtln::BomRecord& record) {
        if (record.type == KVParams::Text) {
            return record.text != nullptr ? std::string_view(record.text, record.length) : std::string_view();
        }
        const auto [at, isNew] = texts_.try_emplace(&record);
        if (isNew) {
            at->second = kvText(smrtln::toKVParams(record));
        }
        return at->second;
    }

    const smrtln::BomRecord* find(const HxDbObject* object, std::string_view key) {
        const Records records = recordsOf(object);
        const std::uint32_t number = keys_.find(key);
        for (const smrtln::BomRecord& record : records) {
            if (record.key == number) {
                return &record;
            }
        }
        return nullptr;
    }

    // Changes with clear(); never 0.
    std::uint64_t generation() const { return generation_; }

    void clear() {
        ++generation_;
        lists_.clear();
        texts_.clear();
        keys_.clear();
        lastObject_ = nullptr;
        last_ = {};
    }

private:
    struct List {
        const smrtln::BomRecord* data = nullptr;
        std::uint32_t count = 0;
        bool known = false;
    };

    Records listOf(const HxDbObject* object) {
        const HxDbObjectId id = object->objectId();
        if (id.toInt() == 0) {
            return smrtln::getObjectBomRecords(object);
        }
        List& list = lists_[id];
        if (!list.known) {
            const Records records = smrtln::getObjectBomRecords(object);
            list = {records.data(), static_cast<std::uint32_t>(records.size()), true};
        }
        return {list.data, list.count};
    }

    IdPages<List> lists_;
    KeyNumbers keys_;
    std::unordered_map<const smrtln::BomRecord*, std::string> texts_;
    const HxDbObject* lastObject_ = nullptr;
    Records last_;
    std::uint64_t generation_ = 1;
};

// Stands ready when the module is loaded, so that a question need not look whether it does.
BomCache attributeCache;

std::string_view defaultValue(const HxDbObject* object, std::string_view key) {
    return equalNoCase(key, "item") && object->isKindOf(HxDbBalloon::desc()) ? "Balloon" : "";
}

std::string_view withoutLeadingBlanks(std::string_view text) {
    const std::size_t start = text.find_first_not_of(" \t\n\v\f\r");
    text.remove_prefix(start == std::string_view::npos ? text.size() : start);
    if (!text.empty() && text.front() == '+') {
        text.remove_prefix(1);
    }
    return text;
}

}  // namespace

std::string_view getBomValue(const HxDbObject* object, std::string_view key) {
    if (object == nullptr) {
        return {};
    }
    if (const smrtln::BomRecord* record = attributeCache.find(object, key)) {
        return attributeCache.textOf(*record);
    }
    return defaultValue(object, key);
}

// Keys only ever join those of a model.
void BomFields::findNumbers() {
    const auto known = smrtln::bomKeys();
    if (generation_ == attributeCache.generation() && fields_.size() == known.size()) {
        return;
    }
    generation_ = attributeCache.generation();
    fields_.assign(known.size(), noField);
    for (std::size_t i = 0; i < known.size(); ++i) {
        const auto at = std::find(keys_.begin(), keys_.end(), known[i]);
        fields_[i] = at != keys_.end() ? static_cast<std::uint8_t>(at - keys_.begin()) : noField;
    }
}

void BomFields::read(const HxDbObject* object, std::span<std::string_view> out) {
    std::fill(out.begin(), out.end(), std::string_view());
    if (object == nullptr) {
        return;
    }
    findNumbers();
    std::uint64_t found = 0;
    for (const smrtln::BomRecord& record : attributeCache.recordsOf(object)) {
        const std::uint8_t field = fields_[record.key];
        if (field != noField && (found >> field & 1U) == 0) {
            found |= std::uint64_t{1} << field;
            out[field] = attributeCache.textOf(record);
        }
    }
    for (std::size_t i = 0; i < keys_.size(); ++i) {
        if ((found >> i & 1U) == 0) {
            out[i] = defaultValue(object, keys_[i]);
        }
    }
}

void getBomData(HxDbObjectId id, std::vector<KVParams>& out) {
    out.clear();
    HxDbObject* object = nullptr;
    if (hxdbOpenObject(id, object, 3) != Hext::eOk) {
        return;
    }
    for (const smrtln::BomRecord& record : attributeCache.recordsOf(object)) {
        out.push_back(smrtln::toKVParams(record));
    }
}

void clearBomCache() {
    attributeCache.clear();
}

double numberOf(std::string_view text) {
    text = withoutLeadingBlanks(text);
    double value = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
    return result.ec == std::errc() ? value : 0;
}

int integerOf(std::string_view text) {
    text = withoutLeadingBlanks(text);
    int value = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
    if (result.ec == std::errc::result_out_of_range) {
        return text.front() == '-' ? std::numeric_limits<int>::min() : std::numeric_limits<int>::max();
    }
    return value;
}

HxDbObjectId idOf(std::string_view text) {
    constexpr double largest = 9007199254740992.0;
    const double value = numberOf(text);
    return value >= 0 && value < largest ? HxDbObjectId(static_cast<std::int64_t>(value)) : HxDbObjectId();
}
