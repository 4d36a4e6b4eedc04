#include "tessaro/check/files.h"

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

bool canBeRead(const readers::MappedFile& mapped, const fs::path& file, Findings& findings) {
    if (!mapped.isGood()) {
        findings.push_back(file.string() + ": " + mapped.fault());
    }
    return mapped.isGood();
}

void addFindings(const fs::path& file, const readers::Findings& found, Findings& findings, readers::ToUtf8 toUtf8) {
    for (const readers::Finding& finding : found) {
        const std::string text = readers::sentence(finding);
        findings.push_back(file.string() + ": " + (toUtf8 != nullptr ? toUtf8(text) : text));
    }
}
