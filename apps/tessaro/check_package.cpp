#include "check_package.h"

#include "checkers/package_reader.h"

Findings checkPackage(const std::filesystem::path& path) {
    Findings findings;
    packagecheck::readPackage(path, findings);
    for (std::string& finding : findings) {
        finding.insert(0, path.string() + ": ");
    }
    return findings;
}
