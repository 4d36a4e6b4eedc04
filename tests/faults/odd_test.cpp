// Plants at the edge of what a model file may hold, through every command: each ends with a status that says how, and
// what it wrote passes the check of its kind or has its faults told.
#include "generator/generate.h"
#include "module_session.h"

#include "tessaro/check/command.h"

#include <algorithm>

namespace {

using tolmar::RunOutcome;
using tolmar::runReport;

// Reasons are sentences for the user; what the library or a container says is none.
bool isLibraryText(const std::string& reason) {
    for (const char* text :
         {"std::", "basic_string", "vector::", "bad_", "stoi", "stod", "::at", "unknown exception"}) {
        if (reason.find(text) != std::string::npos) {
            return true;
        }
    }
    return false;
}

Findings check(const FaultCase& fault, const ModuleSession& session) {
    const auto checkers = outputCheckers();
    const auto checker = std::find_if(checkers.begin(), checkers.end(),
                                      [&](const auto& row) { return row.kind == std::string(fault.checker); });
    const bool isOneFile = checker->kind == std::string("package");
    Findings findings =
        checker->check(isOneFile ? std::filesystem::directory_iterator(session.out())->path() : session.out());
    // Zones within zones have one indent, as the form of the file has it.
    std::erase_if(findings, [](const std::string& one) { return one.find("indented no deeper") != std::string::npos; });
    return findings;
}

// What the attribute file of RVMOUT cannot carry stands in the report.
bool tellsOfLineBreaks() {
    const auto& passed = runReport().passed();
    return std::any_of(passed.begin(), passed.end(),
                       [](const auto& one) { return one.why.find("line break") != std::string::npos; });
}

void expectTruthful(const FaultCase& fault, const ModuleSession& session, const ModuleSession::Run& run) {
    EXPECT_NE(run.outcome, RunOutcome::Cancelled);
    EXPECT_FALSE(isLibraryText(run.reason)) << run.reason;
    EXPECT_TRUE(run.outcome == RunOutcome::Done || !run.reason.empty());
    for (const tolmar::PassedOver& passed : runReport().passed()) {
        EXPECT_FALSE(isLibraryText(passed.why)) << passed.id << " " << passed.what << ": " << passed.why;
    }
    // Macro files hold texts unescaped and by bytes, as their receiver wants them, so those of odd plants need not
    // pass.
    if (run.outcome == RunOutcome::Done && fault.checker != nullptr && fault.command != std::string("HEXTOUT")) {
        const Findings findings = check(fault, session);
        EXPECT_TRUE(findings.empty() || tellsOfLineBreaks()) << findings.front();
    }
}

class OddPlants : public testing::TestWithParam<int> {};

TEST_P(OddPlants, EveryCommandEndsWithATruthfulStatus) {
    ModuleSession session(plant::generateModelText({40, static_cast<std::uint64_t>(GetParam()), true}));
    for (const FaultCase& fault : faultCases) {
        SCOPED_TRACE(fault.command);
        expectTruthful(fault, session, session.run(fault.command));
    }
}

// Neither of the two has a shape by its class, wherever it hangs.
TEST(ObjectsThatAreNotSmart, AreToldByEveryExport) {
    ModuleSession session(R"({"format":"tessaro-plant","version":1,"project":{"name":"P","currentManager":4},
        "databases":[{"name":"M","root":1}],"objects":[{"id":1,"class":"HextWorld"},
        {"id":2,"class":"HextSite","in":1},{"id":3,"class":"HextZone","in":2},{"id":4,"class":"HextEquipe","in":3},
        {"id":5,"class":"HxDbOther","in":4},{"id":6,"class":"HxDbEquipment","in":4,"primitives":[]},
        {"id":7,"class":"HextBolt","in":6}]})");
    for (const char* command : {"RVMOUT", "NVOUT", "ORNAOUT", "OBMOUT", "MAXOUT", "XDBOUT"}) {
        session.run(command);
        std::string ids;
        for (const tolmar::PassedOver& passed : runReport().passed()) {
            ids += passed.why == "it is no smart object" ? std::to_string(passed.id) : "";
        }
        EXPECT_EQ(ids, command == std::string("MAXOUT") ? "577" : "57") << command;
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, OddPlants, testing::Values(1, 3, 6));

}  // namespace
