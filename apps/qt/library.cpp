// What the program finds in this library, by name.
#include "qt/screen_ui.h"

#include <QApplication>
#include <QLocale>
#include <clocale>
#include <cstdlib>
#include <fcntl.h>
#include <memory>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

int argumentCount = 1;
char programName[] = "tessaro";
char* arguments[] = {programName, nullptr};

// Qt ends the process when it finds no screen, so a child tries first.
bool hasScreen() {
    const pid_t child = ::fork();
    if (child == 0) {
        const int nowhere = ::open("/dev/null", O_WRONLY);
        ::dup2(nowhere, STDERR_FILENO);
        ::dup2(nowhere, STDOUT_FILENO);
        const rlimit noDump{0, 0};
        ::setrlimit(RLIMIT_CORE, &noDump);
        QApplication application(argumentCount, arguments);
        ::_exit(0);
    }
    int status = 1;
    return child > 0 && ::waitpid(child, &status, 0) == child && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

// The application lives with its user interface.
class OwnApplication final : public tolmar::HostUi {
public:
    explicit OwnApplication(tolmar::HostUi& console)
        : application_(argumentCount, arguments), ui_(std::make_unique<QtUi>(console)) {
        // The application has taken the user's locale; numbers in files have a point in every country.
        std::setlocale(LC_NUMERIC, "C");
        QLocale::setDefault(QLocale::c());
    }
    void print(const std::string& text) override { ui_->print(text); }
    void messageBox(const std::string& text, const std::string& title) override { ui_->messageBox(text, title); }
    std::optional<std::string> fileDialog(const tolmar::FileDialog& dialog) override { return ui_->fileDialog(dialog); }
    std::optional<std::string> folderDialog(const std::string& title) override { return ui_->folderDialog(title); }
    std::optional<std::string> inputBox(const std::string& prompt) override { return ui_->inputBox(prompt); }
    void runForm(OrnLogicForm& form) override { ui_->runForm(form); }
    void progressChanged(const tolmar::ProgressState& state) override { ui_->progressChanged(state); }
    bool cancelRequested() override { return ui_->cancelRequested(); }

private:
    QApplication application_;
    std::unique_ptr<QtUi> ui_;
};

}  // namespace

// Shows dialogs on the screen. What is printed, and every question whether to stop, goes to `console` too, which must
// outlive the result. Null when there is no screen. To be deleted by the caller, one at a time.
extern "C" __attribute__((visibility("default"))) tolmar::HostUi* tessaroCreateQtUi(tolmar::HostUi& console) {
    return hasScreen() ? new OwnApplication(console) : nullptr;
}
