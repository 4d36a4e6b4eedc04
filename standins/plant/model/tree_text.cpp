// The trees of a model as indented text.
#include "plant/model/data.h"
#include "tolmar/code_page.h"

#include <string>
#include <utility>
#include <vector>

namespace plant {

namespace {

void addObject(std::string& text, const ObjectData& object, int depth) {
    text.append(static_cast<std::size_t>(depth) * 2, ' ').append(object.object().isA()->name());
    text.append(" ").append(std::to_string(object.id));
    if (object.name != nullptr) {
        text.append(" ").append(tolmar::toUtf8(object.name));
    }
    text += '\n';
}

void addTree(std::string& text, const ObjectData& root, int maxDepth) {
    std::vector<std::pair<const ObjectData*, int>> waiting{{&root, 1}};
    while (!waiting.empty()) {
        const auto [object, depth] = waiting.back();
        waiting.pop_back();
        addObject(text, *object, depth);
        if (maxDepth >= 0 && depth > maxDepth) {
            continue;
        }
        const std::vector<ObjectData*> sons = object->sons();
        for (auto son = sons.rbegin(); son != sons.rend(); ++son) {
            waiting.emplace_back(*son, depth + 1);
        }
    }
}

}  // namespace

// The root of a tree is depth 0.
std::string printTree(const Model& model, int maxDepth) {
    std::string text;
    for (const DatabaseData& database : model.databases) {
        text.append(tolmar::toUtf8(database.name)).append(&database == model.main ? " (main)\n" : "\n");
        if (database.root.object != nullptr) {
            addTree(text, *database.root.object, maxDepth);
        }
    }
    return text;
}

}  // namespace plant
