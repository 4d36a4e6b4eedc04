#include "platform/attribute_cache.h"
#include "platform/hxcom.h"
#include "platform/model_tests.h"
#include "platform/primaries.h"
#include "platform/tree_walker.h"
#include "support/test_support.h"

#include <algorithm>
#include <set>

namespace {

HxDbSmrtlnEntity* smart(std::int64_t id) {
    return openAs<HxDbSmrtlnEntity>(HxDbObjectId(id));
}

TEST(KvText, EveryTypeHasItsTextForm) {
    const double point[3] = {1, -2.5, 0.123456789};
    const auto text = [](std::int32_t type, KVParams::Value value) {
        return kvText({.key = "k", .description = {}, .valueType = type, .value = value});
    };
    EXPECT_EQ(text(1, {.shortValue = -7}), "-7");
    EXPECT_EQ(text(8, {.shortValue = 7}), "7");
    EXPECT_EQ(text(2, {.doubleValue = 100}), "100.000000");
    EXPECT_EQ(text(3, {.point = point}), "1.00000000\t-2.50000000\t0.12345679");
    EXPECT_EQ(text(4, {.text = "x"}), "x");
    EXPECT_EQ(text(4, {.text = nullptr}), "");
    EXPECT_EQ(text(5, {.intValue = -2000000000}), "-2000000000");
    EXPECT_EQ(text(7, {.int64Value = 1LL << 52}), "4503599627370496");
    EXPECT_EQ(text(9, {.bytes = {2, "abc"}}), "ab");
    EXPECT_EQ(text(9, {.bytes = {0, "abc"}}), "");
    EXPECT_EQ(text(10, {.text = "x"}), "");
}

TEST(BomValue, TheFirstOfEqualKeysCountsAndCaseMatters) {
    TestModel model(TestModel::withObjects(
        R"({"id":2,"class":"HxDbTubeModelSpec","attrs":[{"key":"a","value":"first"},{"key":"a","value":"second"},
            {"key":"d","value":100.0},{"key":"e","value":""}]})"));
    EXPECT_EQ(getBomValue(smart(2), "a"), "first");
    EXPECT_EQ(getBomValue(smart(2), "A"), "");
    EXPECT_EQ(getBomValue(smart(2), "d"), "100.000000");
    EXPECT_EQ(getBomValue(smart(2), "none"), "");
    EXPECT_EQ(getBomValue(nullptr, "a"), "");
}

TEST(BomValue, ABalloonWithoutItemReadsBalloon) {
    TestModel model(TestModel::withObjects(R"({"id":2,"class":"HxDbBalloon"},
        {"id":3,"class":"HxDbBalloon","attrs":{"item":"TAG"}},{"id":4,"class":"HxDbTubeWeld"})"));
    EXPECT_EQ(getBomValue(smart(2), "item"), "Balloon");
    EXPECT_EQ(getBomValue(smart(2), "ITEM"), "Balloon");
    EXPECT_EQ(getBomValue(smart(3), "item"), "TAG");
    EXPECT_EQ(getBomValue(smart(4), "item"), "");
}

TEST(BomValue, TheCacheKeepsWhatItSawUntilCleared) {
    TestModel model(TestModel::withObjects(R"({"id":2,"class":"HxDbTubeModelSpec","attrs":{"a":"old"}})"));
    EXPECT_EQ(getBomValue(smart(2), "a"), "old");
    plant::setAttribute(model.model(), 2, "a", "new");
    EXPECT_EQ(getBomValue(smart(2), "a"), "old");
    clearBomCache();
    EXPECT_EQ(getBomValue(smart(2), "a"), "new");
}

// Ids in a row, far apart, in steps that fit the tables badly, and the largest there are.
TEST(BomValue, TheCacheTellsObjectsOfAnyIdsApart) {
    std::set<std::int64_t> ids;
    for (std::int64_t i = 1; i <= 1500; ++i) {
        ids.insert({1 + i, 4096 * i, (i << 20) + 7, i * i * i * 1000003, 9007199254740990 - (i << 30)});
    }
    std::string objects;
    for (const std::int64_t id : ids) {
        const std::string number = std::to_string(id);
        objects += (objects.empty() ? R"({"id":)" : R"(,{"id":)") + number + R"(,"class":"HxDbTubeModelSpec","node":)" +
                   std::to_string(100000000000 + 7 * id % 100000000000) + R"(,"attrs":{"tag":")" + number + R"("}})";
    }
    TestModel model(TestModel::withObjects(objects));
    const auto readAll = [&](auto from, auto to) {
        for (; from != to; ++from) {
            ASSERT_EQ(getBomValue(smart(*from), "tag"), std::to_string(*from));
        }
    };
    readAll(ids.begin(), ids.end());
    readAll(ids.rbegin(), ids.rend());
    clearBomCache();
    readAll(ids.rbegin(), ids.rend());
}

// The reader outlives two models whose keys have different numbers, and a key that joins.
TEST(BomFields, ReadWhatSingleQuestionsRead) {
    constexpr std::string_view keys[] = {"item", "a", "d", "late"};
    BomFields fields(keys);
    const auto expectSame = [&](std::initializer_list<std::int64_t> ids) {
        for (const std::int64_t id : ids) {
            std::array<std::string_view, 4> values{"left over", "left over", "left over", "left over"};
            fields.read(smart(id), values);
            for (std::size_t i = 0; i < values.size(); ++i) {
                EXPECT_EQ(values[i], getBomValue(smart(id), keys[i])) << id << " " << keys[i];
            }
        }
    };
    {
        TestModel model(TestModel::withObjects(R"({"id":2,"class":"HxDbTubeModelSpec","attrs":[
            {"key":"x","value":"1"},{"key":"a","value":"first"},{"key":"a","value":"second"},{"key":"d","value":1.5}]},
            {"id":3,"class":"HxDbBalloon"},{"id":4,"class":"HxDbBalloon","attrs":{"item":"TAG","a":""}})"));
        expectSame({2, 3, 4, 99});
        plant::setAttribute(model.model(), 2, "late", "joined");
        clearBomCache();
        expectSame({2});
        EXPECT_EQ(getBomValue(smart(2), "late"), "joined");
    }
    TestModel model(
        TestModel::withObjects(R"({"id":2,"class":"HxDbTubeModelSpec","attrs":{"d":"D","a":"A","late":"L","x":"X"}})"));
    expectSame({2});
}

