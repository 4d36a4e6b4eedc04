#include "exportbase/color_table.h"
#include "exportbase/json_side_file.h"
#include "exportbase/object_properties.h"
#include "support/test_support.h"
#include "tolmar/file.h"

#include <cjson/cJSON.h>

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

void addMembers(JsonSideFile& file) {
    file.beginObject("attr");
    file.addText("a\nb", "c");
    file.endObject();
    file.addText("cls", "X");
}

TEST(JsonSideFile, TakesMembersThatWereComposedBefore) {
    JsonSideFile members(2);
    addMembers(members);
    JsonSideFile copied;
    JsonSideFile composed;
    // Enough for the text to fill several of its blocks.
    for (int i = 0; i < 100'000; ++i) {
        const std::string key = std::to_string(i) + (i % 1000 == 0 ? "\"\\" : "");
        copied.addObject(key, members.members());
        composed.beginObject(key);
        addMembers(composed);
        composed.endObject();
    }
    copied.addObject("empty", JsonSideFile(2).members());
    composed.beginObject("empty");
    composed.endObject();
    const TestRoot folder;
    EXPECT_TRUE(written(copied, folder) == written(composed, folder));
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
