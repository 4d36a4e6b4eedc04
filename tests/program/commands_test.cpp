// The program from outside: command line, exit status, what goes to which stream. Its module is a small one whose
// commands do one thing each.
#include "support/scratch_folder.h"
#include "tolmar/code_page.h"

#include <csignal>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <spawn.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

extern char** environ;

namespace {

namespace fs = std::filesystem;
using tolmar::toUtf8;

struct Ended {
    int status = -1;
    std::string out;
    std::string err;
    bool said(const std::string& text) const { return err.find(toUtf8(text)) != std::string::npos; }
};

class Program : public testing::Test {
protected:
    Program() {
        folder.put("plant.json", toUtf8(R"({"format": "tessaro-plant", "version": 1, "project": {"name": "厂 1/2"},
                                     "databases": [{"name": "main"}], "objects": []})"));
        fs::create_directories(folder.path() / "install");
        ::setenv("TESSARO_MODULE", TESSARO_BIN_DIR "/test-modules/good.so", 1);
        ::setenv("TESSARO_ROOT", folder.file("install").c_str(), 1);
        ::unsetenv("CI");
    }

    pid_t start(std::vector<std::string> arguments) const {
        arguments.insert(arguments.begin(), TESSARO_BIN_DIR "/tessaro");
        std::vector<char*> pointers;
        for (std::string& argument : arguments) {
            argument = toUtf8(argument);
            pointers.push_back(argument.data());
        }
        pointers.push_back(nullptr);
        posix_spawn_file_actions_t actions;
        posix_spawn_file_actions_init(&actions);
        constexpr int flags = O_WRONLY | O_CREAT | O_TRUNC;
        posix_spawn_file_actions_addopen(&actions, 1, folder.file("stdout").c_str(), flags, 0600);
        posix_spawn_file_actions_addopen(&actions, 2, folder.file("stderr").c_str(), flags, 0600);
        posix_spawn_file_actions_addchdir_np(&actions, folder.path().c_str());
        pid_t process = 0;
        EXPECT_EQ(::posix_spawn(&process, pointers[0], &actions, nullptr, pointers.data(), environ), 0);
        posix_spawn_file_actions_destroy(&actions);
        return process;
    }
    Ended wait(pid_t process) const {
        int status = 0;
        ::waitpid(process, &status, 0);
        return {WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status), folder.get("stdout"),
                folder.get("stderr")};
    }
    Ended tessaro(std::vector<std::string> arguments) const { return wait(start(std::move(arguments))); }
    // `tessaro run` with the model and the target folder "out".
    Ended run(std::vector<std::string> arguments) const {
        const std::vector<std::string> fixed = {"run", "--model", folder.file("plant.json"), "--out",
                                                folder.file("out")};
        arguments.insert(arguments.begin(), fixed.begin(), fixed.end());
        return tessaro(std::move(arguments));
    }
    // `tessaro run`, asked to stop once a bar has moved.
    Ended interrupted(std::vector<std::string> arguments, std::vector<int> signals = {SIGINT}) const {
        const std::vector<std::string> fixed = {"run", "--model", folder.file("plant.json"), "--progress", "json"};
        arguments.insert(arguments.begin(), fixed.begin(), fixed.end());
        fs::remove(folder.file("stderr"));
        const pid_t process = start(std::move(arguments));
        for (int i = 0; i < 1000 && folder.get("stderr").find("\"value\":1") == std::string::npos; ++i) {
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        }
        for (const int signal : signals) {
            ::kill(process, signal);
            std::this_thread::sleep_for(std::chrono::milliseconds(signal == SIGHUP ? 300 : 0));
        }
        return wait(process);
    }
    std::string report() const { return folder.get("report.json"); }

    ScratchFolder folder;
};

