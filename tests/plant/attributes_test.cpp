// Attributes as records: order, types, labels, texts in the code page.
#include "loaded_model.h"

#include "tolmar/code_page.h"

namespace {

std::vector<KVParams> attributesOf(std::int64_t id) {
    std::vector<KVParams> list;
    EXPECT_TRUE(smrtln::getObjectBomData(HxDbObjectId(id), list));
    return list;
}

TEST(Attributes, ObjectForm) {
    const LoadedModel model(fileWith(
        R"({"id":2,"class":"HxDbPipeSpec","attrs":{"b":"x","a":"","whole":7,"long":3000000000,"real":1.5,"exp":1e2}},)"
        R"({"id":3,"class":"HxDbPipeSpec","attrs":{}},{"id":4,"class":"HxDbPipeSpec","attrs":{"b":"x","a":"y"}})",
        R"("attributeLabels":{"a":"label of a","unused":"u"},)"));
    const auto list = attributesOf(2);
    ASSERT_EQ(list.size(), 6U);
    EXPECT_EQ(list[0].key, "b");
    EXPECT_EQ(list[0].description, "");
    EXPECT_EQ(list[0].valueType, KVParams::Text);
    EXPECT_STREQ(list[0].value.text, "x");
    EXPECT_EQ(list[1].description, "label of a");
    EXPECT_STREQ(list[1].value.text, "");
    EXPECT_EQ(list[2].valueType, KVParams::Int);
    EXPECT_EQ(list[2].value.intValue, 7);
    EXPECT_EQ(list[3].valueType, KVParams::Int64);
    EXPECT_EQ(list[3].value.int64Value, 3000000000);
    EXPECT_EQ(list[4].valueType, KVParams::Double);
    EXPECT_EQ(list[4].value.doubleValue, 1.5);
    EXPECT_EQ(list[5].valueType, KVParams::Double);
    EXPECT_EQ(list[5].value.doubleValue, 100);
    EXPECT_TRUE(attributesOf(3).empty());
    EXPECT_STREQ(attributesOf(4)[1].value.text, "y") << "not the text of the object before";
    std::vector<KVParams> none(3);
    EXPECT_FALSE(smrtln::getObjectBomData(HxDbObjectId(99), none));
    EXPECT_TRUE(none.empty());
}

TEST(Attributes, ArrayForm) {
    const LoadedModel model(fileWith(
        R"({"id":2,"class":"HxDbPipeSpec","attrs":[{"key":"k","value":"1"},{"value":"2","key":"k","description":"d"},)"
        R"({"key":"short","value":-5,"type":1},{"key":"alias","value":5,"type":8},{"key":"double","type":2,"value":3},)"
        R"({"key":"point","value":[1,2.5,-3]},{"key":"int","value":4,"type":5},{"key":"pointer","value":64,"type":6},)"
        R"({"key":"long","value":4,"type":7},{"key":"bytes","value":"ab","type":9}]})"));
    const auto list = attributesOf(2);
    ASSERT_EQ(list.size(), 10U);
    EXPECT_STREQ(list[0].value.text, "1");
    EXPECT_STREQ(list[1].value.text, "2");
    EXPECT_EQ(list[1].key, "k");
    EXPECT_EQ(list[1].description, "d");
    EXPECT_EQ(list[2].value.shortValue, -5);
    EXPECT_EQ(list[3].valueType, KVParams::ShortAlias);
    EXPECT_EQ(list[3].value.shortValue, 5);
    EXPECT_EQ(list[4].value.doubleValue, 3.0);
    EXPECT_EQ(list[5].valueType, KVParams::Point);
    EXPECT_EQ(list[5].value.point[1], 2.5);
    EXPECT_EQ(list[6].value.intValue, 4);
    EXPECT_EQ(list[7].value.pointer, reinterpret_cast<const void*>(64));
    EXPECT_EQ(list[8].valueType, KVParams::Int64);
    EXPECT_EQ(list[9].value.bytes.length, 2);
    EXPECT_EQ(std::string(list[9].value.bytes.data, 2), "ab");
}

// Keys and texts of all spellings; the same key spelt in two ways is one key.
TEST(Attributes, TextsStandInTheCodePage) {
    const std::string chinese = "\xE6\xB3\xB5";  // UTF-8
    const std::string longText(100000, 'x');
    const LoadedModel model(
        fileWith(R"({"id":2,"class":"HxDbPipeSpec","name":"a\"\\\/\n\u00e9","attrs":{"\u0069tem":"O",")" + chinese +
                 R"(":"\u6cf5","long":")" + longText + R"("}},{"id":3,"class":"HxDbPipeSpec","attrs":{"item":"P",")" +
                 chinese + R"(":")" + chinese + chinese + "\"}}"));
    const auto list = attributesOf(2);
    EXPECT_EQ(list[0].key, "item");
    EXPECT_EQ(tolmar::toUtf8(list[1].key), chinese);
    EXPECT_EQ(tolmar::toUtf8(list[1].value.text), chinese);
    EXPECT_EQ(list[2].value.text, longText);
    HxDbObject* object = nullptr;
    hxdbOpenObject(HxDbObjectId(2), object, 3);
    EXPECT_EQ(tolmar::toUtf8(object->getDisplayName()), "a\"\\/\n\xC3\xA9");
    const auto other = attributesOf(3);
    EXPECT_EQ(tolmar::toUtf8(other[1].value.text), chinese + chinese);
    const auto records = smrtln::getObjectBomRecords(object);
    hxdbOpenObject(HxDbObjectId(3), object, 3);
    EXPECT_EQ(records[0].key, smrtln::getObjectBomRecords(object)[0].key);
    EXPECT_EQ(smrtln::bomKeys()[records[0].key], "item");
    EXPECT_EQ(smrtln::bomKeys()[0], "");
}

TEST(Attributes, SettingOneLeavesListsTaken) {
    LoadedModel model(fileWith(R"({"id":2,"class":"HxDbPipeSpec","attrs":{"a":"1","b":2}})"));
    const auto before = attributesOf(2);
    plant::setAttribute(model.model(), 2, "b", "new");
    plant::setAttribute(model.model(), 2, "c", "added");
    plant::setAttribute(model.model(), 99, "c", "nowhere");
    const auto after = attributesOf(2);
    EXPECT_EQ(before[1].value.intValue, 2);
    ASSERT_EQ(after.size(), 3U);
    EXPECT_STREQ(after[0].value.text, "1");
    EXPECT_STREQ(after[1].value.text, "new");
    EXPECT_EQ(after[2].key, "c");
    EXPECT_EQ(hxcom::findKVParamArray(after, "c"), &after[2]);
    EXPECT_EQ(hxcom::findKVParamArray(after, "C"), nullptr);
}

TEST(Attributes, KeysAreLimitedInNumber) {
    std::string members;
    for (int i = 0; i < 70000; ++i) {
        members += (i == 0 ? "\"k" : ",\"k") + std::to_string(i) + "\":1";
    }
    const auto result = plant::loadModelText(fileWith(R"({"id":2,"class":"HxDbPipeSpec","attrs":{)" + members + "}}"));
    EXPECT_EQ(result.error, "model: objects[1].attrs.k65535: too many different attribute keys");
}

}  // namespace
