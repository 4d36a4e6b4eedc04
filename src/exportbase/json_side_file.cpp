#include "exportbase/json_side_file.h"

#include "tolmar/code_page.h"
#include "tolmar/file.h"

#include <algorithm>
#include <charconv>
#include <cjson/cJSON.h>
#include <cstdint>
#include <cstring>

namespace {

// More than OutputFile's own buffer, so that a block goes to the system without another copy.
constexpr std::size_t blockSize = std::size_t{2} << 20U;

// Room for a quoted text: six bytes for a control character, the quotes, the end, and what cJSON wants beyond.
std::size_t quotedRoom(std::size_t length) {
    return 6 * length + 16;
}

// The library counts room in an int, so a longer text goes to it in pieces.
constexpr std::size_t mostPrinted = std::size_t{16} << 20U;

constexpr std::uint64_t eightTimes(unsigned char byte) {
    return std::uint64_t{0x0101010101010101} * byte;
}

// Not 0 when one of the eight bytes is a control character, a quote or a backslash.
std::uint64_t specialBytes(std::uint64_t word) {
    const auto below = [](std::uint64_t bytes, unsigned char limit) {
        return (bytes - eightTimes(limit)) & ~bytes & eightTimes(0x80);
    };
    return below(word, ' ') | below(word ^ eightTimes('"'), 1) | below(word ^ eightTimes('\\'), 1);
}

std::uint64_t copyEight(char* to, const char* from) {
    std::uint64_t word;
    std::memcpy(&word, from, sizeof word);
    std::memcpy(to, &word, sizeof word);
    return specialBytes(word);
}

// Copies a text; false when something in it cannot stand between quotes as it is.
bool copyPlain(char* to, std::string_view text) {
    constexpr std::size_t step = 8;
    const std::size_t size = text.size();
    std::uint64_t special = 0;
    if (size >= step) {
        for (std::size_t i = 0; i + step < size; i += step) {
            special |= copyEight(to + i, text.data() + i);
        }
        return (special | copyEight(to + size - step, text.data() + size - step)) == 0;
    }
    for (std::size_t i = 0; i < size; ++i) {
        const auto c = static_cast<unsigned char>(text[i]);
        to[i] = text[i];
        special |= static_cast<std::uint64_t>(c < ' ' || c == '"' || c == '\\');
    }
    return special == 0;
}

}  // namespace

char* JsonSideFile::room(std::size_t size) {
    if (blocks_.empty() || blocks_.back().size - blocks_.back().used < size) {
        const std::size_t whole = std::max(size, blockSize);
        blocks_.push_back({std::make_unique_for_overwrite<char[]>(whole), whole, 0});
    }
    return blocks_.back().bytes.get() + blocks_.back().used;
}

void JsonSideFile::keep(const char* end) {
    blocks_.back().used = static_cast<std::size_t>(end - blocks_.back().bytes.get());
}

char* JsonSideFile::startLine(char* at) const {
    at = std::copy(tolmar::lineEnd.begin(), tolmar::lineEnd.end(), at);
    for (std::size_t i = 0; i < depth_; ++i) {
        *at++ = '\t';
    }
    return at;
}

// At most mostPrinted bytes, quoted by the library; gives the end.
char* JsonSideFile::printPiece(char* at, std::string_view text) {
    terminated_.assign(text);
    cJSON item{};
    item.type = cJSON_String;
    item.valuestring = terminated_.data();
    cJSON_PrintPreallocated(&item, at, static_cast<int>(quotedRoom(text.size())), 0);
    return at + std::strlen(at);
}

// Texts that need no escape, which is nearly all, take a short way around the library.
char* JsonSideFile::putQuoted(char* at, std::string_view text) {
    if (copyPlain(at + 1, text)) {
        *at = '"';
        at[text.size() + 1] = '"';
        return at + text.size() + 2;
    }
    text = text.substr(0, text.find('\0'));
    char* end = printPiece(at, text.substr(0, mostPrinted));
    for (std::size_t done = mostPrinted; done < text.size(); done += mostPrinted) {
        // The next piece's quotes go over the last character and the closing quote; the character is put back.
        const char last = end[-2];
        char* const start = end - 2;
        end = printPiece(start, text.substr(done, mostPrinted));
        *start = last;
    }
    return end;
}

std::size_t JsonSideFile::lineRoom() const {
    return tolmar::lineEnd.size() + depth_;
}

// A key, behind which `more` bytes have room.
char* JsonSideFile::startMember(std::string_view key, std::size_t more) {
    char* at = room(lineRoom() + 3 + quotedRoom(key.size()) + more);
    if (hasMember_) {
        *at++ = ',';
    }
    at = putQuoted(startLine(at), key);
    *at++ = ':';
    *at++ = '\t';
    return at;
}

char* JsonSideFile::startMember(std::int64_t key, std::size_t more) {
    constexpr std::size_t digits = 20;
    char* at = room(lineRoom() + 5 + digits + more);
    if (hasMember_) {
        *at++ = ',';
    }
    at = startLine(at);
    *at++ = '"';
    at = std::to_chars(at, at + digits, key).ptr;
    *at++ = '"';
    *at++ = ':';
    *at++ = '\t';
    return at;
}

void JsonSideFile::beginObject(std::string_view key) {
    openObject(startMember(key, 1));
}

void JsonSideFile::beginObject(std::int64_t key) {
    openObject(startMember(key, 1));
}

void JsonSideFile::openObject(char* at) {
    *at++ = '{';
    keep(at);
    ++depth_;
    hasMember_ = false;
}

void JsonSideFile::endObject() {
    --depth_;
    char* at = startLine(room(lineRoom() + 1));
    *at++ = '}';
    keep(at);
    hasMember_ = true;
}

void JsonSideFile::addText(std::string_view key, std::string_view value) {
    keep(putQuoted(startMember(key, quotedRoom(value.size())), value));
    hasMember_ = true;
}

void JsonSideFile::addObject(std::int64_t key, std::string_view members) {
    char* at = startMember(key, members.size() + lineRoom() + 2);
    *at++ = '{';
    at = startLine(std::copy(members.begin(), members.end(), at));
    *at++ = '}';
    keep(at);
    hasMember_ = true;
}

std::string JsonSideFile::members() const {
    std::string text;
    for (const Block& block : blocks_) {
        text.append(block.bytes.get(), block.used);
    }
    return text;
}

void JsonSideFile::clear() {
    *this = JsonSideFile();
}

bool JsonSideFile::write(std::string_view path) const {
    tolmar::OutputFile file(path, tolmar::FileMode::Text);
    file.write("{");
    for (const Block& block : blocks_) {
        file.writeLines({block.bytes.get(), block.used});
    }
    file.write("\n}");
    return file.isOpen() && file.close();
}

// In UTF-8, since a character of the code page may end in a byte that is a backslash elsewhere.
std::string sideFilePath(std::string_view codePagePath) {
    const std::string mainText = tolmar::toUtf8(codePagePath);
    const std::string_view mainPath = mainText;
    std::size_t separator = mainPath.rfind('\\');
    if (separator == std::string_view::npos) {
        separator = mainPath.rfind('/');
    }
    const bool hasFolder = separator != std::string_view::npos;
    const std::string_view folder = hasFolder ? mainPath.substr(0, separator) : std::string_view(".");
    const std::string_view name = hasFolder ? mainPath.substr(separator + 1) : mainPath;
    return tolmar::fromUtf8(std::string(folder) + "\\" + std::string(name.substr(0, name.rfind('.'))) + ".json");
}
