// Groups and blocks as sites, zones, managers and objects.
#include "sources/rvm/rvm_writer.h"
#include "sources/rvm/told_review.h"

namespace {

const std::vector<double> cube = {1, 1, 1};

// Groups by a small text: "S(Z(E*))" is a group S with Z in it, with E in that, which has a box.
std::string groups(std::string_view text, RvmWriter writer = RvmWriter()) {
    std::string name;
    const auto open = [&] {
        if (!name.empty()) {
            writer.group(name);
            name.clear();
        }
    };
    for (const char c : text) {
        switch (c) {
        case '(':
            open();
            break;
        case '*':
            open();
            writer.primitive(2, cube);
            break;
        case ',':
        case ')':
            open();
            writer.endGroup();
            break;
        default:
            name += c;
        }
    }
    return writer.finish();
}

// Every "," and ")" ends a group: "A(B*,C*)" needs one behind C and one behind A.
std::string treeOf(const std::string& rvm, std::string_view text = {}) {
    const ToldReview told(rvm, text);
    EXPECT_EQ(told.refusal, "");
    return told.builder.tree();
}

}  // namespace

TEST(ReviewTree, TypesPlaceElements) {
    const std::string text =
        "NEW /S\nTYPE:=SITE\nNEW /Z\nType:='Zone'\n"
        "NEW /E\nTYPE:=EQUI\nDESC:=Pump\nNEW /E/N1\nTYPE:=NOZZ\nEND\nNEW /E/S\nTYPE:=SUBE\n"
        "NEW BOX 1 of SUBEQUIPMENT /E/S\nTYPE:=BOX\nEND\nEND\nEND\n"
        "NEW /T\nTYPE:=STRU\nNEW /F\nTYPE:=FRMW\nNEW SCTN 1 of FRAMEWORK /F\nTYPE:=SCTN\nEND\nEND\n"
        "END\nNEW /H\nTYPE:=REST\nNEW /H/1\nTYPE:=HANG\nEND\nEND\nEND\nEND\n";
    const std::string rvm = groups("/S(/Z(/E(/E/N1*,/E/S(BOX 1 of SUBEQUIPMENT /E/S*)))"
                                   "/T(/F(SCTN 1 of FRAMEWORK /F*)))/H(/H/1*))))");
    const ToldReview told(rvm, text);
    EXPECT_EQ(told.findings(), "");
    EXPECT_EQ(told.builder.tree(), "HextWorld Project\n"
                                   "  HextSite S\n"
                                   "    HextZone Z\n"
                                   "      HextEquipe E\n"
                                   "        HxDbNozzleModel E/N1\n"
                                   "        HxDbEquipment E/S\n"
                                   "        HxDbEquipment BOX 1 of SUBEQUIPMENT /E/S\n"
                                   "      HextStruct T\n"
                                   "        HxDbStruct F\n"
                                   "        HxDbStruct SCTN 1 of FRAMEWORK /F\n"
                                   "      HextSupport H\n"
                                   "        HxDbSupportModel H/1\n");
    EXPECT_EQ(told.builder.named("E").attribute("eqname"), "Pump");
    EXPECT_EQ(told.builder.named("E").attribute("DESC"), "Pump");
    EXPECT_EQ(told.builder.named("E/S").primitives.size(), 0U);
    EXPECT_TRUE(told.builder.named("E/S").hasShape);
    EXPECT_EQ(told.builder.named("BOX 1 of SUBEQUIPMENT /E/S").primitives.size(), 1U);
}

