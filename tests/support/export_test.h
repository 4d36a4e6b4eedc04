// What the tests of exports share: a user of class Ui, an installation root with a folder "out", a model, a run's
// report.
#pragma once

#include "scripts/script_host.h"
#include "support/test_support.h"

#include <algorithm>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

template <typename Ui>
class ExportTest : public testing::Test {
protected:
    ExportTest() { std::filesystem::create_directories(out()); }
    ~ExportTest() override { destroyScriptHost(); }

    std::filesystem::path out() const { return root.path() / "out"; }
    std::vector<std::string> filesOut() const {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(out())) {
            names.push_back(entry.path().filename().string());
        }
        std::sort(names.begin(), names.end());
        return names;
    }
    void loadText(const std::string& json) {
        model.reset();
        model = std::make_unique<TestModel>(json);
    }
    // Objects below the world, which is object 1; their text stands in the code page.
    void load(const std::string& objects, const std::string& project = R"({"name":"P"})") {
        loadText(tolmar::toUtf8(TestModel::withObjects(objects, project)));
    }
    void script(const std::string& lua) const { root.write("plugins/nvoutplugins.lua", lua); }
    static tolmar::RunOutcome outcome() { return tolmar::runReport().outcome(); }

    TestRoot root;
    Ui ui;
    std::unique_ptr<TestModel> model;
};
