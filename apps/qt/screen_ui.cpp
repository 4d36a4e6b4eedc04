#include "qt/screen_ui.h"

#include "qt/form_window.h"
#include "qt/texts.h"

#include <QApplication>
#include <QFileDialog>
#include <QInputDialog>
#include <QMessageBox>

namespace {

constexpr qint64 breathPause = 40;  // milliseconds between looks at the windows

std::optional<std::string> answerOf(const QString& text) {
    return text.isEmpty() ? std::nullopt : std::optional<std::string>(toCodePage(text));
}

}  // namespace

void QtUi::messageBox(const std::string& text, const std::string& title) {
    console_.messageBox(text, title);
    QMessageBox box(QMessageBox::Information, fromCodePage(title), fromCodePage(text), QMessageBox::Ok);
    box.setWindowFlag(Qt::WindowStaysOnTopHint);
    box.exec();
}

std::optional<std::string> QtUi::fileDialog(const tolmar::FileDialog& dialog) {
    QFileDialog window(nullptr, fromCodePage(dialog.title), fromCodePage(dialog.fileName), qtFilter(dialog.filter));
    window.setAcceptMode(dialog.save ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
    window.setFileMode(dialog.save ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
    window.setDefaultSuffix(fromCodePage(dialog.defaultExtension));
    window.setOption(QFileDialog::DontConfirmOverwrite, !dialog.overwritePrompt);
    if (const auto suggestion = console_.fileDialog(dialog)) {
        window.selectFile(fromCodePage(*suggestion));
    }
    if (window.exec() != QDialog::Accepted || window.selectedFiles().isEmpty()) {
        return std::nullopt;
    }
    return answerOf(window.selectedFiles().constFirst());
}

std::optional<std::string> QtUi::folderDialog(const std::string& title) {
    const QString start = fromCodePage(console_.folderDialog(title).value_or(""));
    return answerOf(QFileDialog::getExistingDirectory(nullptr, fromCodePage(title), start));
}

std::optional<std::string> QtUi::inputBox(const std::string& prompt) {
    bool accepted = false;
    const QString text = QInputDialog::getText(nullptr, fromCodePage(prompt), fromCodePage(prompt), QLineEdit::Normal,
                                               fromCodePage(console_.inputBox(prompt).value_or("")), &accepted);
    return accepted ? std::optional<std::string>(toCodePage(text)) : std::nullopt;
}

void QtUi::runForm(OrnLogicForm& form) {
    if (!form.ended() && console_.prepareForm(form)) {
        FormWindow(form).exec();
    }
    if (!form.ended()) {
        form.onControlClicked(OrnLogicForm::ResultCancel);
    }
}

void QtUi::progressChanged(const tolmar::ProgressState& state) {
    console_.progressChanged(state);
    const bool opensOrCloses = state.open != progress_.isVisible();
    if (opensOrCloses || !sinceBreath_.isValid() || sinceBreath_.elapsed() >= breathPause) {
        progress_.showState(state);
        sinceBreath_.invalidate();
        breathe();
    }
}

void QtUi::breathe() {
    if (!sinceBreath_.isValid() || sinceBreath_.elapsed() >= breathPause) {
        QApplication::processEvents();
        sinceBreath_.start();
    }
}

bool QtUi::cancelRequested() {
    breathe();
    return progress_.isCancelled() || console_.cancelRequested();
}
