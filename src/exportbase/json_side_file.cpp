#include "exportbase/json_side_file.h"

#include "tolmar/code_page.h"
#include "tolmar/file.h"

#include <algorithm>
#include <charconv>
#include <cjson/cJSON.h>
#include <cstdint>
#include <cstring>
#include <memory>
#include <new>

namespace {

// More than OutputFile's own buffer, so that a block goes to the system without another copy.
constexpr std::size_t blockSize = std::size_t{2} << 20U;

// What cannot stand between quotes as it is.
bool isSpecial(char c) {
    return static_cast<unsigned char>(c) < ' ' || c == '"' || c == '\\';
}

// The library counts room in an int, so a longer text goes to it in pieces.
constexpr std::size_t mostPrinted = std::size_t{16} << 20U;

// The text between its quotes, by the library's own rule for escapes; it ends at a zero character, as texts there do.
void appendEscaped(std::string& out, std::string_view text) {
    text = text.substr(0, text.find('\0'));
    for (std::size_t done = 0; done < text.size(); done += mostPrinted) {
        std::string terminated(text.substr(done, mostPrinted));
        cJSON item{};
        item.type = cJSON_String;
        item.valuestring = terminated.data();
        const std::unique_ptr<char, void (*)(void*)> quoted(cJSON_PrintUnformatted(&item), cJSON_free);
        if (quoted == nullptr) {
            throw std::bad_alloc();
        }
        out.append(quoted.get() + 1, std::strlen(quoted.get()) - 2);
    }
}

void appendQuoted(std::string& out, std::string_view text) {
    out += '"';
    if (std::any_of(text.begin(), text.end(), isSpecial)) {
        appendEscaped(out, text);
    } else {
        out += text;
    }
    out += '"';
}

}  // namespace

std::string& JsonSideFile::block() {
    if (blocks_.empty() || blocks_.back().size() > blockSize) {
        blocks_.emplace_back().reserve(blockSize + blockSize / 8);
    }
    return blocks_.back();
}

std::string& JsonSideFile::startLine() {
    std::string& out = block();
    out += tolmar::lineEnd;
    out.append(depth_, '\t');
    return out;
}

std::string& JsonSideFile::startMember(std::string_view key) {
    if (hasMember_) {
        block() += ',';
    }
    std::string& out = startLine();
    appendQuoted(out, key);
    out += ":\t";
    hasMember_ = true;
    return out;
}

void JsonSideFile::beginObject(std::string_view key) {
    startMember(key) += '{';
    ++depth_;
    hasMember_ = false;
}

void JsonSideFile::beginObject(std::int64_t key) {
    char digits[24];
    beginObject(std::string_view(digits, std::to_chars(digits, digits + sizeof digits, key).ptr));
}

void JsonSideFile::endObject() {
    --depth_;
    startLine() += '}';
    hasMember_ = true;
}

void JsonSideFile::addText(std::string_view key, std::string_view value) {
    appendQuoted(startMember(key), value);
}

void JsonSideFile::clear() {
    *this = JsonSideFile();
}

bool JsonSideFile::write(std::string_view path) const {
    tolmar::OutputFile file(path, tolmar::FileMode::Text);
    file.write("{");
    for (const std::string& block : blocks_) {
        file.writeLines(block);
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
