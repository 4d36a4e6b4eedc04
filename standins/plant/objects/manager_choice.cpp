// The form in which a user picks the current manager.
#include "forms/forms.h"
#include "forms/tree_selection.h"
#include "plant/model/data.h"
#include "tolmar/code_page.h"
#include "tolmar/text.h"

#include <utility>
#include <vector>

namespace plant {

namespace {

constexpr int treeId = 100;
constexpr int formWidth = 560;
constexpr int formHeight = 700;

class ManagerForm final : public OrnLogicForm {
public:
    explicit ManagerForm(Model& model) : model_(model) {}

    void onInit() override {
        setFrame(u"选择管理节点", formWidth, formHeight);
        tree_ = createTree(treeId, {110, 0, formWidth - 10, formHeight});
        createButton(OrnLogicButton::Kind::Push, ResultOk, u"确定", {10, 130, 100, 155});
        createButton(OrnLogicButton::Kind::Push, ResultCancel, u"取消", {10, 160, 100, 185});
        for (const DatabaseData& database : model_.databases) {
            if (database.root.object != nullptr) {
                fill(*database.root.object);
            }
        }
    }

    void onControlClicked(int control) override {
        if (control == ResultOk || control == ResultCancel) {
            end(control);
        } else if (const OrnLogicTree::Item item = tree_->itemUnderMouse()) {
            OrnLogicTree::setChecked(item, !OrnLogicTree::checked(item));
        }
    }

    std::vector<ObjectData*> checked() const {
        std::vector<ObjectData*> objects;
        visitItems(*tree_, [&](OrnLogicTree::Item item) {
            if (OrnLogicTree::checked(item)) {
                objects.push_back(static_cast<ObjectData*>(item->data));
            }
        });
        return objects;
    }

private:
    void fill(ObjectData& root) {
        std::vector<std::pair<ObjectData*, OrnLogicTree::Item>> waiting{{&root, nullptr}};
        while (!waiting.empty()) {
            const auto [object, parent] = waiting.back();
            waiting.pop_back();
            const char* name = tolmar::textOrEmpty(object->name);
            const OrnLogicTree::Item item = tree_->insertLast(parent, tolmar::toWide(name), object);
            const std::vector<ObjectData*> sons = object->sons();
            for (auto son = sons.rbegin(); son != sons.rend(); ++son) {
                waiting.emplace_back(*son, item);
            }
        }
    }

    Model& model_;
    OrnLogicTree* tree_ = nullptr;
};

}  // namespace

bool chooseCurrentManager(Model& model, std::string& error) {
    ManagerForm form(model);
    if (form.DoModal() != OrnLogicForm::ResultOk) {
        return false;
    }
    const std::vector<ObjectData*> chosen = form.checked();
    if (chosen.size() != 1) {
        error = "exactly one item of the tree can be the current manager, and " + std::to_string(chosen.size()) +
                " are selected";
        return false;
    }
    model.project.currentManager.object = chosen.front();
    return true;
}

}  // namespace plant
