#include "gltf/json_text.h"

#include "gltf/json_escape.h"

#include <cmath>

namespace gltf {

void JsonText::separate() {
    if (needsComma_) {
        out_ += ',';
    }
    needsComma_ = true;
    if (breaksLine_) {
        breaksLine_ = false;
        out_ += '\n';
    }
}

JsonText& JsonText::open(char bracket) {
    separate();
    out_ += bracket;
    needsComma_ = false;
    return *this;
}

JsonText& JsonText::close(char bracket) {
    out_ += bracket;
    needsComma_ = true;
    return *this;
}

JsonText& JsonText::anyKey(std::string_view name) {
    string(name);
    out_ += ':';
    needsComma_ = false;
    return *this;
}

JsonText& JsonText::string(std::string_view utf8) {
    separate();
    out_ += '"';
    appendEscaped(out_, utf8);
    out_ += '"';
    return *this;
}

JsonText& JsonText::string(std::u16string_view text) {
    separate();
    out_ += '"';
    appendEscaped(out_, text);
    out_ += '"';
    return *this;
}

JsonText& JsonText::escaped(std::string_view inside) {
    separate();
    out_ += '"';
    out_ += inside;
    out_ += '"';
    return *this;
}

JsonText& JsonText::number(double value) {
    char text[32];
    const double written = std::isfinite(value) ? value : 0.0;
    return raw({text, static_cast<std::size_t>(std::to_chars(text, text + sizeof text, written).ptr - text)});
}

JsonText& JsonText::decimal(double value) {
    constexpr double least = 1e-3;
    constexpr double most = 1e15;
    char text[32];
    const double size = std::fabs(value);
    const bool isUsual = size == 0.0 || (size >= least && size < most);
    const std::chars_format form = isUsual ? std::chars_format::fixed : std::chars_format::general;
    const std::to_chars_result result = std::to_chars(text, text + sizeof text, value + 0.0, form);
    return raw({text, static_cast<std::size_t>(result.ptr - text)});
}

JsonText& JsonText::decimals(std::span<const double> values) {
    beginArray();
    for (const double value : values) {
        decimal(value);
    }
    return endArray();
}

JsonText& JsonText::raw(std::string_view json) {
    separate();
    out_ += json;
    return *this;
}

}  // namespace gltf
