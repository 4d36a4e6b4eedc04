#include "hextinterface/manager/register/cleaned_texts.h"
#include "manager/fixture.h"
#include "tolmar/color.h"

namespace {

constexpr auto component = "HxDbTubeModelSpec";

TEST_F(NameTest, FixedNames) {
    EXPECT_EQ(names.joints.getWeldSpecName(0), "SPWL_COMP");
    EXPECT_EQ(names.joints.getWeldSpecName(1), "SPWL_NOZZLE");
    EXPECT_EQ(names.joints.getWeldSpecName(2), "SPWL_SUPPORT");
    EXPECT_EQ(names.joints.getWeldSpecName(-1), "SPWL_COMP");
    EXPECT_EQ(names.joints.getCocoName("SW", "BW"), "ORNA_BW_SW");
    EXPECT_EQ(names.joints.getCocoName("BW", "BW"), "ORNA_BW_BW");
    EXPECT_EQ(names.owners.getDbZoneName(ExportDb::EquipStru), "ZONE_EQUIP_STRUCTURE");
    EXPECT_EQ(names.owners.getDbZoneName(ExportDb::Common), "ZONE_");
    EXPECT_EQ(names.owners.getDbZoneName(static_cast<ExportDb>(-1)), "ZONE_");
    EXPECT_EQ(names.owners.getDbTitle(ExportDb::Spec), "Spec");
    EXPECT_EQ(names.owners.getColourName(TlCmColor::byIndex(255)), "255");
    EXPECT_EQ(failureOf([&] { names.owners.getColourName(TlCmColor::byIndex(0)); }), "不支持的颜色值！0");
    EXPECT_EQ(failureOf([&] { names.owners.getColourName(TlCmColor::byIndex(256)); }), "不支持的颜色值！256");
}

TEST_F(NameTest, InsulationWidensTheRecordOfItsKey) {
    add(2, "HextPipeline", {{"insulcode", "BW"}, {"destemp", "常温"}});
    add(3, "HextPipeline", {{"destemp", "-12.9"}});
    const auto insulation = R"("insulation":{"thickness":40.5,"material":"wool","code":"BW"})";
    add(10, component, {{"lineno", "2"}, {"size1", "50.9"}, {"material", "first"}}, insulation);
    add(11, component, {{"lineno", "3"}, {"size1", "80"}, {"material", "second"}}, insulation);
    EXPECT_EQ(names.insulation.getInsulScomName(at(10)), "INS_BW_40-SC");
    EXPECT_EQ(names.insulation.getInsulMtsetName(at(11)), "INS_BW_40-MT");
    EXPECT_EQ(names.insulation.getInsulShortName(at(10)), "BW_40-SP");
    EXPECT_EQ(names.insulation.getInsulSpcoName(at(11)), "BW/BW_40-SP");
    EXPECT_EQ(names.insulation.getInsulSpecName(""), "_");
    ASSERT_EQ(names.insulation.getInsulTable().size(), 1U);
    const auto& [key, record] = *names.insulation.getInsulTable().begin();
    EXPECT_EQ(key, "BW_40");
    EXPECT_EQ(record.minSize, 50);
    EXPECT_EQ(record.maxSize, 80);
    EXPECT_EQ(record.minTemperature, -12);
    EXPECT_EQ(record.maxTemperature, 25);
    EXPECT_EQ(record.material, "first");
}

TEST_F(NameTest, InsulationThatIsNotToldIsRefused) {
    add(2, "HextPipeline", {{"insulcode", "BW"}, {"destemp", "60"}});
    add(3, "HextPipeline", {{"insulcode", "BW"}, {"destemp", "-1000"}});
    const auto thick = R"("insulation":{"thickness":40})";
    add(10, component, {{"lineno", "2"}, {"size1", "50*25"}}, thick);
    add(11, component, {{"lineno", "99"}, {"size1", "50"}}, thick);
    add(12, component, {{"lineno", "2"}, {"size1", "50"}});
    add(13, component, {{"lineno", "2"}, {"size1", "0.5"}}, thick);
    add(14, component, {{"lineno", "3"}, {"size1", "50"}}, thick);
    add(15, component, {{"lineno", "2"}, {"size1", "1e300"}}, thick);
    const auto failure = [&](int id) {
        ui.printed.clear();
        return failureOf([&] { names.insulation.registerInsulation(at(id)); });
    };
    EXPECT_EQ(failure(10), "不支持的尺寸类型");
    EXPECT_EQ(failure(11), "保温代号为空");
    EXPECT_EQ(ui.printed, "\nerrId:11\n");
    EXPECT_EQ(failure(12), "保温元件保温厚度为0");
    EXPECT_EQ(ui.printed, "\nerrId:12 size1:50 destemp:60\n");
    EXPECT_EQ(failure(13), "保温信息错误");
    EXPECT_EQ(failure(14), "保温信息错误");
    EXPECT_EQ(failure(15), "保温信息错误");
    EXPECT_TRUE(names.insulation.getInsulTable().empty());
}

TEST_F(NameTest, BoltsGoByTheirFlangeAndType) {
    const FlangeData flange{"M16", "HG", "RF", "150", "", 50};
    const FlangeData bare{"", "HG", "", "", "", 50};
    add(10, "HxDbBoltNutModel", {});
    EXPECT_EQ(names.bolts.getBoltObjectName(at(10)), "BOLT_10");
    EXPECT_EQ(names.bolts.getBoltKeyName(flange), "ABABBABB");
    EXPECT_EQ(names.bolts.getBoltKeyName(bare), "__AB_AB_");
    EXPECT_EQ(names.bolts.getBoltStype(flange, "STUD"), "BB");
    EXPECT_EQ(names.bolts.getBoltStype(flange, ""), "BC");
    EXPECT_EQ(names.bolts.getBoltStype(bare, "STUD"), "BD");
    EXPECT_EQ(names.bolts.getBoltStype(flange, "STUD"), "BB");
    EXPECT_EQ(names.bolts.getBoltShortName(flange, ""), "BC_2-SP");
    EXPECT_EQ(names.bolts.getBoltSpcoName("S", flange, "STUD"), "BOLT_S/BB_2-SP");
    EXPECT_EQ(names.bolts.getBoltItemName("S", flange, "STUD"), "BOLT_S_BB_2");
    EXPECT_EQ(names.bolts.getBoltDtsetName(flange), "ABABBABB_B-DT");
    EXPECT_EQ(names.bolts.getNutMtsetName(flange), "ABABBABB_N-MT");
    EXPECT_EQ(names.find("ABABBABB_N-MT")->kind, NameKind::Dtset);
}

TEST_F(NameTest, EqualNamesOfPipesSitesAndZonesDrawFromOneCounter) {
    for (const auto& [id, lineno] :
         {std::pair(2, "L1"), std::pair(3, "L1"), std::pair(4, "L1_1"), std::pair(5, "L1")}) {
        add(id, "HextPipeline", {{"lineno", lineno}});
    }
    add(6, "HextSite", {}, R"("name":"A B")");
    add(7, "HextSite", {}, R"("name":"AB")");
    add(8, "HextZone", {}, R"("name":"A  B")");
    EXPECT_EQ(names.owners.getPipeName(object(2)), "L1");
    EXPECT_EQ(names.owners.getPipeName(object(3)), "L1_0");
    EXPECT_EQ(names.owners.getSiteName(object(6)), "ORNA_SITE_AB");
    EXPECT_EQ(names.owners.getZoneName(object(8)), "ORNA_ZONE_AB");
    EXPECT_EQ(names.owners.getPipeName(object(4)), "L1_1");
    EXPECT_EQ(names.owners.getPipeName(object(5)), "L1_1");  // what comes out is not tested again
    EXPECT_EQ(names.owners.getSiteName(object(7)), "ORNA_SITE_AB2");
    EXPECT_EQ(names.owners.getPipeName(object(3)), "L1_0");
}

TEST_F(NameTest, ManyPipesOfOneLineNumber) {
    constexpr int count = 200000;
    for (int i = 0; i < count; ++i) {
        add(2 + i, "HextPipeline", {{"lineno", "L"}});
    }
    for (int i = 0; i < count; ++i) {
        names.owners.getPipeName(object(2 + i));
    }
    EXPECT_EQ(names.owners.getPipeName(object(2 + count - 1)), "L_" + std::to_string(count - 2));
}

class BranchTest : public NameTest {
protected:
    BranchTest() {
        add(2, "HextPipeline", {{"lineno", "P"}});
        for (int id = 10; id < 20; ++id) {
            add(id, id < 13 ? "HxDbTubeStop" : component, {{"lineno", "2"}, {"item", "TEE"}});
        }
    }
};

TEST_F(BranchTest, BranchesOfAPipeAreCounted) {
    EXPECT_EQ(names.branches.createBranchName(list({13, 14})), "P-B1");
    EXPECT_EQ(names.branches.createBranchName(list({13, 15})), "P-B1");
    EXPECT_EQ(failureOf([&] { names.branches.getBranchNameOf(at(15)); }), "15未找到分支");
    EXPECT_EQ(names.branches.createBranchName(list({16, 15, 14})), "P-B1");  // the last component has one
    EXPECT_EQ(failureOf([&] { names.branches.getBranchNameOf(at(16)); }), "16未找到分支");
    names.addUdaName("P-B2");
    EXPECT_EQ(names.branches.createBranchName(list({16})), "P-B3");
    EXPECT_EQ(names.find("P-B3")->kind, NameKind::Branch);
    EXPECT_EQ(names.branches.createBranchName({}), "");
    EXPECT_NE(root.read("export.log").find("不存在任何管件！"), std::string::npos);
}

TEST_F(BranchTest, LongPipeNamesShareTheCounterOfTheirStem) {
    const std::string stem(46, 'p');
    add(3, "HextPipeline", {{"lineno", (stem + "1").c_str()}});
    add(4, "HextPipeline", {{"lineno", (stem + "2").c_str()}});
    add(30, component, {{"lineno", "3"}});
    add(40, component, {{"lineno", "4"}});
    EXPECT_EQ(names.branches.createBranchName(list({30})), stem + "-B1");
    EXPECT_EQ(names.branches.createBranchName(list({40})), stem + "-B2");
}

TEST_F(BranchTest, ComponentsMoveToAnotherBranch) {
    names.branches.createBranchName(list({13, 14}));
    names.branches.createBranchName(list({15, 16}));
    names.branches.addToBranch("P-B2", {});
    names.branches.addToBranch("P-B2", list({13, 17, 16}));
    EXPECT_EQ(names.branches.getBranchNameOf(at(13)), "P-B1");
    names.branches.addToBranch("P-B1", list({13, 17}));
    EXPECT_EQ(failureOf([&] { names.branches.getBranchNameOf(at(17)); }), "17未找到分支");
    names.branches.addToBranch("P-B2", list({13, 17}));
    EXPECT_EQ(names.branches.getBranchNameOf(at(13)), "P-B2");
    EXPECT_EQ(names.branches.getBranchNameOf(at(17)), "P-B2");
    EXPECT_EQ(failureOf<RunException>([&] { names.branches.addToBranch("none", list({18})); }),
              "none 命名不是来之命名类！");
}

TEST_F(BranchTest, StopsMeetNothingAsLongAsThePlatformTellsNothing) {
    names.branches.createBranchName(list({10, 13, 11}));
    EXPECT_EQ(names.branches.matchTubeStop(at(12)), nullptr);
    EXPECT_EQ(names.branches.matchTubeStop(at(13)), nullptr);
}

// A matching pair, and pairs that differ in one thing each.
TEST(BranchStops, MeetAsTheTwoEndsOfOnePlace) {
    const naming::BranchStop head{7, 1, "CW", {100, 200, 300}, {1, 0, 0}};
    naming::BranchStop tail{7, 2, "CW", {100, 200, 300.0009}, {-2, 0, 0}};
    EXPECT_TRUE(naming::meets(head, tail));
    EXPECT_TRUE(naming::meets(tail, head));
    EXPECT_FALSE(naming::meets(head, head));
    const auto without = [&](auto change) {
        naming::BranchStop other = tail;
        change(other);
        return naming::meets(head, other) || naming::meets(other, head);
    };
    EXPECT_FALSE(without([](auto& stop) { stop.number = 8; }));
    EXPECT_FALSE(without([](auto& stop) { stop.endTag = 0; }));
    EXPECT_FALSE(without([](auto& stop) { stop.text = "cw"; }));
    EXPECT_FALSE(without([](auto& stop) { stop.position.z = 300.0011; }));
    EXPECT_FALSE(without([](auto& stop) { stop.direction = {1, 0.1, 0}; }));
    EXPECT_FALSE(naming::meets({}, {}));
}

TEST_F(BranchTest, MembersAreCountedByBranchAndType) {
    EXPECT_EQ(failureOf([&] { names.branches.getMemberName(at(13)); }), "13未找到分支");
    names.branches.createBranchName(list({13, 14}));
    names.branches.createBranchName(list({15}));
    EXPECT_EQ(names.branches.getMemberName(at(13)), "PCOM 1 of BRANCH /P-B1");
    EXPECT_EQ(names.branches.getMemberName(at(14)), "PCOM 2 of BRANCH /P-B1");
    EXPECT_EQ(names.branches.getMemberName(at(15)), "PCOM 1 of BRANCH /P-B2");
    names.branches.addToBranch("P-B2", list({13}));
    EXPECT_EQ(names.branches.getMemberName(at(13)), "PCOM 1 of BRANCH /P-B1");  // as first named
}

TEST_F(NameTest, OwnersGiveCleanNames) {
    add(2, "HextSupport", {}, R"("name":"S 1 (a)/b")");
    add(10, component, {{"owner", "2"}, {"eqno", " E\\t1,2"}});
    add(11, component, {{"owner", "10"}});
    add(12, "HxDbNozzleModel", {}, R"("no":"N 1")");
    EXPECT_EQ(names.owners.getSupportName(at(10)), "S1_a__b");
    EXPECT_EQ(names.owners.getSupportName(at(11)), "");
    EXPECT_EQ(names.owners.getEqnoName(at(10)), "E_1_2");
    EXPECT_EQ(names.owners.getNozzleName(at(12)), "N_1");
    std::string all = "a~`*^()+='\",./\\|?\r\nz-_<>#";
    cleanName(all);
    EXPECT_EQ(all, "a" + std::string(18, '_') + "z-_<>#");
}

TEST(EquipmentNames, AreBoundOnce) {
    NameManager names;
    const auto bind = [&](int id, const char* base, const char* final) {
        return failureOf([&] { names.equipment.registerEquipName(HxDbObjectId(id), base, final); });
    };
    EXPECT_EQ(bind(1, "P", "P_1"), "none");
    EXPECT_EQ(bind(1, "Q", "P_1"), "设备命名冲突");
    EXPECT_EQ(bind(2, "P", "P_1"), "设备命名冲突");
    EXPECT_EQ(bind(2, "Q", "P_1"), "none");
    EXPECT_TRUE(names.equipment.hasEquipName("P"));
    EXPECT_EQ(bind(1, "P", "P_2"), "none");  // binds anew, which frees the pair
    EXPECT_EQ(names.equipment.getBoundEquipNo(HxDbObjectId(1)), "P_2");
    EXPECT_EQ(bind(3, "P", "P_1"), "none");
    EXPECT_EQ(bind(1, "R", "R_1"), "none");
    EXPECT_EQ(bind(3, "R", "R_2"), "none");
    EXPECT_FALSE(names.equipment.hasEquipName("P"));
    EXPECT_EQ(names.equipment.getBoundEquipNo(HxDbObjectId(9)), "");
}

}  // namespace
