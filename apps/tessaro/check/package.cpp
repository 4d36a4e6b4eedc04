#include "tessaro/check/package.h"

#include "tessaro/check/files.h"
#include "tessaro/check/package/rules.h"

Findings checkPackages(const std::filesystem::path& path) {
    Findings findings;
    for (const std::filesystem::path& file : filesToCheck(path, "package", {".pmodel"}, findings)) {
        readers::Findings found;
        check::packageParts(file, found);
        addFindings(file, found, findings);
    }
    return findings;
}
