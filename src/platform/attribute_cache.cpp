#include "platform/attribute_cache.h"

#include "platform/model_tests.h"

#include <charconv>
#include <cmath>
#include <limits>
#include <unordered_map>

namespace {

using Records = std::span<const smrtln::BomRecord>;

// The platform keeps the records of a list as long as the model lives, so the cache holds views, and the text forms of
// values that are no text.
class BomCache {
public:
    Records recordsOf(const HxDbObject* object) {
        const HxDbObjectId id = object->objectId();
        if (id == lastId_) {
            return last_;
        }
        const auto [at, isNew] = lists_.try_emplace(id);
        if (isNew) {
            at->second = smrtln::getObjectBomRecords(object);
        }
        lastId_ = id;
        return last_ = at->second;
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

    void clear() {
        lists_.clear();
        texts_.clear();
        lastId_ = {};
        last_ = {};
    }

private:
    std::unordered_map<HxDbObjectId, Records> lists_;
    std::unordered_map<const smrtln::BomRecord*, std::string> texts_;
    HxDbObjectId lastId_;
    Records last_;
};

BomCache& cache() {
    static BomCache instance;
    return instance;
}

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
    const Records records = cache().recordsOf(object);
    const auto keys = smrtln::bomKeys();
    for (const smrtln::BomRecord& record : records) {
        if (keys[record.key] == key) {
            return cache().textOf(record);
        }
    }
    return defaultValue(object, key);
}

void getBomData(HxDbObjectId id, std::vector<KVParams>& out) {
    out.clear();
    HxDbObject* object = nullptr;
    if (hxdbOpenObject(id, object, 3) != Hext::eOk) {
        return;
    }
    for (const smrtln::BomRecord& record : cache().recordsOf(object)) {
        out.push_back(smrtln::toKVParams(record));
    }
}

void clearBomCache() {
    cache().clear();
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
