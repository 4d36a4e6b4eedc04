// The scope dialog of all exports: a tree of managers with check boxes, and up to four options.
#pragma once

#include "forms/forms.h"
#include "platform/id_tables.h"
#include "platform/objects.h"

#include <string>
#include <unordered_map>

class ExportDataDlg final : public OrnLogicForm {
public:
    enum Mode { NvOut = 0, RvmOut = 1, HextOut = 2, ObmOut = 3, OrnaOut = 4 };
    using NodeSelection = IdMap<bool>;
    using ObjectSelection = IdSet;

    // Empties the results of the dialog before.
    explicit ExportDataDlg(int mode, bool withOtherRoots = true);

    // The results, valid after the dialog object is gone until the next one is made: id of a tree node to whether its
    // item was checked at OK, and the smart objects under checked managers less those unchecked one by one. The objects
    // are sought when they are first asked for, in the model that is current then.
    static const NodeSelection& selectedNodes();
    static const ObjectSelection& selectedObjects();
    static std::size_t getSelectedObjectCount() { return selectedObjects().size(); }

    void onInit() override;
    void onSize(int width, int height) override;
    void onControlClicked(int id) override;
    void onClosing() override;

private:
    void createOptions();
    bool fillTree();
    void fillFrom(HxDbTreeNode* root, const char* worldPrefix);
    void addNode(HxDbTreeNode* node, HxDbObject* object, const char* worldPrefix);
    OrnLogicTree::Item parentItem(const HxDbTreeNode* node);
    const std::string& prefixOf(const HxDbObject* object);
    void clickTree();
    void clickOption(OrnLogicButton& box);
    void takeResults();

    // Prefixes depend on the class alone, so each class asks the script or the profile once.
    std::unordered_map<const HxRxClass*, std::string> prefixes_;

    int mode_;
    bool withOtherRoots_;
    OrnLogicTree* tree_ = nullptr;
    std::string label_;  // of the item in hand
    const HxDbTreeNode* lastParent_ = nullptr;
    OrnLogicTree::Item lastParentItem_ = nullptr;
};

// Shows the dialog of an export to the user. False when nothing is selected then; the run report knows why.
bool askScope(ExportDataDlg::Mode mode);

// Whether a node was checked at OK. One that the dialog did not show, such as one whose object does not open, was not.
bool isChecked(const ExportDataDlg::NodeSelection& selection, const HxDbTreeNode* node);

// The value of a tree node's id in a selection, for callers to whom an unknown id is a fault: throws a standard
// exception with "invalid map<K, T> key".
bool selectedValue(const ExportDataDlg::NodeSelection& selection, HxDbObjectId node);
