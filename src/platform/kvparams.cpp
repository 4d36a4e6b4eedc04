#include "platform/kvparams.h"

#include "tolmar/text.h"

#include <charconv>
#include <cstdio>

namespace {

void appendInteger(std::string& out, std::int64_t value) {
    char buffer[24];
    out.append(buffer, std::to_chars(buffer, buffer + sizeof buffer, value).ptr);
}

void appendFixed(std::string& out, double value, int decimals) {
    char buffer[400];  // the longest double in fixed notation has 309 digits before the point
    out.append(buffer, std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::fixed, decimals).ptr);
}

void appendPoint(std::string& out, const double* point) {
    for (int i = 0; point != nullptr && i < 3; ++i) {
        if (i > 0) {
            out += '\t';
        }
        appendFixed(out, point[i], 8);
    }
}

void appendPointer(std::string& out, const void* pointer) {
    char buffer[32];
    out.append(buffer, static_cast<std::size_t>(
                           std::snprintf(buffer, sizeof buffer, "%#llx",
                                         static_cast<unsigned long long>(reinterpret_cast<std::uintptr_t>(pointer)))));
}

}  // namespace

void appendKvText(std::string& out, const KVParams& params) {
    const KVParams::Value& value = params.value;
    switch (params.valueType) {
    case KVParams::Short:
    case KVParams::ShortAlias:
        return appendInteger(out, value.shortValue);
    case KVParams::Double:
        return appendFixed(out, value.doubleValue, 6);
    case KVParams::Point:
        return appendPoint(out, value.point);
    case KVParams::Text:
        out += tolmar::textOrEmpty(value.text);
        return;
    case KVParams::Int:
        return appendInteger(out, value.intValue);
    case KVParams::Pointer:
        return appendPointer(out, value.pointer);
    case KVParams::Int64:
        return appendInteger(out, value.int64Value);
    case KVParams::Bytes:
        if (value.bytes.length > 0 && value.bytes.data != nullptr) {
            out.append(value.bytes.data, static_cast<std::size_t>(value.bytes.length));
        }
        return;
    default:
        return;
    }
}

std::string kvText(const KVParams& params) {
    std::string text;
    appendKvText(text, params);
    return text;
}
