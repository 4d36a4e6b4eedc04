#include "scripts/json_value.h"
#include "support/failure.h"
#include "support/test_support.h"

#include <cjson/cJSON.h>

namespace {

class JsonFile {
public:
    explicit JsonFile(const std::string& text) { root_.write("a.json", text); }
    JsonValue load() const {
        JsonValue value;
        value.load((root_.path() / "a.json").string());
        return value;
    }

private:
    TestRoot root_;
};

TEST(JsonValue, ReadsWhatStandsThere) {
    const JsonFile file(R"({"Row":["a","",3],"n":-7.9,"big":1e300,"o":{"k":"v"},"twice":1,"TWICE":2})");
    JsonValue value = file.load();
    EXPECT_EQ(value.size(), 6);
    EXPECT_EQ(value["row"].size(), 3);
    EXPECT_STREQ(value["ROW"].at(0).stringValue(), "a");
    EXPECT_EQ(value["row"].at(2).intValue(), 3);
    EXPECT_EQ(value["N"].intValue(), -7);
    EXPECT_EQ(value["big"].intValue(), 2147483647);
    EXPECT_EQ(value["Twice"].intValue(), 1);
    EXPECT_STREQ(value["o"]["k"].name(), "k");
    EXPECT_STREQ(value.name(), "");
    EXPECT_STREQ(value["row"].at(0).name(), "");
    EXPECT_EQ(value["row"].intValue(), 0);
    EXPECT_STREQ(value["n"].stringValue(), "");
    EXPECT_EQ(value["n"].size(), 0);
}

TEST(JsonValue, AMissingMemberIsMadeAsAnEmptyObject) {
    const JsonFile file(R"({"n":5})");
    JsonValue value = file.load();
    EXPECT_EQ(value["gone"].intValue(), 0);
    EXPECT_STREQ(value["gone"].stringValue(), "");
    EXPECT_EQ(value["gone"].size(), 0);
    EXPECT_EQ(value.size(), 2) << "made once, found again";
    EXPECT_EQ(value["GONE"]["deeper"]["still"].size(), 0);
    EXPECT_EQ(value["gone"].size(), 1);
    EXPECT_TRUE(cJSON_IsObject(value["gone"]["deeper"].node()));
    EXPECT_EQ(file.load().size(), 1) << "the file stays";
    JsonValue empty;
    EXPECT_EQ(empty.size(), 0);
    EXPECT_EQ(empty["made"]["up"].size(), 0);
    EXPECT_EQ(empty.size(), 1);
}

TEST(JsonValue, AskingForAMemberTurnsAnyValueIntoAnObject) {
    const JsonFile file(R"({"text":"abc","list":[1,2],"n":5,"t":true})");
    JsonValue value = file.load();
    for (const char* name : {"text", "list", "n", "t"}) {
        const std::string asked = name;
        EXPECT_EQ(value[name]["k"].size(), 0);
        EXPECT_TRUE(cJSON_IsObject(value[name].node())) << asked;
        EXPECT_EQ(value[name].intValue(), 0) << asked;
        EXPECT_STREQ(value[name].stringValue(), "") << asked;
    }
    EXPECT_EQ(failureOf([&] { value["list"].at(0); }), "json is not array");
}

TEST(JsonValue, ElementsOutOfReachThrow) {
    const JsonFile file("[10,20]");
    const JsonValue value = file.load();
    EXPECT_EQ(value.at(1).intValue(), 20);
    EXPECT_EQ(failureOf([&] { value.at(2); }), "object is invalid");
    EXPECT_EQ(failureOf([&] { value.at(-1); }), "pos need greater than 0");
    EXPECT_EQ(failureOf([&] { value.at(0).at(-1); }), "json is not array");
    EXPECT_EQ(failureOf([] { JsonValue().at(0); }), "json is not array");
    EXPECT_EQ(failureOf([] { JsonValue(nullptr); }), "object is invalid");
}

TEST(JsonValue, ChildrenAreWalkedInOrderUntilToldToStop) {
    const JsonFile file(R"({"b":"2","a":"1","c":"3"})");
    JsonValue value = file.load();
    const auto untilA = [](JsonValue& child, void* seen) {
        *static_cast<std::string*>(seen) += std::string(child.name()) + child.stringValue();
        return std::string(child.name()) != "a";
    };
    std::string seen;
    EXPECT_FALSE(value.forEachChild(untilA, &seen, true));
    EXPECT_EQ(seen, "b2a1");
    seen.clear();
    EXPECT_TRUE(value.forEachChild(untilA, &seen, false));
    EXPECT_EQ(seen, "b2a1c3");
    EXPECT_FALSE(value.forEachChild(nullptr, &seen, false));
    EXPECT_FALSE(value["a"].forEachChild(untilA, &seen, false));
    EXPECT_FALSE(JsonValue().forEachChild(untilA, &seen, false));
}

TEST(JsonValue, ATreeBelongsToOneOwner) {
    const JsonFile file(R"({"a":{"b":1}})");
    JsonValue owner = file.load();
    cJSON* tree = owner.node();
    JsonValue taken = std::move(owner);
    EXPECT_EQ(taken.node(), tree);
    EXPECT_EQ(owner.node(), nullptr);  // NOLINT: what a value is after it has been moved from
    JsonValue member = taken["a"];
    member = taken["a"]["b"];
    EXPECT_EQ(member.intValue(), 1);
    member = file.load();
    EXPECT_EQ(member["a"]["b"].intValue(), 1);
    EXPECT_EQ(taken["a"]["b"].intValue(), 1);
}

TEST(JsonValue, LoadRefusesWhatIsNoJsonAndFreesTheOldTree) {
    using namespace std::string_literals;
    const std::string deep(2000, '[');
    for (const std::string& text :
         {""s, " \n"s, "{"s, "{\"a\":}"s, "{'a':1}"s, deep + std::string(2000, ']'), "\xB9\xDC"s}) {
        const JsonFile file(text);
        EXPECT_EQ(failureOf([&] { file.load(); }), "parse fail") << text.substr(0, 20);
    }
    const JsonFile marked("\xEF\xBB\xBF{\"a\":1}\r\n");
    JsonValue value = marked.load();
    EXPECT_EQ(value["a"].intValue(), 1);
    const TestUi ui;
    testing::internal::CaptureStdout();
    EXPECT_EQ(failureOf([&] { value.load("none.json"); }), "parse fail");
    EXPECT_EQ(ui.printed, "Failed to open file!\n");
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "") << "which may be the report's";
    EXPECT_EQ(value.node(), nullptr);
}

}  // namespace