TEST_F(Program, WrongUsageIsStatusOne) {
    EXPECT_EQ(tessaro({}).status, 1);
    EXPECT_EQ(tessaro({"export"}).status, 1);
    EXPECT_EQ(tessaro({"run", "WRITE"}).status, 1);
    EXPECT_EQ(run({"WRITE", "--nothing"}).status, 1);
    EXPECT_EQ(run({"WRITE", "--set", "outWeld=2"}).status, 1);
    EXPECT_EQ(run({"WRITE", "--set", "=1"}).status, 1);
    EXPECT_EQ(run({"WRITE", "--progress", "loud"}).status, 1);
    EXPECT_EQ(run({"WRITE", "-q", "-v"}).status, 1);
    const Ended unknown = run({"WRITE", "NOSUCH"});
    EXPECT_EQ(unknown.status, 1);
    EXPECT_TRUE(unknown.said("NOSUCH") && unknown.said("BADFILE, START, XDBOUT")) << unknown.err;
    EXPECT_TRUE(tessaro({"check", "pdf", "x"}).said("tessaro: pdf: no such sub-command\n\"tessaro check --help\""));
    EXPECT_TRUE(tessaro({"model", "generate", "--objects", "1e3", "-o", "x"}).said("whole number from 1 to"));
    const Ended both = tessaro({"run", "XDBOUT", "--model", folder.file("plant.json"), "--report", "-"});
    EXPECT_EQ(both.status, 1);
    EXPECT_EQ(both.out.find("types"), std::string::npos) << "two JSON texts on one stream";
    EXPECT_FALSE(fs::exists(folder.file("out")));
}

TEST_F(Program, HelpHasAnExampleForEverySubCommand) {
    const std::vector<std::vector<std::string>> commands = {{},
                                                            {"run"},
                                                            {"commands"},
                                                            {"model"},
                                                            {"model", "check"},
                                                            {"model", "info"},
                                                            {"model", "generate"},
                                                            {"model", "tree"},
                                                            {"check"},
                                                            {"check", "hext"},
                                                            {"check", "rvm"},
                                                            {"check", "package"}};
    for (std::vector<std::string> command : commands) {
        command.emplace_back("--help");
        const Ended help = tessaro(command);
        EXPECT_EQ(help.status, 0);
        EXPECT_NE(help.out.find("Examples:\n  tessaro "), std::string::npos) << help.out;
    }
    EXPECT_EQ(tessaro({"--version"}).out.substr(0, 8), "tessaro ");
}

TEST_F(Program, ListsCommandsAndNamesWhatIsWrongWithAModule) {
    EXPECT_EQ(tessaro({"commands"}).out, "WRITE\nPASS\nWAIT\nSCOPE\nASK\nCOLOUR\nFAIL\nBADFILE\nSTART\n");
    ::setenv("TESSARO_MODULE", TESSARO_BIN_DIR "/test-modules/wrong_version.so", 1);
    const Ended wrong = tessaro({"commands"});
    EXPECT_EQ(wrong.status, 4);
    EXPECT_TRUE(wrong.said("interface version 0x07E8FFFF"));
}

TEST_F(Program, WritesIntoTheTargetFolderUnderTheProjectsName) {
    const Ended ended = run({"write"});
    EXPECT_EQ(ended.status, 0) << ended.err;
    EXPECT_EQ(folder.get(toUtf8("out/厂 1_2.txt")), "line\r\n");
    EXPECT_EQ(ended.out, "");
    EXPECT_TRUE(ended.said("提示: 导出结束") && ended.said("           6  " + folder.file("out/厂 1_2.txt")))
        << ended.err;
    EXPECT_EQ(run({"WRITE", "-q"}).err, "");
}

