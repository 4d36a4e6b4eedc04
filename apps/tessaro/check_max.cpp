#include "check_max.h"

#include "check_files.h"
#include "checkers/max_files.h"

namespace {

namespace fs = std::filesystem;

bool add(const fs::path& file, const std::vector<std::string>& found, Findings& findings) {
    for (const std::string& finding : found) {
        findings.push_back(file.string() + ": " + finding);
    }
    return found.empty();
}

void checkPairOf(const fs::path& file, Findings& findings) {
    const fs::path geometryFile = fs::path(file).replace_extension(".orna");
    const fs::path propertyFile = fs::path(file).replace_extension(".xml");
    std::string geometry;
    std::string properties;
    if (!readToCheck(geometryFile, geometry, findings) || !readToCheck(propertyFile, properties, findings)) {
        return;
    }
    const bool isGeometryGood = add(geometryFile, maxcheck::checkGeometry(geometry), findings);
    if (add(propertyFile, maxcheck::checkProperties(properties), findings) && isGeometryGood) {
        add(geometryFile, maxcheck::checkPair(geometry, properties), findings);
    }
}

}  // namespace

Findings checkMaxFiles(const fs::path& path) {
    Findings findings;
    for (const fs::path& file : filesToCheck(path, "geometry file", {".orna"}, findings)) {
        checkPairOf(file, findings);
    }
    return findings;
}