TEST(ReviewTree, NamesPlaceElementsWithoutAttributes) {
    EXPECT_EQ(treeOf(groups("/A(/B(/C(BOX 1 of EQUIPMENT /C*,NOZZLE 1 of EQUIPMENT /C*)))")),
              "HextWorld Project\n"
              "  HextSite A\n"
              "    HextZone B\n"
              "      HextEquipe C\n"
              "        HxDbEquipment C\n"
              "        HxDbNozzleModel "
              "NOZZLE 1 of EQUIPMENT /C\n");
    EXPECT_EQ(treeOf(groups("/P(/P/B1(ELBOW 1 of BRANCH /P/B1*,TUBE 1 of BRANCH /P/B1*)))")),
              "HextWorld Project\n"
              "  HextSite review\n"
              "    HextZone review\n"
              "      HextPipeline P\n"
              "        HxDbTubeModelSpec ELBOW 1 of BRANCH /P/B1\n"
              "        HxDbPipeSpec TUBE 1 of BRANCH /P/B1\n");
}

TEST(ReviewTree, GivenNamesInABranchAreObjectsAndSectionsAreElements) {
    EXPECT_EQ(treeOf(groups("/P(/P/B1(ELBOW 1 of BRANCH /P/B1*,/V-1*))")), "HextWorld Project\n"
                                                                           "  HextSite review\n"
                                                                           "    HextZone review\n"
                                                                           "      HextPipeline P\n"
                                                                           "        HxDbTubeModelSpec ELBOW 1 of "
                                                                           "BRANCH /P/B1\n"
                                                                           "        HxDbTubeModelSpec V-1\n");
    EXPECT_EQ(treeOf(groups("/T(/F(SCTN 1 of FRAMEWORK /F*,SCTN 2 of FRAMEWORK /F*)))")),
              "HextWorld Project\n"
              "  HextSite review\n"
              "    HextZone review\n"
              "      HextStruct T\n"
              "        HxDbStruct F\n"
              "        HxDbStruct SCTN 1 of FRAMEWORK /F\n"
              "        HxDbStruct SCTN 2 of FRAMEWORK /F\n");
}

TEST(ReviewTree, DepthPlacesTheRest) {
    EXPECT_EQ(treeOf(groups("A(B(C(D(E*)*,F*))))")), "HextWorld Project\n"
                                                     "  HextSite A\n"
                                                     "    HextZone B\n"
                                                     "      HextStruct C\n"
                                                     "        HxDbStruct D\n"
                                                     "        HxDbStruct F\n");
    // Primitives that stand higher up get a manager of their group's name, and levels that lack are put in.
    EXPECT_EQ(treeOf(groups("A(B*,C(D*)))")), "HextWorld Project\n"
                                              "  HextSite A\n"
                                              "    HextZone A\n"
                                              "      HextStruct B\n"
                                              "        HxDbStruct B\n"
                                              "    HextZone C\n"
                                              "      HextStruct D\n"
                                              "        HxDbStruct D\n");
    EXPECT_EQ(treeOf(groups("/Z*)"), "NEW /Z\nTYPE:=ZONE\nEND\n"), "HextWorld Project\n"
                                                                   "  HextSite review\n"
                                                                   "    HextZone Z\n"
                                                                   "      HextStruct Z\n"
                                                                   "        HxDbStruct Z\n");
}

TEST(ReviewTree, OddNestingKeepsEverything) {
    const ToldReview told(groups("/S(/Z(/Z2(/E*))/S2(/E2*))))"),
                          "NEW /S\nTYPE:=SITE\nNEW /Z\nTYPE:=ZONE\nNEW /Z2\nTYPE:=ZONE\nNEW /E\nTYPE:=EQUI\nEND\nEND\n"
                          "NEW /S2\nTYPE:=SITE\nNEW /E2\nTYPE:=EQUI\nEND\nEND\nEND\nEND\n");
    EXPECT_EQ(told.builder.primitiveCount(), 2U);
    EXPECT_EQ(told.builder.named("Z2").className, "HextZoneDirectory");
    EXPECT_EQ(told.builder.named("S2").className, "HextZoneDirectory");
}

