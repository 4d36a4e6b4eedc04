// A module whose commands do one thing each, for tests of everything around a command.
#include "forms/forms.h"
#include "platform/hxcom.h"
#include "platform/progress.h"
#include "tolmar/code_page.h"
#include "tolmar/file.h"
#include "tolmar/host_ui.h"
#include "tolmar/module_api.h"
#include "tolmar/run_report.h"
#include "tolmar/system.h"

#include <cstdint>
#include <cstdlib>
#include <stdexcept>
#include <unistd.h>

namespace {

using tolmar::hostUi;
using tolmar::runReport;

// World with two sites, one option that can be clicked and one that cannot.
class ScopeForm final : public OrnLogicForm {
public:
    void onInit() override {
        tree_ = createTree(12581, {});
        createButton(OrnLogicButton::Kind::CheckBox, 12584, u"Weld", {});
        createButton(OrnLogicButton::Kind::CheckBox, 12585, u"Expand", {})->enable(false);
        const OrnLogicTree::Item world = tree_->insertLast(nullptr, u"World", nullptr);
        tree_->insertSorted(world, u"Site 乙", nullptr);
        tree_->insertSorted(world, u"Site A", nullptr);
    }
    void onControlClicked(int id) override {
        if (id == 12581) {
            tree_->itemUnderMouse()->checked = !tree_->itemUnderMouse()->checked;
        } else if (id == 12584) {
            tolmar::writePrivateProfileString("Control", "outWeld", "1", "option.ini");
        } else {
            end(id);
        }
    }
    void print() const {
        for (const OrnLogicTree::Item site : tree_->topItems()[0]->children) {
            hxcad::hextPrintf("%s=%d\n", tolmar::fromWide(site->label).c_str(), site->checked ? 1 : 0);
        }
    }

private:
    OrnLogicTree* tree_ = nullptr;
};

void writeFile() {
    tolmar::FileDialog dialog;
    dialog.defaultExtension = "txt";
    if (const auto path = hostUi().fileDialog(dialog)) {
        tolmar::OutputFile file(*path, tolmar::FileMode::Text);
        file.write("line\n");
        file.close();
    }
    tolmar::messageBox("导出结束", "提示");
}

void passOver() {
    runReport().passedOver(17, "管 \"A\"", "pipe", "no points");
}

void waitForCancel() {
    auto* progress = hxcad::getNamedPipeProgressDialog();
    progress->openProgress(99, "waiting", 0);
    hxcad::hextPrintf("waiting\n");
    try {
        for (int i = 0; i < 6000; ++i) {
            progress->setBar(i / 60, 0);
            ::usleep(10'000);
        }
    } catch (const ProgressCancelException&) {
        progress->close();
        runReport().ended(tolmar::RunOutcome::Cancelled);
    }
}

void showScope() {
    ScopeForm form;
    if (form.DoModal() == OrnLogicForm::ResultOk) {
        form.print();
        writeFile();
    }
}

void ask() {
    const auto answer = hostUi().inputBox("name?");
    hxcad::hextPrintf("answer %s\n", answer ? answer->c_str() : "none");
}

void colour() {
    runReport().coloured(5, 3);
}
void fail() {
    throw std::runtime_error("out of paper");
}
void badFile() {
    tolmar::OutputFile file("/dev/full", tolmar::FileMode::Binary);
    file.write("x");
    file.close();
}
void start() {
    tolmar::startProgram("bin\\Pack.exe");
}

constexpr struct {
    const char* name;
    TlEdCommandHandler handler;
} commands[] = {{"WRITE", writeFile}, {"PASS", passOver}, {"WAIT", waitForCancel}, {"SCOPE", showScope}, {"ASK", ask},
                {"COLOUR", colour},   {"FAIL", fail},     {"BADFILE", badFile},    {"START", start}};

}  // namespace

extern "C" unsigned tlrxGetApiVersion() {
    return tlrxApiVersion;
}

extern "C" int tlrxEntryPoint(unsigned message, void*) {
    auto* stack = TlEdCommandStack::cast(tlrxSysRegistry()->at(TLAD_REGISTERED_COMMANDS));
    if (message == TlRx::kUnloadAppMsg) {
        return stack->removeGroup("WORKING");
    }
    for (const auto& command : commands) {
        stack->addCommand("WORKING", command.name, command.name, 0, command.handler);
    }
    return TlRx::kRetOK;
}

extern "C" bool XDBOUT(std::vector<std::string>& types, std::vector<std::uint64_t>& colors,
                       std::vector<std::vector<double>>& positions, std::vector<std::vector<int>>& indices,
                       std::vector<std::vector<double>>& normals, std::vector<std::vector<int>>& normalIndices,
                       std::vector<std::string>& data, int strict) {
    types = {"墙"};
    colors = {0xFFFFFFFFFF0000FFULL};
    positions = {{0, 0.5, -1e300}};
    indices = {{0, 0, 0}};
    normals = {{0, 0, 1}};
    normalIndices = {{0, 0, 0}};
    data = {"strict:" + std::to_string(strict) + ";"};
    if (std::getenv("WORKING_MODULE_WAITS") != nullptr) {
        waitForCancel();
    }
    return runReport().outcome() == tolmar::RunOutcome::Done;
}
