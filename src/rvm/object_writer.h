// Objects of a manager, written into both files.
#pragma once

#include "exportbase/left_out_shapes.h"
#include "platform/objects.h"
#include "platform/primaries.h"
#include "rvm/format/sibling_names.h"
#include "rvm/pair.h"

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace rvm {

class ObjectWriter {
public:
    explicit ObjectWriter(RvmPair& pair) : pair_(pair) {}

    // The element `name` with the attributes of `id`, and in it every smart object that is no weld; nothing for an
    // empty list. Objects without a shape, and primitives that are no solids, stand in the run report alone.
    void writeObjects(const std::vector<HxDbObject*>& objects, HxDbObjectId id, std::string_view name, bool isPipeline);

private:
    void writeObject(const HxDbSmrtlnEntity& object, bool isPipeline);
    bool takeShape(const HxDbSmrtlnEntity& object);
    std::string objectName(const HxDbSmrtlnEntity& object, bool isPipeline);
    void writeGroup(const HxDbSmrtlnEntity& object, const std::string& name);

    RvmPair& pair_;
    std::unordered_map<std::string, int> nameTable_;
    SiblingNames siblings_;
    LeftOutPrimitives leftOut_;
    std::vector<const HextPrimary*> obstructions_;
    std::vector<const HextPrimary*> solids_;
};

}  // namespace rvm
