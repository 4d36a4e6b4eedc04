// A form on the screen: its controls where the form puts them, a search field above and a line of counts below.
#pragma once

#include "forms/forms.h"

#include <QDialog>

class QCheckBox;
class QLabel;
class QLineEdit;
class QTimer;
class QTreeView;
class TreeFilter;
class TreeModel;

class FormWindow final : public QDialog {
    Q_OBJECT

public:
    // The form has been initialised and outlives the window.
    explicit FormWindow(OrnLogicForm& form, QWidget* parent = nullptr);
    ~FormWindow() override;
    // Writes the checked items as patterns for --select-file. Empty when it was written, otherwise why not, or what the
    // file cannot say.
    QString saveSelection(const QString& file);

protected:
    void resizeEvent(QResizeEvent* event) override;
    // Closing the window is Cancel.
    void reject() override;

private:
    void addControl(OrnLogicControl& control);
    void addTree(OrnLogicTree& tree);
    void addButton(OrnLogicButton& button);
    void addSearch();
    void click(int control);
    void takeStates();
    void placeControls();
    void showCounts();
    void askWhereToSave();

    OrnLogicForm& form_;
    OrnLogicTree* tree_ = nullptr;
    QWidget* client_ = nullptr;
    QLineEdit* search_ = nullptr;
    QTimer* searchDelay_ = nullptr;
    QLabel* counts_ = nullptr;
    QTreeView* view_ = nullptr;
    std::unique_ptr<TreeModel> model_;
    std::unique_ptr<TreeFilter> filter_;
    std::vector<std::pair<OrnLogicControl*, QWidget*>> widgets_;
};
