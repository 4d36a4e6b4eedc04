// What objects of each family answer: what the file gives, and the defaults.
#include "loaded_model.h"

#include "tolmar/code_page.h"

namespace {

TEST(Model, WithoutOneThePlatformHoldsNothing) {
    ASSERT_EQ(plant::currentModel(), nullptr);
    HxDbObject* object = nullptr;
    std::vector<HxDbObject*> roots;
    EXPECT_NE(hxdbOpenObject(HxDbObjectId(1), object, 3), Hext::eOk);
    EXPECT_EQ(hxcom::getDataManTreeRoot(), nullptr);
    EXPECT_FALSE(hxcom::getTreeRootOfOther(roots));
    EXPECT_EQ(hxcom::getMainDataBase(), nullptr);
    EXPECT_STREQ(HextSystem::getCurrentProjItem("name", false), "project");
    EXPECT_TRUE(smrtln::bomKeys().empty());
}

TEST(Model, GoesWithItsResult) {
    { const LoadedModel model(fileWith("")); }
    EXPECT_EQ(plant::currentModel(), nullptr);
    plant::setCurrentModel(plant::loadModelText(fileWith("")).model.get());
    EXPECT_EQ(plant::currentModel(), nullptr) << "a deleted model is no longer the current one";
}

TEST(Model, ProjectDefaultsAndItems) {
    {
        const LoadedModel model(fileWith(""));
        EXPECT_STREQ(HextSystem::getCurrentProjName(), "project");
        EXPECT_STREQ(HextSystem::getCurrentUser(), "user");
        EXPECT_STREQ(HextSystem::getCurrentProjPath(), "");
        EXPECT_STREQ(HextSystem::hextFullPlatformPath(), "");
        EXPECT_EQ(hxcom::getCurrentModule(), 65);
        EXPECT_STREQ(HextSystem::getCurrentDesignItem("CurSelDatabase", false), "MAIN");
        EXPECT_STREQ(HextSystem::getCurrentDesignItem("other", false), "");
        EXPECT_EQ(hxcad::getManagerTreeNodeGetFunc(), nullptr);
    }
    LoadedModel model(fileWith("",
                               R"("project":{"name":"\u6cf5","path":"D:\\p","user":"u","module":73,"database":"DB",)"
                               R"("designItems":{"a":"1"},"projectItems":{"b":"2"},"weldColor":3,)"
                               R"("currentManager":1,"platformPath":"C:\\x"},)"));
    EXPECT_EQ(tolmar::toUtf8(HextSystem::getCurrentProjName()), "\xE6\xB3\xB5");
    EXPECT_STREQ(HextSystem::getCurrentProjItem("name", false), HextSystem::getCurrentProjName());
    EXPECT_STREQ(HextSystem::getCurrentProjPath(), "D:\\p");
    EXPECT_EQ(hxcom::getCurrentModule(), 73);
    EXPECT_STREQ(HextSystem::getCurrentDesignItem("CurSelDatabase", false), "DB");
    EXPECT_STREQ(HextSystem::getCurrentDesignItem("a", false), "1");
    EXPECT_STREQ(HextSystem::getCurrentProjItem("b", false), "2");
    ASSERT_NE(hxcad::getManagerTreeNodeGetFunc(), nullptr);
    EXPECT_EQ(hxcad::getManagerTreeNodeGetFunc()(), &model.node(1));
}

TEST(Objects, DefaultsOfSmartObjects) {
    LoadedModel model(fileWith(R"({"id":2,"class":"HxDbTubeModelSpec","points":[{"no":1,"at":[1,2,3]}]},)"
                               R"({"id":3,"class":"HxDbTubeWeld","points":[{"no":1,"at":[4,5,6]}]},)"
                               R"({"id":4,"class":"HxDbNozzleModel"})"));
    auto& part = model.get<HxDbTubeModelSpec>(2);
    EXPECT_EQ(part.getDisplayName(), nullptr);
    EXPECT_EQ(part.getStandard(), nullptr);
    EXPECT_EQ(part.getObjectName(), nullptr);
    EXPECT_EQ(part.getSpec(), nullptr);
    EXPECT_EQ(part.getSpecName(), nullptr);
    EXPECT_EQ(part.getSmrtlnType(), "");
    EXPECT_FALSE(part.getOwnerId().isValid());
    EXPECT_EQ(part.getColorIdx(), 0);
    EXPECT_EQ(part.getInsNo(), 1);
    EXPECT_EQ(part.getRefNo(), 2);
    EXPECT_TRUE(part.getInsPnt().isEqualTo({1, 2, 3}));
    EXPECT_TRUE(part.getRefVec().isEqualTo({1, 0, 0}));
    EXPECT_EQ(part.database(), hxcom::getMainDataBase());
    EXPECT_EQ(smrtln::getAttachBoltNut(&part), nullptr);
    auto& weld = model.get<HxDbTubeWeld>(3);
    EXPECT_TRUE(weld.getInspt().isEqualTo({4, 5, 6}));
    EXPECT_TRUE(weld.getInsvec().isEqualTo({0, 0, 1}));
    EXPECT_TRUE(weld.getRefvec().isEqualTo({1, 0, 0}));
    short color = 9;
    EXPECT_FALSE(smrtln::getCurrentWeldConfigColor(&weld, color));
    EXPECT_EQ(color, 9);
    EXPECT_EQ(model.get<HxDbNozzleModel>(4).getNo(), nullptr);
    EXPECT_TRUE(model.get<HxDbNozzleModel>(4).getInsPnt().isEqualTo({0, 0, 0})) << "without the point the origin";
}

TEST(Objects, WhatTheFileGives) {
    LoadedModel model(fileWith(
        R"({"id":2,"class":"HxDbBalloon","in":1,"name":"n","displayName":"d","owner":3,"standard":"s","color":7,)"
        R"("objectName":"o","no":"12","insNo":3,"refNo":4,"refVec":[0,1,0],"insVec":[0,0,-1],"insPoint":[7,8,9]},)"
        R"({"id":3,"class":"HxDbOther"},)"
        R"({"id":4,"class":"HxDbTubeWeld"})",
        R"("project":{"weldColor":30},)"));
    auto& balloon = model.get<HxDbBalloon>(2);
    EXPECT_STREQ(balloon.getDisplayName(), "d");
    EXPECT_STREQ(model.node(2).getName(), "n");
    EXPECT_EQ(balloon.getOwnerId(), HxDbObjectId(3));
    EXPECT_STREQ(balloon.getStandard(), "s");
    EXPECT_EQ(balloon.getColorIdx(), 7);
    EXPECT_STREQ(balloon.getObjectName(), "o");
    EXPECT_STREQ(balloon.getNo(), "12");
    EXPECT_EQ(balloon.getInsNo(), 3);
    EXPECT_EQ(balloon.getRefNo(), 4);
    EXPECT_TRUE(balloon.getInspt().isEqualTo({7, 8, 9}));
    EXPECT_TRUE(balloon.getInsvec().isEqualTo({0, 0, -1}));
    EXPECT_TRUE(balloon.getRefvec().isEqualTo({0, 1, 0}));
    short color = 0;
    EXPECT_TRUE(smrtln::getCurrentWeldConfigColor(&model.get<HxDbTubeWeld>(4), color));
    EXPECT_EQ(color, 30);
    balloon.openForWrite(1);
    balloon.setColorIdx(5);
    EXPECT_EQ(balloon.getColorIdx(), 5);
}

TEST(Objects, KindsByMemberClassAndItem) {
    LoadedModel model(fileWith(R"({"id":2,"class":"HxDbPipeSpec"},{"id":3,"class":"HxDbNozzleModel"},)"
                               R"({"id":4,"class":"HxDbTubeModelSpec","attrs":{"item":"OLET"}},)"
                               R"({"id":5,"class":"HxDbTubeModelSpec","attrs":{"item":"BOSS"}},)"
                               R"({"id":6,"class":"HxDbTubeModelSpec","kind":"valve"},)"
                               R"({"id":7,"class":"HxDbPipeSpec","kind":"none"},)"
                               R"({"id":8,"class":"HxDbTubeModelSpec","kind":"virtualGasket","attrs":{"item":"OLET"}},)"
                               R"({"id":9,"class":"HxDbTubeModelSpec","attrs":{"item":"ELBOW"}})"));
    const auto at = [&](std::int64_t id) { return &model.get<HxDbObject>(id); };
    EXPECT_TRUE(smrtln::isPipe(at(2)));
    EXPECT_TRUE(smrtln::isNozzle(at(3)));
    EXPECT_TRUE(smrtln::isOlet(at(4)));
    EXPECT_TRUE(smrtln::isBoss(at(5)));
    bool flag = false;
    EXPECT_TRUE(smrtln::isValve(at(6), flag));
    EXPECT_TRUE(flag);
    EXPECT_FALSE(smrtln::isPipe(at(7)));
    EXPECT_FALSE(smrtln::isValve(at(7), flag));
    EXPECT_FALSE(flag);
    EXPECT_TRUE(smrtln::isGaskVirtual(at(8)));
    EXPECT_FALSE(smrtln::isGask(at(8)));
    EXPECT_FALSE(smrtln::isOlet(at(8)));
    EXPECT_FALSE(smrtln::isBend(at(9)));
    EXPECT_FALSE(smrtln::isPipe(at(1))) << "a manager is no part";
    EXPECT_FALSE(smrtln::isFlan(nullptr));
}

TEST(Objects, SpecificationsBoltsAndSupports) {
    LoadedModel model(fileWith(
        R"({"id":2,"class":"HxDbTubeModelSpec","spec":10,"bolts":12,"attrs":{"specid":"11","size1":"80"}},)"
        R"({"id":3,"class":"HxDbTubeModelSpec","attrs":{"specid":"11.9","specname":"S","size":"25","end":"FL"}},)"
        R"({"id":4,"class":"HxDbTubeModelSpec","attrs":{"specid":"1","size1":100}},)"
        R"({"id":5,"class":"HxDbSupportModel","supItem":16,"no":"Z1"},)"
        R"({"id":10,"class":"HxDbTubeSpecification","ends":[{"size":"50","endType":"BW","outer":60.3,"inner":53,)"
        R"("section":2},{"size":"40","inner":30}]},{"id":11,"class":"HxDbTubeSpecification"},)"
        R"({"id":12,"class":"HxDbBoltNutModel","bolt":13,"nut":14,"flange":15},)"
        R"({"id":13,"class":"HextBolt","cname":"c","type":"t","spec":"M16","stan":"st","material":"m","unit":3,)"
        R"("standard":"GB","boltSpec":"b","note":"n","weight":1.5,"price":2.5,"sortNo":4},)"
        R"({"id":14,"class":"HextNut","note":"nn","weight":0.5},)"
        R"({"id":15,"class":"HxDbFlan2BoltNut","boltNum":8,"nutNum":16,"bolt":13,"size":"100","std":"HG","endType":)"
        R"("RF","rating":"16","unit":"mm"},{"id":16,"class":"HxDbSupportItem","type":"T","stan":"S"})"));
    auto& part = model.get<HxDbTubeModelSpec>(2);
    EXPECT_EQ(part.getSpec(), &model.get<HxDbTubeSpecification>(10));
    EXPECT_STREQ(smrtln::getSize(&part, 1), "80") << "the attribute before the specification";
    EXPECT_STREQ(smrtln::getSize(&part, 2), "40");
    EXPECT_EQ(smrtln::getSize(&part, 3), nullptr);
    EXPECT_STREQ(smrtln::getEndType(&part, 1), "BW");
    EXPECT_EQ(smrtln::getEndType(&part, 2), nullptr);
    auto& byAttribute = model.get<HxDbTubeModelSpec>(3);
    EXPECT_EQ(byAttribute.getSpec(), &model.get<HxDbTubeSpecification>(11)) << "read as a number and cut";
    EXPECT_STREQ(byAttribute.getSpecName(), "S");
    EXPECT_STREQ(smrtln::getSize(&byAttribute, 1), "25");
    EXPECT_STREQ(smrtln::getEndType(&byAttribute, 4), "FL");
    EXPECT_EQ(model.get<HxDbTubeModelSpec>(4).getSpec(), nullptr) << "of another class";
    EXPECT_STREQ(smrtln::getSize(&model.get<HxDbTubeModelSpec>(4), 1), "100") << "a number reads as its text";

    double outer = -1;
    double inner = -1;
    int section = -1;
    EXPECT_TRUE(smrtln::getOutDia("", part.getSpec(), outer, inner, section, 1, 48));
    EXPECT_EQ(outer, 60.3);
    EXPECT_EQ(inner, 53);
    EXPECT_EQ(section, 2);
    EXPECT_FALSE(smrtln::getOutDia("", part.getSpec(), outer, inner, section, 2, 48)) << "no outer diameter";
    EXPECT_FALSE(smrtln::getOutDia("", part.getSpec(), outer, inner, section, 3, 48));
    EXPECT_FALSE(smrtln::getOutDia("", nullptr, outer, inner, section, 1, 48));

    const HxDbBoltNutModel* bolts = smrtln::getAttachBoltNut(&part);
    ASSERT_EQ(bolts, &model.get<HxDbBoltNutModel>(12));
    const HextBolt& bolt = *bolts->getBolt();
    EXPECT_STREQ(bolt.getCname(), "c");
    EXPECT_STREQ(bolt.getType(), "t");
    EXPECT_STREQ(bolt.getSpec(), "M16");
    EXPECT_STREQ(bolt.getStan(), "st");
    EXPECT_STREQ(bolt.getMaterial(), "m");
    EXPECT_STREQ(bolt.getStandard(), "GB");
    EXPECT_STREQ(bolt.getBoltSpec(), "b");
    EXPECT_STREQ(bolt.getBoltNote(), "n");
    EXPECT_EQ(bolt.getUnit(), 3);
    EXPECT_EQ(bolt.getBoltWeight(), 1.5);
    EXPECT_EQ(bolt.getBoltPrice(), 2.5);
    EXPECT_EQ(bolt.getBoltSortno(), 4);
    const HextNut& nut = *bolts->getNut();
    EXPECT_STREQ(nut.getNutNote(), "nn");
    EXPECT_EQ(nut.getNutWeight(), 0.5);
    EXPECT_EQ(nut.getNutPrice(), 0);
    EXPECT_EQ(nut.getCname(), nullptr);
    const HxDbFlan2BoltNut& flange = *bolts->getFlanIdx();
    EXPECT_EQ(flange.getBoltNum(), 8);
    EXPECT_EQ(flange.getNutNum(), 16);
    EXPECT_EQ(flange.getBolt(), &bolt);
    EXPECT_STREQ(flange.getFlanSize(), "100");
    EXPECT_STREQ(flange.getFlanStd(), "HG");
    EXPECT_STREQ(flange.getFlanEndType(), "RF");
    EXPECT_STREQ(flange.getFlanRating(), "16");
    EXPECT_STREQ(flange.getFlanUnit(), "mm");
    auto& support = model.get<HxDbSupportModel>(5);
    EXPECT_STREQ(support.getSupItem()->getType(), "T");
    EXPECT_STREQ(support.getSupItem()->getStan(), "S");
    EXPECT_STREQ(support.getSupNo(), "Z1");
}

TEST(Objects, TheLowestIdIsOneAsATextToo) {
    LoadedModel model(R"({"format":"tessaro-plant","version":1,"databases":[{"name":"D"}],"objects":[)"
                      R"({"id":1,"class":"HxDbTubeSpecification"},)"
                      R"({"id":2,"class":"HxDbTubeModelSpec","attrs":{"specid":"1"}}]})");
    EXPECT_EQ(model.get<HxDbTubeModelSpec>(2).getSpec(), &model.get<HxDbTubeSpecification>(1));
}

TEST(Objects, Insulation) {
    LoadedModel model(
        fileWith(R"({"id":2,"class":"HxDbPipeSpec","insulation":{"thickness":50,"material":"wool","code":"H"}},)"
                 R"({"id":3,"class":"HxDbPipeSpec","insulation":{}},{"id":4,"class":"HxDbPipeSpec"})"));
    double thickness = -1;
    std::string material = "x";
    std::string code = "x";
    smrtln::getInsulation(&model.get<HxDbPipeSpec>(2), thickness, material);
    modeling::get_tube_insulcode(&model.get<HxDbPipeSpec>(2), code);
    EXPECT_EQ(thickness, 50);
    EXPECT_EQ(material, "wool");
    EXPECT_EQ(code, "H");
    for (const std::int64_t id : {3, 4}) {
        smrtln::getInsulation(&model.get<HxDbPipeSpec>(id), thickness, material);
        modeling::get_tube_insulcode(&model.get<HxDbPipeSpec>(id), code);
        EXPECT_EQ(thickness, 0);
        EXPECT_EQ(material, "");
        EXPECT_EQ(code, "");
    }
}

TEST(Objects, PipelinesBranchesAndRuns) {
    LoadedModel model(fileWith(
        R"({"id":2,"class":"HextPipeline","branches":[[10,11],[],[12]],"runs":[{"name":"B","items":[12,10],)"
        R"("attrs":{"k":"v"}},{"name":"A"}]},{"id":3,"class":"HextPipeline","start":11},)"
        R"({"id":4,"class":"HextPipeline"},{"id":5,"class":"HextPipeline","branches":[[13]]},)"
        R"({"id":10,"class":"HxDbPipeSpec"},{"id":11,"class":"HxDbPipeSpec"},{"id":12,"class":"HxDbPipeSpec"},)"
        R"({"id":13,"class":"HxDbEquipment"})"));
    EXPECT_EQ(smrtln::getPipelineStart(HxDbObjectId(2)), &model.get<HxDbTubeModel>(10));
    EXPECT_EQ(smrtln::getPipelineStart(HxDbObjectId(3)), &model.get<HxDbTubeModel>(11));
    EXPECT_EQ(smrtln::getPipelineStart(HxDbObjectId(4)), nullptr);
    EXPECT_EQ(smrtln::getPipelineStart(HxDbObjectId(5)), nullptr) << "no tube model";
    EXPECT_EQ(smrtln::getPipelineStart(HxDbObjectId(99)), nullptr);

    std::vector<std::vector<HxDbObjectId>> branches(7);
    smrtln::getBranchOfPipeline_piping(HxDbObjectId(2), branches);
    ASSERT_EQ(branches.size(), 3U);
    EXPECT_EQ(numbersOf(branches[0]), (Numbers{10, 11}));
    EXPECT_TRUE(branches[1].empty());
    smrtln::getBranchOfPipeline_piping(HxDbObjectId(4), branches);
    EXPECT_TRUE(branches.empty());

    smrtln::PipeRuns runs;
    smrtln::PipeRunParams params;
    ASSERT_TRUE(smrtln::getPiperunOfPipeline(HxDbObjectId(2), runs, params, 65));
    ASSERT_EQ(runs.size(), 2U);
    EXPECT_EQ(runs[0].first, "B") << "in file order";
    EXPECT_EQ(numbersOf(runs[0].second), (Numbers{12, 10}));
    ASSERT_EQ(params["B"].size(), 1U);
    EXPECT_EQ(params["B"][0].key, "k");
    EXPECT_TRUE(params["A"].empty());
    EXPECT_FALSE(smrtln::getPiperunOfPipeline(HxDbObjectId(3), runs, params, 65));
    EXPECT_TRUE(runs.empty() && params.empty());
}

TEST(Objects, UnavailableOnesDoNotOpen) {
    LoadedModel model(fileWith(R"({"id":2,"class":"HextEquipe","in":1},)"
                               R"({"id":3,"class":"HxDbPipeSpec","in":2,"available":false},)"
                               R"({"id":4,"class":"HxDbPipeSpec","in":2,"spec":5,"points":[{"no":1,"at":[0,0,0],)"
                               R"("to":3}]},{"id":5,"class":"HxDbTubeSpecification"})"));
    HxDbObject* object = &model.get<HxDbObject>(2);
    EXPECT_NE(hxdbOpenObject(HxDbObjectId(3), object, 3), Hext::eOk);
    EXPECT_EQ(object, nullptr);
    EXPECT_EQ(model.node(3).getTreeNodeValue(), HxDbObjectId(3)) << "its node opens";
    auto& part = model.get<HxDbPipeSpec>(4);
    std::vector<HxDbObject*> found;
    part.getAllConnObject(found);
    EXPECT_TRUE(found.empty());
    EXPECT_EQ(part.getConnSmrtln(1), nullptr);
    getAllSubObjects(&model.node(2), found);
    EXPECT_EQ(numbersOf(found), Numbers{4});
    EXPECT_NE(part.getSpec(), nullptr);
    plant::makeUnavailable(model.model(), 5);
    EXPECT_EQ(part.getSpec(), nullptr);
    EXPECT_EQ(numbersOf(model.get<HextEquipe>(2).getMemberIds()), (Numbers{3, 4}));
}

// Samples that the palette's rule gives.
TEST(Palette, FollowsItsRule) {
    const auto rgb = [](unsigned r, unsigned g, unsigned b) { return r | g << 8U | b << 16U; };
    const std::pair<int, unsigned> samples[] = {
        {0, rgb(128, 128, 128)}, {1, rgb(255, 0, 0)},      {4, rgb(0, 255, 255)},    {7, rgb(255, 255, 255)},
        {9, rgb(192, 192, 192)}, {10, rgb(255, 0, 0)},     {11, rgb(255, 127, 127)}, {20, rgb(255, 63, 0)},
        {22, rgb(204, 51, 0)},   {50, rgb(255, 255, 0)},   {90, rgb(0, 255, 0)},     {249, rgb(76, 38, 47)},
        {250, rgb(51, 51, 51)},  {255, rgb(255, 255, 255)}};
    for (const auto& [index, expected] : samples) {
        EXPECT_EQ(hxcad::transAcadColorIdx2RGB(index), expected) << index;
    }
    EXPECT_EQ(hxcad::transAcadColorIdx2RGB(256), 0U);
    EXPECT_EQ(hxcad::getInverseColor(30), 225);
}

}  // namespace
