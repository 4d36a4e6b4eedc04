#include "tessaro/check/files.h"

#include "tolmar/code_page.h"
#include "tolmar/file.h"

#include <algorithm>

namespace fs = std::filesystem;

namespace {

bool endsIn(const fs::path& file, std::initializer_list<const char*> endings) {
    std::string ending = file.extension().string();
    for (char& c : ending) {
        c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    }
    return std::find(endings.begin(), endings.end(), ending) != endings.end();
}

std::string listed(std::initializer_list<const char*> endings) {
    std::string text;
    for (const char* ending : endings) {
        text += (text.empty() ? "*" : ", *") + std::string(ending);
    }
    return text;
}

}  // namespace

std::vector<fs::path> filesToCheck(const fs::path& path, const char* kind, std::initializer_list<const char*> endings,
                                   Findings& findings) {
    std::error_code error;
    std::vector<fs::path> files;
    if (!fs::is_directory(path, error)) {
        if (endsIn(path, endings)) {
            files.push_back(path);
        } else {
            findings.push_back(path.string() + ": no " + kind + " by its name (" + listed(endings) + ")");
        }
        return files;
    }
    for (const fs::directory_entry& entry : fs::directory_iterator(path, error)) {
        if (endsIn(entry.path(), endings)) {
            files.push_back(entry.path());
        }
    }
    if (files.empty()) {
        findings.push_back(path.string() + ": no " + kind + " in it (" + listed(endings) + ")");
    }
    std::sort(files.begin(), files.end());
    return files;
}

bool readToCheck(const fs::path& file, std::string& bytes, Findings& findings) {
    if (tolmar::readFile(tolmar::fromUtf8(file.string()), bytes)) {
        return true;
    }
    findings.push_back(file.string() + ": cannot be read");
    return false;
}