TEST_F(Program, StatusSaysHowARunEnded) {
    EXPECT_EQ(run({"PASS", "--report", folder.file("report.json")}).status, 3);
    EXPECT_NE(report().find(toUtf8(R"({"id": 17, "name": "管 \"A\"", "what": "pipe", "why": "no points"})")),
              std::string::npos);
    EXPECT_NE(report().find("\"status\": 3"), std::string::npos);
    const Ended failed = run({"FAIL", "COLOUR", "--report", folder.file("report.json")});
    EXPECT_EQ(failed.status, 4);
    EXPECT_TRUE(failed.said("failed: out of paper"));
    EXPECT_NE(report().find("\"coloured\": [\n    {\"id\": 5, \"color\": 3}"), std::string::npos) << report();
    const Ended bad = run({"BADFILE", "--report", "-"});
    EXPECT_EQ(bad.status, 4);
    EXPECT_NE(bad.out.find(R"({"path": "/dev/full", "why": "No space left on device"})"), std::string::npos);
}

TEST_F(Program, RefusedInputIsStatusTwo) {
    folder.put("bad.json", R"({"format": "tessaro-plant", "version": 1, "databases": [{"name": 5}]})");
    const Ended model = tessaro({"run", "WRITE", "--model", folder.file("bad.json")});
    EXPECT_EQ(model.status, 2);
    EXPECT_TRUE(model.said("bad.json: databases[0].name")) << model.err;
    EXPECT_EQ(run({"WRITE", "--root", folder.file("plant.json")}).status, 2);
    EXPECT_EQ(run({"WRITE", "--select-file", folder.file("none")}).status, 2);
    const Ended pattern = run({"SCOPE", "--select", "World/Nowhere", "--report", folder.file("report.json")});
    EXPECT_EQ(pattern.status, 2);
    EXPECT_TRUE(pattern.said("World/Nowhere"));
    EXPECT_NE(report().find("\"outcome\": \"refused\""), std::string::npos);
    const Ended option = run({"SCOPE", "--set", "noSuch=1"});
    EXPECT_EQ(option.status, 2);
    EXPECT_TRUE(option.said("no option \"noSuch\"; there are outWeld")) << option.err;
    EXPECT_EQ(option.err.find("noSuch"), option.err.rfind("noSuch")) << "told once: " << option.err;
}

TEST_F(Program, DialogsNeedAScreen) {
    for (const char* variable : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}) {
        ::unsetenv(variable);
    }
    const Ended ended = run({"SCOPE", "--interactive"});
    EXPECT_EQ(ended.status, 2);
    EXPECT_TRUE(ended.said("screen") && ended.said("leave --interactive out")) << ended.err;
    EXPECT_FALSE(fs::exists(folder.file("out")));
}

TEST_F(Program, AFileThatALaterCommandWritesOverIsTold) {
    EXPECT_EQ(run({"WRITE", "WRITE"}).status, 0) << "the same file again";
    const Ended ended = run({"WRITE", "SCOPE", "--report", folder.file("report.json")});
    EXPECT_EQ(ended.status, 3);
    EXPECT_NE(report().find("of WRITE: SCOPE wrote over it"), std::string::npos) << report();
}

TEST_F(Program, ReportAndLogThatTakeNotAllAreStatusFour) {
    EXPECT_EQ(run({"COLOUR", "--report", "/dev/full"}).status, 4);
    EXPECT_EQ(run({"WRITE", "--log-file", "/dev/full"}).status, 4);
}

