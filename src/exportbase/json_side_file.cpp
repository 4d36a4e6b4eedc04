#include "exportbase/json_side_file.h"

#include "tolmar/file.h"

#include <cjson/cJSON.h>

namespace {

constexpr std::size_t blockSize = std::size_t{1} << 20U;

// Room for a quoted text: six bytes for a control character, the quotes, the end, and what cJSON wants beyond.
std::size_t quotedRoom(std::size_t length) {
    return 6 * length + 16;
}

// True for a text that stands between quotes as it is: no control character, quote or backslash.
bool isPlain(std::string_view text) {
    unsigned special = 0;
    for (const char c : text) {
        special |= static_cast<unsigned>(static_cast<unsigned char>(c) < ' ') | static_cast<unsigned>(c == '"') |
                   static_cast<unsigned>(c == '\\');
    }
    return special == 0;
}

}  // namespace

// Texts that need no escape, which is nearly all, take a short way around the library.
void JsonSideFile::appendQuoted(std::string_view text) {
    if (isPlain(text)) {
        text_ += '"';
        text_ += text;
        text_ += '"';
        return;
    }
    terminated_.assign(text);
    cJSON item{};
    item.type = cJSON_String;
    item.valuestring = terminated_.data();
    const std::size_t start = text_.size();
    const std::size_t room = quotedRoom(text.size());
    text_.resize(start + room);
    cJSON_PrintPreallocated(&item, text_.data() + start, static_cast<int>(room), 0);
    text_.resize(text_.find('\0', start));
}

void JsonSideFile::nextBlock() {
    blocks_.push_back(std::move(text_));
    text_.clear();
    text_.reserve(blockSize + blockSize / 8);
}

void JsonSideFile::startLine() {
    text_ += '\n';
    text_.append(depth_, '\t');
}

void JsonSideFile::beginMember(std::string_view key) {
    if (text_.size() > blockSize) {
        nextBlock();
    }
    if (hasMember_) {
        text_ += ',';
    }
    startLine();
    appendQuoted(key);
    text_ += ":\t";
}

void JsonSideFile::beginObject(std::string_view key) {
    beginMember(key);
    text_ += '{';
    ++depth_;
    hasMember_ = false;
}

void JsonSideFile::endObject() {
    --depth_;
    startLine();
    text_ += '}';
    hasMember_ = true;
}

void JsonSideFile::addText(std::string_view key, std::string_view value) {
    beginMember(key);
    appendQuoted(value);
    hasMember_ = true;
}

void JsonSideFile::clear() {
    *this = JsonSideFile();
}

bool JsonSideFile::write(std::string_view path) const {
    tolmar::OutputFile file(path, tolmar::FileMode::Text);
    file.write("{");
    for (const std::string& block : blocks_) {
        file.write(block);
    }
    file.write(text_);
    file.write("\n}");
    return file.isOpen() && file.close();
}

std::string sideFilePath(std::string_view mainPath) {
    std::size_t separator = mainPath.rfind('\\');
    if (separator == std::string_view::npos) {
        separator = mainPath.rfind('/');
    }
    const bool hasFolder = separator != std::string_view::npos;
    const std::string_view folder = hasFolder ? mainPath.substr(0, separator) : std::string_view(".");
    const std::string_view name = hasFolder ? mainPath.substr(separator + 1) : mainPath;
    return std::string(folder) + "\\" + std::string(name.substr(0, name.rfind('.'))) + ".json";
}
