#include "manager/fixture.h"

namespace {

constexpr auto component = "HxDbTubeModelSpec";

TEST_F(NameTest, AComponentSpellsItsAttributes) {
    add(10, component,
        {{"specname", "S1"},
         {"item", "TEE"},
         {"itype", "A"},
         {"end1", "BW"},
         {"end3", "SW"},
         {"size1", "50"},
         {"size2", "50"},
         {"size3", "25"},
         {"sch", "40"}});
    add(11, component,
        {{"specname", "S1"},
         {"item", "TEE"},
         {"itype", "A"},
         {"end1", "BW"},
         {"end3", "SW"},
         {"size1", "50"},
         {"size2", "50"},
         {"size3", "25"},
         {"sch", "40"},
         {"note", "other"}});
    add(12, component, {{"specname", "S2"}, {"item", "TEE"}, {"rating", "150"}, {"angle", "90"}, {"thick", "3"}});
    // Empty attributes keep "A", but an empty size has a code like any other.
    EXPECT_EQ(names.components.getComponentName(at(10)), "ORNA_ABABAB_BACA_ABABACAD_AABAAR");
    EXPECT_EQ(&names.components.getComponentName(at(11)), &names.components.getComponentName(at(10)));
    EXPECT_EQ(names.components.getComponentName(at(12)), "ORNA_ACABAA_AAAA_ADADADAD_BAAABR");
    EXPECT_EQ(names.components.getScomName(at(10)), "ORNA_ABABAB_BACA_ABABACAD_AABAAR-SC");
    EXPECT_EQ(names.components.getGmsetName(at(10)), "ORNA_ABABAB_BACA_ABABACAD_AABAAR-GM");
    EXPECT_EQ(names.components.getPtsetName(at(10)), "ORNA_ABABAB_BACA_ABABACAD_AABAAR-PT");
    EXPECT_EQ(names.components.getDtsetName(at(10)), "ORNA_ABABAB_BACA_ABABACAD_AABAAR-DT");
    EXPECT_EQ(names.components.getMtsetName(at(11)), "ORNA_ABABAB_BACA_ABABACAD_AABAAR-MT");
    EXPECT_EQ(names.find("ORNA_ABABAB_BACA_ABABACAD_AABAAR")->kind, NameKind::Component);
}

TEST_F(NameTest, BendsSpellTwoEndsAndTheirRadiusHosesOneEnd) {
    add(10, component,
        {{"item", "ELBOW"},
         {"end1", "BW"},
         {"end2", "BW"},
         {"end3", "SW"},
         {"size1", "50"},
         {"size2", "50"},
         {"radius", "75"},
         {"angle", "90"}});
    add(11, component, {{"item", "PIPE"}, {"smrtln", "Arc"}, {"angle", "45"}});
    add(12, component, {{"item", "TUBE"}, {"end1", "BW"}, {"end2", "SW"}, {"size1", "50"}, {"size2", "25"}},
        R"("kind":"hose")");
    EXPECT_EQ(names.components.getComponentName(at(10)), "ORNA_AAABAA_BB_ABAB_AAAAA_ABABR");
    EXPECT_EQ(names.components.getComponentName(at(11)), "ORNA_AAACAA_AAAA_ACACACAC_AAAAA_AAACR");
    EXPECT_EQ(names.components.getComponentName(at(12)), "ORNA_AAADAA_B_AB_AAAAA___R");
}

TEST_F(NameTest, NozzlesGoByWhatTellsThemApart) {
    add(10, "HxDbNozzleModel", {{"skey", "N"}, {"eqno", "E1"}, {"nozno", "1"}, {"end", "FL"}, {"sch", "40"}});
    add(11, "HxDbNozzleModel", {{"skey", "N"}, {"eqno", "E1"}, {"nozno", "1"}, {"end", "FL"}, {"sch", "80"}});
    add(12, "HxDbNozzleModel", {{"skey", "N"}, {"eqno", "E1"}, {"nozno", "2"}, {"size", "50"}, {"rating", "150"}});
    EXPECT_EQ(names.components.getComponentName(at(10)), "ORNA_AAB");
    EXPECT_EQ(names.components.getComponentName(at(11)), "ORNA_AAB");
    EXPECT_EQ(names.components.getComponentName(at(12)), "ORNA_AAC");
    EXPECT_EQ(names.components.getSpecName(at(12)), "NOZZLEB_50_150");
    EXPECT_EQ(names.components.getSpecName(at(10)), "NOZZLEC__");
    EXPECT_EQ(names.components.getSpcoName(at(12)), "NOZZLEB_50_150/_B-SP");
}

TEST_F(NameTest, WeldsAndBalloonsHaveNamesOfTheirOwn) {
    add(10, "HxDbTubeWeld", {{"size", "50"}, {"size1", "50"}, {"stype", "BW"}});
    add(11, "HxDbTubeWeld", {{"stype", "SW"}, {"size1", "50"}, {"size2", "99"}});
    add(12, "HxDbBalloon", {}, R"("points":[{"no":1,"at":[0,0,0],"to":10}])");
    add(13, "HxDbBalloon", {});
    EXPECT_EQ(names.components.getComponentName(at(10)), "ORNA_AB_BW");
    EXPECT_EQ(names.components.getComponentName(at(11)), "ORNA____SW");
    EXPECT_EQ(names.components.getSpecName(at(10)), "50_BW");
    EXPECT_EQ(names.components.getStype(at(10)), "WELDB");
    EXPECT_EQ(names.components.getStype(at(11)), "WELDB");  // only the first size of a weld counts
    EXPECT_EQ(names.components.getSpcoName(at(11)), "_SW/Weld_B-SP");
    EXPECT_EQ(names.components.getComponentName(at(12)), "ORNA_AB");
    EXPECT_EQ(names.components.getSpcoShortName(at(12)), "AB-SP");
    EXPECT_EQ(names.components.getSpecName(at(12)), "BALLOON");
    EXPECT_EQ(names.components.getStype(at(12)), "INST");
    EXPECT_EQ(failureOf([&] { names.components.getComponentName(at(13)); }), "仪表泡未连接对象");
    EXPECT_EQ(ui.printed, "Error:<13>仪表泡未连接对象");
}

TEST_F(NameTest, StemsAreCutInFrontOfTheirSuffix) {
    const std::string tail(38, 'x'), longer(39, 'x');
    add(10, "HxDbTubeWeld", {{"size", "50"}, {"stype", tail.c_str()}});
    add(11, "HxDbTubeWeld", {{"size", "50"}, {"stype", longer.c_str()}});
    EXPECT_EQ(names.components.getScomName(at(10)), "ORNA_AB_" + tail + "-SC");
    EXPECT_EQ(names.components.getComponentName(at(11)), "ORNA_AB_" + longer);
    EXPECT_EQ(&names.components.getScomName(at(11)), &names.components.getScomName(at(10)));
    EXPECT_EQ(names.components.getScomName(at(11)).size(), 49U);
}

TEST_F(NameTest, CatalogueAndSectionNames) {
    add(10, component, {{"item", "TEE"}}, R"("standard":"GB1")");
    add(11, component, {}, R"("kind":"valve")");
    add(12, "HxDbNozzleModel", {});
    add(13, component, {}, R"("kind":"virtualGasket")");
    EXPECT_EQ(names.components.getCataName(at(10)), "CATA_ORNA_AB");
    EXPECT_EQ(names.components.getCataName(at(11)), "CATA_ORNA_VALVE");
    EXPECT_EQ(names.components.getCataName(at(12)), "CATA_ORNA_NOZZLE");
    EXPECT_EQ(names.components.getCataName(at(13)), "CATA_ORNA___");
    EXPECT_EQ(names.components.getSectionName(at(10)), "SEC_ORNA_AB");
    EXPECT_EQ(names.components.getSectionName(at(11)), "SEC_ORNA___");
}

TEST_F(NameTest, CountersGoByItemAndGtype) {
    add(10, component, {{"item", "ELBOW"}, {"specname", "S"}});
    add(11, component, {{"item", "ELBOW"}, {"specname", "S"}, {"sch", "40"}});
    add(12, component, {{"item", "TEE"}, {"specname", "S"}});
    add(13, "HxDbSupportModel", {{"item", "TEE"}, {"specname", "S"}});
    EXPECT_EQ(names.components.getSpcoName(at(10)), "S/ELBOW_B-SP");
    EXPECT_EQ(names.components.getSpcoName(at(11)), "S/ELBOW_C-SP");
    EXPECT_EQ(names.components.getSpcoName(at(12)), "S/TEE_B-SP");
    EXPECT_EQ(names.components.getSpcoName(at(13)), "SUP_LIST/TEE_B-SP");  // the key of 12, another specification
    EXPECT_EQ(names.components.getSpcoName(at(10)), "S/ELBOW_B-SP");
    EXPECT_EQ(names.components.getStype(at(12)), "PCOMB");
    EXPECT_EQ(names.components.getStype(at(10)), "PCOMC");
    EXPECT_EQ(names.components.getStype(at(12)), "PCOMB");
}

TEST_F(NameTest, QueriesFindButDoNotInsert) {
    add(10, component, {{"item", "ELBOW"}, {"specname", "S"}});
    EXPECT_EQ(names.components.findScomName(at(10)), "");
    EXPECT_EQ(names.components.findSpcoName(at(10)), "");
    const std::string base = names.components.getComponentName(at(10));
    EXPECT_TRUE(names.isNameKnown("ELBOW_B-SP"));
    EXPECT_FALSE(names.isNameKnown(base + "-SC"));
    EXPECT_EQ(names.components.getScomName(at(10)), base + "-SC");
    EXPECT_EQ(names.components.findScomName(at(10)), base + "-SC");
    EXPECT_EQ(names.components.getSpcoName(at(10)), "S/ELBOW_B-SP");
    EXPECT_EQ(names.components.findSpcoName(at(10)), "S/ELBOW_B-SP");
    names.addUdaName(base + "-DT");
    EXPECT_EQ(names.components.findDtsetName(at(10)), "");
    EXPECT_EQ(names.components.findMtsetName(at(10)), "");
}

TEST_F(NameTest, ATextUnderAnotherKindIsAClash) {
    add(10, component, {{"item", "ELBOW"}, {"specname", "S"}});
    names.addUdaName("S/ELBOW_B-SP");
    names.addUdaName("S");
    EXPECT_EQ(failureOf([&] { names.components.getSpcoName(at(10)); }), "S/ELBOW_B-SP 存在命名冲突！");
    EXPECT_EQ(failureOf([&] { names.components.findSpcoName(at(10)); }), "S/ELBOW_B-SP 存在命名冲突！");
    EXPECT_EQ(names.components.getSpecName(at(10)), "S");  // specification names are not tested
    EXPECT_EQ(names.find("S")->kind, NameKind::Uda);
    EXPECT_EQ(failureOf([&] {
                  names.bolts.getBoltSpecName("x");
                  names.bolts.getBoltSpecName("x");
              }),
              "none");
    names.addUdaName("SEC_ORNA_AB");
    EXPECT_EQ(failureOf([&] { names.components.getSectionName(at(10)); }), "SEC_ORNA_AB 存在命名冲突！");
}

TEST_F(NameTest, AnElementIsCreatedOnce) {
    EXPECT_FALSE(names.isNameCreated("CCTA_1"));
    names.markNameCreated("CCTA_1");
    EXPECT_TRUE(names.isNameCreated("CCTA_1"));
    EXPECT_EQ(failureOf<RunException>([&] { names.markNameCreated("CCTA_1"); }), "CCTA_1 命名已被创建！");
    EXPECT_EQ(failureOf<RunException>([&] { names.markNameCreated("new"); }), "new 命名不是来之命名类！");
    EXPECT_FALSE(names.isNameCreated("new"));
    EXPECT_EQ(failureOf([&] { names.addUdaName("MDB_DESI"); }), "MDB_DESI 命名已存在！");
    EXPECT_EQ(names.find("SITE_CATA")->kind, NameKind::SiteName);
}

TEST_F(NameTest, ATableWithoutCodesLeftNamesTheValue) {
    for (int i = 0; i <= 51; ++i) {
        add(10 + i, component, {{"end1", std::to_string(i).c_str()}});
    }
    for (int i = 0; i < 51; ++i) {
        names.attachments.getPointSetBaseName(at(10 + i));
    }
    EXPECT_EQ(failureOf([&] { names.components.getComponentName(at(61)); }), "51类型数超出预定范围！");
    EXPECT_EQ(names.attachments.getPointSetBaseName(at(60)), "ORNA_z_AB");
}

TEST_F(NameTest, PointSetsAndAttachments) {
    add(10, component, {{"end1", "BW"}, {"size1", "50"}});
    add(11, component, {});
    EXPECT_EQ(names.attachments.getPointSetBaseName(at(10)), "ORNA_B_AB");
    EXPECT_EQ(names.attachments.getPointSetScName(at(10)), "ORNA_B_AB-SC");
    EXPECT_EQ(names.attachments.getPointSetDtName(at(10)), "ORNA_B_AB-DT");
    EXPECT_EQ(names.attachments.getAttaShortName(at(10)), "B_AB-SP");
    EXPECT_EQ(names.attachments.getAttaSpcoName(at(10)), "ATTA_SPEC/B_AB-SP");
    EXPECT_EQ(names.attachments.getAttaStype(at(11)), "ATTAC");
    EXPECT_EQ(names.attachments.getPointSetBaseName(at(11)), "ORNA_C_AC");
}

TEST_F(NameTest, TypesOfObjectsAndWhatIsLost) {
    root.write("temp/hext/config.json",
               R"({"skey":["TEE|##|##|##|##|##|AB","CAP|##|##|##|##|##||"],"type":{"A#":"TEE"}})");
    add(10, "HxDbTubeWeld", {});
    add(11, "HxDbBalloon", {});
    add(12, "HxDbTubeStop", {{"item", "TEE"}});
    add(13, "HxDbNozzleModel", {});
    add(14, component, {{"item", "TEE"}}, R"("kind":"bend")");
    add(15, component, {{"item", "TEE"}, {"end2", "BW"}});
    add(16, component, {{"itype", "I"}, {"end1", "BW"}});
    add(17, component, {{"end1", "BW"}});
    add(18, component, {{"item", "CAP"}});
    const auto types = [&](int id) { return names.types.getSkey(at(id)) + " " + names.types.getGtype(at(id)); };
    EXPECT_EQ(types(10), "WW WELD");
    EXPECT_EQ(types(11), "IDPL INST");
    EXPECT_EQ(types(12), "-121 TEE");
    EXPECT_EQ(types(13), "-31 NOZZLE");
    EXPECT_EQ(types(14), "AB BEND");
    EXPECT_EQ(types(15), "AB TEE");
    names.types.reportLostMappings();
    EXPECT_EQ(ui.printed, "");
    EXPECT_FALSE(root.exists("export.log"));
    EXPECT_EQ(types(16), " ");
    EXPECT_EQ(names.types.getGtype(at(16)), "");
    EXPECT_EQ(types(18), " ");
    names.types.reportLostMappings();
    EXPECT_EQ(ui.printed, "Error:CAP|||||不存在GType\nError:|I|BW|||不存在GType\n"
                          "Error:|I|BW|||不存在该类型到skey的转换\n");
    const auto count = [](const std::string& text, const std::string& part) {
        int found = 0;
        for (std::size_t from = 0; (from = text.find(part, from)) != std::string::npos; ++from) {
            ++found;
        }
        return found;
    };
    const std::string log = root.read("export.log");
    EXPECT_EQ(count(log, "Error:|I|BW|||不存在该类型到skey的转换\r\n\t["), 3);
    EXPECT_EQ(count(log, "Error:|I|BW|||不存在GType\r\n\t["), 2);
    EXPECT_EQ(count(root.read("temp/hext/gtype_lost.log"), ",I,BW,,,\r\n\t["), 2);
    ui.printed.clear();
    EXPECT_EQ(failureOf([&] { names.types.getSkey(at(17)); }), "无法获取对象属性");
    EXPECT_EQ(ui.printed, "Error:17<无法获取对象属性>");
}

TEST_F(NameTest, AConfigurationThatSaysNothingLosesEverything) {
    add(10, component, {{"item", "TEE"}});
    for (const char* config : {"{}", "[]", R"({"skey":1,"type":"x"})", R"({"skey":{},"type":[]})",
                               R"({"skey":[1,null,{},["TEE|##|##|##|##|##|X"]],"type":{"X":7}})"}) {
        root.write("temp/hext/config.json", config);
        names.types.loadSkeyTable();
        names.types.loadTypeTable();
        EXPECT_EQ(names.types.getGtype(at(10)), "") << config;
    }
    root.write("temp/hext/config.json", "{");
    EXPECT_EQ(failureOf<std::exception>([&] { names.types.loadSkeyTable(); }), "parse fail");
}

}  // namespace
