// A review model told to a recording builder, with its report.
#pragma once

#include "plant/refusal.h"
#include "sources/review/source.h"
#include "sources/rvm/recording_builder.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

struct ToldReview {
    RecordingBuilder builder;
    plant::SourceReport report;
    std::string refusal;  // empty when it was taken

    // The builder's and the report's own rules are checked at once.
    ToldReview(std::string_view rvm, std::string_view text = {}) {
        plant::ObjectId world = 0;
        try {
            plant::review::tellReview({rvm, "review.rvm", text, "review.txt"}, builder, world, report);
            builder.finish();
        } catch (const plant::Refusal& thrown) {
            refusal = thrown.text();
            return;
        }
        for (const std::string& fault : builder.faults) {
            ADD_FAILURE() << "order of calls: " << fault;
        }
        for (const plant::SourceCount& row : report.balances()) {
            EXPECT_EQ(row.read, row.taken + row.told) << row.kind;
        }
    }

    // Codes with their counts: "rvm.zero-size 2, text.not-utf8 1".
    std::string findings() const {
        std::string text;
        for (const plant::SourceFinding& finding : report.findings()) {
            text += (text.empty() ? "" : ", ") + finding.code + " " + std::to_string(finding.count);
        }
        return text;
    }
    std::string firstPlace(std::string_view code) const {
        for (const plant::SourceFinding& finding : report.findings()) {
            if (finding.code == code) {
                return finding.first.front().place;
            }
        }
        return "(not told)";
    }
    std::uint64_t taken(std::string_view kind) const {
        for (const plant::SourceCount& row : report.balances()) {
            if (row.kind == kind) {
                return row.taken;
            }
        }
        return 0;
    }
};
