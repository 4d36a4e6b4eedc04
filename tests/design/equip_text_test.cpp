// The macro text of solids, groups, heads and nozzles, to the letter.
#include "fixture.h"
#include "hextinterface/ornatohextprocess/design/nozzle_macro.h"
#include "support/failure.h"

namespace {

PLoop triangle(double frad) {
    PLoop loop;
    loop.vertices = {PVertex({0, 0, 0}), PVertex({10, 0, 0}, frad), PVertex({0, -10.5, 0})};
    return loop;
}

_PExtru plate(double height, double frad) {
    _PExtru solid;
    solid.height = height;
    solid.loop = triangle(frad);
    return solid;
}

std::string textOf(const _PPrimBase& prim) {
    std::string text;
    prim.write(text);
    return text;
}

std::string line(const std::string& text, const std::string& start) {
    const std::size_t at = text.find(start);
    return at == std::string::npos ? "none" : text.substr(at, text.find('\n', at) - at);
}

// As long as asked for, with a quote in it.
std::string longName(std::size_t size) {
    return "O'" + std::string(size - 2, 'N');
}

}  // namespace

TEST(EquipText, ASolidTellsPlaceSizesAndCall) {
    _PBox box;
    box.owner = "'P101_1'";
    box.frame.origin = {0, 0, 500};
    box.xlen = 1000, box.ylen = 2000, box.zlen = 1000;
    EXPECT_EQ(textOf(box), "!sign = true\n"
                           "var !pos POSITION E 0 N 0 U 500\n"
                           "!ori = 'Y is N AND Z is U'\n"
                           "!xlen = 1000.000000\n"
                           "!ylen = 2000.000000\n"
                           "!zlen = 1000.000000\n"
                           "!SolidPrtName = !!ORNAEquipCreateBox('P101_1', !sign, !pos, !ori, !xlen, !ylen, !zlen)\n");
    box.clear();
    EXPECT_EQ(box.owner, "");
    EXPECT_EQ(box.xlen, 0);
    EXPECT_EQ(box.frame.origin.z, 0);
}

TEST(EquipText, ACuttingSolidIsCalledAndACuttingLoopIsKept) {
    _PCylinder cylinder;
    cylinder.owner = "!SolidPrtName";
    cylinder.negative = 1;
    EXPECT_EQ(line(textOf(cylinder), "call"),
              "call !!ORNAEquipCreateCyli(!SolidPrtName, !sign, !pos, !ori, !dia, !height)");

    _PExtru cut = plate(5, 0.02);
    cut.owner = "!SolidPrtName";
    cut.negative = 1;
    EXPECT_EQ(textOf(cut), "!sign = false\n"
                           "var !pos POSITION E 0 N 0 U 0\n"
                           "!ori = 'Y is N AND Z is U'\n"
                           "!height = 5.000000\n"
                           "!NegativePrtName = !!ORNAEquipCreateExtru(!SolidPrtName, !sign, !pos, !ori, !height)\n"
                           "\n"
                           "\n"
                           "!loopName = !!ORNAEquipCreateLoop(!NegativePrtName)\n"
                           "var !pos POSITION E 0 N 0 U 0\n"
                           "!frad = 0.000000\n"
                           "call !!ORNAEquipCreateVertex(!loopName, !pos, !frad)\n"
                           "\n"
                           "var !pos POSITION E 10 N 0 U 0\n"
                           "!frad = 0.010000\n"
                           "call !!ORNAEquipCreateVertex(!loopName, !pos, !frad)\n"
                           "\n"
                           "var !pos POSITION E 0 S 10.5 U 0\n"
                           "!frad = 0.000000\n"
                           "call !!ORNAEquipCreateVertex(!loopName, !pos, !frad)\n"
                           "\n");
}

TEST(EquipText, FilletsShrinkOnlyAboveTheClearance) {
    EXPECT_NE(textOf(plate(1, 0.01)).find("!frad = 0.010000\n"), std::string::npos);
    EXPECT_NE(textOf(plate(1, 100)).find("!frad = 99.990000\n"), std::string::npos);
    _PRevo empty;
    EXPECT_NE(textOf(empty).find("!!ORNAEquipCreateLoop(!SolidPrtName)\n\n"), std::string::npos);
}

TEST(EquipText, BendsStopAtHalfATurn) {
    _PCtor torus;
    torus.angle = 200;
    EXPECT_EQ(line(textOf(torus), "!angle"), "!angle = 180.000000");
    _PRtor square;
    square.angle = 179;
    EXPECT_EQ(line(textOf(square), "!angle"), "!angle = 179.000000");
}

TEST(EquipText, MovingAFrameChecksItsAxes) {
    _PCone cone;
    cone.frame.origin = {10, 20, 30};
    cone.transformToFrame(CoordFrame({10, 0, 0}, {0, 1, 0}, {-1, 0, 0}, {0, 0, 1}));
    EXPECT_EQ(positionText(cone.frame.origin), "E 20 N 0 U 30");
    EXPECT_EQ(orientationText(cone.frame), "Y is E AND Z is U");
    TlGeMatrix3d flat;
    flat.entry[2][2] = 0;
    EXPECT_THROW(cone.transformBy(flat), ExportException);
}

TEST(EquipText, CutsStandBehindTheFirstSolid) {
    PrimGroup group;
    group.addCut(plate(5, 0));
    std::string text;
    writeGroup(text, group);
    EXPECT_EQ(text, "");
    group.addSolid(plate(5, 0));
    group.addSolid(_PBox());
    writeGroup(text, group);
    const std::size_t cut = text.find("!NegativePrtName = !!ORNAEquipCreateExtru(!SolidPrtName,");
    ASSERT_NE(cut, std::string::npos);
    EXPECT_LT(text.find("!SolidPrtName = !!ORNAEquipCreateExtru("), cut);
    EXPECT_LT(cut, text.find("!!ORNAEquipCreateBox("));
    EXPECT_TRUE(text.ends_with("!zlen)\n\n"));
    EXPECT_EQ(macro::readElements(text).at(0).solids.at(0).cuts.size(), 1u);
}

