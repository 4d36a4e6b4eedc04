#include "check_max.h"

#include "checkers/max_files.h"
#include "tolmar/code_page.h"
#include "tolmar/file.h"

#include <algorithm>

namespace {

namespace fs = std::filesystem;

constexpr const char* geometryEnding = ".orna";

bool read(const fs::path& file, std::string& bytes, Findings& findings) {
    if (tolmar::readFile(tolmar::fromUtf8(file.string()), bytes)) {
        return true;
    }
    findings.push_back(file.string() + ": cannot be read");
    return false;
}

bool add(const fs::path& file, const std::vector<std::string>& found, Findings& findings) {
    for (const std::string& finding : found) {
        findings.push_back(file.string() + ": " + finding);
    }
    return found.empty();
}

void checkPairOf(const fs::path& file, Findings& findings) {
    const fs::path geometryFile = fs::path(file).replace_extension(geometryEnding);
    const fs::path propertyFile = fs::path(file).replace_extension(".xml");
    std::string geometry;
    std::string properties;
    if (!read(geometryFile, geometry, findings) || !read(propertyFile, properties, findings)) {
        return;
    }
    const bool isGeometryGood = add(geometryFile, maxcheck::checkGeometry(geometry), findings);
    if (add(propertyFile, maxcheck::checkProperties(properties), findings) && isGeometryGood) {
        add(geometryFile, maxcheck::checkPair(geometry, properties), findings);
    }
}

}  // namespace

Findings checkMaxFiles(const fs::path& path) {
    std::error_code error;
    std::vector<fs::path> files;
    if (!fs::is_directory(path, error)) {
        files.push_back(path);
    }
    for (const fs::directory_entry& entry : fs::directory_iterator(path, error)) {
        if (entry.path().extension() == geometryEnding) {
            files.push_back(entry.path());
        }
    }
    std::sort(files.begin(), files.end());
    Findings findings;
    if (files.empty()) {
        findings.push_back(path.string() + ": no geometry file in it");
    }
    for (const fs::path& file : files) {
        checkPairOf(file, findings);
    }
    return findings;
}
