#include "tessaro/check/eem.h"

#include "tessaro/check/eem/rules.h"
#include "tessaro/check/files.h"
#include "tolmar/code_page.h"

namespace {

namespace fs = std::filesystem;

void checkPairOf(const fs::path& file, Findings& findings) {
    const fs::path sideFile = fs::path(file).replace_extension(".json");
    const readers::MappedFile eem(file);
    const readers::MappedFile side(sideFile);
    if (!canBeRead(eem, file, findings) || !canBeRead(side, sideFile, findings)) {
        return;
    }
    readers::Findings inEem;
    readers::Findings inSide;
    const readers::eem::EemContent content = readers::eem::readEem(eem.bytes(), inEem);
    const std::vector<readers::eem::SideMember> members = readers::eem::readSideFile(side.bytes(), inSide);
    check::eemNames(content, inEem);
    if (inEem.empty() && inSide.empty()) {
        check::eemPair(content, members, inSide);
    }
    addFindings(file, inEem, findings, tolmar::toUtf8);
    addFindings(sideFile, inSide, findings, tolmar::toUtf8);
}

}  // namespace

Findings checkEemFiles(const fs::path& path) {
    Findings findings;
    for (const fs::path& file : filesToCheck(path, "EEM file", {".eem"}, findings)) {
        checkPairOf(file, findings);
    }
    return findings;
}
