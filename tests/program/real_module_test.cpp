// The program with the real module on the example plant, as a user runs it.
#include "real_module.h"
#include "support/comma_locale.h"
#include "tolmar/host_ui.h"

#include <clocale>
#include <dlfcn.h>

namespace {

using namespace realmodule;

TEST_F(RealModule, ExportsItsFourFunctionsAndNothingElse) {
    std::istringstream symbols(outputOf("nm -D --defined-only '" + (binaries / "libtessaro.so").string() + "'"));
    std::set<std::string> names;
    for (std::string address, kind, name; symbols >> address >> kind >> name;) {
        names.insert(name);
    }
    EXPECT_EQ(names, (std::set<std::string>{"CopyDesignAndDwg", "XDBOUT", "tlrxEntryPoint", "tlrxGetApiVersion"}));
}

TEST_F(RealModule, RegistersItsSevenCommands) {
    EXPECT_EQ(tessaro("commands"), 0);
    EXPECT_EQ(outputOf("'" + (binaries / "tessaro").string() + "' commands 2>/dev/null | wc -l"), "7\n");
}

TEST_F(RealModule, AScriptThatDoesNotLoadIsNamedEvenWhereLittleIsSaid) {
    std::ofstream(root() / "plugins" / "nvoutplugins.lua") << "x = = 1";
    EXPECT_EQ(run("RVMOUT NVOUT", "-q"), 3);
    EXPECT_EQ(said(), "tessaro: script \"plugins/nvoutplugins.lua\": does not load: plugins/nvoutplugins.lua:1: "
                      "unexpected symbol near '='\n");
}

TEST_F(RealModule, HextoutWritesAFolderThatItsCheckerTakes) {
    EXPECT_EQ(run("HEXTOUT"), 3) << said();
    std::istringstream rows(report());
    for (std::string row; std::getline(rows, row);) {
        EXPECT_EQ(row.find("\"why\"") != std::string::npos, row.find("it is no solid") != std::string::npos) << row;
    }
    EXPECT_TRUE(fs::exists(root() / "temp" / "hext" / "pipe.txt"));
    EXPECT_TRUE(fs::exists(root() / "temp" / "hext.tar")) << "the packaging program ran";
    EXPECT_EQ(tessaro("check hext '" + (root() / "temp" / "hext").string() + "'"), 0) << said();
}

// The side file of NVOUT takes the project's name, and this plant is named as its project.
TEST_F(RealModule, AnExportDoesNotWriteOverItsModel) {
    const fs::path plant = folder() / "GeneratedPlant.json";
    ASSERT_EQ(tessaro("model generate --objects 200 -o '" + plant.string() + "'"), 0) << said();
    const std::string before = readFile(plant);
    const std::string arguments = " --model '" + plant.string() + "' --root '" + root().string() + "' --out '";
    EXPECT_EQ(tessaro("run NVOUT" + arguments + folder().string() + "'"), 2) << said();
    EXPECT_NE(said().find("it is the model of this run, " + plant.string()), std::string::npos) << said();
    EXPECT_TRUE(readFile(plant) == before);
    EXPECT_NE(tessaro("run NVOUT" + arguments + out().string() + "'"), 2) << said();
    EXPECT_TRUE(fs::exists(out() / "GeneratedPlant.json"));
}

TEST_F(RealModule, RvmoutWritesAPairThatItsCheckerTakes) {
    const int status = run("RVMOUT");
    EXPECT_TRUE(status == 0 || status == 3) << said();
    std::set<std::string> endings;
    for (const auto& entry : fs::directory_iterator(out())) {
        endings.insert(entry.path().extension().string());
    }
    EXPECT_EQ(endings, (std::set<std::string>{".rvm", ".txt"}));
    EXPECT_EQ(tessaro("check rvm '" + out().string() + "'"), 0) << said();
    EXPECT_EQ(tessaro("check rvm --strict '" + out().string() + "'"), 2);
    EXPECT_NE(said().find("the root has no END"), std::string::npos) << said();
    std::ofstream(root() / "plugins" / "nvoutplugins.ini") << "[Control]\nrvmCompat=1\n";
    EXPECT_EQ(run("RVMOUT"), status) << said();
    EXPECT_EQ(tessaro("check rvm --strict '" + out().string() + "'"), 0) << said();
}

TEST_F(RealModule, MaxoutWritesAPairThatItsCheckerTakes) {
    EXPECT_EQ(run("MAXOUT"), 130) << "nobody answers the input boxes";
    EXPECT_EQ(run("MAXOUT", "--input GY --input ''"), 2) << said();
    EXPECT_TRUE(fs::is_empty(out()));
    EXPECT_EQ(run("MAXOUT", "--input GY --input S1"), 3) << said();
    EXPECT_EQ(report().find("\"geometry\""), std::string::npos) << "nothing but lines and texts is left out";
    EXPECT_EQ(tessaro("check max '" + out().string() + "'"), 0) << said();
    const fs::path geometry = out() / "PumpStation.orna";
    fs::resize_file(geometry, fs::file_size(geometry) - 20);
    EXPECT_EQ(tessaro("check max '" + geometry.string() + "'"), 2) << "a file that is cut off is not whole";
}

TEST_F(RealModule, XdboutHandsOutTheManagerOfTheModelOrOfASelection) {
    const fs::path json = out() / "PumpStation.xdb.json";
    EXPECT_EQ(run("XDBOUT"), 0) << said();
    const std::string ofModel = readFile(json);
    EXPECT_NE(ofModel.find("\"result\": true"), std::string::npos);
    EXPECT_NE(ofModel.find("\"TPPE\""), std::string::npos);
    EXPECT_NE(ofModel.find("lineno:CWD-1002;"), std::string::npos);
    EXPECT_EQ(run("XDBOUT", "--select '*/*/*/P-101A' --set strict=1"), 0) << said();
    const std::string ofPump = readFile(json);
    EXPECT_NE(ofPump.find("\"proxy\""), std::string::npos);
    EXPECT_EQ(ofPump.find("\"TPPE\""), std::string::npos);
    EXPECT_EQ(run("XDBOUT", "--select '**/P-101*'"), 2) << said();
    EXPECT_NE(said().find("exactly one item"), std::string::npos) << said();
    EXPECT_EQ(run("XDBOUT", "--select '**/none'"), 2) << said();
}

// Status 3: the example holds host content, which has no place in a package.
TEST_F(RealModule, ObmoutWritesAPackageThatItsCheckerTakes) {
    EXPECT_EQ(run("OBMOUT"), 3) << said();
    EXPECT_EQ(tessaro("check package '" + (out() / "PumpStation.pmodel").string() + "'"), 0) << said();
    fs::resize_file(out() / "PumpStation.pmodel", 1000);
    EXPECT_EQ(tessaro("check package '" + (out() / "PumpStation.pmodel").string() + "'"), 2) << said();
}

TEST_F(RealModule, ShowHextBranchNeedsOnePipeline) {
    EXPECT_EQ(run("ShowHextBranch"), 2) << said();
    EXPECT_NE(said().find("exactly one pipeline"), std::string::npos);
}

TEST_F(RealModule, AModelThatVanishesBetweenCheckAndRunIsRefused) {
    const fs::path model = root() / "plant.json";
    fs::copy_file(examples / "pump-station.json", model);
    EXPECT_EQ(tessaro("model check '" + model.string() + "'"), 0) << said();
    fs::remove(model);
    EXPECT_EQ(tessaro("run RVMOUT --model '" + model.string() + "' --root '" + root().string() + "' --out '" +
                      out().string() + "'"),
              2)
        << said();
    EXPECT_NE(said().find("plant.json"), std::string::npos) << said();
    EXPECT_TRUE(fs::is_empty(out()));
}

// The reader of the pipe is gone before anything is written.
TEST_F(RealModule, AClosedPipeIsStatusFour) {
    const fs::path status = root() / "status";
    const auto intoClosedPipe = [&](const std::string& arguments) {
        const std::string command = "{ sleep 0.2; '" + (binaries / "tessaro").string() + "' " + arguments +
                                    " 2>/dev/null; echo $? >'" + status.string() + "'; } | true";
        return std::system(command.c_str()) == 0 ? readFile(status) : "no shell";
    };
    const std::string model = " '" + (examples / "pump-station.json").string() + "' ";
    const std::string common = " --model" + model + "--root '" + root().string() + "'";
    EXPECT_EQ(intoClosedPipe("run XDBOUT" + common), "4\n");
    EXPECT_EQ(intoClosedPipe("model tree" + model), "4\n");
    EXPECT_EQ(intoClosedPipe("run RVMOUT --report /dev/stdout --out '" + out().string() + "'" + common), "4\n");
    EXPECT_EQ(tessaro("check rvm '" + out().string() + "'"), 0) << "what was exported is whole: " << said();
}

TEST_F(RealModule, ScriptsWriteFilesOnlyWhenTheyAreTrusted) {
    const fs::path made = folder() / "made";
    std::ofstream(root() / "plugins" / "nvoutplugins.lua", std::ios::app)
        << "\nio.open('" << made.string() << "', 'w'):close()\n";
    EXPECT_EQ(run("RVMOUT"), 3) << said();
    EXPECT_NE(said().find("io.open for writing is not available"), std::string::npos) << said();
    EXPECT_FALSE(fs::exists(made));
    run("RVMOUT", "--trust-scripts");
    EXPECT_EQ(said().find("is not available"), std::string::npos) << said();
    EXPECT_TRUE(fs::exists(made));
}

// Opens the dialogs and ends with 0 when numbers are written with a point, though the user's country has a comma.
[[noreturn]] void openDialogs() {
    void* library = ::dlopen((binaries / "libtessaro-qt.so").c_str(), RTLD_NOW);
    const auto create = reinterpret_cast<tolmar::HostUi* (*)(tolmar::HostUi&)>(::dlsym(library, "tessaroCreateQtUi"));
    const tolmar::HostUi* ui = create(tolmar::hostUi());
    char text[8];
    std::snprintf(text, sizeof text, "%.1f", 1.5);
    const bool hasTaken = std::string(std::setlocale(LC_TIME, nullptr)) == "comma.UTF-8";
    ::_exit(ui == nullptr ? 2 : !hasTaken ? 3 : std::string(text) == "1.5" ? 0 : 1);
}

TEST_F(RealModule, DialogsLeaveThePointInNumbers) {
    const CommaLocale locale(folder());
    if (!locale.isThere() || !fs::exists(binaries / "libtessaro-qt.so")) {
        GTEST_SKIP() << "no locale with a comma, or no dialogs";
    }
    ::setenv("QT_QPA_PLATFORM", "offscreen", 1);
    EXPECT_EXIT(openDialogs(), testing::ExitedWithCode(0), "");
    ::unsetenv("QT_QPA_PLATFORM");
}

TEST_F(RealModule, ARootThatCannotBeWrittenIsStatusFour) {
    fs::remove_all(root() / "temp" / "hext" / "uda.txt");
    fs::create_directory(root() / "temp" / "hext" / "uda.txt");
    EXPECT_EQ(run("HEXTOUT"), 4) << said();
    EXPECT_FALSE(fs::exists(root() / "temp" / "hext.tar"));
}

}  // namespace
