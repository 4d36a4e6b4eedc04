// From a model to equip.txt, struct.txt and sup.txt: what is gathered, under which names, and how far a failure
// reaches.
#include "fixture.h"
#include "hextinterface/hextbasemethod/used_colours.h"
#include "hextinterface/hextcata/nozzle_list.h"
#include "hextinterface/ornatohextprocess/design/gather.h"
#include "hextinterface/ornatohextprocess/design/nozzle_macro.h"
#include "support/failure.h"
#include "tolmar/code_page.h"

#include <optional>

namespace {

// Members of a model file. A box has its centre at (x + 5, 5, 5); a saddle along world Z has no frame.
std::string box(int x, const std::string& more = "") {
    return R"({"type":"HextBox3D","point":[)" + std::to_string(x) + R"(,0,0],"xLength":10,"yLength":10,"zLength":10)" +
           more + "}";
}
const char* badSaddle = R"({"type":"HextSaddle3D","point":[0,0,0],"axis":[0,0,1],"sectionAxis":[1,0,0],"length":10,
                            "sectionLength":10,"sectionHeight":10,"circleRadius":2})";
const char* line = R"({"type":"HextPrimaryLine","startPoint":[0,0,0],"endPoint":[1,0,0]})";
const char* obstruction = R"(,"material":"hext_temp_material")";

std::string object(int id, const char* type, int in, const std::string& more = "") {
    return R"({"id":)" + std::to_string(id) + R"(,"class":")" + type + R"(","in":)" + std::to_string(in) +
           (more.empty() ? "" : "," + more) + "}";
}
std::string shape(const std::string& primitives) {
    return R"("primitives":[)" + primitives + "]";
}
std::string attrs(const std::string& members) {
    return R"("attrs":{)" + members + "}";
}

class EquipGather : public EquipTest {
protected:
    EquipGather() { nozzlesWithSpec().clear(); }
    ~EquipGather() override { nozzlesWithSpec().clear(); }

    // A zone 3 "Z A" in a site, and in it what the objects tell.
    void load(std::initializer_list<std::string> objects) {
        std::string all = object(2, "HextSite", 1, R"("name":"S")") + "," + object(3, "HextZone", 2, R"("name":"Z A")");
        for (const std::string& json : objects) {
            all += "," + json;
        }
        model.emplace(TestModel::withObjects(all));
    }
    static HxDbObject* at(int id) { return openAs<HxDbObject>(HxDbObjectId(id)); }

    DesignMacroSet gather() { return gather(context); }
    DesignMacroSet gather(const ExportContext& of) {
        DesignMacroSet set(of);
        design::gatherEquipment(equipment, set);
        design::gatherStructures(containers, set);
        design::gatherSupports(supports, set);
        return set;
    }
    std::string path(const char* name) const { return (root.path() / name).string(); }
    std::string equipText(DesignMacroSet set) {
        {
            EquipFile file(path("equip.txt"), set.context);
            file.writeEquips(set.equips);
            file.writeNozzles(set.nozzles);
            EXPECT_TRUE(file.close());
        }
        return root.read("equip.txt");
    }
    std::string structText(DesignMacroSet set) {
        NumberedFile file(path("struct.txt"), ElementKind::Structure, udas);
        file.write(set.structs);
        EXPECT_TRUE(file.close());
        return root.read("struct.txt");
    }
    // "id: why" of everything passed over, in order.
    static std::string passedOver() {
        std::string text;
        for (const tolmar::PassedOver& entry : tolmar::runReport().passed()) {
            text += std::to_string(entry.id) + ": " + entry.why + "\n";
        }
        return text;
    }

    std::optional<TestModel> model;
    ObjectList equipment, supports;
    ObjectMap containers;
};

std::string equipe(int id, const std::string& eqno) {
    return object(id, "HextEquipe", 3, attrs(R"("eqno":")" + eqno + R"(")"));
}

}  // namespace

