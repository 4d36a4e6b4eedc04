#include "tessaro/check/eem.h"

#include "readers/eem/file.h"
#include "tessaro/check/files.h"
#include "tolmar/code_page.h"

namespace {

namespace fs = std::filesystem;

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
    if (!readToCheck(file, eemBytes, findings) || !readToCheck(sideFile, sideBytes, findings)) {
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
    Findings findings;
    for (const fs::path& file : filesToCheck(path, "EEM file", {".eem"}, findings)) {
        checkPairOf(file, findings);
    }
    return findings;
}
