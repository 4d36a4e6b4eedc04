#include "eem/command.h"

#include "eem/content.h"
#include "eem/walk.h"
#include "exportbase/json_side_file.h"
#include "frame/export_dialog.h"
#include "frame/progress_slot.h"
#include "platform/hxcom.h"
#include "platform/left_out.h"
#include "platform/tree_walker.h"
#include "tolmar/file.h"
#include "tolmar/host_ui.h"
#include "tolmar/run_report.h"

#include <vector>

namespace eem {

namespace {

using tolmar::RunOutcome;
using tolmar::runReport;

constexpr int modelModule = 65;
constexpr int paperModule = 73;

void tell(const char* text) {
    tolmar::messageBox(text, "提示");
}

void writeTrees(Content& content) {
    if (!askScope(ExportDataDlg::OrnaOut)) {
        return;
    }
    content.writeHeader();
    hxcad::hextPrintf("准备输出%d个对象", static_cast<int>(ExportDataDlg::getSelectedObjectCount()));
    TreeWalk walk(content);
    for (HxDbTreeNode* root : dataTreeRoots()) {
        walk.walk(root);
    }
    hxcad::hextPrintf("已经输出%d个对象", static_cast<int>(walk.objectCount()));
}

// What goes out depends on the application module.
void writeModule(EemFile& file, JsonSideFile& side) {
    Output output(file, side);
    const int module = hxcom::getCurrentModule();
    if (module == modelModule) {
        ModelContent content(output);
        writeTrees(content);
    } else if (module == paperModule) {
        PaperContent content(output);
        writeTrees(content);
    } else {
        reportLeftOut({HxDbObjectId(module), "application module", "model"},
                      "an EEM file holds those of modules 65 and 73");
    }
}

enum class Ending { Whole, Cancelled, Failed };

// A cancelled file is kept aside with its blocks and no trailer; of one that failed nothing is left.
Ending writeFile(tolmar::OutputFile& target, JsonSideFile& side, std::uint64_t limit) {
    EemFile file(target, limit);
    try {
        writeModule(file, side);
        file.writeTrailer();
        file.flush();
        return Ending::Whole;
    } catch (const ProgressCancelException&) {
        file.flush();
        target.abandon("cancelled");
        runReport().ended(RunOutcome::Cancelled);
        return Ending::Cancelled;
    } catch (const std::exception& failure) {
        target.deleteWhenFailed();
        target.abandon(failure.what());
        hxcad::hextPrintf("\n%s", failure.what());
        tell(failure.what());
        runReport().ended(RunOutcome::Failed, failure.what());
        return Ending::Failed;
    }
}

}  // namespace

void exportTo(std::string_view path, std::uint64_t limit) {
    JsonSideFile side;
    ProgressScope progress;
    tolmar::OutputFile target;
    if (!target.open(path, tolmar::FileMode::Binary)) {
        tell("文件打开失败");
        tell("导出结束");
        return;
    }
    const Ending ending = writeFile(target, side, limit);
    const bool isWritten = target.close();
    progress.close();
    if (ending == Ending::Cancelled) {
        tell("导出取消");
    }
    if (ending != Ending::Whole) {
        return;
    }
    if (isWritten) {
        side.write(sideFilePath(path));
    } else {
        tell("文件写入失败");
    }
    tell("导出结束");
}

}  // namespace eem

void ornaout() {
    tolmar::FileDialog dialog;
    dialog.defaultExtension = "eem";
    dialog.filter = "EEM文件 (*.eem)|*.eem||";
    if (const std::optional<std::string> path = tolmar::hostUi().fileDialog(dialog)) {
        eem::exportTo(*path);
    } else {
        tolmar::runReport().ended(tolmar::RunOutcome::Cancelled, "no file was chosen");
    }
}
