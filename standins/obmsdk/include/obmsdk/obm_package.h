// Packages: a package holds 3D packages, each with meshes, materials, trees and properties.
//
// Order of calls: OBMPackage create, open, names; OBM3dPackage create and open a folder inside the working folder, its
// contents in any order (a mesh and a material before the write), write, close; then addV3d, save, close, destroy.
// What is added goes to files of the working folder at once; of the meshes only a table of ids stays in memory.
//
// The file is a ZIP archive; docs/obm-format.md tells what is in it.
#pragma once

#include "obmsdk/obm_mesh.h"
#include "obmsdk/obm_tree.h"

#include <cstdint>
#include <memory>
#include <vector>

class OBMSDK_API OBM3dPackage {
public:
    // `create` makes an empty package; its argument is passed as true and not looked at.
    static OBM3dPackage* create(bool writable);
    void destroy();

    // An existing folder.
    virtual int open(obm::WideView folder, OBMXOPENMODE mode);
    virtual void setPlanViewName(obm::WideView name);
    virtual void setSpatialViewName(obm::WideView name);

    // Takes a copy. With `keepsNormals` the mesh's own normals are taken, which the stand-in always does; welding of
    // vertices within the tolerance is not supported.
    virtual int addMesh(const OBMTriangleMesh* mesh, bool keepsNormals, bool welds, float tolerance);
    // Takes the material over, also when it fails.
    virtual int addMaterial(OBMMaterial* material);
    // Takes the tree over, also when it fails.
    virtual int addModelTree(obm::WideView name, OBMModelTreeNode* root);
    // Takes the tree over. The last one stands.
    virtual int setInstanceTree(OBMInstanceTreeNode* root);
    // Takes a copy.
    virtual int addObjectProperty(const OBMObjectProperty* property);

    // A failure of any call before shows here again, the first one of them.
    virtual int write();
    virtual int close();

    // Bytes of meshes beyond which a further scene file is begun; 2^30 at first, so that most viewers open a scene.
    void setSceneLimit(std::uint64_t bytes);
    // The files that write made, in the order in which they go into the archive: full paths in UTF-8.
    const std::vector<std::string>& files() const;

protected:
    OBM3dPackage();
    virtual ~OBM3dPackage();

private:
    struct State;
    std::unique_ptr<State> state_;
};

class OBMSDK_API OBMPackage {
public:
    static OBMPackage* create(bool writable);
    // Removes the working folder. 3D packages that were added go too.
    void destroy();

    // Makes the working folder, beside the file to be. The file itself comes into being by save alone.
    virtual int open(obm::WideView path, OBMXOPENMODE mode);
    virtual void setProjectName(obm::WideView name);
    virtual void setSourceProgram(obm::WideView name);
    // The working folder, without a separator at its end; it holds an empty folder "output". Empty before open.
    virtual obm::WideText getIntermediateFolder() const;
    // Takes over a 3D package that was written and closed, also when it fails.
    virtual int addV3d(OBM3dPackage* package3d);
    // Writes the file, replacing an older one only when the new one is whole.
    virtual int save();
    // Removes the working folder.
    virtual int close();

protected:
    OBMPackage();
    virtual ~OBMPackage();

private:
    struct State;
    std::unique_ptr<State> state_;
};
