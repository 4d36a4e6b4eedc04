#include "sources/json/values.h"

#include <bit>
#include <cstring>

namespace plant {

namespace {

// A piece of the file for a message: at most `most` bytes, whole characters.
std::string excerpt(std::string_view text) {
    constexpr std::size_t most = 40;
    if (text.size() <= most) {
        return std::string(text);
    }
    std::size_t end = most;
    while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0U) == 0x80U) {
        --end;
    }
    return std::string(text.substr(0, end)) + "...";
}

std::string describe(std::string_view token) {
    const std::size_t last = token.find_last_not_of(" \t\r\n");
    token = token.substr(0, last + 1);
    if (token.empty()) {
        return "nothing";
    }
    switch (token.front()) {
    case '{':
        return "an object";
    case '[':
        return "an array";
    default:
        return excerpt(token);
    }
}

constexpr std::string_view threeNumbers = "an array of three finite numbers";

[[noreturn]] void refuseCount(std::string_view found) {
    refuse(std::string(threeNumbers).append(" expected, ").append(found).append(" found"));
}

[[noreturn]] void refuseText(const RawText& text, std::string_view why) {
    refuse(std::string(1, '"').append(excerpt(text.view())).append("\" ").append(why));
}

}  // namespace

void refuseValue(od::value& value, std::string_view expected) {
    refuse(std::string(expected).append(" expected, ").append(describe(value.raw_json_token())).append(" found"));
}

void refuseSyntax(simdjson::error_code error) {
    switch (error) {
    case simdjson::TAPE_ERROR:
        throw Refusal("a comma, colon, bracket or name is missing or one too many", Refusal::syntax);
    case simdjson::INCOMPLETE_ARRAY_OR_OBJECT:
        throw Refusal("a bracket is not closed as it was opened", Refusal::syntax, Refusal::end);
    default:
        throw Refusal(simdjson::error_message(error), Refusal::syntax);
    }
}

RawText scanLongText(const char* start) {
    const char* at = start;
    std::uint64_t stops;
    while ((stops = stopsOfText(at)) == 0) {
        at += BytePart::size;
    }
    at += std::countr_zero(stops);
    const bool plain = *at == '"';
    bool escaped = false;
    for (; *at != '"'; at += *at == '\\' ? 2 : 1) {
        escaped = escaped || *at == '\\';
    }
    return {start, static_cast<std::size_t>(at - start), plain, escaped};
}

std::string_view Unescaper::unescape(const RawText& text) {
    std::vector<std::uint8_t>& buffer = texts_.emplace_back(text.size + simdjson::SIMDJSON_PADDING);
    std::uint8_t* end = buffer.data();
    const od::raw_json_string raw(reinterpret_cast<const std::uint8_t*>(text.data));
    std::string_view result;
    if (parser_->unescape(raw, end).get(result) != simdjson::SUCCESS) {
        refuseText(text, "holds an escape that stands for nothing");
    }
    if (result.find('\0') != std::string_view::npos) {
        refuseText(text, "holds a zero character");
    }
    return result;
}

bool trueOrFalse(od::value& value) {
    bool result;
    if (value.get_bool().get(result) != simdjson::SUCCESS) {
        refuseValue(value, "true or false");
    }
    return result;
}

void refuseId(od::value& value) {
    refuseValue(value, "an object id from 1 to " + std::to_string(largestId));
}

od::json_type typeOf(od::value& value) {
    od::json_type type;
    check(value.type().get(type));
    return type;
}

void readTriple(od::value& value, double* const (&places)[3]) {
    od::array array;
    if (value.get_array().get(array) != simdjson::SUCCESS) [[unlikely]] {
        refuseValue(value, threeNumbers);
    }
    std::size_t count = 0;
    for (auto result : array) {
        check(result.error());
        od::value&& element = std::move(result).value_unsafe();
        if (count == std::size(places)) {
            refuseCount("more");
        }
        *places[count++] = finiteNumber(element);
    }
    if (count != std::size(places)) {
        refuseCount(std::to_string(count));
    }
}

int rowOfEscaped(const NameRows& names, const RawText& key, Unescaper& unescape) {
    constexpr std::size_t readable = 8;
    std::string name(unescape(key));
    const std::size_t size = name.size();
    return names.find(name.append(readable, '\0').data(), size);
}

void refuseMember(const NameRows& names, int row) {
    refuse(row == NameRows::none ? std::string("no member of ").append(names.title()) : "stands twice");
}

void refuseIncomplete(const NameRows& names, std::uint64_t seen) {
    const int row = std::countr_zero(names.required() & ~seen);
    refuse("member \"" + std::string(names.nameOf(row)) + "\" is missing");
}

}  // namespace plant
