#include "rvm/command.h"

#include "exportbase/safe_file_name.h"
#include "frame/export_dialog.h"
#include "frame/progress_slot.h"
#include "platform/hxcom.h"
#include "platform/left_out.h"
#include "platform/tree_walker.h"
#include "rvm/export_tree.h"
#include "rvm/format/sibling_names.h"
#include "rvm/pair.h"
#include "rvm/tree_writer.h"
#include "scripts/options.h"
#include "scripts/script_host.h"
#include "scripts/script_presence.h"
#include "tolmar/host_ui.h"
#include "tolmar/run_report.h"
#include "tolmar/text.h"

#include <algorithm>
#include <string>
#include <vector>

namespace {

using tolmar::RunOutcome;
using tolmar::runReport;
using tolmar::textOrEmpty;

constexpr int progressRange = 100;
constexpr int extraBars = 2;
constexpr const char* noSites = "it holds no site that is selected";

void startProgress(const std::string& title) {
    if (!progressSlot()->isProgressOpen()) {
        progressSlot()->openProgress(progressRange, title.c_str(), extraBars);
    }
}

// One export: where to, how, and of what.
class RvmExport {
public:
    RvmExport(std::string basePath, const rvm::Options& options)
        : basePath_(std::move(basePath)), options_(options), selection_(ExportDataDlg::selectedNodes()) {
        for (HxDbTreeNode* root : dataTreeRoots()) {
            if (rvm::isSelectedForRvm(selection_, root)) {
                roots_.push_back(root);
            }
        }
    }

    // One pair of files for all roots. False when nothing whole came out, as in writePlain.
    bool writeCustom() {
        rvm::RvmPair pair(basePath_, options_);
        pair.writeHeader();
        startProgress("导出RVM");
        rvm::RvmTree tree(selection_);
        const rvm::RvmNode& world = *joinRoots(tree);
        if (!world.children.empty()) {
            pair.writeAttributeHeader();
            rvm::TreeWriter(pair, tree, selection_).writeNode(world, "WORLD");
        } else {
            reportLeftOut({nullptr, "WORLD", "tree"}, noSites);
        }
        progressSlot()->close();
        pair.writeEnd();
        return closed(pair, "");
    }

    // One pair of files for each root; a root that fails does not stop the others.
    bool writePlain() {
        bool any = false;
        for (HxDbTreeNode* root : roots_) {
            any = writeRoot(root) || any;
        }
        return any;
    }

    bool hasRoots() const { return !roots_.empty(); }

private:
    rvm::RvmNode* joinRoots(rvm::RvmTree& tree) const {
        std::vector<rvm::RvmNode*> tops;
        for (HxDbTreeNode* root : roots_) {
            tops.push_back(tree.buildTree(root));
        }
        rvm::RvmNode* world = tree.makeRoot();
        for (const rvm::RvmNode* top : tops) {
            if (top != nullptr) {
                world->children.insert(world->children.end(), top->children.begin(), top->children.end());
            }
        }
        tree.clearVisited();
        return world;
    }

    bool writeRoot(HxDbTreeNode* root) {
        const std::string name = textOrEmpty(hxcom::queryDbShortName(root->database()));
        rvm::RvmPair pair(basePath_ + "_" + fileSuffix(name), options_);
        pair.writeHeader();
        startProgress("导出" + name);
        rvm::RvmTree tree(selection_);
        const rvm::RvmNode* top = tree.buildTree(root);
        const bool hasTree = top != nullptr && !top->children.empty();
        if (hasTree) {
            pair.writeAttributeHeader();
            rvm::TreeWriter(pair, tree, selection_).writeNode(*top, name);
            pair.writeEnd();
        } else {
            reportLeftOut({root->objectId(), name, "tree"}, noSites);
            hxcad::hextPrintf("\n导出%s失败", name.c_str());
        }
        progressSlot()->close();
        return closed(pair, name) && hasTree;
    }

    // Two databases of one short name get different files, also on a system that takes letters of both cases for one.
    std::string fileSuffix(const std::string& shortName) {
        std::string folded = safeFileName(shortName);
        const std::string suffix = folded;
        std::transform(folded.begin(), folded.end(), folded.begin(),
                       [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c; });
        return suffix + fileNames_.unique(folded).substr(folded.size());
    }

    static bool closed(rvm::RvmPair& pair, const std::string& name) {
        const bool isWhole = pair.close();
        if (!isWhole) {
            hxcad::hextPrintf("\n导出%s失败", name.c_str());
        }
        return isWhole;
    }

    std::string basePath_;
    rvm::Options options_;
    const ExportDataDlg::NodeSelection& selection_;
    std::vector<HxDbTreeNode*> roots_;
    rvm::SiblingNames fileNames_;
};

std::string askBasePath() {
    const std::string folder = tolmar::hostUi().folderDialog("选择文件夹").value_or("");
    return folder + "\\" + safeFileName(textOrEmpty(HextSystem::getCurrentProjName()));
}

// A script that loads is asked even for functions that it has not: each such call says so on the command line.
rvm::Options readOptions(bool isScriptLoaded) {
    return {optionOn(options::rvmCompat), optionOn(options::nvExpandBranch),
            isScriptLoaded || scriptHasFunction("getNodeName"), isScriptLoaded || scriptHasFunction("getReferenceRvm")};
}

void runExport(bool isScriptLoaded) {
    const bool isCustom = checkExportCustom();
    const std::string basePath = askBasePath();
    if (!askScope(ExportDataDlg::RvmOut)) {
        return;
    }
    RvmExport run(basePath, readOptions(isScriptLoaded));
    if (isCustom ? run.writeCustom() : run.writePlain()) {
        tolmar::messageBox("导出结束");
    } else {
        runReport().ended(RunOutcome::Failed, run.hasRoots() ? "no RVM file is whole" : "no data tree is selected");
    }
}

void showFailure(const char* text) {
    tolmar::messageBox(text);
    hxcad::hextPrintf("\n%s", text);
    runReport().ended(RunOutcome::Failed, text);
}

}  // namespace

void rvmout() {
    const bool isScriptLoaded = getScriptHost(true) != nullptr;
    ProgressScope progress;
    try {
        runExport(isScriptLoaded);
    } catch (const ProgressCancelException&) {
        destroyScriptHost();
        progress.close();
        tolmar::messageBox("导出取消");
        runReport().ended(RunOutcome::Cancelled);
    } catch (const std::exception& failure) {
        showFailure(failure.what());
    }
}
