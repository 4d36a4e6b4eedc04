#include "tessaro/check/scene.h"

#include "tessaro/check/files.h"
#include "tessaro/check/scene/rules.h"

namespace fs = std::filesystem;

Findings checkSceneFiles(const fs::path& path) {
    Findings findings;
    for (const fs::path& file : filesToCheck(path, "scene", {".nwc", ".nwd", ".glb"}, findings)) {
        readers::Findings found;
        const readers::scene::Scene scene = readers::scene::readScene(file, found);
        if (found.empty()) {
            check::sceneNumbers(scene, found);
        }
        addFindings(file, found, findings);
    }
    return findings;
}
