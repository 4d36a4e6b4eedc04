#include "xdb/text.h"

#include <charconv>

namespace xdb {

namespace {

constexpr std::string_view linkPointEnd = "60218840173";
constexpr int longNumber = 10;
constexpr int shortNumber = 5;
constexpr int linkDecimals = 6;
constexpr double linkScale = 1000;

void append(std::string& text, double value, std::chars_format format, int precision) {
    char digits[400];
    text.append(digits, std::to_chars(digits, digits + sizeof digits, value, format, precision).ptr);
}

}  // namespace

void appendNumber10(std::string& text, double value) {
    append(text, value, std::chars_format::general, longNumber);
}

void appendNumber5(std::string& text, double value) {
    append(text, value, std::chars_format::general, shortNumber);
}

void appendPointText(std::string& text, const HxGePoint3D& point) {
    for (const double value : {point.x, point.y, point.z}) {
        appendNumber10(text, value);
        text += '\t';
    }
}

void appendLinkPoint(std::string& text, const HxGePoint3D& point) {
    const char* separator = "";
    for (const double value : {point.x, point.y, point.z}) {
        text += separator;
        append(text, value / linkScale, std::chars_format::fixed, linkDecimals);
        separator = " ";
    }
    text += linkPointEnd;
}

void appendLineCoord(std::string& text, const HxGePoint3D& point) {
    appendNumber10(text, point.x);
    text += ',';
    appendNumber10(text, point.y);
    text += ',';
    appendNumber10(text, point.z);
}

void appendField(std::string& text, std::string_view key, std::string_view value) {
    text.append(key).append(":").append(value).append(";");
}

void appendField(std::string& text, const KVParams& attribute) {
    text.append(attribute.key).append(":");
    appendKvText(text, attribute);
    text += ';';
}

}  // namespace xdb
