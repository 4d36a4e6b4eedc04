#include "exportbase/color_table.h"
#include "exportbase/json_side_file.h"
#include "exportbase/object_properties.h"
#include "exportbase/shared_vertices.h"
#include "support/test_support.h"
#include "tolmar/file.h"

#include <algorithm>
#include <cjson/cJSON.h>
#include <random>

namespace {

std::vector<float> rgb(int index) {
    float value[3] = {1, 2, 3};
    colorToRgb(index, value);
    return {value, value + 3};
}

TEST(ColorTable, FollowsThePalette) {
    const std::pair<int, std::vector<float>> cases[] = {
        {0, {128, 128, 128}}, {1, {255, 0, 0}},      {7, {255, 255, 255}},  {8, {128, 128, 128}}, {9, {192, 192, 192}},
        {10, {255, 0, 0}},    {11, {255, 127, 127}}, {20, {255, 63, 0}},    {22, {204, 51, 0}},   {50, {255, 255, 0}},
        {249, {76, 38, 47}},  {250, {51, 51, 51}},   {255, {255, 255, 255}}};
    for (const auto& [index, expected] : cases) {
        EXPECT_EQ(rgb(index), expected) << index;
    }
    EXPECT_EQ(rgb(-1), (std::vector<float>{1, 2, 3}));
    EXPECT_EQ(rgb(256), (std::vector<float>{1, 2, 3}));
}

// Points in a small space, many of them at or just beside the place of an earlier one, and around round numbers.
Mesh crowdedMesh() {
    std::mt19937 random(7);
    const auto below = [&random](unsigned limit) { return static_cast<double>(random() % limit); };
    Mesh mesh;
    for (std::uint32_t i = 0; i < 3000; ++i) {
        for (int k = 0; k < 3; ++k) {
            // Every third coordinate stands at the rim of a cell of the search.
            const double rim = random() % 3 == 0 ? 0.63 / (1 << 20) : 0;
            mesh.positions.push_back(below(3) - 1 + rim + below(5) * 4e-11);
            mesh.normalSums.push_back(below(9));
        }
        mesh.normalCounts.push_back(1 + i % 4);
        mesh.indices.insert(mesh.indices.end(), {i, i / 2, i / 3});
    }
    return mesh;
}

HxGePoint3D vertex(const Mesh& mesh, std::size_t i) {
    return {mesh.positions[3 * i], mesh.positions[3 * i + 1], mesh.positions[3 * i + 2]};
}

TEST(SharedVertices, AreThoseThatASearchFromTheFirstOnFinds) {
    const Mesh apart = crowdedMesh();
    Mesh shared = apart;
    shareVertices(shared);
    Mesh slow;
    std::vector<std::size_t> numbers;
    for (std::size_t i = 0; i < apart.vertexCount(); ++i) {
        std::size_t at = 0;
        while (at < slow.vertexCount() && !vertex(slow, at).isEqualTo(vertex(apart, i))) {
            ++at;
        }
        slow.positions.resize(3 * std::max(at + 1, slow.vertexCount()));
        slow.normalSums.resize(slow.positions.size());
        const bool isNew = at == slow.normalCounts.size();
        slow.normalCounts.resize(slow.vertexCount());
        for (std::size_t k = 0; k < 3; ++k) {
            slow.positions[3 * at + k] = isNew ? apart.positions[3 * i + k] : slow.positions[3 * at + k];
            slow.normalSums[3 * at + k] += apart.normalSums[3 * i + k];
        }
        slow.normalCounts[at] += apart.normalCounts[i];
        numbers.push_back(at);
    }
    ASSERT_LT(slow.vertexCount(), apart.vertexCount() / 2);
    EXPECT_EQ(shared.positions, slow.positions);
    EXPECT_EQ(shared.normalSums, slow.normalSums);
    EXPECT_EQ(shared.normalCounts, slow.normalCounts);
    ASSERT_EQ(shared.indices.size(), apart.indices.size());
    for (std::size_t i = 0; i < shared.indices.size(); ++i) {
        ASSERT_EQ(shared.indices[i], numbers[apart.indices[i]]);
    }
}

TEST(SharedVertices, NeedNoNormals) {
    Mesh mesh;
    shareVertices(mesh);
    mesh.positions = {1, 2, -0.0, 1e300, 0, 0, 1, 2, 0, 1e300, 0, 0};
    mesh.indices = {0, 1, 2, 3, 2, 1};
    shareVertices(mesh);
    EXPECT_EQ(mesh.positions, (std::vector<double>{1, 2, -0.0, 1e300, 0, 0}));
    EXPECT_EQ(mesh.indices, (std::vector<std::uint32_t>{0, 1, 0, 1, 0, 1}));
    EXPECT_TRUE(mesh.normalSums.empty());
}

TEST(ObjectProperties, OnlyAPipeRenamesItsPipelineNumber) {
    TestModel model(
        TestModel::withObjects(R"({"id":2,"class":"HextPipeline","in":1},{"id":3,"class":"HxDbPipeSpec","in":2},)"
                               R"({"id":4,"class":"HxDbTubeModelSpec","in":2})"));
    const HxDbObject* pipe = openAs<HxDbObject>(HxDbObjectId(3));
    const HxDbObject* component = openAs<HxDbObject>(HxDbObjectId(4));
    ASSERT_NE(pipe, nullptr);
    ASSERT_NE(component, nullptr);
    EXPECT_EQ(propertyKey(pipe, "管线号"), "管线ID");
    EXPECT_EQ(propertyKey(pipe, "material"), "material");
    EXPECT_EQ(propertyKey(component, "管线号"), "管线号");
}

std::string written(const JsonSideFile& file, const TestRoot& root) {
    const std::string path = (root.path() / "side.json").string();
    EXPECT_TRUE(file.write(path));
    std::string bytes;
    EXPECT_TRUE(tolmar::readFile(path, bytes));
    return bytes;
}

// The library's own formatted print of the same content, in text-mode line ends.
std::string printedByLibrary(cJSON* root) {
    char* text = cJSON_Print(root);
    std::string lines;
    for (const char* c = text; *c != '\0'; ++c) {
        lines += *c == '\n' ? std::string("\r\n") : std::string(1, *c);
    }
    cJSON_free(text);
    cJSON_Delete(root);
    return lines;
}

TEST(JsonSideFile, LooksLikeTheLibrarysFormattedPrint) {
    const std::string odd = "a\"b\\c\x01\n\t管线";
    JsonSideFile file;
    cJSON* root = cJSON_CreateObject();
    for (const char* key : {"first", "空`", ""}) {
        file.beginObject(key);
        cJSON* object = cJSON_AddObjectToObject(root, key);
        file.beginObject("attr");
        cJSON* inner = cJSON_AddObjectToObject(object, "attr");
        for (const std::string& text : {odd, std::string(), std::string(3000, '\x1f')}) {
            file.addText(odd, text);
            cJSON_AddStringToObject(inner, odd.c_str(), text.c_str());
        }
        file.endObject();
        file.addText("cls", "X");
        cJSON_AddStringToObject(object, "cls", "X");
        file.endObject();
    }
    file.beginObject("empty");
    file.endObject();
    cJSON_AddObjectToObject(root, "empty");
    const TestRoot folder;
    EXPECT_EQ(written(file, folder), printedByLibrary(root));
    file.clear();
    EXPECT_EQ(written(file, folder), printedByLibrary(cJSON_CreateObject()));
}

// The library takes a text in pieces then: what stands on both sides of a border.
TEST(JsonSideFile, LongTextsAreWhole) {
    constexpr std::size_t piece = std::size_t{16} << 20U;
    std::string text(2 * piece + 10, 'a');
    std::string quoted = text;
    for (const std::size_t at : {2 * piece, 2 * piece - 1, piece, piece - 1, std::size_t{0}}) {
        text[at] = '"';
        quoted.replace(at, 1, "\\\"");
    }
    JsonSideFile file;
    file.addText("k", text);
    const TestRoot folder;
    EXPECT_TRUE(written(file, folder) == "{\r\n\t\"k\":\t\"" + quoted + "\"\r\n}");
}

TEST(JsonSideFile, LongTextsAndNumbersForKeys) {
    JsonSideFile file;
    cJSON* root = cJSON_CreateObject();
    // Enough for the text to fill several of its blocks.
    for (int i = 0; i < 100'000; ++i) {
        const std::int64_t key = i % 2 == 0 ? i - 1 : (std::int64_t{1} << 53) - i;
        file.beginObject(key);
        file.addText("cls", "HxDbTubeModelSpec");
        file.endObject();
        cJSON* object = cJSON_CreateObject();
        cJSON_AddStringToObject(object, "cls", "HxDbTubeModelSpec");
        cJSON_AddItemToObject(root, std::to_string(key).c_str(), object);
    }
    const TestRoot folder;
    EXPECT_TRUE(written(file, folder) == printedByLibrary(root));
}

TEST(JsonSideFile, ThatCannotBeWrittenIsTold) {
    tolmar::runReport().clear();
    const TestRoot folder;
    EXPECT_FALSE(JsonSideFile().write((folder.path() / "missing" / "side.json").string()));
    EXPECT_EQ(tolmar::runReport().failedFiles().size(), 1U);
    tolmar::runReport().clear();
}

TEST(JsonSideFile, StandsBesideTheMainFile) {
    EXPECT_EQ(sideFilePath("C:\\a/b\\plant.v2.nwc"), "C:\\a/b\\plant.v2.json");
    EXPECT_EQ(sideFilePath("/a.b/plant"), "/a.b\\plant.json");
    EXPECT_EQ(sideFilePath("plant.eem"), ".\\plant.json");
    EXPECT_EQ(sideFilePath("/a/誠.eem"), "/a\\誠.json") << "in GBK its second byte is that of a backslash";
}

}  // namespace
