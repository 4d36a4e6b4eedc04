#include "tessaro/check/rvm.h"

#include "tessaro/check/files.h"
#include "tessaro/check/rvm/rules.h"

namespace {

namespace fs = std::filesystem;

// A pair whose root is closed claims the strict form.
void checkPairOf(const fs::path& file, bool strictly, Findings& findings) {
    const fs::path textFile = fs::path(file).replace_extension(".txt");
    const readers::MappedFile rvmFile(file);
    const readers::MappedFile attributeFile(textFile);
    if (!canBeRead(rvmFile, file, findings) || !canBeRead(attributeFile, textFile, findings)) {
        return;
    }
    readers::Findings inRvm;
    readers::Findings inText;
    const readers::rvm::RvmContent rvm = readers::rvm::readRvm(rvmFile.bytes(), inRvm);
    check::rvmKinds(rvm, inRvm);
    const readers::rvm::AttributeContent text = readers::rvm::readAttributes(attributeFile.bytes(), inText);
    if (inRvm.empty() && inText.empty()) {
        check::rvmPair(rvm, text, inText);
        if (strictly || text.isRootClosed()) {
            check::rvmStrictForm(rvm, text, inText);
        }
    }
    addFindings(file, inRvm, findings);
    addFindings(textFile, inText, findings);
}

Findings checkFiles(const fs::path& path, bool strictly) {
    Findings findings;
    for (const fs::path& file : filesToCheck(path, "RVM file", {".rvm"}, findings)) {
        checkPairOf(file, strictly, findings);
    }
    return findings;
}

}  // namespace

Findings checkRvmFiles(const fs::path& path) {
    return checkFiles(path, false);
}

Findings checkStrictRvmFiles(const fs::path& path) {
    return checkFiles(path, true);
}
