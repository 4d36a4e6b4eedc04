// Runs the macro export in this process on a model and a copy of the example installation.
#pragma once

#include "hextinterface/hext_commands.h"
#include "hextinterface/hextbasemethod/used_colours.h"
#include "hextinterface/model_extraction.h"
#include "scripts/script_host.h"
#include "support/test_support.h"
#include "tessaro/check/hext/names.h"
#include "tolmar/code_page.h"

#include <map>

class HextRunTest : public testing::Test {
protected:
    using Files = std::map<std::string, std::string>;

    HextRunTest() {
        root.takeInstallation();
        usedColours().clear();
        keepPackagingErrors();
    }
    ~HextRunTest() override { destroyScriptHost(); }
    // Packaging that fails, or as much as prints a word, fails the test.
    void TearDown() override {
        EXPECT_EQ(tolmar::waitForStartedPrograms(), 0);
        EXPECT_EQ(root.read(packagingErrors), "");
    }

    // What the program's check of the folder finds, a line each.
    std::string folderFindings() const {
        readers::Findings findings;
        check::hextNames(root.path() / "temp" / "hext", findings);
        std::string text;
        for (const readers::Finding& finding : findings) {
            text += tolmar::toUtf8(readers::sentence(finding)) + "\n";
        }
        return text;
    }

    static std::string example() { return exampleText("pump-station.json"); }
    // The macro files of the working folder with their bytes.
    Files files() const {
        Files result;
        for (const auto& entry : std::filesystem::directory_iterator(root.path() / "temp" / "hext")) {
            const std::string name = entry.path().filename().string();
            if (name != "config.json" && name != "gtype_lost.log") {
                result[name] = root.read("temp/hext/" + name);
            }
        }
        return result;
    }
    // Once the last run, whose folder holds the configuration, is packaged.
    void configure(const std::string& config) const {
        tolmar::waitForStartedPrograms();
        root.write("temp/hext/config.json", config);
    }
    // Turns on a switch of the configuration that is off.
    void switchOn(const std::string& key) const {
        std::string config = root.read("temp/hext/config.json");
        const std::string off = '"' + key + "\": 0";
        const std::size_t at = config.find(off);
        ASSERT_NE(at, std::string::npos) << key;
        configure(config.replace(at, off.size(), '"' + key + "\": 1"));
    }
    static tolmar::RunOutcome outcome() { return tolmar::runReport().outcome(); }
    bool wasPackaged() {
        tolmar::waitForStartedPrograms();
        return root.exists("temp/hext.tar");
    }

    TestRoot root;
    TestUi ui;

private:
    static constexpr const char* packagingErrors = "packaging-errors.txt";

    void keepPackagingErrors() const {
        const std::string script = "bin/v80-win32/HextPackage.sh";
        std::string text = root.read(script);
        const std::size_t secondLine = text.find('\n') + 1;
        root.write(script, text.insert(secondLine, std::string("exec 2>>../../") + packagingErrors + "\n"));
    }
};
