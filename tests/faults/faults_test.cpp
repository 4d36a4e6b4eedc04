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
        undisturbed_ = session().run(command());
        ASSERT_NE(undisturbed_.outcome, RunOutcome::Failed) << undisturbed_.reason;
        ASSERT_FALSE(undisturbed_.files.empty());
    }
    void TearDown() override {
        EXPECT_TRUE(session().run(command()).files == undisturbed_.files) << "the next run differs";
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
        const ModuleSession::Run run = session().run(command(), answers);
        if (run.outcome != RunOutcome::Cancelled) {
            EXPECT_EQ(run.outcome, undisturbed_.outcome) << "question " << at << ": " << run.reason;
            EXPECT_TRUE(run.files == undisturbed_.files) << "question " << at;
            break;
        }
    }
    EXPECT_GT(at, 20) << "hardly any question was asked";
    EXPECT_LT(at, 5000);
}

// A size limit plays the disk that is full: at one byte, in the middle and just before the end of the largest file.
TEST_P(Faults, FullDiskLeavesNothingThatLooksWhole) {
    std::size_t largest = 0;
    for (const auto& [name, bytes] : undisturbed_.files) {
        largest = std::max(largest, bytes.size());
    }
    for (const std::size_t limit : {std::size_t{1}, std::size_t{500}, largest / 2, largest - 1}) {
        rlimit before{};
        ::getrlimit(RLIMIT_FSIZE, &before);
        const auto handler = std::signal(SIGXFSZ, SIG_IGN);
        const rlimit small{limit, before.rlim_max};
        const ModuleSession::Run run = session().run(
            command(), {}, [&] { ::setrlimit(RLIMIT_FSIZE, &small); }, [&] { ::setrlimit(RLIMIT_FSIZE, &before); });
        std::signal(SIGXFSZ, handler);
        EXPECT_EQ(run.outcome, RunOutcome::Failed) << limit;
        for (const auto& [name, bytes] : run.files) {
            const auto whole = undisturbed_.files.find(name);
            EXPECT_TRUE(whole == undisturbed_.files.end() ? name.find(".incomplete") != std::string::npos
                                                          : whole->second == bytes)
                << name << " at a limit of " << limit;
        }
    }
}

// The project's script fails at its k-th call: the export goes on without that answer.
TEST_P(Faults, ScriptThatRaisesIsToldAndTheExportGoesOn) {
    const std::filesystem::path script = session().root() / "plugins" / "nvoutplugins.lua";
    std::ostringstream whole;
    whole << std::ifstream(script).rdbuf();
    const auto failAt = [&](int call) {
        std::ofstream(script) << whole.str() << "\nlocal calls, limit = 0, " << call << R"(
for _, name in ipairs({"getNodeName", "getReference", "getReferenceRvm", "sortTreeNodes", "checkExportCustom"}) do
    local original = _G[name]
    _G[name] = original and function(...)
        calls = calls + 1
        if calls == limit then error("call " .. calls .. " fails") end
        return original(...)
    end
end
)";
    };
    int call = 1;
    for (; call < 2000; ++call) {
        failAt(call);
        const ModuleSession::Run run = session().run(command());
        if (run.printed.find("fails") == std::string::npos) {
            EXPECT_TRUE(run.files == undisturbed_.files);
            break;
        }
        EXPECT_NE(run.outcome, RunOutcome::Failed) << "call " << call << ": " << run.reason;
    }
    EXPECT_LT(call, 2000);
    std::ofstream(script) << whole.str();
}

INSTANTIATE_TEST_SUITE_P(Commands, Faults, testing::ValuesIn(faultCases),
                         [](const auto& test) { return std::string(test.param.command); });

}  // namespace
