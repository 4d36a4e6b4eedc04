#include "tessaro/check/max.h"

#include "readers/max/files.h"
#include "readers/scene/mapped_file.h"
#include "tessaro/check/files.h"

namespace {

namespace fs = std::filesystem;

bool add(const fs::path& file, const std::vector<std::string>& found, Findings& findings) {
    for (const std::string& finding : found) {
        findings.push_back(file.string() + ": " + finding);
    }
    return found.empty();
}

bool isReadable(const gltfcheck::MappedFile& mapped, const fs::path& file, Findings& findings) {
    if (!mapped.isGood()) {
        findings.push_back(file.string() + ": cannot be read");
    }
    return mapped.isGood();
}

void checkPairOf(const fs::path& file, Findings& findings) {
    const fs::path geometryFile = fs::path(file).replace_extension(".orna");
    const fs::path propertyFile = fs::path(file).replace_extension(".xml");
    const gltfcheck::MappedFile geometry(geometryFile);
    const gltfcheck::MappedFile properties(propertyFile);
    if (!isReadable(geometry, geometryFile, findings) || !isReadable(properties, propertyFile, findings)) {
        return;
    }
    const bool isGeometryGood = add(geometryFile, maxcheck::checkGeometry(geometry.bytes()), findings);
    if (add(propertyFile, maxcheck::checkProperties(properties.bytes()), findings) && isGeometryGood) {
        add(geometryFile, maxcheck::checkPair(geometry.bytes(), properties.bytes()), findings);
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
