#include "platform/attribute_cache.h"

#include "platform/id_pages.h"
#include "platform/model_tests.h"

#include <tsl/robin_map.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <memory>
#include <optional>

namespace {

using Records = std::span<const smrtln::BomRecord>;

// The numbers that the platform gives to attribute keys. Keys only ever join those of a model.
class KeyNumbers {
public:
    static constexpr std::uint32_t none = 0xFFFFFFFF;

    // `none` for a key that no attribute has.
    std::uint32_t find(std::string_view key) {
        const auto keys = smrtln::bomKeys();
        for (; known_ < keys.size(); ++known_) {
            numbers_.emplace(keys[known_], static_cast<std::uint32_t>(known_));
        }
        const auto known = numbers_.find(key);
        return known != numbers_.end() ? known->second : none;
    }
    void clear() {
        numbers_.clear();
        known_ = 0;
    }

private:
    tsl::robin_map<std::string_view, std::uint32_t> numbers_;
    std::size_t known_ = 0;  // of the keys, from the first on
};

// The platform keeps the records of a list as long as the model lives, so the cache holds views, and the text forms of
// values that are no text.
class BomCache {
public:
    Records recordsOf(const HxDbObject* object) {
        const HxDbObjectId id = object->objectId();
        if (id.toInt() == 0) {
            return smrtln::getObjectBomRecords(object);
        }
        std::optional<Records>& known = lists_[id];
        if (!known) {
            known = smrtln::getObjectBomRecords(object);
        }
        return *known;
    }

    std::string_view textOf(const smrtln::BomRecord& record) {
        if (record.type == KVParams::Text) {
            return record.text != nullptr ? std::string_view(record.text, record.length) : std::string_view();
        }
        const auto [at, isNew] = texts_.try_emplace(&record);
        if (isNew) {
            at.value() = std::make_unique<const std::string>(kvText(smrtln::toKVParams(record)));
        }
        return *at->second;
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
    }

private:
    // In pages: a plain hash table by id takes a tenth more of a whole macro export of 60000 objects.
    IdPages<std::optional<Records>> lists_;
    KeyNumbers keys_;
    tsl::robin_map<const smrtln::BomRecord*, std::unique_ptr<const std::string>> texts_;
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
