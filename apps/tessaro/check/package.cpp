#include "tessaro/check/package.h"

#include "readers/package/archive.h"
#include "tessaro/check/files.h"

Findings checkPackages(const std::filesystem::path& path) {
    Findings findings;
    for (const std::filesystem::path& file : filesToCheck(path, "package", {".pmodel"}, findings)) {
        Findings found;
        packagecheck::readPackage(file, found);
        for (const std::string& finding : found) {
            findings.push_back(file.string() + ": " + finding);
        }
    }
    return findings;
}
