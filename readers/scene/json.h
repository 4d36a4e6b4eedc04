// Members of JSON objects as a reader takes them that trusts nothing: what is missing or of another kind reads as the
// value for it.
#pragma once

#include <simdjson.h>

#include <array>
#include <cstdint>
#include <limits>
#include <string_view>
#include <vector>

namespace readers::scene::json {

using Value = simdjson::dom::element;

inline std::uint64_t count(const Value& value, const char* key, std::uint64_t otherwise) {
    std::uint64_t found = 0;
    return value[key].get_uint64().get(found) == simdjson::SUCCESS ? found : otherwise;
}

// As long as the document lives.
inline std::string_view text(const Value& value, const char* key) {
    std::string_view found;
    return value[key].get_string().get(found) == simdjson::SUCCESS ? found : std::string_view();
}

template <typename Visit>
void forEach(const Value& value, const char* key, Visit&& visit) {
    simdjson::dom::array array;
    if (value[key].get_array().get(array) == simdjson::SUCCESS) {
        for (const Value& item : array) {
            visit(item);
        }
    }
}

// Not a number for what is none.
inline double number(const Value& value) {
    double found = 0.0;
    return value.get_double().get(found) == simdjson::SUCCESS ? found : std::numeric_limits<double>::quiet_NaN();
}

inline std::vector<double> numbers(const Value& value, const char* key) {
    std::vector<double> found;
    forEach(value, key, [&found](const Value& item) { found.push_back(number(item)); });
    return found;
}

}  // namespace readers::scene::json
