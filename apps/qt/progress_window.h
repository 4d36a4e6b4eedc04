// Progress on the screen: a bar for each bar of the state, texts, and Cancel.
#pragma once

#include "tolmar/host_ui.h"

#include <QDialog>

class QLabel;
class QProgressBar;
class QPushButton;
class QVBoxLayout;

class ProgressWindow final : public QDialog {
    Q_OBJECT

public:
    explicit ProgressWindow(QWidget* parent = nullptr);
    // Shows a state; hides the window when no progress is open.
    void showState(const tolmar::ProgressState& state);
    // Whether Cancel was clicked since the window opened.
    bool isCancelled() const { return cancelled_; }

protected:
    void reject() override;

private:
    struct Row {
        QLabel* text;
        QProgressBar* bar;
    };

    void matchRows(std::size_t count);

    QVBoxLayout* rows_ = nullptr;
    QLabel* text_ = nullptr;
    QPushButton* cancel_ = nullptr;
    std::vector<Row> bars_;
    bool cancelled_ = false;
};
