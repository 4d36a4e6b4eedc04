#include "exportbase/manager_contents.h"

#include "platform/hxcom.h"
#include "platform/left_out.h"

#include <algorithm>
#include <unordered_set>

namespace {

constexpr std::size_t leftOut = static_cast<std::size_t>(-1);

bool dropsOwnNode(const HxDbObject* manager) {
    return manager->isKindOf(HextStruct::desc()) || manager->isKindOf(HextSupport::desc());
}

// Gathers the objects below a node by the nearest manager above each. No recursion, and no node twice.
class ContentWalk {
public:
    ContentWalk(HxDbObject* manager, const HxDbTreeNode* node,
                const std::function<bool(const HxDbTreeNode*)>& isSelected)
        : isSelected_(isSelected), dropsOwn_(dropsOwnNode(manager)), parts_{{manager->objectId(), {}, node}} {}

    std::vector<ContentPart> run(HxDbTreeNode* node) {
        std::vector<Place> open{{node->getSon(), 0}};
        while (!open.empty()) {
            const Place place = open.back();
            open.pop_back();
            if (place.node == nullptr || !visited_.insert(place.node).second) {
                continue;
            }
            open.push_back({place.node->getBrother(), place.part});
            open.push_back({place.node->getSon(), take(place)});
        }
        return std::move(parts_);
    }

private:
    struct Place {
        HxDbTreeNode* node;
        std::size_t part;
    };

    // Gives the part that the node's sons belong to.
    std::size_t take(const Place& place) {
        HxDbObject* object = objectOfNode(place.node);
        if (object == nullptr) {
            return place.part;
        }
        if (object->isKindOf(HextNameNode::desc())) {
            return startPart(place.node, object);
        }
        if (place.part == 0 && dropsOwn_) {
            reportLeftOut(object, "object", "beside the managers below a structure or support");
        } else if (place.part != leftOut) {
            parts_[place.part].objects.push_back(object);
        }
        return place.part;
    }

    std::size_t startPart(const HxDbTreeNode* node, const HxDbObject* object) {
        if (!isSelected_(node)) {
            return leftOut;
        }
        parts_.push_back({object->objectId(), {}, node});
        return parts_.size() - 1;
    }

    const std::function<bool(const HxDbTreeNode*)>& isSelected_;
    bool dropsOwn_;
    std::vector<ContentPart> parts_;
    std::unordered_set<const HxDbTreeNode*> visited_;
};

}  // namespace

std::vector<ContentPart> managerContents(HxDbObject* manager, HxDbTreeNode* node,
                                         const std::function<bool(const HxDbTreeNode*)>& isSelected) {
    std::vector<ContentPart> whole{{manager->objectId(), {}, node}};
    std::vector<HxDbObject*>& all = whole.front().objects;
    getAllSubObjects(node, all, nullptr);
    const bool isPlain = std::none_of(all.begin(), all.end(),
                                      [](const HxDbObject* object) { return object->isKindOf(HextNameNode::desc()); });
    return isPlain ? whole : ContentWalk(manager, node, isSelected).run(node);
}
