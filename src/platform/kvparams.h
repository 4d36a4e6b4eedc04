// One attribute of an object: key, label and typed value.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

// Texts and payloads are the platform's (or the script's result list's) and outlive the record; a KVParams is a cheap
// view. Texts are 8-bit in the system's code page.
struct KVParams {
    enum ValueType : std::int32_t {
        Short = 1,
        Double = 2,
        Point = 3,
        Text = 4,
        Int = 5,
        Pointer = 6,
        Int64 = 7,
        ShortAlias = 8,
        Bytes = 9,
    };
    struct ByteRange {
        std::int32_t length;
        const char* data;
    };

    std::string_view key;
    std::string_view description;
    std::int32_t valueType = Text;
    union Value {
        std::int16_t shortValue;
        double doubleValue;
        const double* point;  // three doubles
        const char* text;     // zero-terminated, may be null
        std::int32_t intValue;
        const void* pointer;
        std::int64_t int64Value;
        ByteRange bytes;
    } value = {.text = nullptr};
};

// The text form of a value: decimal for integers, six decimals for a double, eight decimals and tabs for a point, the
// text itself, the bytes as text. Null texts, empty byte ranges and unknown types give the empty text.
std::string kvText(const KVParams& params);
// The same appended to `out`.
void appendKvText(std::string& out, const KVParams& params);
