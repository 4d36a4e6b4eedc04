// What several test programs share: a model from text, a host that listens, a temporary installation root.
#pragma once

#include "forms/forms.h"
#include "plant/model.h"
#include "platform/attribute_cache.h"
#include "support/files.h"
#include "tolmar/code_page.h"
#include "tolmar/host_ui.h"
#include "tolmar/run_report.h"
#include "tolmar/system.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <functional>
#include <sstream>
#include <string>
#include <vector>

// The current model for as long as the object lives.
class TestModel {
public:
    // Text of a test stands in the code page, that of a file in UTF-8.
    explicit TestModel(const std::string& json)
        : result_(plant::loadModelText(tolmar::isValidUtf8(json) ? json : tolmar::toUtf8(json), "test.json")) {
        EXPECT_TRUE(result_) << result_.error;
        plant::setCurrentModel(result_.model.get());
        clearBomCache();
    }
    ~TestModel() {
        clearBomCache();
        plant::setCurrentModel(nullptr);
    }
    TestModel(const TestModel&) = delete;
    TestModel& operator=(const TestModel&) = delete;
    plant::Model& model() { return *result_.model; }

    // A model with one database whose tree hangs under object 1, a HextWorld; `objects` are further objects.
    static std::string withObjects(const std::string& objects, const std::string& project = "{}") {
        return R"({"format":"tessaro-plant","version":1,"project":)" + project +
               R"(,"databases":[{"name":"MAIN","shortName":"M","root":1}],"objects":[{"id":1,"class":"HextWorld","name":"W"})" +
               (objects.empty() ? "" : ",") + objects + "]}";
    }

private:
    plant::LoadResult result_;
};

// Listens to the host; plays a user through `onForm`. Cancels at progress change number `cancelAt`, counted from 1;
// once `cancelStatus` is set, only changes under that status text count.
class TestUi : public tolmar::HostUi {
public:
    TestUi() { tolmar::setHostUi(this); }
    ~TestUi() override { tolmar::setHostUi(nullptr); }

    void print(const std::string& text) override { printed += text; }
    void messageBox(const std::string& text, const std::string&) override { boxes.push_back(text); }
    std::optional<std::string> fileDialog(const tolmar::FileDialog&) override { return answer; }
    std::optional<std::string> folderDialog(const std::string&) override { return answer; }
    std::optional<std::string> inputBox(const std::string&) override { return answer; }
    void runForm(OrnLogicForm& form) override {
        if (onForm) {
            onForm(form);
        } else {
            checkAll(form);
            form.onControlClicked(OrnLogicForm::ResultOk);
        }
    }
    void progressChanged(const tolmar::ProgressState& state) override {
        progress = state;
        ++progressChanges;
    }
    bool cancelRequested() override {
        const bool counts = cancelStatus.empty() || progress.text == cancelStatus;
        return cancelAt != 0 && counts && ++cancelAsked >= cancelAt;
    }

    static OrnLogicTree& treeOf(OrnLogicForm& form) {
        for (OrnLogicControl* control : form.controls()) {
            if (auto* tree = dynamic_cast<OrnLogicTree*>(control)) {
                return *tree;
            }
        }
        throw std::runtime_error("the form has no tree");
    }
    static void click(OrnLogicForm& form, OrnLogicTree::Item item) {
        OrnLogicTree& tree = treeOf(form);
        tree.setItemUnderMouse(item);
        form.onControlClicked(tree.id());
    }
    static void checkAll(OrnLogicForm& form) {
        for (OrnLogicTree::Item item : treeOf(form).topItems()) {
            if (!OrnLogicTree::checked(item)) {
                click(form, item);
            }
        }
    }

    // Every item of the tree; what hangs below one is looked up after its visit.
    template <typename Visit>
    static void eachItem(OrnLogicForm& form, const Visit& visit) {
        std::vector<OrnLogicTree::Item> open = treeOf(form).topItems();
        while (!open.empty()) {
            const OrnLogicTree::Item item = open.back();
            open.pop_back();
            visit(item);
            open.insert(open.end(), item->children.begin(), item->children.end());
        }
    }
    // From now on checks everything, unchecks items by label, then OK.
    void uncheck(std::vector<std::u16string> labels) {
        onForm = [labels = std::move(labels)](OrnLogicForm& form) {
            checkAll(form);
            eachItem(form, [&](OrnLogicTree::Item item) {
                if (std::find(labels.begin(), labels.end(), item->label) != labels.end()) {
                    click(form, item);
                }
            });
            form.onControlClicked(OrnLogicForm::ResultOk);
        };
    }

    std::string printed;
    std::vector<std::string> boxes;
    std::optional<std::string> answer;
    std::function<void(OrnLogicForm&)> onForm;
    tolmar::ProgressState progress;
    int progressChanges = 0;
    int cancelAt = 0;
    std::string cancelStatus;
    int cancelAsked = 0;
};

// An empty folder that is the installation root for as long as the object lives, with temp/hext in it.
class TestRoot {
public:
    TestRoot() {
        static int count = 0;
        const auto* info = testing::UnitTest::GetInstance()->current_test_info();
        path_ = std::filesystem::temp_directory_path() /
                ("tessaro-" + std::string(info != nullptr ? info->name() : "test") + "-" + std::to_string(::getpid()) +
                 "-" + std::to_string(count++));
        std::filesystem::create_directories(path_ / "temp" / "hext");
        before_ = tolmar::installationRoot();
        tolmar::setInstallationRoot(path_.string());
        tolmar::runReport().clear();
    }
    ~TestRoot() {
        tolmar::setInstallationRoot(before_);
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    TestRoot(const TestRoot&) = delete;
    TestRoot& operator=(const TestRoot&) = delete;

    const std::filesystem::path& path() const { return path_; }
    void write(const std::string& relative, const std::string& text) const {
        std::filesystem::create_directories((path_ / relative).parent_path());
        std::ofstream(path_ / relative, std::ios::binary) << text;
    }
    // A copy of the example's installation.
    void takeInstallation() const {
        std::filesystem::copy(std::filesystem::path(TESSARO_SOURCE_DIR) / "examples" / "install", path_,
                              std::filesystem::copy_options::recursive |
                                  std::filesystem::copy_options::overwrite_existing);
    }
    std::string read(const std::string& relative) const { return fileBytes(path_ / relative); }
    bool exists(const std::string& relative) const { return std::filesystem::exists(path_ / relative); }

private:
    std::filesystem::path path_;
    std::string before_;
};

// The ids of everything that the run passed over, a blank behind each.
inline std::string passedOverIds() {
    std::string text;
    for (const tolmar::PassedOver& row : tolmar::runReport().passed()) {
        text += std::to_string(row.id) + " ";
    }
    return text;
}

// "id what: why" of everything that the run passed over, a line each.
inline std::string passedOverRows() {
    std::string text;
    for (const tolmar::PassedOver& row : tolmar::runReport().passed()) {
        text += std::to_string(row.id) + " " + row.what + ": " + row.why + "\n";
    }
    return text;
}
