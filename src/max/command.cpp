#include "max/command.h"

#include "exportbase/safe_file_name.h"
#include "max/document.h"
#include "max/input_box.h"
#include "max/tree.h"
#include "platform/hxcom.h"
#include "tolmar/host_ui.h"
#include "tolmar/run_report.h"

#include <memory>
#include <optional>

namespace {

using maxfile::MaxDocument;
using tolmar::RunOutcome;
using tolmar::runReport;

// The text that the user enters; none when the command ends here.
std::optional<std::string> askCode(const char* prompt, const char* emptyMessage) {
    CInputBox box(prompt);
    if (!box.DoModal()) {
        runReport().ended(RunOutcome::Cancelled, "an input box was cancelled");
        return std::nullopt;
    }
    if (box.text().empty()) {
        tolmar::messageBox(emptyMessage);
        runReport().ended(RunOutcome::Refused, emptyMessage);
        return std::nullopt;
    }
    return box.text();
}

bool askCodes(maxfile::ProjectCodes& codes) {
    const auto project = askCode("设置项目编码", "项目编码不能为空");
    const auto station = project ? askCode("设置站场编号", "站场编号不能为空") : std::nullopt;
    if (station) {
        codes = {*project, *station};
    }
    return station.has_value();
}

bool writeFile(const MaxDocument& document, const std::string& path) {
    tolmar::OutputFile file(path, tolmar::FileMode::Text);
    document.print(file);
    const bool isWhole = file.close() && !file.failed();
    if (!isWhole) {
        hxcad::hextPrintf("\n导出%s失败", path.c_str());
    }
    return isWhole;
}

}  // namespace

void maxout() {
    const auto folder = tolmar::hostUi().folderDialog("选择文件夹");
    if (!folder) {
        runReport().ended(RunOutcome::Cancelled, "the folder dialog was cancelled");
        return;
    }
    const std::string base = *folder + "\\" + safeFileName(HextSystem::getCurrentProjName());
    HxDbTreeNode* const root = hxcom::getDataManTreeRoot();
    const auto geometry = std::make_unique<MaxDocument>();
    const auto properties = std::make_unique<MaxDocument>();
    maxfile::ProjectCodes codes;
    if (!askCodes(codes)) {
        return;
    }
    if (root == nullptr) {
        runReport().ended(RunOutcome::Refused, "the main database holds no data");
        return;
    }
    maxfile::MaxTreeWriter(*geometry, *properties, codes).writeTree(root);
    const bool isGeometryWhole = writeFile(*geometry, base + ".orna");
    if (!writeFile(*properties, base + ".xml") || !isGeometryWhole) {
        runReport().ended(RunOutcome::Failed, "not both files of MAXOUT are whole");
    }
}
