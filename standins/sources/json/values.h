// Reading of JSON values, strictly: whatever is not what it should be is refused with its place.
#pragma once

#include "plant/building/text_keeper.h"
#include "plant/memory/byte_part.h"
#include "plant/memory/id_index.h"
#include "plant/memory/name_rows.h"
#include "plant/model_builder.h"
#include "plant/refusal.h"
#include "sources/json/short_number.h"

#include <bit>
#include <cstdint>
#include <deque>
#include <simdjson.h>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace plant {

namespace od = simdjson::ondemand;

// "<expected> expected, <what stands there> found".
[[noreturn]] void refuseValue(od::value& value, std::string_view expected);
// The file is no JSON here.
[[noreturn]] void refuseSyntax(simdjson::error_code error);
inline void check(simdjson::error_code error) {
    if (error != simdjson::SUCCESS) [[unlikely]] {
        refuseSyntax(error);
    }
}

// A text as it stands in the file, between its quotes.
struct RawText {
    const char* data;
    std::size_t size;
    bool plain;            // ASCII without escapes: the text itself
    bool escaped = false;  // holds escapes
    std::string_view view() const { return {data, size}; }
    PlainText asPlain() const { return {data, size}; }
};
RawText scanLongText(const char* start);
// Bytes at which a plain text ends or turns out not to be plain.
inline std::uint64_t stopsOfText(const char* at) {
    const BytePart part(at);
    return part.equal('"') | part.equal('\\') | part.notAscii();
}
// `start` is the first character behind the opening quote of a text that is known to be closed.
inline RawText scanText(const char* start) {
    const std::uint64_t stops = stopsOfText(start);
    const auto size = static_cast<std::size_t>(std::countr_zero(stops));
    if (stops != 0 && start[size] == '"') [[likely]] {
        return {start, size, true};
    }
    return scanLongText(start);
}

// Turns escapes into what they stand for.
class Unescaper {
public:
    // The parser lives as long as this.
    explicit Unescaper(const od::parser& parser) : parser_(&parser) {}
    // The text in UTF-8, which stays valid until `forget` as long as the file's piece is in hand; a zero character is
    // refused.
    std::string_view operator()(const RawText& text) { return text.escaped ? unescape(text) : text.view(); }
    // Calls tell(text) with the text in the form that is quickest to keep.
    template <typename Tell>
    void tell(const RawText& text, Tell tell) {
        if (text.plain) [[likely]] {
            tell(text.asPlain());
        } else {
            tell((*this)(text));
        }
    }
    // Gives room back that past texts took.
    void forget() {
        if (!texts_.empty()) {
            texts_.clear();
        }
    }

private:
    std::string_view unescape(const RawText& text);

    const od::parser* parser_;
    std::deque<std::vector<std::uint8_t>> texts_;
};

inline std::int64_t wholeNumber(od::value& value, std::int64_t low, std::int64_t high) {
    std::int64_t number;
    if (value.get_int64().get(number) != simdjson::SUCCESS || number < low || number > high) [[unlikely]] {
        refuseValue(value, "a whole number from " + std::to_string(low) + " to " + std::to_string(high));
    }
    return number;
}
// Reads a number of few digits without an exponent, as most are; false leaves it to the JSON reader.
inline bool readShortNumber(od::value& value, double& number) {
    const char* at = value.raw_json_token().data();
    return shortNumber(at, number);
}
inline double finiteNumber(od::value& value) {
    double number;
    if (!readShortNumber(value, number) && value.get_double().get(number) != simdjson::SUCCESS) [[unlikely]] {
        refuseValue(value, "a finite number");
    }
    return number;
}
bool trueOrFalse(od::value& value);
[[noreturn]] void refuseId(od::value& value);
inline std::int64_t objectId(od::value& value) {
    std::int64_t id;
    if (value.get_int64().get(id) != simdjson::SUCCESS || id < 1 || id > largestId) [[unlikely]] {
        refuseId(value);
    }
    return id;
}
inline RawText rawText(od::value& value, std::string_view expected = "a text") {
    od::raw_json_string raw;
    if (value.get_raw_json_string().get(raw) != simdjson::SUCCESS) [[unlikely]] {
        refuseValue(value, expected);
    }
    return scanText(raw.raw());
}
od::json_type typeOf(od::value& value);
// An array of three finite numbers, each put straight into its place.
void readTriple(od::value& value, double* const (&places)[3]);
template <typename Point>
void readTriple(od::value& value, Point& point) {
    readTriple(value, {&point.x, &point.y, &point.z});
}
inline Triple readTriple(od::value& value) {
    Triple triple;
    readTriple(value, {&triple[0], &triple[1], &triple[2]});
    return triple;
}

