#include "check_package.h"

#include "check_files.h"
#include "checkers/package_reader.h"

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
