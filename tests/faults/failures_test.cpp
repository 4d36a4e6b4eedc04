// What goes wrong around a command: it is told truthfully, nothing incomplete looks whole, and the next command runs as
// if nothing had been.
#include "module_session.h"

#include <sys/resource.h>

#include <csignal>

namespace {

using tolmar::RunOutcome;

class Faults : public testing::TestWithParam<FaultCase> {
protected:
    static void SetUpTestSuite() { session_ = std::make_unique<ModuleSession>(); }
    static void TearDownTestSuite() { session_.reset(); }

    ModuleSession& session() { return *session_; }
    std::string command() const { return GetParam().command; }
    void SetUp() override {
        undisturbed_ = run();
        ASSERT_EQ(undisturbed_.outcome, RunOutcome::Done) << undisturbed_.reason;
        ASSERT_FALSE(undisturbed_.files.empty());
    }
    void TearDown() override {
        if (!undisturbed_.files.empty()) {
            EXPECT_TRUE(run().contents == undisturbed_.contents) << "the next run differs";
        }
    }
    ModuleSession::Run run(tolmar::ScriptedAnswers answers = {}, const std::function<void()>& before = {},
                           const std::function<void()>& after = {}) {
        if (*GetParam().select != '\0') {
            answers.selection.select = {GetParam().select};
        }
        return session().run(command(), std::move(answers), before, after);
    }
    // Runs the command with a limit of the process.
    ModuleSession::Run runLimited(decltype(RLIMIT_FSIZE) resource, rlim_t limit) {
        rlimit before{};
        ::getrlimit(resource, &before);
        const rlimit small{limit, before.rlim_max};
        return run(
            {}, [&] { ::setrlimit(resource, &small); }, [&] { ::setrlimit(resource, &before); });
    }
    // A file that is not as in an undisturbed run bears its name of something incomplete, or is one that a library
    // works with.
    void expectNothingLooksWhole(const ModuleSession::Run& run, const std::string& when) const {
        for (const auto& [name, content] : run.contents) {
            const auto whole = undisturbed_.contents.find(name);
            const bool isSame = whole != undisturbed_.contents.end() && whole->second == content;
            const bool isSaidToBePartial =
                name.find(".incomplete") != std::string::npos || name.find("/.") != std::string::npos;
            EXPECT_TRUE(isSame || isSaidToBePartial) << name << " " << when;
        }
    }

