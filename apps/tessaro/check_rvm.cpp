#include "check_rvm.h"

#include "checkers/rvm_reader.h"
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
    if (!read(file, rvmBytes, findings) || !read(textFile, textBytes, findings)) {
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
    std::error_code error;
    std::vector<fs::path> files;
    if (!fs::is_directory(path, error)) {
        files.push_back(path);
    }
    for (const fs::directory_entry& entry : fs::directory_iterator(path, error)) {
        if (entry.path().extension() == ".rvm") {
            files.push_back(entry.path());
        }
    }
    std::sort(files.begin(), files.end());
    Findings findings;
    if (files.empty()) {
        findings.push_back(path.string() + ": no RVM file in it");
    }
    for (const fs::path& file : files) {
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