TEST_F(Program, PlacesThatCannotBeWrittenAreRefusedBeforeTheModelIsRead) {
    folder.put("plant.json", "no model at all");
    folder.put("file", "kept");
    const auto refusal = [this](std::vector<std::string> places) {
        places.insert(places.begin(), {"run", "COLOUR", "--model", folder.file("plant.json")});
        const Ended ended = tessaro(places);
        EXPECT_EQ(ended.status, 2);
        EXPECT_FALSE(ended.said("plant.json:")) << ended.err;
        return ended.err;
    };
    const auto expect = [&](std::vector<std::string> places, const std::string& said) {
        const std::string told = refusal(std::move(places));
        EXPECT_NE(told.find(said), std::string::npos) << told;
    };
    expect({"--report", folder.file("none/report.json")}, "there is no folder " + folder.file("none"));
    expect({"--log-file", folder.file("none/log")}, "there is no folder " + folder.file("none"));
    expect({"--report", folder.file("install")}, "is a folder");
    expect({"--out", folder.file("file")}, "file: is no folder; --out names");
    expect({"--out", folder.file("file/below")}, "file: is no folder; --out names");
    if (::geteuid() != 0) {
        fs::create_directories(folder.path() / "locked");
        fs::permissions(folder.path() / "locked", fs::perms::owner_read | fs::perms::owner_exec);
        expect({"--out", folder.file("locked/deeper")}, "cannot be written");
        expect({"--report", folder.file("locked/report.json")}, "cannot be written");
        fs::permissions(folder.path() / "locked", fs::perms::owner_all);
    }
    EXPECT_EQ(folder.get("file"), "kept");
}

TEST_F(Program, ReportAndLogAreNoInputAndNotEachOther) {
    const std::string plant = folder.get("plant.json");
    EXPECT_TRUE(run({"COLOUR", "--report", folder.file("plant.json")}).said("is the file of --report and the model"));
    fs::create_hard_link(folder.file("plant.json"), folder.file("linked"));
    EXPECT_EQ(run({"COLOUR", "--log-file", folder.file("linked")}).status, 2);
    EXPECT_EQ(run({"COLOUR", "--log-file", "both", "--report", folder.file("both")}).status, 2);
    EXPECT_FALSE(fs::exists(folder.file("both")));
    EXPECT_EQ(folder.get("plant.json"), plant);
    EXPECT_EQ(run({"COLOUR", "--log-file", "/dev/null", "--report", "/dev/null"}).status, 0);
    EXPECT_EQ(run({"COLOUR", "--report", folder.file("out/report.json")}).status, 0) << "in the folder that is made";
    EXPECT_TRUE(fs::exists(folder.file("out/report.json")));
}

// More than a pipe holds, so that the program is still writing when its reader goes.
TEST_F(Program, StandardOutputThatTakesNotAllIsStatusFour) {
    EXPECT_EQ(tessaro({"model", "generate", "--objects", "10000", "-o", "large.json"}).status, 0);
    fs::remove(folder.file("stdout"));
    ASSERT_EQ(::mkfifo(folder.file("stdout").c_str(), 0600), 0);
    const int reader = ::open(folder.file("stdout").c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    const pid_t process = start({"model", "tree", "large.json"});
    ::close(reader);
    int status = 0;
    ::waitpid(process, &status, 0);
    EXPECT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), 4);
    EXPECT_NE(folder.get("stderr").find("standard output: not all of it could be written"), std::string::npos);
    fs::remove(folder.file("stdout"));
    fs::create_symlink("/dev/full", folder.file("stdout"));
    const pid_t full = start({"model", "tree", "plant.json"});
    ::waitpid(full, &status, 0);
    EXPECT_EQ(WEXITSTATUS(status), 4);
}

TEST_F(Program, HelpAndVersionThatDoNotArriveAreStatusFour) {
    fs::create_symlink("/dev/full", folder.file("stdout"));
    for (const std::vector<std::string>& arguments :
         {std::vector<std::string>{"--version"}, {"run", "--help"}, {"commands"}}) {
        int status = 0;
        ::waitpid(start(arguments), &status, 0);
        EXPECT_TRUE(WIFEXITED(status));
        EXPECT_EQ(WEXITSTATUS(status), 4) << arguments.front();
    }
    fs::remove(folder.file("stdout"));
}

