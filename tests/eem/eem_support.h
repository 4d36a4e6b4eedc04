// What the tests of the EEM export share: files in memory, reading back through the program's checker, a user who
// listens to the bars.
#pragma once

#include "../../apps/tessaro/checkers/eem_reader.h"
#include "exports/eem_command.h"
#include "exports/eem_file.h"
#include "platform/hxcom.h"
#include "scripts/script_host.h"
#include "support/test_support.h"
#include "tolmar/file.h"

#include <memory>
#include <string>
#include <string_view>

// Keeps what is written; beyond `limit` bytes every write fails.
class MemorySink final : public tolmar::Sink {
public:
    explicit MemorySink(std::string& bytes, std::size_t limit = std::string::npos) : bytes_(bytes), limit_(limit) {}
    bool write(const char* data, std::size_t size) override {
        if (size > limit_ - bytes_.size()) {
            return false;
        }
        bytes_.append(data, size);
        return true;
    }
    bool writeAt(std::uint64_t offset, const char* data, std::size_t size) override {
        bytes_.replace(static_cast<std::size_t>(offset), size, data, size);
        return true;
    }
    bool truncate(std::uint64_t offset) override {
        bytes_.resize(static_cast<std::size_t>(offset));
        return true;
    }
    bool close() override { return true; }

private:
    std::string& bytes_;
    std::size_t limit_;
};

inline std::string allFindings(const eemcheck::Findings& findings) {
    std::string text;
    for (const eemcheck::Finding& finding : findings) {
        text += finding.place + ": " + finding.text + "\n";
    }
    return text;
}

inline std::string exampleText(const char* name) {
    std::ifstream file(std::filesystem::path(TESSARO_SOURCE_DIR) / "examples" / name, std::ios::binary);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

// Keeps every change of the dialog as a line: how it opens, "bar=text", "bar:value".
class BarsUi final : public TestUi {
public:
    void progressChanged(const tolmar::ProgressState& now) override {
        if (now.open != progress.open) {
            log += now.open ? "open " + now.title + " " + std::to_string(now.bars.size() - 1) + "\n" : "close\n";
            progress.bars.assign(now.bars.size(), {});
        }
        for (std::size_t i = 0; now.open && i < now.bars.size(); ++i) {
            if (now.bars[i].text != progress.bars[i].text) {
                log += std::to_string(i) + "=" + now.bars[i].text + "\n";
            }
            if (now.bars[i].value != progress.bars[i].value) {
                log += std::to_string(i) + ":" + std::to_string(now.bars[i].value) + "\n";
            }
        }
        TestUi::progressChanged(now);
    }
    std::optional<std::string> fileDialog(const tolmar::FileDialog& asked) override {
        dialog = asked;
        return answer;
    }
    // Unchecks items by label before OK.
    void uncheck(std::vector<std::u16string> labels) {
        onForm = [labels](OrnLogicForm& form) {
            checkAll(form);
            std::vector<OrnLogicTree::Item> open = treeOf(form).topItems();
            while (!open.empty()) {
                const OrnLogicTree::Item item = open.back();
                open.pop_back();
                if (std::find(labels.begin(), labels.end(), item->label) != labels.end()) {
                    click(form, item);
                }
                open.insert(open.end(), item->children.begin(), item->children.end());
            }
            form.onControlClicked(OrnLogicForm::ResultOk);
        };
    }

    std::string log;
    tolmar::FileDialog dialog;
};

class EemRunTest : public testing::Test {
protected:
    EemRunTest() { ui.answer = (root.path() / "plant.v1.eem").string(); }
    ~EemRunTest() override { destroyScriptHost(); }

    void load(const std::string& json) {
        model.reset();
        model = std::make_unique<TestModel>(json);
    }
    void loadObjects(const std::string& objects, int module = 65) {
        load(TestModel::withObjects(objects, R"({"name":"P","module":)" + std::to_string(module) + "}"));
    }
    void script(const std::string& lua) { root.write("plugins/nvoutplugins.lua", lua); }
    std::string bytes() { return root.read("plant.v1.eem"); }
    bool hasSideFile() { return root.exists("plant.v1.json"); }

    // Both files, which must be whole and tell of the same objects.
    eemcheck::EemContent read() {
        eemcheck::Findings findings;
        eemcheck::EemContent content = eemcheck::readEem(bytes(), findings);
        side = eemcheck::readSideFile(root.read("plant.v1.json"), findings);
        eemcheck::checkPair(content, side, findings);
        EXPECT_EQ(allFindings(findings), "");
        EXPECT_TRUE(content.isWhole);
        return content;
    }
    // Every block as its id and the codes of its records, such as "5[0 20]".
    std::string blocks() {
        std::string text;
        for (const eemcheck::Block& block : read().blocks) {
            text += (text.empty() ? "" : " ") + std::to_string(block.id) + "[";
            for (const eemcheck::Record& record : block.records) {
                text += (text.back() == '[' ? "" : " ") + std::to_string(record.code);
            }
            text += "]";
        }
        return text;
    }
    static std::string passedOver() {
        std::string text;
        for (const auto& entry : tolmar::runReport().passed()) {
            text += std::to_string(entry.id) + " " + entry.what + "; ";
        }
        return text;
    }
    static tolmar::RunOutcome outcome() { return tolmar::runReport().outcome(); }

    TestRoot root;
    BarsUi ui;
    std::unique_ptr<TestModel> model;
    std::vector<eemcheck::SideMember> side;
};
