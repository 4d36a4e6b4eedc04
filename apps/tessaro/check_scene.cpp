#include "check_scene.h"

#include "checkers/gltf_reader.h"

#include <algorithm>

namespace {

namespace fs = std::filesystem;

bool isScene(const fs::path& file) {
    const fs::path ending = file.extension();
    return ending == ".nwc" || ending == ".nwd" || ending == ".glb";
}

}  // namespace

Findings checkSceneFiles(const fs::path& path) {
    std::error_code error;
    std::vector<fs::path> files;
    if (!fs::is_directory(path, error)) {
        files.push_back(path);
    }
    for (const fs::directory_entry& entry : fs::directory_iterator(path, error)) {
        if (isScene(entry.path())) {
            files.push_back(entry.path());
        }
    }
    std::sort(files.begin(), files.end());
    Findings findings;
    if (files.empty()) {
        findings.push_back(path.string() + ": no scene in it");
    }
    for (const fs::path& file : files) {
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
