#include "tessaro/check/rvm.h"

#include "readers/rvm/file.h"
#include "tessaro/check/files.h"

namespace {

namespace fs = std::filesystem;

void add(const fs::path& file, const rvmcheck::Findings& found, Findings& findings) {
    for (const rvmcheck::Finding& finding : found) {
        findings.push_back(file.string() + ": " + finding.place + ": " + finding.text);
    }
}

// A pair whose root is closed claims the strict form.
void checkPairOf(const fs::path& file, bool strictly, Findings& findings) {
    std::string rvmBytes;
    std::string textBytes;
    const fs::path textFile = fs::path(file).replace_extension(".txt");
    if (!readToCheck(file, rvmBytes, findings) || !readToCheck(textFile, textBytes, findings)) {
        return;
    }
    rvmcheck::Findings inRvm;
    rvmcheck::Findings inText;
    const rvmcheck::RvmContent rvm = rvmcheck::readRvm(rvmBytes, inRvm);
    const rvmcheck::AttributeContent text = rvmcheck::readAttributes(textBytes, inText);
    if (inRvm.empty() && inText.empty()) {
        rvmcheck::checkPair(rvm, text, inText);
        if (strictly || text.isRootClosed()) {
            rvmcheck::checkStrictForm(rvm, text, inText);
        }
    }
    add(file, inRvm, findings);
    add(textFile, inText, findings);
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
