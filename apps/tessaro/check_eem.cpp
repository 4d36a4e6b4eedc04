#include "check_eem.h"

#include "checkers/eem_reader.h"
#include "tolmar/code_page.h"
#include "tolmar/file.h"

#include <algorithm>

namespace {

namespace fs = std::filesystem;

bool read(const fs::path& file, std::string& bytes, Findings& findings) {
    if (tolmar::readFile(tolmar::fromUtf8(file.string()), bytes)) {
        return true;
    }
    findings.push_back(file.string() + ": cannot be read");
    return false;
}

void add(const fs::path& file, const eemcheck::Findings& found, Findings& findings) {
    for (const eemcheck::Finding& finding : found) {
        findings.push_back(file.string() + ": " + finding.place + ": " + tolmar::toUtf8(finding.text));
    }
}

void checkNames(const eemcheck::EemContent& content, eemcheck::Findings& findings) {
    for (const eemcheck::Block& block : content.blocks) {
        if (tolmar::fromUtf8(tolmar::toUtf8(block.name)) != block.name) {
            findings.push_back(
                {"object " + std::to_string(block.id), "its name is no text of the code page " TESSARO_CODE_PAGE});
        }
    }
}

void checkPairOf(const fs::path& file, Findings& findings) {
    std::string eemBytes;
    std::string sideBytes;
    const fs::path sideFile = fs::path(file).replace_extension(".json");
    if (!read(file, eemBytes, findings) || !read(sideFile, sideBytes, findings)) {
        return;
    }
    eemcheck::Findings inEem;
    eemcheck::Findings inSide;
    const eemcheck::EemContent content = eemcheck::readEem(eemBytes, inEem);
    const std::vector<eemcheck::SideMember> members = eemcheck::readSideFile(sideBytes, inSide);
    checkNames(content, inEem);
    if (inEem.empty() && inSide.empty()) {
        eemcheck::checkPair(content, members, inSide);
    }
    add(file, inEem, findings);
    add(sideFile, inSide, findings);
}

}  // namespace

Findings checkEemFiles(const fs::path& path) {
    std::error_code error;
    std::vector<fs::path> files;
    if (!fs::is_directory(path, error)) {
        files.push_back(path);
    }
    for (const fs::directory_entry& entry : fs::directory_iterator(path, error)) {
        if (entry.path().extension() == ".eem") {
            files.push_back(entry.path());
        }
    }
    std::sort(files.begin(), files.end());
    Findings findings;
    if (files.empty()) {
        findings.push_back(path.string() + ": no EEM file in it");
    }
    for (const fs::path& file : files) {
        checkPairOf(file, findings);
    }
    return findings;
}
