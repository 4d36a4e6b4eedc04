// What the tests of the EEM export share: reading back through the program's checker, a user who listens to the bars.
#pragma once

#include "eem/command.h"
#include "eem/file.h"
#include "platform/hxcom.h"
#include "support/export_test.h"
#include "support/memory_file.h"
#include "tessaro/check/eem/rules.h"

#include <string>
#include <vector>

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
    std::string log;
    tolmar::FileDialog dialog;
};

class EemRunTest : public ExportTest<BarsUi> {
protected:
    EemRunTest() { ui.answer = (root.path() / "plant.v1.eem").string(); }

    void loadObjects(const std::string& objects, int module = 65) {
        load(objects, R"({"name":"P","module":)" + std::to_string(module) + "}");
    }
    std::string bytes() { return root.read("plant.v1.eem"); }
    bool hasSideFile() { return root.exists("plant.v1.json"); }

    // Both files, which must be whole and tell of the same objects.
    readers::eem::EemContent read() {
        readers::Findings findings;
        readers::eem::EemContent content = readers::eem::readEem(bytes(), findings);
        side = readers::eem::readSideFile(root.read("plant.v1.json"), findings);
        check::eemPair(content, side, findings);
        EXPECT_EQ(allFindings(findings), "");
        EXPECT_TRUE(content.isWhole);
        return content;
    }
    // Every block as its id and the codes of its records, such as "5[0 20]".
    std::string blocks() {
        std::string text;
        for (const readers::eem::Block& block : read().blocks) {
            text += (text.empty() ? "" : " ") + std::to_string(block.id) + "[";
            for (const readers::eem::Record& record : block.records) {
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

    std::vector<readers::eem::SideMember> side;
};
