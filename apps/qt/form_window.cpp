#include "qt/form_window.h"

#include "forms/tree_selection.h"
#include "qt/texts.h"
#include "qt/tree_filter.h"
#include "qt/tree_model.h"

#include <QCheckBox>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>
#include <QTreeView>
#include <QVBoxLayout>

namespace {

constexpr int smallestWidth = 320;
constexpr int smallestHeight = 200;
constexpr int searchDelay = 200;  // milliseconds after the last key

QRect rectOf(const FormRect& rect) {
    return {QPoint(rect.left, rect.top), QPoint(rect.right - 1, rect.bottom - 1)};
}

}  // namespace

FormWindow::FormWindow(OrnLogicForm& form, QWidget* parent) : QDialog(parent), form_(form) {
    setWindowTitle(fromWide(form.caption()));
    client_ = new QWidget;
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 4);
    for (OrnLogicControl* control : form.controls()) {
        addControl(*control);
    }
    if (tree_ != nullptr) {
        addSearch();
    }
    layout->addWidget(client_, 1);
    if (tree_ != nullptr) {
        auto* footer = new QHBoxLayout;
        counts_ = new QLabel;
        counts_->setObjectName("counts");
        auto* save = new QPushButton(fromWide(u"保存选择…"));
        save->setObjectName("save");
        save->setAutoDefault(false);
        connect(save, &QPushButton::clicked, this, &FormWindow::askWhereToSave);
        footer->setContentsMargins(10, 0, 10, 0);
        footer->addWidget(counts_, 1);
        footer->addWidget(save);
        layout->addLayout(footer);
        showCounts();
    }
    // The client area gets the form's size, whatever stands around it.
    client_->setMinimumSize(form.width(), form.height());
    adjustSize();
    client_->setMinimumSize(smallestWidth, smallestHeight);
}

FormWindow::~FormWindow() = default;

void FormWindow::addControl(OrnLogicControl& control) {
    if (auto* tree = dynamic_cast<OrnLogicTree*>(&control)) {
        addTree(*tree);
    } else if (auto* button = dynamic_cast<OrnLogicButton*>(&control)) {
        addButton(*button);
    }
}

void FormWindow::addTree(OrnLogicTree& tree) {
    tree_ = &tree;
    model_ = std::make_unique<TreeModel>(form_, tree);
    filter_ = std::make_unique<TreeFilter>(*model_, tree);
    view_ = new QTreeView(client_);
    view_->setObjectName("tree");
    view_->setHeaderHidden(true);
    view_->setUniformRowHeights(true);
    view_->setModel(filter_.get());
    QPalette palette = view_->palette();
    palette.setColor(QPalette::Base, QColor::fromRgb(static_cast<QRgb>(tree.background())));
    view_->setPalette(palette);
    view_->expandToDepth(0);
    connect(model_.get(), &TreeModel::statesChanged, this, [this] {
        view_->viewport()->update();
        showCounts();
    });
    widgets_.emplace_back(&tree, view_);
}

void FormWindow::addButton(OrnLogicButton& button) {
    QAbstractButton* widget = button.kind() == OrnLogicButton::Kind::CheckBox
                                  ? static_cast<QAbstractButton*>(new QCheckBox(client_))
                                  : new QPushButton(client_);
    widget->setText(fromWide(button.label()));
    widget->setObjectName("control" + QString::number(button.id()));
    if (auto* push = dynamic_cast<QPushButton*>(widget)) {
        push->setAutoDefault(false);
        push->setDefault(button.id() == OrnLogicForm::ResultOk);
    }
    const int id = button.id();
    connect(widget, &QAbstractButton::clicked, this, [this, id] { click(id); });
    widgets_.emplace_back(&button, widget);
    takeStates();
}

void FormWindow::addSearch() {
    search_ = new QLineEdit;
    search_->setObjectName("search");
    search_->setPlaceholderText(fromWide(u"查找"));
    search_->setClearButtonEnabled(true);
    searchDelay_ = new QTimer(this);
    searchDelay_->setSingleShot(true);
    searchDelay_->setInterval(searchDelay);
    connect(search_, &QLineEdit::textChanged, searchDelay_, qOverload<>(&QTimer::start));
    connect(searchDelay_, &QTimer::timeout, this, [this] {
        filter_->setText(search_->text());
        constexpr std::size_t fewMatches = 2000;
        if (!search_->text().isEmpty() && filter_->matchCount() <= fewMatches) {
            view_->expandAll();
        }
        showCounts();
    });
    auto* bar = new QHBoxLayout;
    bar->setContentsMargins(10, 6, 10, 4);
    bar->addWidget(search_);
    static_cast<QVBoxLayout*>(layout())->addLayout(bar);
}

void FormWindow::click(int control) {
    form_.onControlClicked(control);
    takeStates();
    if (form_.ended()) {
        done(form_.result());
    }
}

void FormWindow::takeStates() {
    for (const auto& [control, widget] : widgets_) {
        const auto* button = dynamic_cast<OrnLogicButton*>(control);
        if (button != nullptr && button->kind() == OrnLogicButton::Kind::CheckBox) {
            static_cast<QAbstractButton*>(widget)->setCheckable(true);
            static_cast<QAbstractButton*>(widget)->setChecked(button->checked());
        }
        widget->setEnabled(control->enabled());
    }
}

void FormWindow::placeControls() {
    form_.onSize(client_->width(), client_->height());
    for (const auto& [control, widget] : widgets_) {
        widget->setGeometry(rectOf(control->rect()));
    }
}

void FormWindow::showCounts() {
    if (counts_ == nullptr) {
        return;
    }
    QString text = fromWide(u"已选 %1 / %2").arg(model_->checkedCount()).arg(model_->itemCount());
    if (search_ != nullptr && !search_->text().isEmpty()) {
        text += fromWide(u"    找到 %1").arg(filter_->matchCount());
    }
    counts_->setText(text);
}

void FormWindow::resizeEvent(QResizeEvent* event) {
    QDialog::resizeEvent(event);
    layout()->activate();
    placeControls();
}

void FormWindow::reject() {
    click(OrnLogicForm::ResultCancel);
    if (!form_.ended()) {
        QDialog::reject();
    }
}

QString FormWindow::saveSelection(const QString& file) {
    std::string fault;
    writeSelectFile(file.toStdString(), form_, *tree_, fault);
    model_->refresh();
    return QString::fromStdString(fault);
}

void FormWindow::askWhereToSave() {
    const QString file = QFileDialog::getSaveFileName(this, fromWide(u"保存选择"), "selection.txt");
    if (file.isEmpty()) {
        return;
    }
    if (const QString fault = saveSelection(file); !fault.isEmpty()) {
        QMessageBox::warning(this, windowTitle(), fault);
    }
}
