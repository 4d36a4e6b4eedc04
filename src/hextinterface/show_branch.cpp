#include "frame/progress_slot.h"
#include "hextinterface/hext_commands.h"
#include "hextinterface/model_extraction.h"
#include "tolmar/run_report.h"

namespace {

using tolmar::RunOutcome;
using tolmar::runReport;

void colourSelection() {
    ModelScope scope;
    ObjectSet special;
    if (!classifyModel(scope, special)) {
        return runReport().ended(RunOutcome::Cancelled, "nothing was selected");
    }
    const BranchTree branches = extractBranches(scope.pipelines);
    if (branches.size() == 1) {
        colourBranches(branches.front());
    } else {
        runReport().ended(RunOutcome::Refused, "exactly one pipeline with branches is needed");
    }
}

}  // namespace

void showHextBranch() {
    ProgressScope progress;
    try {
        colourSelection();
        progress.close();
    } catch (const ProgressCancelException&) {
        runReport().ended(RunOutcome::Cancelled);
    } catch (const std::exception& failure) {
        runReport().ended(RunOutcome::Failed, failure.what());
    }
}