// Calls handle(element) for each element of an array, whose first one counts as number `index` in messages.
template <typename Handle>
void eachElement(od::array& array, std::size_t index, Handle handle) {
    try {
        for (auto result : array) {
            check(result.error());
            od::value&& element = std::move(result).value_unsafe();  // a copy would cost more than the rest
            handle(element);
            ++index;
        }
    } catch (Refusal& refusal) {
        refusal.within(index);
        throw;
    }
}

template <typename Handle>
void eachElement(od::value& value, std::string_view expected, Handle handle) {
    od::array array;
    if (value.get_array().get(array) != simdjson::SUCCESS) [[unlikely]] {
        refuseValue(value, expected);
    }
    eachElement(array, 0, handle);
}

// Calls handle(raw key, value) for each member of an object, whatever its name.
template <typename Handle>
void eachEntry(od::object& object, Handle handle) {
    std::string_view name;
    try {
        for (auto result : object) {
            name = {};
            check(result.error());
            od::field&& field = std::move(result).value_unsafe();  // a copy would cost more than the rest
            const RawText key = scanText(field.key().raw());
            name = key.view();
            handle(key, field.value());
        }
    } catch (Refusal& refusal) {
        refusal.within(name);
        throw;
    }
}

inline od::object objectOf(od::value& value, std::string_view expected) {
    od::object object;
    if (value.get_object().get(object) != simdjson::SUCCESS) [[unlikely]] {
        refuseValue(value, expected);
    }
    return object;
}

template <typename Handle>
void eachEntry(od::value& value, std::string_view expected, Handle handle) {
    od::object object = objectOf(value, expected);
    eachEntry(object, handle);
}

[[noreturn]] void refuseMember(const NameRows& names, int row);
int rowOfEscaped(const NameRows& names, const RawText& key, Unescaper& unescape);
// The row of a key in a names; a key that is not there or stands twice is refused. `seen` has a bit for each row.
inline int rowOf(const NameRows& names, const RawText& key, Unescaper& unescape, std::uint64_t& seen) {
    const int row = key.plain ? names.find(key.data, key.size) : rowOfEscaped(names, key, unescape);
    if (row == NameRows::none || (seen >> row & 1U) != 0) [[unlikely]] {
        refuseMember(names, row);
    }
    seen |= std::uint64_t{1} << row;
    return row;
}
[[noreturn]] void refuseIncomplete(const NameRows& names, std::uint64_t seen);
inline void checkComplete(const NameRows& names, std::uint64_t seen) {
    if ((names.required() & ~seen) != 0) [[unlikely]] {
        refuseIncomplete(names, seen);
    }
}

// Calls handle(row of the names, value) for each member of an object and marks it as seen. The handler may set the
// pointer to another names whose first rows are the same.
template <typename Handle>
void eachMember(od::object& object, const NameRows* const& names, std::uint64_t& seen, Unescaper& unescape,
                Handle handle) {
    eachEntry(object, [&](const RawText& key, od::value& value) { handle(rowOf(*names, key, unescape, seen), value); });
}
// The same for a whole object, all of whose required members must be there.
template <typename Handle>
void eachMember(od::object& object, const NameRows* const& names, Unescaper& unescape, Handle handle) {
    std::uint64_t seen = 0;
    eachMember(object, names, seen, unescape, handle);
    checkComplete(*names, seen);
}
template <typename Handle>
void eachMember(od::value& value, const NameRows& names, Unescaper& unescape, Handle handle) {
    od::object object = objectOf(value, "an object");
    eachMember(object, &names, unescape, handle);
}

}  // namespace plant
