#include "tessaro/check/hext.h"

#include "tessaro/check/files.h"
#include "tessaro/check/hext/names.h"
#include "tolmar/code_page.h"

#include <algorithm>

namespace {

namespace fs = std::filesystem;

constexpr const char* everyRunWrites[] = {
    "uda.txt",
    "cata.txt",
    "SpecCreate.txt",
    "PipeCompSpecGenerator.txt",
    "PipeSpcoUdaSet.txt",
    "equip.txt",
    "struct.txt",
    "axisline.txt",
    "sup.txt",
    "sitezone.txt",
    "des-col.pmldat",
    "des-element-rules.pmldat",
};
constexpr const char* textEndings[] = {".txt", ".pmldat", ".pmlmac"};

std::string lineText(std::size_t line) {
    return "line " + std::to_string(line) + ": ";
}

// The first thing wrong with a text; empty when nothing is.
std::string faultOf(std::string_view text) {
    std::size_t number = 1;
    for (std::size_t at = 0; at < text.size(); ++number) {
        const std::size_t end = std::min(text.find('\n', at), text.size());
        const std::string_view line = text.substr(at, end - at);
        if (end < text.size() && (line.empty() || line.back() != '\r')) {
            return lineText(number) + "ends in a line feed alone";
        }
        if (line.find('\0') != std::string_view::npos) {
            return lineText(number) + "a zero byte";
        }
        if (!tolmar::isAscii(line) && tolmar::fromUtf8(tolmar::toUtf8(line)) != line) {
            return lineText(number) + "bytes that are no text of the code page " TESSARO_CODE_PAGE;
        }
        at = end + 1;
    }
    return {};
}

bool isText(const fs::path& file) {
    return std::find(std::begin(textEndings), std::end(textEndings), file.extension()) != std::end(textEndings);
}

void checkText(const fs::path& file, Findings& findings) {
    const readers::MappedFile mapped(file);
    if (!canBeRead(mapped, file, findings)) {
        return;
    }
    if (const std::string fault = faultOf(mapped.bytes()); !fault.empty()) {
        findings.push_back(file.string() + ": " + fault);
    }
}

}  // namespace

Findings checkHextFolder(const fs::path& folder) {
    std::error_code error;
    if (!fs::is_directory(folder, error)) {
        return {folder.string() + ": no folder"};
    }
    Findings findings;
    for (const char* name : everyRunWrites) {
        if (!fs::exists(folder / name, error)) {
            findings.push_back((folder / name).string() + ": missing");
        }
    }
    std::vector<fs::path> files;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder, error)) {
        files.push_back(entry.path());
    }
    std::sort(files.begin(), files.end());
    for (const fs::path& file : files) {
        if (isText(file)) {
            checkText(file, findings);
        }
    }
    readers::Findings found;
    check::hextNames(folder, found);
    for (const readers::Finding& finding : found) {
        findings.push_back(tolmar::toUtf8(readers::sentence(finding)));
    }
    return findings;
}
