// Objects as groups of the scene, and as members of the property file.
#pragma once

#include "navisworks/geometry/shape_streamer.h"
#include "navisworks/library/export_options.h"
#include "navisworks/library/handles.h"
#include "navisworks/properties/file.h"
#include "navisworks/scene/node_steps.h"
#include "platform/objects.h"
#include "platform/param_list.h"

#include <span>
#include <string>
#include <vector>

namespace nv {

class ObjectGroups {
public:
    ObjectGroups(const Options& options, PropertyFile& file, NodeSteps& steps)
        : options_(options), file_(file), steps_(steps), shapes_(options.keepsWeldText) {}

    // A layer group for each smart object, and behind it one for the bolts that hang on it. The tree node gives the
    // path of the objects in the property file. Stops are left out, welds without their option, too.
    void addObjects(const HxDbTreeNode* treeNode, LiNwcGroup group, const std::vector<HxDbObject*>& objects);

    // An attribute with the properties of an object.
    OwnedAttribute propertiesOf(const HxDbObject& object);
    // The name that the script gives to an object or manager.
    std::string nameOf(const HxDbObject& object) const;

private:
    bool isWanted(const HxDbSmrtlnEntity& object) const;
    void addObject(const HxDbSmrtlnEntity& object, LiNwcGroup parent, const std::string& path);
    void addObjectGroup(const HxDbSmrtlnEntity& object, LiNwcPropertyAttribute attribute, LiNwcGroup parentGroup,
                        const std::string& path);
    void addLayer(const HxDbSmrtlnEntity& object, const std::string& name, LiNwcPropertyAttribute attribute,
                  LiNwcGroup parent);
    void fillProperties(const HxDbSmrtlnEntity& object, LiNwcPropertyAttribute attribute);

    const Options& options_;
    PropertyFile& file_;
    NodeSteps& steps_;
    ShapeStreamer shapes_;
    ParamList properties_;
    std::string value_;
};

}  // namespace nv