TEST_F(EquipGather, AnEquipmentStandsAtItsFirstSolidWithItsNozzlesBehind) {
    load({object(10, "HextEquipe", 3, attrs(R"("eqno":"P 1+1","leafnode":"pump","eqname":"feed","dtemp":"90")")),
          object(11, "HxDbEquipment", 10, R"("color":3,)" + shape(std::string(line) + "," + box(100) + "," + box(200))),
          object(12, "HxDbEquipment", 10, R"("color":4,)" + shape(box(300) + "," + box(400, obstruction))),
          object(13, "HxDbNozzleModel", 10,
                 R"("no":"N 1","keyPoints":[{"no":0,"at":[105,5,60]},{"no":2,"at":[105,5,100]}],)" +
                     attrs(R"("smrtln":"Normal","P1":"150","specname":"A1")")),
          object(14, "HxDbNozzleModel", 10, attrs(R"("smrtln":"Normal")")),
          object(15, "HxDbNozzleModel", 10, attrs(R"("smrtln":"Tee")"))});
    equipment = {at(10)};
    nozzlesWithSpec() = {openAs<HxDbNozzleModel>(HxDbObjectId(13)), openAs<HxDbNozzleModel>(HxDbObjectId(15))};
    const std::string text = equipText(gather());
    EXPECT_TRUE(text.starts_with("!owner = 'ORNA_ZONE_ZA'\r\n"
                                 "!self = 'P1_1_1'\r\n"
                                 "var !pos POSITION E 105 N 5 U 5\r\n"
                                 "!ori = 'Y is N AND Z is U'\r\n"
                                 "call !!ORNAEquipCreateEquip(!owner, !self, !pos, !ori)\r\n"
                                 "OLD /P1_1_1\r\n"
                                 "FUNC 'CLREQUI3'\r\n"
                                 ":ESpecNo 'P_1_1' \r\n"
                                 ":EStyle 'pump' \r\n"
                                 ":EName 'feed' \r\n"
                                 ":EAttr '设计温度1:90;操作温度1:;"))
        << tolmar::toUtf8(text);
    const auto elements = macro::readElements(text);
    ASSERT_EQ(elements.size(), 1u);
    ASSERT_EQ(elements[0].solids.size(), 3u);
    EXPECT_EQ(positionText(elements[0].solids[0].frame.origin), "E 0 N 0 U 0");
    EXPECT_EQ(positionText(elements[0].solids[2].frame.origin), "E 200 N 0 U 0");
    EXPECT_EQ(elements[0].solids[2].owner, "'P1_1_1'");
    const std::size_t nozzle = text.find("!owner = 'P1_1_1'\r\n!nozN = 'P1_1_1_N_1'\r\n");
    ASSERT_NE(nozzle, std::string::npos);
    EXPECT_NE(text.find("var !pos POSITION E 0 N 0 U 55\r\n!ori = 'Y is S AND Z is E'\r\n", nozzle), std::string::npos)
        << text.substr(nozzle);
    EXPECT_NE(text.find("!height = 150\r\n", nozzle), std::string::npos);
    EXPECT_EQ(passedOver(), "11: HextPrimaryLine: is no solid\n"
                            "12: HextBox3D: belongs to the obstruction volume\n"
                            "14: has no catalogue entry\n"
                            "15: is neither straight nor bent\n");
}

TEST_F(EquipGather, ABadPrimitiveCostsAnEquipmentNothingElse) {
    load({equipe(10, "A"), object(11, "HxDbEquipment", 10, shape(std::string(badSaddle) + "," + box(0))),
          equipe(20, "B"), object(21, "HxDbEquipment", 20, shape(badSaddle)), object(22, "HxDbNozzleModel", 20),
          equipe(30, "C"), object(31, "HxDbStruct", 30), equipe(40, "D"), object(41, "HxDbEquipment", 40)});
    equipment = {at(10), at(20), at(30), at(40)};
    const DesignMacroSet set = gather();
    ASSERT_EQ(set.equips.size(), 1u);
    EXPECT_EQ(set.equips[0].groups.size(), 1u);
    EXPECT_EQ(ui.printed, "\n ID:11 <无效方向>\n ID:21 <无效方向>");
    EXPECT_EQ(passedOver(), "11: HextSaddle3D: 无效方向\n21: HextSaddle3D: 无效方向\n"
                            "20: has no solid, so that it and its nozzles are left out\n"
                            "31: is no equipment but HxDbStruct\n30: has no member that is an equipment\n"
                            "41: has no shape\n40: has no solid, so that it and its nozzles are left out\n");
}

