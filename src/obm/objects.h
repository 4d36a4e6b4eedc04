// The objects of a manager: their records, properties, and meshes.
#pragma once

#include "exportbase/left_out_shapes.h"
#include "exportbase/material_code.h"
#include "exportbase/mesher.h"
#include "frame/tree_bars.h"
#include "obm/record.h"
#include "platform/objects.h"
#include "platform/param_list.h"
#include "platform/primaries.h"

#include <vector>

class OBM3dPackage;
class TlDbEntity;

namespace pmodel {

// Keeps its buffers from object to object. Tree, package and bars belong to the caller and must outlive it.
class ObmObjects {
public:
    ObmObjects(ObmTree& tree, OBM3dPackage& package, TreeBars& bars) : tree_(tree), package_(package), bars_(bars) {}

    // Everything below a node, or else the node's own object, goes under `record`. `color` is what a component without
    // a colour takes.
    void writeObjects(HxDbTreeNode* node, ObmNode& record, int color);
    // The attributes of an object by their labels. Gives the colour of a pipeline, 0 for any other object.
    int addBomData(const HxDbObject& object, ObmNode& record);
    // What the script gives; false when it gives nothing.
    bool addScriptProperties(const HxDbObject& object, ObmNode& record);

private:
    void writeObject(const HxDbSmrtlnEntity& object, ObmNode& parent, int color);
    void writeBoltSet(const HxDbTubeModelSpec& flange, ObmNode& parent);
    void writeShape(const HxDbSmrtlnEntity& object, ObmNode& record, const ObjectColor& color);
    // Null when all went well, otherwise why the primitive has no mesh.
    const char* writePrimitive(const TlDbEntity* entity, ObmNode& record, int code);
    const char* addMesh(ObmNode& record);

    ObmTree& tree_;
    OBM3dPackage& package_;
    TreeBars& bars_;
    std::vector<HxDbObject*> objects_;
    std::vector<KVParams> bomData_;
    ParamList params_;
    std::string value_;
    PrimaryList shape_;
    LeftOutPrimitives leftOut_;
    Mesh mesh_;
};

}  // namespace pmodel
