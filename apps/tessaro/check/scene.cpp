#include "tessaro/check/scene.h"

#include "readers/scene/reader.h"
#include "tessaro/check/files.h"

namespace fs = std::filesystem;

Findings checkSceneFiles(const fs::path& path) {
    Findings findings;
    for (const fs::path& file : filesToCheck(path, "scene", {".nwc", ".nwd", ".glb"}, findings)) {
        gltfcheck::Findings found;
        const gltfcheck::Scene scene = gltfcheck::readScene(file, found);
        if (found.empty()) {
            gltfcheck::checkScene(scene, found);
        }
        for (const gltfcheck::Finding& finding : found) {
            findings.push_back(file.string() + ": " + finding.place + ": " + finding.text);
        }
    }
    return findings;
}
