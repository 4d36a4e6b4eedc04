#include "navisworks/command.h"

#include "exportbase/safe_file_name.h"
#include "frame/export_dialog.h"
#include "navisworks/library/session.h"
#include "navisworks/scene/settings.h"
#include "navisworks/scene/tree.h"
#include "nwcreate/inspect.h"
#include "platform/hxcom.h"
#include "platform/left_out.h"
#include "platform/tree_walker.h"
#include "scripts/script_host.h"
#include "tolmar/code_page.h"
#include "tolmar/host_ui.h"
#include "tolmar/paths.h"
#include "tolmar/run_report.h"
#include "tolmar/text.h"

#include <algorithm>
#include <string>
#include <vector>

namespace {

using tolmar::RunOutcome;
using tolmar::runReport;
using tolmar::textOrEmpty;

constexpr const char* boxTitle = "提示";

std::string askPath() {
    tolmar::FileDialog dialog;
    dialog.defaultExtension = "nwc";
    dialog.filter = "Navisworks缓冲 (*.nwc)|*.nwc|All Files(*.*)|*.*||";
    if (const auto path = tolmar::hostUi().fileDialog(dialog)) {
        return *path;
    }
    std::string folder = tolmar::hostUi().folderDialog("选择文件夹").value_or("");
    if (folder.empty()) {
        folder = textOrEmpty(HextSystem::getCurrentProjPath());
    }
    return folder + "\\" + safeFileName(textOrEmpty(HextSystem::getCurrentProjName())) + ".nwc";
}

std::size_t countNodes(const std::vector<HxDbTreeNode*>& roots) {
    std::size_t count = 0;
    for (HxDbTreeNode* root : roots) {
        for (TreeWalker walker(root); !walker.done(); walker.next()) {
            ++count;
        }
    }
    return count;
}

void buildScene(LiNwcScene scene, const nv::Options& options, nv::PropertyFile& file) {
    const std::vector<HxDbTreeNode*> roots = dataTreeRoots();
    nv::NodeSteps steps(hxcad::getProgressDialog(), countNodes(roots), hextGetText_callbk("NavisWorks导出"));
    nv::SceneTree tree(options, file, steps);
    for (HxDbTreeNode* root : roots) {
        const std::string shortName = textOrEmpty(hxcom::queryDbShortName(root->database()));
        tree.addDataTree(scene, root, ExportDataDlg::selectedNodes(), shortName);
    }
    nv::LibrarySession::check();
}

// Vertices wait on the disk that they will stand on.
nv::OwnedScene createScene(const std::string& path) {
    LiNwcApiSetSpoolFolder(tolmar::toWide(tolmar::folderOf(path)).c_str());
    nv::OwnedScene scene(LiNwcSceneCreate());
    nv::setUnits(scene.get());
    return scene;
}

// From the questions to the scene's file; false when the user wanted no export. `path` gets the answer.
bool exportScene(bool isScriptLoaded, std::string& path, nv::PropertyFile& file) {
    path = askPath();
    const nv::OwnedScene scene = createScene(path);
    if (!askScope(ExportDataDlg::NvOut)) {
        return false;
    }
    buildScene(scene.get(), nv::readOptions(isScriptLoaded), file);
    const nv::SceneForm form = nv::sceneFormOf(path);
    if (form == nv::SceneForm::None) {
        reportLeftOut({nullptr, path, "file"}, "a scene is a file that ends in .nwc or .nwd");
    } else {
        nv::writeScene(scene.get(), form, path);
    }
    nv::LibrarySession::check();
    return true;
}

void runExport(bool isScriptLoaded) {
    std::string path;
    nv::PropertyFile file;
    {
        const nv::LibrarySession library;
        if (!library.isReady()) {
            hxcad::hextPrintf("Internal Error\n");
            runReport().ended(RunOutcome::Failed, "the scene library did not come up");
            return;
        }
        if (!exportScene(isScriptLoaded, path, file)) {
            return;
        }
    }
    file.forgetKeys();
    file.writeBeside(path);
    hxcad::hextPrintf("%s生成完成", path.c_str());
    tolmar::messageBox("导出结束", boxTitle);
}

}  // namespace

void nvout() {
    const bool isScriptLoaded = getScriptHost(true) != nullptr;
    // The script expects to be asked; the answer makes no difference here.
    checkExportCustom();
    try {
        runExport(isScriptLoaded);
    } catch (const ProgressCancelException&) {
        tolmar::messageBox("导出取消", boxTitle);
        runReport().ended(RunOutcome::Cancelled);
    } catch (const nv::LibraryError& failure) {
        runReport().ended(RunOutcome::Failed, failure.what());
    }
}
