// A review model from any bytes: it is a model or refused, its balance adds up, and the same bytes give the same model.
#pragma once

#include "plant/building/memory_builder.h"
#include "plant/model/data.h"
#include "plant/refusal.h"
#include "scratch_file.h"
#include "sources/review/source.h"

namespace fuzz {

// What is in the model; empty for a refusal.
inline std::string describeReview(std::string_view rvm, std::string_view text) {
    const plant::ModelPtr model(new plant::Model);
    plant::SourceReport report;
    plant::ObjectId world = 0;
    try {
        plant::MemoryBuilder builder(*model);
        plant::review::tellReview({rvm, "fuzz.rvm", text, "fuzz.txt"}, builder, world, report);
        builder.finish();
    } catch (const plant::Refusal& refusal) {
        require(!refusal.text().empty());
        return {};
    }
    require(report.isBalanced());
    plant::setCurrentModel(model.get());
    std::string described = plant::describeModel(*model, {.json = true}) + plant::printTree(*model);
    plant::setCurrentModel(nullptr);
    return described;
}

}  // namespace fuzz
