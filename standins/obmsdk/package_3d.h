// What the archive needs of a 3D package.
#pragma once

#include "obmsdk/json_files.h"
#include "obmsdk/obm_package.h"
#include "obmsdk/scene_writer.h"

struct OBM3dPackage::State {
    ~State();

    // Notes the first failure and gives it back, or `status` itself.
    int note(int status);
    std::filesystem::path file(const char* name) const { return folder / name; }
    int writeScenes();
    int writeDocuments();
    bool writeIndex();

    std::filesystem::path folder;
    bool isOpen = false;
    bool isClosed = false;
    int failure = OBMOk;
    std::string planView;
    std::string spatialView;
    obm::MeshStore meshes;
    std::vector<OBMMaterial*> materials;
    obm::MaterialNumbers materialNumbers;
    obm::ModelTreeFile modelTrees;
    obm::PropertyFile properties;
    OBMInstanceTreeNode* instances = nullptr;
    std::vector<std::string> scenes;  // names of the scene files
    std::vector<std::string> files;
};