TEST(ReviewTree, BlocksFindTheirGroupsByNameInTheirPlace) {
    // Another order, a block without group, a group without block, and equal names, which go by order.
    const std::string text = "NEW /Z\nTYPE:=ZONE\nNEW /C\nTYPE:=EQUI\nN:=c\nEND\nNEW /X\nTYPE:=EQUI\nN:=x\nEND\n"
                             "NEW /A\nTYPE:=EQUI\nN:=a1\nEND\nNEW /A\nTYPE:=EQUI\nN:=a2\nEND\nEND\n";
    const ToldReview told(groups("/Z(/A*,/B*,/A**,/C*))"), text);
    EXPECT_EQ(told.refusal, "");
    std::vector<std::string> seen;
    for (const ToldObject& object : told.builder.objects) {
        if (object.className == "HextEquipe") {
            seen.push_back(object.name + object.attribute("N"));
        }
    }
    EXPECT_EQ(seen, (std::vector<std::string>{"Cc", "Xx", "Aa1", "Aa2"}));
    EXPECT_EQ(told.builder.named("B").className, "HextStruct");
    std::vector<std::size_t> counts;
    for (const ToldObject& object : told.builder.objects) {
        if (object.className == "HxDbEquipment" && object.name == "A") {
            counts.push_back(object.primitives.size());
        }
    }
    EXPECT_EQ(counts, (std::vector<std::size_t>{1, 2})) << "the first /A of either";
    EXPECT_FALSE(told.builder.named("X").hasShape);
}

TEST(ReviewTree, ARootThatOneOfTheTwoLacksIsNoHindrance) {
    const std::string inner = "NEW /S\nTYPE:=SITE\nK:=v\nNEW /Z\nTYPE:=ZONE\nEND\nEND\n";
    const ToldReview more(groups("Root(/S(/Z)))"), inner);
    EXPECT_EQ(more.builder.named("S").attribute("K"), "v");
    const ToldReview less(groups("/S(/Z))"), "NEW Root\nA:=1\n" + inner + "END\n");
    EXPECT_EQ(less.builder.named("S").attribute("K"), "v");
    EXPECT_EQ(less.findings(), "attributes.block-without-element 1");
    const ToldReview head(groups("/S(/Z))"), "NEW Header Information\nSource:= x &end& Date:= y\nEND\n" + inner);
    EXPECT_EQ(head.findings(), "attributes.block-without-element 1");
    EXPECT_EQ(head.firstPlace("attributes.block-without-element"), "review.txt: line 1");
}

TEST(ReviewTree, AllAttributesStayUnderTheirKeysAndNumbersAreNumbersToo) {
    const ToldReview told(groups("/E*)"), "NEW /E\nTYPE:=EQUI\nHEIG:= 2m\nANGL:= 30deg\nPOS:= E 1mm N 2mm U 3mm\n"
                                          "TEMP:= 120degC\nPRES:= 16bar\nCODE:= 12\nTEXT:= '12 boxes'\nENDREF:= =1/2\n"
                                          "EMPTY:=\nA B:C:= d:=e\nCODE:= 13\nEND\n");
    const ToldObject& equipment = told.builder.named("review");
    (void)equipment;
    for (const ToldObject& object : told.builder.objects) {
        if (object.className != "HextEquipe") {
            continue;
        }
        const std::vector<std::pair<std::string, std::string>> expected = {{"eqno", "E"},
                                                                           {"TYPE", "EQUI"},
                                                                           {"HEIG", "2m"},
                                                                           {"HEIG.mm", "2000"},
                                                                           {"ANGL", "30deg"},
                                                                           {"ANGL.deg", "30"},
                                                                           {"POS", "E 1mm N 2mm U 3mm"},
                                                                           {"POS.mm", "1,2,3"},
                                                                           {"TEMP", "120degC"},
                                                                           {"TEMP.degC", "120"},
                                                                           {"PRES", "16bar"},
                                                                           {"PRES.MPa", "1.6"},
                                                                           {"CODE", "12"},
                                                                           {"TEXT", "12 boxes"},
                                                                           {"ENDREF", "=1/2"},
                                                                           {"EMPTY", ""},
                                                                           {"A B:C", "d:=e"},
                                                                           {"CODE", "13"}};
        EXPECT_EQ(object.attributes, expected);
    }
    EXPECT_EQ(told.taken("attributes"), 12U);
}