TEST_F(EquipGather, ABadNozzleCostsItsEquipment) {
    load({equipe(10, "A"), object(11, "HxDbEquipment", 10, shape(box(0))),
          object(12, "HxDbNozzleModel", 10, R"("keyPoints":[{"no":0,"at":[0,0,0]}],)" + attrs(R"("smrtln":"Normal")")),
          equipe(20, "B"), object(21, "HxDbEquipment", 20, shape(box(0)))});
    equipment = {at(10), at(20)};
    nozzlesWithSpec() = {openAs<HxDbNozzleModel>(HxDbObjectId(12))};
    const DesignMacroSet set = gather();
    ASSERT_EQ(set.equips.size(), 1u);
    EXPECT_EQ(set.equips[0].name, "B");
    EXPECT_TRUE(set.nozzles.empty());
    EXPECT_EQ(ui.printed, "\n无效方向");
    EXPECT_EQ(passedOver(), "10: 无效方向\n");
}

TEST_F(EquipGather, NozzlesOfEitherFormStandByTheirKeyPoints) {
    load(
        {object(
             12, "HxDbNozzleModel", 3,
             R"("keyPoints":[{"no":0,"at":[9,9,9]},{"no":0,"at":[0,0,0]},{"no":1,"at":[0,0,-50]},{"no":3,"at":[70,0,70]}],)" +
                 attrs(R"("smrtln":"Bend","P1":"1","P2":"200")")),
         object(13, "HxDbNozzleModel", 3,
                R"("points":[{"no":1,"at":[5,6,7]}],"keyPoints":[{"no":2,"at":[0,8,0]}],)" +
                    attrs(R"("smrtln":"Normal")"))});
    const auto frameOf = [&](int id) {
        PrimGroup group = makeNozzle(openAs<HxDbNozzleModel>(HxDbObjectId(id)), HxDbObjectId(1), {1, 1, 1}, context);
        return group._posPrimitive.at(0)->frame;
    };
    const CoordFrame bent = frameOf(12);
    EXPECT_EQ(positionText(bent.origin), "W 1 S 1 D 1");
    EXPECT_EQ(directionText(bent.yAxis), "E 45 U");
    EXPECT_EQ(directionText(bent.zAxis), "N");
    EXPECT_EQ(directionText(bent.xAxis), "W 45 U");
    // Without an origin point it stands at the insertion point, and its direction runs from the world's origin.
    const CoordFrame straight = frameOf(13);
    EXPECT_EQ(positionText(straight.origin), "E 4 N 5 U 6");
    EXPECT_EQ(directionText(straight.xAxis), "N");
}

TEST_F(EquipGather, SuffixesCountOnWhileNamesAreKnown) {
    load({equipe(10, "A"), object(11, "HxDbEquipment", 10, shape(box(0))), equipe(20, "A"),
          object(21, "HxDbEquipment", 20, shape(box(0))), equipe(30, "B"),
          object(31, "HxDbEquipment", 30, shape(box(0)))});
    equipment = {at(10), at(20), at(30)};
    const auto namesIn = [](const std::string& text) {
        std::string all;
        for (const macro::Element& element : macro::readElements(text)) {
            all += element.self + " ";
        }
        return all;
    };
    // Without a configuration the suffix is on.
    EXPECT_EQ(namesIn(equipText(gather())), "A_1 A_2 B_1 ");

    root.write("temp/hext/config.json", "{}");
    NameManager fresh;
    DesignMacroSet plain = gather({fresh, udas});
    EXPECT_EQ(failureOf<ExportException>([&] { equipText(std::move(plain)); }), "设备命名冲突");
}

