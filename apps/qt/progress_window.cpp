#include "qt/progress_window.h"

#include "qt/texts.h"

#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

ProgressWindow::ProgressWindow(QWidget* parent) : QDialog(parent) {
    auto* layout = new QVBoxLayout(this);
    text_ = new QLabel;
    rows_ = new QVBoxLayout;
    cancel_ = new QPushButton(fromWide(u"取消"));
    cancel_->setObjectName("cancel");
    layout->addWidget(text_);
    layout->addLayout(rows_);
    layout->addWidget(cancel_, 0, Qt::AlignRight);
    connect(cancel_, &QPushButton::clicked, this, &ProgressWindow::reject);
    setMinimumWidth(480);
}

void ProgressWindow::matchRows(std::size_t count) {
    while (bars_.size() > count) {
        delete bars_.back().text;
        delete bars_.back().bar;
        bars_.pop_back();
    }
    while (bars_.size() < count) {
        const Row row{new QLabel, new QProgressBar};
        row.bar->setRange(0, 100);
        rows_->addWidget(row.text);
        rows_->addWidget(row.bar);
        bars_.push_back(row);
    }
}

void ProgressWindow::showState(const tolmar::ProgressState& state) {
    if (!state.open) {
        cancelled_ = false;
        hide();
        return;
    }
    setWindowTitle(fromCodePage(state.title));
    text_->setText(fromCodePage(state.text));
    text_->setVisible(!state.text.empty());
    matchRows(state.bars.size());
    for (std::size_t i = 0; i < bars_.size(); ++i) {
        bars_[i].text->setText(fromCodePage(state.bars[i].text));
        bars_[i].text->setVisible(!state.bars[i].text.empty());
        bars_[i].bar->setValue(state.bars[i].value);
    }
    if (!isVisible()) {
        cancelled_ = false;
        cancel_->setEnabled(true);
        show();
    }
}

void ProgressWindow::reject() {
    cancelled_ = true;
    cancel_->setEnabled(false);
}