TEST(Numbers, ReadAsTheCLibraryReadsThem) {
    EXPECT_EQ(numberOf(" 12.5mm"), 12.5);
    EXPECT_EQ(numberOf("+3"), 3);
    EXPECT_EQ(numberOf("DN100"), 0);
    EXPECT_EQ(integerOf("100*50"), 100);
    EXPECT_EQ(integerOf(""), 0);
    EXPECT_EQ(integerOf("99999999999"), 2147483647);
    EXPECT_EQ(idOf("1234.9").toInt(), 1234);
    EXPECT_FALSE(idOf("-5").isValid());
    EXPECT_FALSE(idOf("1e300").isValid());
}

std::vector<std::int64_t> walked(HxDbTreeNode* root) {
    std::vector<std::int64_t> ids;
    for (TreeWalker walker(root); !walker.done(); walker.next()) {
        ids.push_back(walker.current()->getTreeNodeValue().toInt());
    }
    return ids;
}

const char* const smallTree =
    R"({"id":2,"class":"HextSite","in":1,"name":"S1"},{"id":3,"class":"HextZone","in":2,"name":"Z1"},
    {"id":4,"class":"HextPipeline","in":3,"name":"P1"},{"id":5,"class":"HextZone","in":2,"name":"Z2"},
    {"id":6,"class":"HextSite","in":1,"name":"S2"})";

TEST(Walker, GoesDepthFirstSonBeforeBrother) {
    TestModel model(TestModel::withObjects(smallTree));
    EXPECT_EQ(walked(hxcom::getDataManTreeRoot()), (std::vector<std::int64_t>{1, 2, 3, 4, 5, 6}));
    EXPECT_EQ(walked(hxcom::getDataManTreeRoot()->getSon()), (std::vector<std::int64_t>{2, 3, 4, 5}));
    EXPECT_TRUE(TreeWalker(nullptr).done());
}

TEST(Walker, SkipsChildrenForOneStepOnly) {
    TestModel model(TestModel::withObjects(smallTree));
    TreeWalker walker(hxcom::getDataManTreeRoot());
    walker.next();
    walker.skipChildren();
    walker.next();
    EXPECT_EQ(walker.current()->getTreeNodeValue().toInt(), 6);
    walker.next();
    EXPECT_TRUE(walker.done());
}

TEST(Walker, EntersEachOfManyNodesOnce) {
    std::string objects = R"({"id":2,"class":"HextSite","in":1})";
    for (int id = 3; id <= 20000; ++id) {
        objects += R"(,{"id":)" + std::to_string(id) + R"(,"class":"HextZone","in":2})";
    }
    TestModel model(TestModel::withObjects(objects));
    HxDbTreeNode* site = hxcom::getDataManTreeRoot()->getSon();
    HxDbTreeNode* last = site->getSon();
    while (last->getBrother() != nullptr) {
        last = last->getBrother();
    }
    plant::relinkBrother(model.model(), *last, site->getSon());
    const std::vector<std::int64_t> ids = walked(site);
    ASSERT_EQ(ids.size(), 19999U);
    EXPECT_TRUE(std::is_sorted(ids.begin(), ids.end()));
}

TEST(Walker, EndsOnACycle) {
    TestModel model(TestModel::withObjects(smallTree));
    HxDbTreeNode* root = hxcom::getDataManTreeRoot();
    plant::relinkSon(model.model(), *root->getSon()->getSon(), root);
    EXPECT_EQ(walked(root), (std::vector<std::int64_t>{1, 2, 3, 5, 6}));
}