TEST(ReviewTree, OurOwnFilesComeBackByTheirClasses) {
    const std::string text = "NEW WORLD\nNEW S\nClass:=  HextSite\n\tNEW Z\n\tClass:=  HextZone\n"
                             "NEW P\nClass:=  HextPipeline\nlineno:=  P-1\nNEW FLANGE\nClass:=  HxDbTubeModelSpec\n"
                             "item:=  FLANGE\nlineno:=  2000\nEND\nEND\n"
                             "NEW E\nClass:=  HextEquipe\nNEW E\nClass:=  HxDbEquipment\nEND\nEND\n"
                             "\tEND\nEND\n";
    const ToldReview told(
        groups("WORLD(S(Z(P(FLANGE(HextCylinder3D1*)))E(E(HextBox3D1*,HextBox3D2*))))))", RvmWriter(2, "ORNA ORNA")),
        text);
    EXPECT_EQ(told.builder.tree(), "HextWorld Project\n"
                                   "  HextSite S\n"
                                   "    HextZone Z\n"
                                   "      HextPipeline P\n"
                                   "        HxDbTubeModelSpec FLANGE\n"
                                   "      HextEquipe E\n"
                                   "        HxDbEquipment E\n");
    const ToldObject& flange = told.builder.named("FLANGE");
    EXPECT_EQ(flange.kind, plant::PartKind::Flange);
    EXPECT_EQ(flange.attribute("lineno"), std::to_string(told.builder.named("P").id)) << "an id of this model";
    EXPECT_EQ(flange.attribute("Class"), "(none)");
    EXPECT_EQ(told.builder.named("P").attribute("lineno"), "P-1");
    EXPECT_EQ(told.builder.primitiveCount(), 3U);
    EXPECT_EQ(told.findings(), "attributes.block-not-ended 1, review.world 1, review.group-folded 3");
}

TEST(ReviewTree, FilesOfOnePlantShareTheirWorld) {
    RecordingBuilder builder;
    plant::SourceReport report;
    plant::ObjectId world = 0;
    const std::string first = groups("/A*)");
    const std::string second = groups("/B*)");
    plant::review::tellReview({first, "one.rvm", {}, {}}, builder, world, report);
    plant::review::tellReview({second, "two.rvm", {}, {}}, builder, world, report);
    builder.finish();
    EXPECT_TRUE(builder.faults.empty());
    EXPECT_EQ(builder.tree(), "HextWorld Project\n"
                              "  HextSite one\n"
                              "    HextZone one\n"
                              "      HextStruct A\n"
                              "        HxDbStruct A\n"
                              "  HextSite two\n"
                              "    HextZone two\n"
                              "      HextStruct B\n"
                              "        HxDbStruct B\n");
    EXPECT_TRUE(report.isBalanced());
}

TEST(ReviewTree, ManyBrothersInAnotherOrderTakeTimeByTheirNumber) {
    constexpr int count = 40000;
    RvmWriter writer;
    writer.group("/Z");
    std::string text = "NEW /Z\nTYPE:=ZONE\n";
    for (int i = 0; i < count; ++i) {
        writer.group("/E" + std::to_string(i)).endGroup();
        text += "NEW /E" + std::to_string(count - 1 - i) + "\nTYPE:=EQUI\nEND\n";
    }
    const ToldReview told(writer.endGroup().finish(), text + "END\n");
    EXPECT_EQ(told.taken("groups"), count + 1U);
    EXPECT_EQ(told.builder.objects.size(), count + 3U);
}
