// The manager tree, databases, members, connections.
#include "loaded_model.h"

namespace {

const std::string twoTrees =
    R"({"format":"tessaro-plant","version":1,"databases":[{"name":"A"},{"name":"B","shortName":"b","main":true,"root":1},)"
    R"({"name":"C","root":20}],"objects":[{"id":1,"class":"HextWorld"},{"id":2,"class":"HextSite","in":1,"name":"s"},)"
    R"({"id":3,"class":"HextZone","in":2,"node":500},{"id":4,"class":"HextPipeline","in":3},)"
    R"({"id":5,"class":"HxDbPipeSpec","in":4},{"id":6,"class":"HextSite","in":1},{"id":7,"class":"HxDbPipeSpec","in":4},)"
    R"({"id":20,"class":"HextWorld"},{"id":30,"class":"HxDbTubeSpecification"}]})";

TEST(Tree, NodesDatabasesAndSites) {
    LoadedModel model(twoTrees);
    HxDbTreeNode* root = hxcom::getDataManTreeRoot();
    ASSERT_EQ(root, &model.node(1));
    EXPECT_TRUE(root->isKindOf(HxDbTreeNode::desc()));
    EXPECT_EQ(root->objectId().toInt(), 1 + (std::int64_t{1} << 46));
    EXPECT_EQ(root->getName(), nullptr);
    EXPECT_EQ(root->getParent(), nullptr);
    EXPECT_EQ(root->getBrother(), nullptr);
    HxDbTreeNode* site = root->getSon();
    EXPECT_STREQ(site->getName(), "s");
    EXPECT_EQ(site->getBrother(), &model.node(6));
    EXPECT_EQ(site->getBrother()->getBrother(), nullptr);
    HxDbTreeNode* zone = site->getSon();
    EXPECT_EQ(zone->objectId(), HxDbObjectId(500));
    EXPECT_EQ(&model.get<HxDbTreeNode>(500), zone);
    EXPECT_EQ(zone->getParent(), site);
    EXPECT_EQ(openAs<HxDbTreeNode>(HxDbObjectId(3 + (std::int64_t{1} << 46))), nullptr) << "it has another id";
    EXPECT_EQ(openAs<HxDbTreeNode>(HxDbObjectId(30 + (std::int64_t{1} << 46))), nullptr) << "in no tree";

    std::vector<HxDbObject*> others;
    ASSERT_TRUE(hxcom::getTreeRootOfOther(others));
    ASSERT_EQ(others.size(), 1U);
    EXPECT_EQ(others[0], &model.node(20));
    HxDbDataBase* database = model.get<HxDbObject>(20).database();
    EXPECT_STREQ(database->dbName(), "C");
    EXPECT_STREQ(hxcom::queryDbShortName(database), "C");
    EXPECT_STREQ(hxcom::queryDbShortName(hxcom::getMainDataBase()), "b");
    EXPECT_EQ(model.get<HxDbObject>(5).database(), hxcom::getMainDataBase());
    EXPECT_EQ(model.get<HxDbObject>(30).database(), hxcom::getMainDataBase());
    HxDbObject* object = nullptr;
    EXPECT_NE(hxdbOpenObject(HxDbObjectId(5), object, 3, database), Hext::eOk) << "in the other database";

    HextSite* foundSite = nullptr;
    HextZone* foundZone = nullptr;
    hxcom::getSizeZone(&model.get<HextPipeline>(4), foundSite, foundZone);
    EXPECT_EQ(foundSite, &model.get<HextSite>(2));
    EXPECT_EQ(foundZone, &model.get<HextZone>(3));
    hxcom::getSizeZone(&model.node(6), foundSite, foundZone);
    EXPECT_EQ(foundSite, &model.get<HextSite>(6));
    EXPECT_EQ(foundZone, nullptr);
}

TEST(Tree, WalksInTreeOrder) {
    LoadedModel model(twoTrees);
    std::vector<HxDbObject*> objects{nullptr};
    getAllSubObjects(hxcom::getDataManTreeRoot(), objects);
    EXPECT_EQ(numbersOf(objects), (Numbers{2, 3, 4, 5, 7, 6}));
    getAllSubObjects(hxcom::getDataManTreeRoot(), objects, &model.node(5));
    EXPECT_EQ(numbersOf(objects), (Numbers{2, 3, 4}));
    getAllSubObjects(nullptr, objects);
    EXPECT_TRUE(objects.empty());
    getTreeNodeObject(&model.node(5), objects, HxDbPipeSpec::desc());
    EXPECT_EQ(numbersOf(objects), Numbers{5});
    getTreeNodeObject(&model.node(5), objects, HextSite::desc());
    EXPECT_TRUE(objects.empty());
    transIdArray2PointerArray({HxDbObjectId(7), HxDbObjectId(99), HxDbObjectId(2)}, objects);
    EXPECT_EQ(numbersOf(objects), (Numbers{7, 2}));
    transIdArray2PointerArray({HxDbObjectId(7), HxDbObjectId(2)}, objects, HextSite::desc());
    EXPECT_EQ(numbersOf(objects), Numbers{2});
}

TEST(Tree, BentTreesEnd) {
    LoadedModel model(twoTrees);
    std::vector<HxDbObject*> objects;
    plant::relinkSon(model.model(), model.node(4), &model.node(2));
    getAllSubObjects(hxcom::getDataManTreeRoot(), objects);
    EXPECT_EQ(numbersOf(objects), (Numbers{2, 3, 4, 6}));
    plant::relinkBrother(model.model(), model.node(6), &model.node(2));
    EXPECT_EQ(model.node(6).getBrother(), &model.node(2));
    EXPECT_EQ(numbersOf(model.get<HextWorld>(1).getMemberIds()), (Numbers{2, 6}));
    plant::relinkSon(model.model(), model.node(1), nullptr);
    getAllSubObjects(hxcom::getDataManTreeRoot(), objects);
    EXPECT_TRUE(objects.empty());
}

TEST(Tree, MembersAndSubsByTreeOrAsGiven) {
    LoadedModel model(
        fileWith(R"({"id":2,"class":"HextSupport","in":1},{"id":3,"class":"HxDbSupportModel","in":2},)"
                 R"({"id":4,"class":"HxDbSupportModel","in":3},{"id":5,"class":"HxDbOther","in":3},)"
                 R"({"id":6,"class":"HextEquipe","in":1,"members":[4,3]},{"id":7,"class":"HxDbNonTube","in":6},)"
                 R"({"id":8,"class":"HxDbAssembly","subs":[]},{"id":9,"class":"HxDbPipeSpec","in":8})"));
    EXPECT_EQ(numbersOf(model.get<HextSupport>(2).getMemberIds()), Numbers{3});
    EXPECT_EQ(numbersOf(model.get<HxDbSupportModel>(3).getSubs()), Numbers{4}) << "smart objects only";
    EXPECT_EQ(numbersOf(model.get<HxDbSupportModel>(3).getMemberIds()), (Numbers{4, 5}));
    EXPECT_EQ(numbersOf(model.get<HextEquipe>(6).getMemberIds()), (Numbers{4, 3}));
    EXPECT_TRUE(model.get<HxDbAssembly>(8).getSubs().empty());
    EXPECT_EQ(model.get<HxDbPipeSpec>(9).getOwnerId(), HxDbObjectId(8));
}

TEST(Tree, DepthIsLimited) {
    std::string objects;
    for (int id = 2; id < 400; ++id) {
        objects += (id == 2 ? "" : ",") + std::string(R"({"id":)") + std::to_string(id) +
                   R"(,"class":"HextZoneDirectory","in":)" + std::to_string(id - 1) + "}";
    }
    EXPECT_EQ(plant::loadModelText(fileWith(objects)).error,
              "model: objects[201].in: the tree is deeper than 200 levels");
}

// A names 2 and 3 at point 2, 4 at point 1; 2 tells nothing, 3 tells its number, 4 is told twice.
TEST(Connections, AreKnownFromBothSides) {
    LoadedModel model(fileWith(
        R"({"id":10,"class":"HxDbPipeSpec","points":[{"no":2,"at":[1,0,0],"flow":2,"to":[3,2]},)"
        R"({"no":1,"at":[0,0,0],"flow":1,"to":4},{"no":3,"at":[2,0,0],"to":4},{"no":0,"at":[5,5,5]}]},)"
        R"({"id":2,"class":"HxDbPipeSpec","points":[{"no":7,"at":[0,0,0],"to":3}]},)"
        R"({"id":3,"class":"HxDbPipeSpec","points":[{"no":5,"at":[0,0,0],"to":10}]},{"id":4,"class":"HxDbPipeSpec"})"));
    auto& a = model.get<HxDbPipeSpec>(10);
    std::vector<HxDbObject*> found;
    a.getAllConnObject(found);
    EXPECT_EQ(numbersOf(found), (Numbers{4, 3, 2})) << "by number, then by file, none twice";
    EXPECT_EQ(a.getConnSmrtln(1), &model.get<HxDbPipeSpec>(4));
    EXPECT_EQ(a.getConnSmrtln(2), &model.get<HxDbPipeSpec>(3));
    EXPECT_EQ(a.getConnSmrtln(3), &model.get<HxDbPipeSpec>(4));
    EXPECT_EQ(a.getConnSmrtln(4), nullptr);
    EXPECT_EQ(a.getConnNoOfSmrtln(&model.get<HxDbPipeSpec>(4)), 1) << "the first of two";
    EXPECT_EQ(a.getConnNoOfSmrtln(&model.get<HxDbPipeSpec>(2)), 2);
    EXPECT_EQ(a.getConnNoOfSmrtln(&a), 0);
    EXPECT_EQ(a.getFlow(1), 1);
    EXPECT_EQ(a.getFlow(9), 0);
    EXPECT_TRUE(a.getCoordOfNo(0).isEqualTo({5, 5, 5}));
    EXPECT_TRUE(a.getCoordOfNo(9).isEqualTo({0, 0, 0}));
    EXPECT_EQ(a.getPointOfNo(9), nullptr);
    EXPECT_EQ(a.getPointOfNo(2)->getFlow(), 2);

    auto& two = model.get<HxDbPipeSpec>(2);
    two.getAllConnObject(found);
    EXPECT_EQ(numbersOf(found), (Numbers{10, 3})) << "known from the other side with number 0";
    EXPECT_EQ(two.getConnNoOfSmrtln(&a), 0);
    EXPECT_EQ(two.getConnSmrtln(7), &model.get<HxDbPipeSpec>(3));
    auto& three = model.get<HxDbPipeSpec>(3);
    three.getAllConnObject(found);
    EXPECT_EQ(numbersOf(found), (Numbers{2, 10}));
    EXPECT_EQ(three.getConnNoOfSmrtln(&a), 5);
    model.get<HxDbPipeSpec>(4).getAllConnObject(found);
    EXPECT_EQ(numbersOf(found), Numbers{10});
}

// More connections than are searched one by one; half of them told by the hub as well.
TEST(Connections, HubsOfMany) {
    constexpr int spokes = 40;
    std::string hub = R"({"id":10,"class":"HxDbPipeSpec","points":[{"no":1,"at":[0,0,0],"to":[)";
    std::string objects;
    for (int i = 0; i < spokes; ++i) {
        const std::string id = std::to_string(100 + i);
        hub += i % 2 == 0 ? (i == 0 ? "" : ",") + id : "";
        objects += R"(,{"id":)" + id + R"(,"class":"HxDbPipeSpec","points":[{"no":3,"at":[0,0,0],"to":10}]})";
    }
    LoadedModel model(fileWith(hub + "]}]}" + objects));
    auto& center = model.get<HxDbPipeSpec>(10);
    std::vector<HxDbObject*> found;
    center.getAllConnObject(found);
    ASSERT_EQ(found.size(), static_cast<std::size_t>(spokes));
    EXPECT_EQ(found[0]->objectId(), HxDbObjectId(101)) << "those that the hub does not tell, in file order";
    EXPECT_EQ(found[spokes / 2]->objectId(), HxDbObjectId(100));
    EXPECT_EQ(center.getConnNoOfSmrtln(&model.get<HxDbPipeSpec>(102)), 1);
    EXPECT_EQ(center.getConnNoOfSmrtln(&model.get<HxDbPipeSpec>(103)), 0);
    model.get<HxDbPipeSpec>(103).getAllConnObject(found);
    EXPECT_EQ(numbersOf(found), Numbers{10});
}

TEST(Connections, KeyPointsAreThePointsUnlessGiven) {
    LoadedModel model(
        fileWith(R"({"id":2,"class":"HxDbPipeSpec","points":[{"no":2,"at":[1,1,1]},{"no":1,"at":[2,2,2]}]},)"
                 R"({"id":3,"class":"HxDbNozzleModel","points":[{"no":1,"at":[0,0,0]}],)"
                 R"("keyPoints":[{"no":1,"at":[3,3,3]},{"no":1,"at":[4,4,4]}]})"));
    std::vector<std::pair<short, HxGePoint3D>> points;
    model.get<HxDbPipeSpec>(2).getKeyPoints(points);
    ASSERT_EQ(points.size(), 2U);
    EXPECT_EQ(points[0].first, 2);
    model.get<HxDbNozzleModel>(3).getKeyPoints(points);
    ASSERT_EQ(points.size(), 2U);
    EXPECT_EQ(points[1].first, 1);
    EXPECT_TRUE(points[1].second.isEqualTo({4, 4, 4}));
}

}  // namespace
