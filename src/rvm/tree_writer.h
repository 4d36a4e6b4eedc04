// The export tree, written into both files in step.
#pragma once

#include "rvm/export_tree.h"
#include "rvm/format/sibling_names.h"
#include "rvm/object_writer.h"
#include "rvm/pair.h"

#include <array>
#include <memory>
#include <string>
#include <vector>

namespace rvm {

class TreeWriter {
public:
    TreeWriter(RvmPair& pair, const RvmTree& tree, const ExportDataDlg::NodeSelection& selection)
        : pair_(pair), tree_(tree), selection_(selection), objects_(pair) {}

    // The node and everything below it. `name` is that of a root; all others are named by the script. Every node calls
    // into the progress object, which may raise the cancel.
    void writeNode(const RvmNode& root, const std::string& name);

private:
    // An element that is begun, and the names among its children.
    struct Open {
        const RvmNode* node;
        std::size_t nextChild;
        std::unique_ptr<SiblingNames> names;
    };

    bool begin(const RvmNode& node, const std::string& rootName);
    void end(const RvmNode& node);
    std::string uniqueName(const std::string& name);
    void beginGroup(const std::string& name);
    void writeContents(const RvmNode& manager, const std::string& name);
    void writeParts(const RvmNode& manager, const std::string& name, bool isPipeline);
    void writeBranches(const HxDbObject& pipeline, HxDbTreeNode* node);
    void reportProgress(const RvmNode& node, const std::string& name);

    RvmPair& pair_;
    const RvmTree& tree_;
    const ExportDataDlg::NodeSelection& selection_;
    ObjectWriter objects_;
    std::vector<Open> open_;
    std::array<std::size_t, 4> done_{};
};

}  // namespace rvm