TEST(ModelTests, FamiliesGoByTheirWords) {
    TestModel model(TestModel::withObjects(
        R"({"id":2,"class":"HxDbPipeSpec","attrs":{"item":"PIPE","smrtln":"Arc","end1":"FLG","insul":"0"}},
           {"id":3,"class":"HxDbPipeSpec","attrs":{"item":"PIPE","smrtln":"Pipe","end1":"F"}},
           {"id":4,"class":"HxDbTubeModelSpec","attrs":{"item":"ELBOW","smrtln":"Angle","end1":"FLG"}})"));
    EXPECT_TRUE(isBendLikeItem(smart(2)));
    EXPECT_FALSE(isBendLikeItem(smart(3)));
    EXPECT_TRUE(isFlangedPipe(smart(2)));
    EXPECT_FALSE(isFlangedPipe(smart(3)));
    EXPECT_FALSE(isFlangedPipe(smart(4)));
    EXPECT_FALSE(isInsulated(smart(2)));
    EXPECT_TRUE(isInsulated(smart(3)));
    EXPECT_TRUE(isBendType(HxDbTubeModel::cast(smart(4))));
    EXPECT_TRUE(isUnset("UnSet"));
    EXPECT_FALSE(isUnset("unset "));
    EXPECT_TRUE(isElbowItem("RETURN") && isBranchItem("OLET"));
    EXPECT_FALSE(isElbowItem("BEND") || isCapItem("CAPS"));
}

constexpr const char* box = R"([{"type":"HextBox3D","point":[0,0,0],"xLength":1,"yLength":1,"zLength":1}])";

// A weld, a bolt set and a structure with a box each, and a structure without a shape: 2 to 5.
std::string weldBoltAndStructures() {
    return TestModel::withObjects(std::string(R"({"id":2,"class":"HxDbTubeWeld","primitives":)") + box +
                                  R"(},{"id":3,"class":"HxDbBoltNutModel","primitives":)" + box +
                                  R"(},{"id":4,"class":"HxDbStruct","primitives":)" + box +
                                  R"(},{"id":5,"class":"HxDbStruct"})");
}

TEST(Primaries, SwitchesForBoltsAndWelds) {
    TestModel model(weldBoltAndStructures());
    PrimaryList list;
    EXPECT_EQ(getPrimaries(nullptr, list.list(), true, true), 18);
    EXPECT_EQ(getPrimaries(smart(2), list.list(), true, false), 2);
    EXPECT_EQ(getPrimaries(smart(3), list.list(), false, true), 2);
    EXPECT_EQ(getPrimaries(smart(2), list.list(), false, true), 0);
    EXPECT_EQ(list.size(), 1U);
    EXPECT_EQ(getPrimaries(smart(3), list.list(), true, false), 0);
    EXPECT_EQ(getPrimaries(smart(4), list.list(), false, false), 0);
    EXPECT_EQ(list.size(), 1U);
    EXPECT_NE(getPrimaries(smart(5), list.list(), false, false), 0);
    EXPECT_TRUE(list.empty());
}

TEST(Primaries, CanBeReadWithoutCopies) {
    TestModel model(weldBoltAndStructures());
    PrimaryList list;
    HextPrimaryView view;
    for (const bool wanted : {false, true}) {
        for (const int id : {2, 3, 4, 5, 6}) {
            SCOPED_TRACE(id);
            const Hext::ErrorStatus status = viewPrimaries(smart(id), view, wanted, wanted);
            EXPECT_EQ(status, getPrimaries(smart(id), list.list(), wanted, wanted));
            EXPECT_EQ(view.size(), status == Hext::eOk ? 1U : 0U);
        }
    }
    ASSERT_EQ(viewPrimaries(smart(4), view, false, false), Hext::eOk);
    const HextPrimary* first = view[0];
    EXPECT_EQ(HextBox3D::cast(first)->xLength, 1);
    ASSERT_EQ(viewPrimaries(smart(4), view, false, false), Hext::eOk);
    EXPECT_EQ(view[0], first);
}

TEST(Primaries, ByClassReportsWhatHasNoShape) {
    TestUi ui;
    TestModel model(TestModel::withObjects(
        std::string(R"({"id":2,"class":"HxDbEquipment","primitives":)") + box +
        R"(},{"id":3,"class":"HxDbSupportModel","subs":[2]},{"id":4,"class":"HxDbXGModel","primitives":[]},{"id":5,"class":"HxDbNonTube"},{"id":6,"class":"HxDbTubeWeld"})"));
    PrimaryList list;
    EXPECT_EQ(getObjectPrimaries(smart(2), list.list()), 0);
    EXPECT_EQ(getObjectPrimaries(smart(3), list.list()), 0);
    EXPECT_TRUE(list.empty());
    EXPECT_EQ(ui.printed, "");
    for (const int id : {4, 5}) {
        ui.printed.clear();
        EXPECT_EQ(getObjectPrimaries(smart(id), list.list()), 18);
        EXPECT_EQ(ui.printed.rfind("对象ID'" + std::to_string(id) + "'取图形库失败，原因：", 0), 0U) << ui.printed;
    }
    ui.printed.clear();
    EXPECT_EQ(getObjectPrimaries(smart(6), list.list()), 18);
    EXPECT_EQ(getObjectPrimaries(nullptr, list.list()), 18);
    EXPECT_EQ(ui.printed, "") << "nothing is expected of a weld";
}

}  // namespace