TEST_F(EquipGather, EveryStructureObjectIsAnElementAndAPipelineIsOne) {
    usedColours().clear();
    load({object(10, "HextStruct", 3, R"("name":"steel")"),
          object(11, "HxDbStruct", 10, R"("objectName":"wall_rect","color":5,)" + shape(box(0))),
          object(12, "HxDbStruct", 10, R"("objectName":"window","color":6,)" + shape(box(10))),
          object(13, "HxDbTubeModelSpec", 10, R"("color":7,)" + attrs(R"("mtype":"tray")") + "," + shape(box(20))),
          object(14, "HxDbXGModel", 10, shape(box(0))), object(15, "HxDbStruct", 10, shape("")),
          object(20, "HextPipeline", 3, R"("name":"AIR 1")"),
          object(21, "HxDbTubeModelSpec", 20, R"("color":8,)" + shape(box(50))),
          object(22, "HxDbTubeModelSpec", 20, R"("color":9,)" + shape(box(60))), object(23, "HxDbTubeWeld", 20)});
    containers[at(10)] = {at(11), at(12), at(13), at(14), at(15)};
    containers[at(20)] = {at(21), at(22), at(23)};
    const auto elements = macro::readElements(structText(gather()));
    ASSERT_EQ(elements.size(), 4u);
    const char* expected[][2] = {{"wall_rect_1_strcut", "CLRSTRU5"},
                                 {"window_2_strcut", "CLRASTRU6"},
                                 {"HC_tray_3_strcut", "CLRSTRU7"},
                                 {"CH_AIR 1_4_strcut", "CLRSTRU9"}};
    for (std::size_t i = 0; i < 4; ++i) {
        EXPECT_EQ(elements[i].self, expected[i][0]);
        EXPECT_EQ(elements[i].func, expected[i][1]);
        EXPECT_EQ(elements[i].owner, "ORNA_ZONE_ZA");
    }
    EXPECT_EQ(elements[3].solids.size(), 2u);
    EXPECT_EQ(usedColours(), (std::set<std::uint16_t>{0x606}));
    EXPECT_EQ(passedOver(), "14: is of class HxDbXGModel\n15: has no solid\n23: is of class HxDbTubeWeld\n");
}

TEST_F(EquipGather, ABadPrimitiveCostsAStructureAndOneSupportMember) {
    load({object(10, "HextStruct", 3), object(11, "HxDbStruct", 10, shape(box(0))),
          object(12, "HxDbStruct", 10, shape(badSaddle)), object(20, "HextStruct", 3),
          object(21, "HxDbStruct", 20, R"("objectName":"slab",)" + shape(box(0))),
          object(30, "HextSupport", 3, R"("name":"S 1")"),
          object(31, "HxDbSupportModel", 30, attrs(R"("owner":"30")") + "," + shape(badSaddle)),
          object(32, "HxDbSupportModel", 30, R"("color":2,)" + attrs(R"("owner":"30")") + "," + shape(box(7)))});
    containers[at(10)] = {at(11), at(12)};
    containers[at(20)] = {at(21)};
    supports = {at(30)};
    DesignMacroSet set = gather();
    EXPECT_EQ(ui.printed, "\n无效方向\n ID:31 <无效方向>");
    EXPECT_EQ(passedOver(), "10: 无效方向\n31: 无效方向\n");
    ASSERT_EQ(set.structs.size(), 1u);
    EXPECT_EQ(set.structs[0].name, "slab");
    {
        NumberedFile file(path("sup.txt"), ElementKind::Support, udas);
        file.write(set.supports);
        file.writeEnd("savework\n");
        EXPECT_TRUE(file.close());
    }
    const std::string text = root.read("sup.txt");
    EXPECT_TRUE(text.starts_with("!owner = 'ORNA_ZONE_ZA'\r\n!self = 'S1_1_sup'\r\n"));
    EXPECT_TRUE(text.ends_with("!zlen)\r\n\r\n\r\nsavework\r\n"));
    EXPECT_EQ(macro::readElements(text).at(0).func, "CLREQUI2");
}

TEST_F(EquipGather, WithoutAZoneTheDefaultOwnerStands) {
    load({object(10, "HextStruct", 1), object(11, "HxDbStruct", 10, shape(box(0)))});
    containers[at(10)] = {at(11)};
    EXPECT_EQ(gather().structs.at(0).owner, "ZONE_EQUIP_STRUCTURE");
}

TEST_F(EquipGather, AFileThatDoesNotOpenIsLeftOut) {
    load({equipe(10, "A"), object(11, "HxDbEquipment", 10, shape(box(0)))});
    equipment = {at(10)};
    DesignMacroSet set = gather();
    const std::string nowhere = (root.path() / "no" / "where.txt").string();
    EquipFile equips(nowhere, context);
    equips.writeEquips(set.equips);
    equips.writeNozzles(set.nozzles);
    NumberedFile(nowhere, ElementKind::Structure, udas).write(set.structs);
    NumberedFile(nowhere, ElementKind::Support, udas).writeEnd("savework\n");
    EXPECT_EQ(set.equips[0].name, "A");
    EXPECT_EQ(tolmar::runReport().failedFiles().size(), 3u);
}