    ModuleSession::Run undisturbed_;

private:
    static inline std::unique_ptr<ModuleSession> session_;
};

TEST_P(Faults, CancelAtEveryQuestionEndsTheCommand) {
    if (!GetParam().hasProgress) {
        GTEST_SKIP() << "no progress, no cancel";
    }
    long at = 1;
    for (; at < 5000; ++at) {
        tolmar::ScriptedAnswers answers;
        answers.cancelAfter = at;
        const ModuleSession::Run cancelled = run(answers);
        if (cancelled.outcome != RunOutcome::Cancelled) {
            EXPECT_EQ(cancelled.outcome, undisturbed_.outcome) << "question " << at << ": " << cancelled.reason;
            EXPECT_TRUE(cancelled.contents == undisturbed_.contents) << "question " << at;
            break;
        }
    }
    EXPECT_GT(at, GetParam().questions) << "hardly any question was asked";
    EXPECT_LT(at, 5000);
}

// A size limit plays the disk that is full: at one byte, in the middle and just before the end of the largest file.
TEST_P(Faults, FullDiskLeavesNothingThatLooksWhole) {
    if (!GetParam().writesFiles) {
        GTEST_SKIP() << "writes no files";
    }
    std::size_t largest = 0;
    for (const auto& [name, bytes] : undisturbed_.files) {
        largest = std::max(largest, bytes.size());
    }
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    for (const std::size_t limit : {std::size_t{1}, std::size_t{500}, largest / 2, largest - 1}) {
        const ModuleSession::Run full = runLimited(RLIMIT_FSIZE, limit);
        EXPECT_EQ(full.outcome, RunOutcome::Failed) << limit;
        expectNothingLooksWhole(full, "at a limit of " + std::to_string(limit));
    }
    std::signal(SIGXFSZ, handler);
}

// Further files cannot be opened: from none on until all can. What HEXTOUT leaves is whole with its package alone.
TEST_P(Faults, TooFewOpenFilesAreToldAndNothingLooksWhole) {
    const int lowestFree = ::dup(STDERR_FILENO);
    ::close(lowestFree);
    const std::filesystem::path package = session().root() / "temp" / "hext.tar";
#ifdef __SANITIZE_ADDRESS__
    int further = 4;  // the sanitizers' own pipe, for the first look at a thrown object
#else
    int further = 0;
#endif
    for (; further < 20; ++further) {
        std::filesystem::remove(package);
        const ModuleSession::Run few = runLimited(RLIMIT_NOFILE, static_cast<rlim_t>(lowestFree + further));
        if (few.outcome == RunOutcome::Done) {
            EXPECT_TRUE(few.contents == undisturbed_.contents) << further << " files";
            break;
        }
        EXPECT_EQ(few.outcome, RunOutcome::Failed) << few.reason;
        EXPECT_FALSE(few.reason.empty());
        if (command() == "HEXTOUT") {
            EXPECT_FALSE(std::filesystem::exists(package)) << further << " files";
            continue;
        }
        expectNothingLooksWhole(few, "with " + std::to_string(further) + " files");
    }
    EXPECT_LT(further, 20);
}

// A folder that takes no files, for whoever runs the test: in its place stands a file.
TEST_P(Faults, AFolderThatCannotBeWrittenIsToldAndLeavesNothing) {
    if (!GetParam().writesFiles) {
        GTEST_SKIP() << "writes no files";
    }
    namespace fs = std::filesystem;
    const fs::path hidden = session().root() / "hidden";
    const auto hide = [&](const fs::path& folder) {
        fs::rename(folder, hidden);
        std::ofstream(folder) << "a file";
    };
    const auto restore = [&](const fs::path& folder) {
        fs::remove(folder);
        fs::rename(hidden, folder);
    };
    const fs::path folder = command() == "HEXTOUT" ? session().working() : session().out();
    const ModuleSession::Run refused = run(
        {}, [&] { hide(folder); }, [&] { restore(folder); });
    EXPECT_TRUE(refused.outcome == RunOutcome::Failed || refused.outcome == RunOutcome::Refused);
    EXPECT_FALSE(refused.reason.empty());
    EXPECT_TRUE(refused.files.empty());
}

// The project's script fails at its k-th call: the export goes on without that answer. A file counts, because MAXOUT
// makes a state anew for each object; so not every call has its run.
TEST_P(Faults, ScriptThatRaisesIsToldAndTheExportGoesOn) {
    if (GetParam().script == nullptr) {
        GTEST_SKIP() << "asks no script that could change its result";
    }
    const std::filesystem::path script = session().root() / "plugins" / GetParam().script;
    const std::filesystem::path counter = session().root() / "calls";
    std::ostringstream whole;
    whole << std::ifstream(script).rdbuf();
    const auto failAt = [&](int call) {
        std::ofstream(counter) << call;
        std::ofstream(script) << whole.str() << "\nlocal counter = \"" << counter.string() << "\""
                              << R"(
for _, name in ipairs({"getNodeName", "getReference", "getReferenceRvm", "sortTreeNodes", "checkExportCustom",
                       "isObjChangeMesh", "getObjCenterPt", "changeObj4Spline", "getPartNum", "getObjsize",
                       "maxOutdata"}) do
    local original = _G[name]
    _G[name] = original and function(...)
        local file = io.open(counter)
        local left = file:read("*n") - 1
        file:close()
        file = io.open(counter, "w")
        file:write(left)
        file:close()
        if left == 0 then error("this call fails") end
        return original(...)
    end
end
)";
    };
    int call = 1;
    for (; call < 2000; call += 1 + call / 4) {
        failAt(call);
        const ModuleSession::Run raised = run();
        if (raised.printed.find("fails") == std::string::npos) {
            EXPECT_TRUE(raised.contents == undisturbed_.contents);
            break;
        }
        EXPECT_NE(raised.outcome, RunOutcome::Failed) << "call " << call << ": " << raised.reason;
    }
    EXPECT_GE(call, GetParam().scriptCalls) << "hardly any call was made";
    EXPECT_LT(call, 2000);
    std::ofstream(script) << whole.str();
}

// Without a folder the copy would land in the root of the file system.
TEST(DesignFile, IsCopiedIntoAFolderOnly) {
    namespace fs = std::filesystem;
    const fs::path folder = fs::temp_directory_path() / ("tessaro-design-" + std::to_string(::getpid()));
    fs::create_directories(folder / "project");
    fs::create_directories(folder / "to");
    const std::string name = folder.filename().string() + ".dwg";
    std::ofstream(folder / "project" / name) << "design";
    const ModuleSession session(R"({"format": "tessaro-plant", "version": 1, "project": {"name": "p", "path": ")" +
                                (folder / "project").string() + R"(", "database": ")" + name +
                                R"("}, "databases": [{"name": "main"}], "objects": []})");
    const auto copyDesign = reinterpret_cast<void (*)(const char*)>(session.symbol("CopyDesignAndDwg"));
    ASSERT_NE(copyDesign, nullptr);
    copyDesign(nullptr);
    copyDesign("");
    EXPECT_FALSE(fs::exists("/" + name));
    copyDesign((folder / "to").c_str());
    EXPECT_TRUE(fs::exists(folder / "to" / name));
    fs::remove("/" + name);
    fs::remove_all(folder);
}

INSTANTIATE_TEST_SUITE_P(Commands, Faults, testing::ValuesIn(faultCases),
                         [](const auto& test) { return std::string(test.param.command); });

}  // namespace