// The number of a closed stream would go to the next file, which would then get what is printed.
TEST_F(Program, ClosedStreamsGetNoFile) {
    const auto withClosed = [this](const std::string& streams) {
        const std::string command = "cd '" + folder.path().string() +
                                    "' && '" TESSARO_BIN_DIR
                                    "/tessaro' run WRITE --model plant.json --out out --report report.json "
                                    "--log-file log --verbose " +
                                    streams;
        const int status = std::system(command.c_str());
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    };
    ASSERT_EQ(withClosed(">stdout 2>stderr </dev/null"), 0);
    fs::copy(folder.file("out"), folder.file("wanted"), fs::copy_options::recursive);
    const std::string wantedReport = report();
    const std::string wantedLog = folder.get("log");
    for (const char* closed : {"0<&-", "1>&-", "2>&-", "0<&- 1>&- 2>&-"}) {
        fs::remove_all(folder.file("out"));
        EXPECT_EQ(withClosed(closed), 0) << closed;
        EXPECT_EQ(report(), wantedReport) << closed;
        EXPECT_EQ(folder.get("log"), wantedLog) << closed;
        for (const auto& file : fs::recursive_directory_iterator(folder.file("wanted"))) {
            const std::string name = fs::relative(file.path(), folder.file("wanted")).string();
            EXPECT_EQ(folder.get("out/" + name), folder.get("wanted/" + name)) << closed;
        }
    }
    const std::string list = "'" TESSARO_BIN_DIR "/tessaro' --version 1>&-";
    EXPECT_EQ(WEXITSTATUS(std::system(list.c_str())), 4) << "what was asked for did not arrive";
}

TEST_F(Program, SelectionReachesTheScopeDialog) {
    EXPECT_TRUE(run({"SCOPE"}).said("Site A=1\nSite 乙=1\n"));
    EXPECT_TRUE(run({"SCOPE", "--select", "World/Site 乙"}).said("Site A=0\nSite 乙=1\n"));
    folder.put("scope.txt", "+ **/Site*\n- World/Site A\n");
    EXPECT_TRUE(run({"SCOPE", "--select-file", folder.file("scope.txt")}).said("Site A=0\nSite 乙=1\n"));
    const Ended options = run({"SCOPE", "--set", "outWeld=1", "--set", "nvExpandBranch=1", "--deselect", "**/Site A"});
    EXPECT_TRUE(options.said("nvExpandBranch") && options.said("Site A=0\nSite 乙=1\n")) << options.err;
}

TEST_F(Program, DryRunWritesNothing) {
    const Ended ended = run({"SCOPE", "WRITE", "--dry-run", "--select", "**/Site A", "--set", "outWeld=1", "-v"});
    EXPECT_EQ(ended.status, 0) << ended.err;
    EXPECT_TRUE(ended.said("1 of 3 items of the scope would go out\n  World/Site A\n"));
    EXPECT_FALSE(fs::exists(folder.file("out")));
    EXPECT_FALSE(fs::exists(folder.file("option.ini")));
}

TEST_F(Program, InputsAnswerInOrder) {
    const Ended ended = run({"ASK", "ASK", "--input", "甲 b", "--log-file", folder.file("log"), "-q"});
    EXPECT_EQ(ended.err, "");
    const std::string log = folder.get("log");
    EXPECT_NE(log.find(toUtf8("answer 甲 b\n")), std::string::npos);
    EXPECT_NE(log.find("answer none\n"), std::string::npos);
}

TEST_F(Program, InterruptIsTheCancelButton) {
    const Ended ended = interrupted({"WAIT", "WRITE"});
    EXPECT_EQ(ended.status, 130);
    EXPECT_TRUE(
        ended.said("{\"open\":true,\"title\":\"waiting\",\"text\":\"\",\"bars\":[{\"text\":\"\",\"value\":0}]}\n"));
    EXPECT_TRUE(ended.said("cancelled"));
    EXPECT_FALSE(ended.said("导出结束"));
}