class EquipHead : public EquipTest {
protected:
    static EquipRecord record() {
        EquipRecord made;
        made.name = "P'101";
        made.owner = "ZONE-1";
        made.frame.origin = {1000, 2000, 300};
        made.func = "CLREQUI3";
        return made;
    }
};

TEST_F(EquipHead, TellsPlaceColourAndAttributes) {
    EquipRecord pump = record();
    pump.specNo = "P_101";
    pump.notes = "it's";
    pump.attrs = {"a", "b"};
    EXPECT_EQ(headOf(pump, ElementKind::Structure), "!owner = 'ZONE-1'\n"
                                                    "!self = 'P''101_strcut'\n"
                                                    "var !pos POSITION E 1000 N 2000 U 300\n"
                                                    "!ori = 'Y is N AND Z is U'\n"
                                                    "call !!ORNAEquipCreateStruct(!owner, !self, !pos, !ori)\n"
                                                    "OLD /P'101_strcut\n"
                                                    "FUNC 'CLREQUI3'\n"
                                                    ":ESpecNo 'P_101' \n"
                                                    ":EAttr 'a;b'\n"
                                                    ":ENotes 'it''s' \n"
                                                    "\n"
                                                    "\n");
    EXPECT_EQ(line(headOf(pump, ElementKind::Support), "call"),
              "call !!ORNAEquipCreateEquip(!owner, !self, !pos, !ori)");
    EXPECT_EQ(line(headOf(pump, ElementKind::Support), "OLD"), "OLD /P'101_sup");
    EXPECT_EQ(line(headOf(pump, ElementKind::Equipment), "OLD"), "OLD /P'101");
}

TEST_F(EquipHead, OwnsItsSolidsByTheQuotedName) {
    EquipRecord pump = record();
    PrimGroup group;
    group.addSolid(_PBox());
    pump.groups.push_back(std::move(group));
    EXPECT_NE(headOf(pump, ElementKind::Support).find("CreateBox('P''101_sup', "), std::string::npos);
    EXPECT_NE(headOf(pump, ElementKind::Support).find("FUNC 'CLREQUI3'\n\n!sign"), std::string::npos);
}

TEST_F(EquipHead, RefusesLongNamesBeforeTheSuffix) {
    EquipRecord pump = record();
    pump.name = longName(51);
    EXPECT_NE(headOf(pump, ElementKind::Structure).find("OLD /" + pump.name + "_strcut\n"), std::string::npos);
    pump.name = longName(52);
    const std::pair<ElementKind, const char*> words[] = {
        {ElementKind::Equipment, "equip"}, {ElementKind::Structure, "struct"}, {ElementKind::Support, "pipe"}};
    for (const auto& [kind, word] : words) {
        ui.printed.clear();
        EXPECT_THROW(headOf(pump, kind), ExportException);
        EXPECT_EQ(ui.printed, "Error:create " + std::string(word) + " name<" + pump.name + "> too long");
    }
}

class EquipNozzle : public EquipTest {
protected:
    EquipNozzle() {
        nozzleNames().clear();
        names.equipment.registerEquipName(HxDbObjectId(7), "P'101", "P'101_1");
        nozzle.name = "N1";
        nozzle.catref = "NOZ_A/NOZ_B";
        nozzle.height = "150";
        nozzle.uNo = "N'1";
        nozzle.uName = "A1";
        nozzle.frame.origin = {500, 0, 1200};
    }
    _PNozzle nozzle{HxDbObjectId(7), names};
};

TEST_F(EquipNozzle, NamesItsEquipmentAndItself) {
    EXPECT_EQ(textOf(nozzle), "!owner = 'P''101_1'\n"
                              "!nozN = 'P''101_1_N1'\n"
                              "var !pos POSITION E 500 N 0 U 1200\n"
                              "!ori = 'Y is N AND Z is U'\n"
                              "!catref = 'NOZ_A/NOZ_B'\n"
                              "!height = 150\n"
                              "!temp = -10000.000000\n"
                              "!press = 0.000000\n"
                              "!ispe = ''\n"
                              "!uNo = 'N''1'\n"
                              "!uName = 'A1'\n"
                              "call !!ORNAEquipCreateNozzle(!owner, !nozN, !pos, !ori, !catref, !height, !temp, "
                              "!press, !ispe, !uNo, !uName)\n");
    EXPECT_EQ(line(textOf(nozzle), "!nozN"), "!nozN = 'P''101_1_N1_1'");
    EXPECT_EQ(line(textOf(nozzle), "!nozN"), "!nozN = 'P''101_1_N1_2'");
    nozzle.clear();
    EXPECT_EQ(nozzle.temp, -10000);
    EXPECT_EQ(nozzle.height, "");
}

TEST_F(EquipNozzle, NeedsAnEquipmentAndAShortName) {
    nozzle.name = std::string(51 - 8, 'N');
    EXPECT_EQ(line(textOf(nozzle), "!uName"), "!uName = 'A1'");
    nozzle.name += "N";
    std::string text;
    EXPECT_THROW(nozzle.write(text), ExportException);
    EXPECT_EQ(ui.printed, "Error:create nozzle name<P'101_1_" + nozzle.name + "> too long");
    _PNozzle stray(HxDbObjectId(8), names);
    EXPECT_EQ(failureOf<ExportException>([&] { stray.write(text); }), "管嘴设备关系错误");
    EXPECT_EQ(text, "");
}
