#include "navisworks/properties/object_path.h"

#include "platform/objects.h"

#include <vector>

namespace nv {

namespace {

constexpr const char* namelessNode = "整个工厂";

bool hasText(const char* text) {
    return text != nullptr && *text != '\0';
}

}  // namespace

std::string objectPath(const HxDbTreeNode* node) {
    std::vector<const char*> names;
    for (; node != nullptr; node = node->getParent()) {
        names.push_back(hasText(node->getName()) ? node->getName() : namelessNode);
    }
    std::string path;
    for (auto name = names.rbegin(); name != names.rend(); ++name) {
        path += *name;
        path += pathSeparator;
    }
    return path;
}

}  // namespace nv
