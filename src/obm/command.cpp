#include "obm/command.h"

#include "frame/progress_slot.h"
#include "obm/package_writer.h"
#include "obm/walk.h"
#include "obmsdk/obmsdk.h"
#include "platform/hxcom.h"
#include "platform/tree_walker.h"
#include "tolmar/code_page.h"
#include "tolmar/file.h"
#include "tolmar/host_ui.h"
#include "tolmar/paths.h"
#include "tolmar/run_report.h"
#include "tolmar/system.h"

#include <filesystem>
#include <memory>

namespace {

using tolmar::RunOutcome;
using tolmar::runReport;

constexpr const char* boxTitle = "提示";
constexpr const char16_t* sourceProgram = u"pkgb_obm.exe";
constexpr const char16_t* planViewName = u"俯视图";
constexpr const char16_t* spatialViewName = u"三维视图";

template <typename Object>
struct Destroy {
    void operator()(Object* object) const { object->destroy(); }
};
template <typename Object>
using Owned = std::unique_ptr<Object, Destroy<Object>>;

std::u16string wideText(const char* text) {
    return text != nullptr ? tolmar::toWide(text) : std::u16string();
}

// What came of the 3D package: OBMOk, the status that it failed with, or that nobody chose what goes into it.
constexpr int nothingChosen = -1;

int told(int status) {
    if (status != OBMOk) {
        hxcad::hextPrintf("错误:%d\n", status);
    }
    return status;
}

void walkAll(pmodel::ObmTree& tree, OBM3dPackage& package) {
    pmodel::ObmWalk walk(tree, package, ExportDataDlg::selectedNodes());
    for (HxDbTreeNode* root : dataTreeRoots()) {
        walk.walkTree(root, hxcom::queryDbShortName(root->database()));
    }
}

int exportInto(OBM3dPackage& package, const std::u16string& folder) {
    const std::u16string target = folder + u"ORNA/";
    std::error_code ignored;
    std::filesystem::create_directory(tolmar::resolvePath(tolmar::fromWide(target)), ignored);
    if (const int status = told(package.open(target, OBMXCREATE)); status != OBMOk) {
        return status;
    }
    package.setPlanViewName(planViewName);
    package.setSpatialViewName(spatialViewName);
    pmodel::ObmTree tree;
    tree.root().name = wideText(HextSystem::getCurrentProjName());
    if (!askScope(ExportDataDlg::ObmOut)) {
        return nothingChosen;
    }
    walkAll(tree, package);
    pmodel::writeMaterials(package);
    pmodel::writeModelTree(package, tree.root());
    pmodel::writeInstanceTree(package, tree.root());
    pmodel::writeProperties(package, tree.root());
    const int status = told(package.write());
    return status == OBMOk ? told(package.close()) : status;
}

// A package whose model failed is saved without it, and is not whole.
void reportSaved(const std::string& path, int modelStatus, int status) {
    if (status != OBMOk) {
        runReport().fileFailed(path, obmStatusText(status));
    } else if (modelStatus != OBMOk && modelStatus != nothingChosen) {
        tolmar::setFileAside(path, std::string("it holds no model: ") + obmStatusText(modelStatus));
    } else if (!tolmar::dryRun()) {
        std::error_code error;
        runReport().fileWritten(path, std::filesystem::file_size(tolmar::resolvePath(path), error));
    }
}

void runExport(const std::string& path) {
    const Owned<OBMPackage> package(OBMPackage::create(true));
    if (const int status = package->open(tolmar::toWide(path), OBMXCREATE); status != OBMOk) {
        hxcad::hextPrintf("不能创建OBM:%d\n", status);
        runReport().fileFailed(path, obmStatusText(status));
        return;
    }
    package->setProjectName(wideText(HextSystem::getCurrentProjItem("name", false)));
    package->setSourceProgram(sourceProgram);
    Owned<OBM3dPackage> package3d(OBM3dPackage::create(true));
    int modelStatus = exportInto(*package3d, package->getIntermediateFolder() + u"/output/");
    if (modelStatus == OBMOk) {
        modelStatus = told(package->addV3d(package3d.release()));
    } else {
        package3d.reset();
    }
    const int status = package->save();
    reportSaved(path, modelStatus, status);
    if (status == OBMOk) {
        package->close();
    }
    tolmar::messageBox("导出结束", boxTitle);
}

}  // namespace

void obmout() {
    const std::optional<std::string> path = tolmar::hostUi().fileDialog({.save = true,
                                                                         .defaultExtension = "pmodel",
                                                                         .fileName = "",
                                                                         .filter = "PModel文件 (*.pmodel)|*.pmodel||",
                                                                         .overwritePrompt = true,
                                                                         .title = ""});
    if (!path) {
        runReport().ended(RunOutcome::Cancelled, "no file was named");
        return;
    }
    ProgressScope progress;
    try {
        runExport(*path);
    } catch (const ProgressCancelException&) {
        progress.close();
        tolmar::messageBox("导出取消", boxTitle);
        runReport().ended(RunOutcome::Cancelled);
    }
}
