// What the example plant's world hands out, against expected texts: kinds and records as they are, geometry as sums.
// TESSARO_REBASE=1 writes them anew.
#include "support/golden.h"
#include "support/test_support.h"
#include "xdb/export.h"

#include <cmath>
#include <numeric>

namespace {

long long sumOf(const std::vector<double>& numbers) {
    return std::llround(std::accumulate(numbers.begin(), numbers.end(), 0.0));
}

TEST(XdbGolden, TheWorldOfTheExamplePlantGivesTheExpectedArrays) {
    TestUi ui;
    TestRoot root;
    TestModel example(exampleText("pump-station.json"));
    // The first top item is the world of the main database.
    ui.onForm = [](OrnLogicForm& form) {
        TestUi::click(form, TestUi::treeOf(form).topItems().front());
        form.onControlClicked(OrnLogicForm::ResultOk);
    };
    std::string error;
    ASSERT_TRUE(plant::chooseCurrentManager(example.model(), error)) << error;
    std::vector<std::string> types;
    std::vector<std::string> data;
    std::vector<std::uint64_t> colors;
    std::vector<std::vector<double>> positions;
    std::vector<std::vector<double>> normals;
    std::vector<std::vector<int>> indices;
    std::vector<std::vector<int>> normalIndices;
    ASSERT_TRUE(xdb::exportXdb({types, colors, positions, indices, normals, normalIndices, data}, 0));
    std::string text;
    for (const std::string& type : types) {
        text += "type " + tolmar::toUtf8(type) + "\n";
    }
    for (const std::string& record : data) {
        text += "data " + tolmar::toUtf8(record) + "\n";
    }
    for (std::size_t i = 0; i < positions.size(); ++i) {
        text += "geometry " + std::to_string(colors[i]) + " " + std::to_string(positions[i].size()) + " " +
                std::to_string(sumOf(positions[i])) + " " + std::to_string(indices[i].size()) + " " +
                std::to_string(std::accumulate(indices[i].begin(), indices[i].end(), 0LL)) + "\n";
        EXPECT_EQ(normals[i].size(), positions[i].size());
        EXPECT_EQ(normalIndices[i], indices[i]);
    }
    expectGolden("xdb", "PumpStation.txt", text);
}

}  // namespace