TEST_F(Program, AKillAndAHangUpAreCancelsUnlessTheHangUpIsIgnored) {
    for (const int signal : {SIGTERM, SIGHUP}) {
        const Ended ended = interrupted({"WAIT", "WRITE"}, {signal});
        EXPECT_EQ(ended.status, 130) << signal;
        EXPECT_FALSE(ended.said("导出结束"));
    }
    const auto before = std::signal(SIGHUP, SIG_IGN);
    const Ended ignored = interrupted({"WAIT", "--report", folder.file("report.json")}, {SIGHUP, SIGHUP, SIGTERM});
    std::signal(SIGHUP, before);
    EXPECT_EQ(ignored.status, 130) << "the second of two that counted would have ended it";
    EXPECT_NE(report().find("\"outcome\": \"cancelled\""), std::string::npos);
}

TEST_F(Program, TwoRunsDoNotWriteToOneFolder) {
    const std::string lock = folder.put("out/.tessaro.lock", "1");
    EXPECT_EQ(run({"WRITE"}).status, 0) << "what a dead run left holds nothing";
    EXPECT_FALSE(fs::exists(lock));
    const pid_t first = start({"run", "WAIT", "--model", folder.file("plant.json"), "--out", folder.file("out")});
    for (int i = 0; i < 1000 && folder.get("out/.tessaro.lock").empty(); ++i) {
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    const Ended second = run({"WRITE"});
    EXPECT_EQ(second.status, 2);
    EXPECT_TRUE(second.said("another run writes there (process " + std::to_string(first) + ")")) << second.err;
    ::kill(first, SIGKILL);
    wait(first);
    EXPECT_EQ(run({"WRITE"}).status, 0) << "a process that was killed holds nothing";
    EXPECT_FALSE(fs::exists(lock));
}

// Part of the arrays would look like all of them.
TEST_F(Program, CancelledFunctionHandsOutNothing) {
    ::setenv("WORKING_MODULE_WAITS", "1", 1);
    for (const std::vector<std::string>& target : {std::vector<std::string>(), {"--out", folder.file("out")}}) {
        std::vector<std::string> arguments = {"XDBOUT"};
        arguments.insert(arguments.end(), target.begin(), target.end());
        const Ended ended = interrupted(arguments);
        EXPECT_EQ(ended.status, 130) << ended.err;
        EXPECT_EQ(ended.out, "");
        EXPECT_TRUE(!fs::exists(folder.file("out")) || fs::is_empty(folder.file("out")));
    }
    ::unsetenv("WORKING_MODULE_WAITS");
}

TEST_F(Program, FailingPackagingProgramIsLeftOut) {
    fs::permissions(folder.put("bin/Pack.sh", "#!/bin/sh\necho packed\nexit 7\n"), fs::perms::owner_all);
    const Ended ended = run({"START"});
    EXPECT_EQ(ended.status, 3);
    EXPECT_EQ(ended.out, "");
    EXPECT_TRUE(ended.said("packed") && ended.said("program \"Pack.sh\": ended with status 7")) << ended.err;
}

TEST_F(Program, ExportedFunctionGivesJson) {
    const Ended ended = tessaro({"run", "XDBOUT", "--model", folder.file("plant.json"), "--set", "strict=1"});
    EXPECT_EQ(ended.status, 0) << ended.err;
    EXPECT_NE(ended.out.find(toUtf8("\"result\": true,\n  \"types\": [\n    \"墙\"\n  ]")), std::string::npos)
        << ended.out;
    EXPECT_NE(ended.out.find("\"colors\": [\n    18446744073692774655\n  ]"), std::string::npos);
    EXPECT_NE(ended.out.find("[0,0.5,-1e+300]"), std::string::npos);
    EXPECT_NE(ended.out.find("\"strict:1;\""), std::string::npos);
    EXPECT_EQ(run({"xdbout"}).out, "");
    EXPECT_NE(folder.get(toUtf8("out/厂 1_2.xdb.json")).find("\"strict:0;\""), std::string::npos);
}

TEST_F(Program, ModelCommands) {
    EXPECT_EQ(tessaro({"model", "check", folder.file("plant.json")}).status, 0);
    EXPECT_EQ(tessaro({"model", "check", folder.file("none.json")}).status, 2);
    EXPECT_EQ(tessaro({"model"}).status, 1);
    EXPECT_EQ(tessaro({"model", "generate", "--objects", "-5", "-o", folder.file("x.json")}).status, 1);
    EXPECT_EQ(tessaro({"model", "generate", "--objects", "50", "-o", folder.file("none/x.json")}).status, 4);
    ASSERT_EQ(tessaro({"model", "generate", "--objects", "50", "--seed", "3", "-o", folder.file("x y.json")}).status,
              0);
    EXPECT_EQ(tessaro({"model", "check", folder.file("x y.json")}).status, 0);
    EXPECT_NE(tessaro({"model", "info", folder.file("x y.json")}).out, "");
    EXPECT_EQ(tessaro({"model", "info", "--json", folder.file("x y.json")}).out.front(), '{');
    const std::string tree = tessaro({"model", "tree", folder.file("x y.json")}).out;
    EXPECT_LT(tessaro({"model", "tree", "--depth", "1", folder.file("x y.json")}).out.size(), tree.size());
}

TEST_F(Program, ChecksSayWhatAPathIsNot) {
    for (const char* kind : {"hext", "rvm", "scene", "package", "eem", "max"}) {
        const Ended missing = tessaro({"check", kind, folder.file("none")});
        EXPECT_EQ(missing.status, 2);
        EXPECT_TRUE(missing.said("none: no such file or folder")) << missing.err;
        const Ended wrong = tessaro({"check", kind, folder.file("plant.json")});
        EXPECT_EQ(wrong.status, 2) << kind;
        EXPECT_TRUE(wrong.said("plant.json: no ")) << wrong.err;
        fs::create_directories(folder.file("empty"));
        EXPECT_EQ(tessaro({"check", kind, folder.file("empty")}).status, 2) << kind;
    }
    folder.put("a.eem", "not at all");
    folder.put("a.json", R"({"1": [5], "2": {"attr": [1]}, "3": 4})");
    const Ended crooked = tessaro({"check", "eem", folder.file("a.eem")});
    EXPECT_EQ(crooked.status, 2);
    EXPECT_TRUE(crooked.said("member 1: attr, cls and name expected")) << crooked.err;
}

TEST_F(Program, ChecksAFolderOfMacros) {
    const std::string hext = folder.file("hext");
    EXPECT_EQ(tessaro({"check", "hext", hext}).status, 2);
    for (const char* name : {"uda.txt", "cata.txt", "ConnTable.txt", "nozzleSpec.txt", "PipeCompSpecGenerator.txt",
                             "SpecCreate.txt", "equip.txt", "PipeSpcoUdaSet.txt", "struct.txt", "TempSpecGenerator.txt",
                             "axisline.txt", "sup.txt", "sitezone.txt", "des-col.pmldat", "des-element-rules.pmldat"}) {
        folder.put(std::string("hext/") + name, "管 line\r\nlast");
    }
    EXPECT_EQ(tessaro({"check", "hext", hext}).status, 0);
    folder.put("hext/pipe.txt", "good\r\nbad\n");
    EXPECT_TRUE(tessaro({"check", "hext", hext}).said("pipe.txt: line 2: ends in a line feed alone"));
    folder.put("hext/pipe.txt", "good\r\n\xFF\xFF\r\n");
    EXPECT_TRUE(tessaro({"check", "hext", hext}).said("pipe.txt: line 2: bytes that are no text"));
    folder.put("hext/pipe.txt", std::string("zero\0\r\n", 7));
    EXPECT_TRUE(tessaro({"check", "hext", hext}).said("pipe.txt: line 1: a zero byte"));
    fs::remove(hext + "/cata.txt");
    EXPECT_TRUE(tessaro({"check", "hext", hext}).said("cata.txt: missing"));
}

}  // namespace
