#include "tessaro/check/max.h"

#include "tessaro/check/files.h"
#include "tessaro/check/max/rules.h"

namespace {

namespace fs = std::filesystem;

void checkPairOf(const fs::path& file, Findings& findings) {
    const fs::path geometryFile = fs::path(file).replace_extension(".orna");
    const fs::path propertyFile = fs::path(file).replace_extension(".xml");
    const readers::MappedFile geometry(geometryFile);
    const readers::MappedFile properties(propertyFile);
    if (!canBeRead(geometry, geometryFile, findings) || !canBeRead(properties, propertyFile, findings)) {
        return;
    }
    const readers::Findings inGeometry = check::maxGeometry(geometry.bytes());
    const readers::Findings inProperties = check::maxProperties(properties.bytes());
    addFindings(geometryFile, inGeometry, findings);
    addFindings(propertyFile, inProperties, findings);
    if (inGeometry.empty() && inProperties.empty()) {
        addFindings(geometryFile, check::maxPair(geometry.bytes(), properties.bytes()), findings);
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
