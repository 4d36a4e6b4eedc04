// Which lines an object gives, in which order, what is shared, and how far a failure reaches.
#include "fixture.h"

#include "hextinterface/hextbasemethod/limited_text.h"
#include "hextinterface/hextcata/lines.h"
#include "hextinterface/hextcata/nozzle_list.h"

namespace {

const std::vector<At> teePoints = {{0, {9, 9, 9}}, {1, {-80, 9, 9}}, {2, {90, 9, 9}}, {3, {9, 70, 9}}};
const std::vector<At> pipePoints = {{1, {9, 9, 9}}, {2, {90, 9, 9}}};

std::vector<std::string> functionsOf(const std::string& text) {
    std::vector<std::string> functions;
    const CataText read(text);
    for (const CataLine& line : read.lines()) {
        functions.push_back(line.function.empty() ? line.text.substr(0, 3) : line.function);
    }
    return functions;
}
using Functions = std::vector<std::string>;

std::string attributes(const std::string& item, const std::string& smrtln, const std::string& more = "") {
    return R"("item":")" + item + R"(","smrtln":")" + smrtln + R"(","size1":"50","end1":"BW","minsul":"0")" + more;
}

TEST_F(CatalogueTest, EqualComponentsShareOneEntryAndOthersHaveTheirOwn) {
    add(10, "HxDbTubeModelSpec", attributes("TEE", "Tee"), teePoints);
    add(11, "HxDbTubeModelSpec", attributes("TEE", "Tee", R"(,"note":"other","sch":"")"), teePoints);
    int id = 12;
    for (const char* key : {"itype", "rating", "sch", "thick", "size2", "end3"}) {
        add(id++, "HxDbTubeModelSpec", attributes("TEE", "Tee", R"(,")" + std::string(key) + R"(":"7")"), teePoints);
    }
    EXPECT_EQ(functionsOf(branchText({10})),
              (Functions{"CreateCata", "CreateSec", "CreateCate", "CreateGmse", "CreatePtse", "CreateSdte",
                         "CreateSmte", "CreateScom", "OLD", "Ptaxi", "Ptaxi", "Ptaxi", "Ptaxi"}));
    EXPECT_EQ(branchText({11, 10}), "");
    std::set<std::string> components;
    for (int other = 12; other < id; ++other) {
        const std::string text = branchText({other});
        EXPECT_EQ(functionsOf(text).front(), "CreateCate") << other;
        components.insert(CataText(text).calls("CreateScom").at(0)->arguments.at(1));
    }
    EXPECT_EQ(components.size(), 6U);
}

TEST_F(CatalogueTest, ATreeNamesItsParents) {
    add(10, "HxDbTubeModelSpec",
        attributes("VALVE", "Tee", R"(,"sch":"40","thick":"S3","stan":"GB'1","material":"O'Neil")"), teePoints);
    const std::string text = branchText({10});
    const std::string name = names->components.getComponentName(at(10));
    const std::string section = names->components.getSectionName(at(10));
    const std::string cata = names->components.getCataName(at(10));
    EXPECT_EQ(text.substr(0, text.find("call !!ORNACataPtaxi")),
              "call !!ORNACataCreateCata('/" + cata + "')\ncall !!ORNACataCreateSec('/" + cata + "','/" + section +
                  "')\ncall !!ORNACataCreateCate('/" + section + "','/" + name + "','GB'1')\n" +
                  "call !!ORNACataCreateGmse('/" + name + "','/" + name + "-GM')\ncall !!ORNACataCreatePtse('/" + name +
                  "','/" + name + "-PT')\ncall !!ORNACataCreateSdte('/" + name + "','/" + name +
                  "-DT','','','',' ')\n" +  // the Skey begins with a digit
                  "call !!ORNACataCreateSmte('/" + name + "','/" + name + "-MT',|O'Neil|)\n" +
                  "call !!ORNACataCreateScom('/" + name + "','/" + name + "-SC','VALV','VALVE 40S3','/" + name +
                  "-PT','/" + name + "-GM')\nOLD /" + name + "-GM\n");
}

TEST_F(CatalogueTest, PipesGasketsAndLinksHaveTheirOwnComponentLine) {
    addJson(R"({"id":9,"class":"HxDbTubeSpecification","ends":[{"outer":60.3}]})");
    add(10, "HxDbPipeSpec", attributes("PIPE", "Pipe"), pipePoints, R"("spec":9)");
    add(11, "HxDbTubeModelSpec", attributes("GASKET", "Normal"), {{0, {}}, {1, {1, 0, 0}}, {2, {2, 0, 0}}},
        R"("kind":"virtualGasket","primitives":[{"type":"HextSphere3D","center":[0,0,0],"radius":5}])");
    add(12, "HxDbTubeModelSpec", attributes("PCLA", "Tee"), teePoints);
    const std::string pipe = branchText({10});
    EXPECT_EQ(functionsOf(pipe).back(), "CreatePipeScom");
    EXPECT_NE(pipe.find("-PT','50 60.300000 BW')\n"), std::string::npos) << pipe;
    EXPECT_EQ(functionsOf(branchText({11})).back(), "CreateScom");
    const CataText link(branchText({12}));
    EXPECT_EQ(link.calls("CreateScom").at(0)->arguments.at(2), "PCLA");
    EXPECT_EQ(link.calls("CreateSdte").at(0)->arguments.at(5), " ");
}

TEST_F(CatalogueTest, AComponentWithoutTypeStopsItsBranchBeforeAnyLine) {
    configure(R"("skey":["TEE|##|##|##|##|##|TE"],"type":{"TE":"TEE"})");
    add(10, "HxDbTubeModelSpec", attributes("TEE", "Tee"), teePoints);
    add(11, "HxDbTubeModelSpec", attributes("ODD", "Tee"), teePoints);
    add(12, "HxDbTubeModelSpec", attributes("", "Tee"), teePoints);
    add(13, "HxDbTubeStop", attributes("ODD", "Tee"), teePoints);
    EXPECT_EQ(branchText({10, 11}, {}, false), "");
    EXPECT_TRUE(wasPassedOver(11, "has no GType"));
    EXPECT_EQ(CataText(branchText({12, 13, 11, 10}, {at(11)})).calls("CreateScom").size(), 1U);
    EXPECT_TRUE(wasPassedOver(12, "has no item"));
}

TEST_F(CatalogueTest, WeldsTakeTheirEndsAndSizeFromWhatTheyJoin) {
    add(10, "HxDbTubeWeld", attributes("WELD", "Weld"),
        {{0, {5, 5, 5}}, {1, {9, 9, 9}, 0, 11}, {2, {9, 9, 10}, 0, 12}});
    add(11, "HxDbPipeSpec", attributes("PIPE", "Pipe", R"(,"end2":"SW","size2":"80")"), {{2, {}, 0, 10}});
    add(12, "HxDbPipeSpec", attributes("PIPE", "Pipe"), {{1, {}, 0, 10}});
    const std::string text = branchText({10});
    const std::string name = names->components.getComponentName(at(10));
    EXPECT_EQ(text.substr(text.find("call !!ORNACataPtaxi")),
              "call !!ORNACataPtaxi('/" + name + "-PT','1','BW','(50.000000)','(0.000000)','-X')\n" +
                  "call !!ORNACataPtaxi('/" + name + "-PT','2','BW','(80.000000)','(0.000000)','X')\nOLD /" + name +
                  "-GM\ncall !!ORNACataLCYL('(-0.000000)','(0.000000)','X','50.000000')\n");
    EXPECT_EQ(CataText(text).calls("CreateScom").at(0)->arguments.at(2), "WELD");
}

TEST_F(CatalogueTest, ABalloonTakesTheSizeOfWhatItHangsOn) {
    add(10, "HxDbBalloon", attributes("INST", ""), {{1, {9, 9, 9}, 0, 11}}, R"("refVec":[0,1,0],"insVec":[0,0,1])");
    add(11, "HxDbTubeModelSpec", attributes("TEE", "Tee", R"(,"size3":"25")"), {{3, {9, 9, 9}, 0, 10}});
    const CataText text(branchText({10}));
    const auto points = text.calls("Ptaxi");
    ASSERT_EQ(points.size(), 2U);
    EXPECT_EQ(points[0]->arguments.at(3), "(25.000000)");
    EXPECT_EQ(points[0]->arguments.at(5), "Y");
    EXPECT_EQ(points[1]->arguments.at(2), "OPEN");
    EXPECT_EQ(points[1]->arguments.at(3), "(25.000000)");
}

TEST_F(CatalogueTest, InsulatedObjectsAreListedAndTheirCatalogueFollows) {
    const std::string insulation = R"("insulation":{"thickness":40,"code":"H1","material":"wool"})";
    const auto insulatedAs = [](const std::string& value) {
        return R"("item":"PIPE","smrtln":"Pipe","end1":"BW","material":"M'1","size1":")" + value + R"(","minsul":"1")";
    };
    add(10, "HxDbPipeSpec", insulatedAs("50"), pipePoints, insulation);
    add(11, "HxDbPipeSpec", insulatedAs("50"), pipePoints, insulation);
    add(12, "HxDbTubeModelSpec", R"("item":"TEE","smrtln":"Tee","size1":"50")", teePoints);
    add(13, "HxDbNozzleModel", R"("item":"NOZ","smrtln":"Normal","size1":"50")",
        {{0, {}}, {1, {1, 0, 0}}, {2, {2, 0, 0}}});
    add(14, "HxDbPipeSpec", insulatedAs("80"), pipePoints);
    branchText({10, 11, 12, 13, 14});
    EXPECT_EQ(insulated, list({10, 11, 12, 14}));
    EXPECT_NE(ui.printed.find("\nID:14 <保温代号为空>"), std::string::npos);
    TextStream out;
    CataBuilder builder(std::move(out.stream()), *names);
    builder.writeInsulationCatalogue();
    builder.close();
    EXPECT_EQ(out.text(),
              "call !!ORNACataCreateCata('/CATA_INSU_ORNA')\n"
              "call !!ORNACataCreateSec('/CATA_INSU_ORNA','/SECT_INSU_ORNA')\n"
              "call !!ORNACataCreateCate('/SECT_INSU_ORNA','/CATE_H1_40','')\n"
              "call !!ORNACataCreateSmte('/CATE_H1_40','/INS_H1_40-MT',|M'1|)\n"
              "call !!ORNACataCreateInsuScom('/CATE_H1_40','/INS_H1_40-SC','Pipe 40.000000','80.000000')\n");
}

TEST_F(CatalogueTest, AttachmentsPutTheirPointsIntoTheSetOfWhatTheyHoldOn) {
    addJson(R"({"id":9,"class":"HxDbTubeSpecification","ends":[{"outer":60.3}]})");
    addJson(R"({"id":8,"class":"HxDbSupportItem","stan":"HG","type":"-T1-"})");
    add(10, "HxDbPipeSpec", attributes("PIPE", "Pipe"), pipePoints, R"("spec":9)");
    add(11, "HxDbTubeModelSpec", R"("item":"TEE","smrtln":"Tee","size1":"80","end1":"BW","minsul":"0")", teePoints,
        R"("spec":9)");
    for (const auto& [id, to] : {std::pair(20, 10), std::pair(21, 10), std::pair(22, 11), std::pair(23, 0)}) {
        add(id, "HxDbSupportModel", "", {{1, {}, 0, to}}, R"("supItem":8,"no":"7")");
    }
    const auto textOf = [&](int id) {
        const auto* support = at<HxDbSupportModel>(id);
        TextStream out;
        CataBuilder builder(std::move(out.stream()), *names);
        builder.writeAttachment(support);
        builder.close();
        return out.text();
    };
    const CataText pipe(textOf(20));
    EXPECT_EQ(pipe.calls("CreateSdte").at(0)->arguments,
              (std::vector<std::string>{"/" + names->attachments.getPointSetBaseName(at(10)),
                                        "/" + names->components.getDtsetName(at(10)), "HG-T1-7", "HG-T1-7", "HG-T1-7",
                                        "XY"}));
    ASSERT_EQ(pipe.calls("Ptaxi").size(), 2U);
    EXPECT_EQ(pipe.calls("Ptaxi")[1]->arguments,
              (std::vector<std::string>{"/" + names->components.getPtsetName(at(10)), "2", "ATT", "(60.300000)",
                                        "(0.000000)", "X"}));
    EXPECT_EQ(pipe.calls("CreateScom").at(0)->arguments.at(1), "/" + names->attachments.getPointSetScName(at(10)));
    EXPECT_EQ(textOf(21), "");
    const CataText tee(textOf(22));
    ASSERT_EQ(tee.calls("Ptaxi").size(), 4U);
    EXPECT_EQ(tee.calls("Ptaxi")[0]->arguments.at(2), "BW");
    EXPECT_EQ(tee.calls("Ptaxi")[2]->arguments.at(2), "CATT");
    EXPECT_EQ(tee.calls("Ptaxi")[3]->arguments.at(5), "Y");
    EXPECT_EQ(textOf(23), "");
    EXPECT_TRUE(wasPassedOver(23, "is connected to nothing"));
}

TEST_F(CatalogueTest, NozzlesWithGeometryJoinTheList) {
    const std::vector<At> points = {{0, {9, 9, 9}}, {1, {-30, 9, 9}}, {2, {70, 9, 9}}};
    const auto nozzle = [](const std::string& size, const std::string& family = "Normal") {
        return R"("item":"NOZ","minsul":"0","nozno":"N)" + size + R"(","size1":")" + size + R"(","smrtln":")" + family +
               '"';
    };
    add(10, "HxDbNozzleModel", nozzle("50"), points);
    add(11, "HxDbNozzleModel", nozzle("50"), points);
    add(12, "HxDbNozzleModel", nozzle("20*30"), points);
    add(13, "HxDbNozzleModel", nozzle("80"), {{0, {9, 9, 9}}});
    add(14, "HxDbNozzleModel", nozzle("65", "Ru"), points);
    std::vector<HxDbNozzleModel*> nozzles;
    for (int id = 10; id < 15; ++id) {
        nozzles.push_back(at<HxDbNozzleModel>(id));
    }
    nozzlesWithSpec().clear();
    TextStream out;
    CataBuilder builder(std::move(out.stream()), *names);
    builder.writeNozzles(nozzles);
    builder.close();
    const CataText text(out.text());
    EXPECT_EQ(text.calls("CreateScom").size(), 3U);
    EXPECT_EQ(text.calls("Ptaxi").size(), 3U);
    EXPECT_EQ(nozzlesWithSpec(), std::vector<HxDbNozzleModel*>{nozzles[0]});
    EXPECT_TRUE(wasPassedOver(12, "its size is no plain number"));
    EXPECT_TRUE(wasPassedOver(13, "NormalKeyPt错误"));
    EXPECT_EQ(ui.printed.find("ID:13 <"), std::string::npos);
}

TEST_F(CatalogueTest, TheFileIsOpenedInItsFolderAndANewOneReplacesIt) {
    add(10, "HxDbTubeModelSpec", attributes("TEE", "Tee"), teePoints);
    const ComponentList components = list({10});
    const std::string folder = (root.path() / "temp" / "hext").string();
    root.write("temp/hext/cata.txt", "old");
    {
        CataBuilder builder(folder, *names);
        builder.writeFixedBend();
        EXPECT_TRUE(builder.close());
    }
    const std::string text = root.read("temp/hext/cata.txt");
    EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 24);
    EXPECT_EQ(std::count(text.begin(), text.end(), '\r'), 24);
    EXPECT_EQ(text.substr(0, 42), "call !!ORNACataCreateCata('/CATA_FIX_BEND'");
    EXPECT_NE(text.find("\r\nOLD /FIX_BEND-GM\r\ncall !!ORNACataPtaxi('/FIX_BEND-PT', '1', 'BW', '(DESP[1])', '(0)', "
                        "'z')\r\n"),
              std::string::npos);
    EXPECT_EQ(text.substr(text.size() - 38), "Number 1\r\nDtitle 'BORE'\r\nPunits 'mm'\r\n");
    CataBuilder closed(folder + "/none", *names);
    EXPECT_TRUE(closed.writeBranch(components, {}));
    EXPECT_NE(ui.printed.find("\nID:10 <cata.txt文件打开失败！>"), std::string::npos);
}

TEST_F(CatalogueTest, PointLinesAndTextsKeepTheirForms) {
    TextStream out;
    CataPoint point;
    point.id = 1;
    point.con = "BW";
    point.bore = 50;
    point.paxi = "-X";
    point.dist = 25.5;
    writePoint(out.stream(), "", point);
    EXPECT_EQ(ui.printed, "参考点空值\n");
    writePoint(out.stream(), "A-PT", point);
    EXPECT_TRUE(ui.boxes.empty());
    point.dist = 2e7;
    writePointWithDistance(out.stream(), "Nulref", point, "+HEIGHT");
    EXPECT_EQ(ui.boxes, std::vector<std::string>{"PP点distance计算错误"});
    point.dist = HUGE_VAL;
    writePoint(out.stream(), "FAR", point);
    EXPECT_EQ(tolmar::runReport().passed().back().name,
              "call !!ORNACataPtaxi('/FAR','1','BW','(50.000000)','(inf)','-X')");
    EXPECT_EQ(tolmar::runReport().passed().back().why, "holds a number that is not finite");
    enterElement(out.stream(), "");
    EXPECT_EQ(out.text(), "call !!ORNACataPtaxi('/A-PT','1','BW','(50.000000)','(25.500000)','-X')\n"
                          "call !!ORNACataPtaxi('Nulref','1','BW','(50.000000)','(+HEIGHT)','-X')\nOLD /\n");
    EXPECT_EQ(limitedText("a\r\nb", 120), "'ab'");
    EXPECT_EQ(limitedText("O'N|", 120), "'O\"N|'");
    EXPECT_EQ(limitedText(std::string(60, '\xB0'), 120).size(), 31U);
    EXPECT_EQ(limitedText(std::string(200, 'a'), 500).size(), 122U);
}

constexpr const char* boltParts =
    R"({"id":5,"class":"HextBolt","cname":"stud","type":"ST","spec":"M16x80","stan":"GB5","material":"35CrMo","boltSpec":"B1","weight":1e300,"standard":"STUD"},
       {"id":6,"class":"HextNut","type":"NT","spec":"M16","material":"45"},
       {"id":7,"class":"HxDbFlan2BoltNut","boltNum":2,"nutNum":4,"bolt":5,"size":"50","std":"HG20592","endType":"RF","rating":"16"},
       {"id":8,"class":"HxDbBoltNutModel","bolt":5,"nut":6,"flange":7},{"id":9,"class":"HxDbBoltNutModel","bolt":5,"nut":6})";

TEST_F(CatalogueTest, BoltsOfAFlangeFollowItsPoints) {
    configure(R"("skey":["##|##|##|##|##|##|XY"],"type":{"XY":"FLAN"},)"
              R"("boltText":{"BOLT":{"RTEXT":"<name>-<规格>-<个数>-<?>-<weight>","STEXT":"a<b"}})");
    addJson(boltParts);
    const std::vector<At> points = {{0, {9, 9, 9}}, {1, {-30, 9, 9}}, {2, {70, 9, 9}}};
    add(10, "HxDbTubeModelSpec", attributes("FLANGE", "Normal"), points, R"("bolts":8)");
    add(11, "HxDbTubeModelSpec", attributes("FLANGE", "Normal", R"(,"sch":"9")"), points, R"("bolts":8)");
    add(12, "HxDbTubeModelSpec", attributes("FLANGE", "Normal"), points, R"("bolts":8)");
    add(13, "HxDbTubeModelSpec", attributes("FLANGE", "Normal", R"(,"sch":"10")"), points, R"("bolts":9)");
    const std::string text = branchText({10});
    ASSERT_EQ(bolted.size(), 1U);
    const std::string name = names->components.getComponentName(at(10));
    const CataText read(text);
    const std::string item = read.calls("Sbol").at(0)->arguments.at(1);
    const std::string key = read.calls("CreateCate").at(1)->arguments.at(1);
    const std::string stype = read.calls("Bltp").at(0)->arguments.at(2);
    const std::string nut = read.calls("Sbol").at(0)->arguments.at(5);
    EXPECT_EQ(text.substr(text.find("call !!ORNACataBlta")),
              "call !!ORNACataBlta('/BLTAB')\nOLD /BLTAB\ncall !!ORNACataBlist('/BLIST')\n"
              "call !!ORNACataCreateCata('/BOLT_CATA')\ncall !!ORNACataCreateSec('/BOLT_CATA','/BOLT_SECT')\n"
              "call !!ORNACataBtse('/" +
                  name + "','/BOLT_10')\nOLD /BOLT_10\ncall !!ORNACataBltp('1','2.000000','" + stype +
                  "')\ncall !!ORNACataBltp('2','2.000000','" + stype + "')\ncall !!ORNACataCreateCate('/BOLT_SECT','" +
                  key + "','GB5')\ncall !!ORNACataCreateSdte('" + key + "','" + key +
                  "_B-DT','stud-M16x80-_2--_2147483647','a','',' ')\ncall !!ORNACataCreateSmte('" + key + "','" + key +
                  "_B-MT','35CrMo')\ncall !!ORNACataCreateSdte('" + key + "','" + key +
                  "_N-DT','','','',' ')\ncall !!ORNACataCreateSmte('" + key + "','" + key +
                  "_N-MT','45')\nOLD /BLIST\ncall !!ORNACataSbol('/BLIST','" + item +
                  "','2.000000','0.000000','2.000000','" + nut + "')\ncall !!ORNACataScomBoltArray('/" + name +
                  "-SC','/BOLT_10 ')\n");
    EXPECT_EQ(nut.substr(0, nut.size() / 2), nut.substr(nut.size() / 2 + 1));  // a nut at each end of a stud
    const std::string second = branchText({11});
    EXPECT_EQ(functionsOf(second.substr(second.find("call !!ORNACataBtse"))),
              (Functions{"Btse", "OLD", "Bltp", "Bltp", "ScomBoltArray"}));
    EXPECT_EQ(branchText({12}), "");
    const std::string bare = branchText({13});
    EXPECT_EQ(functionsOf(bare.substr(bare.find("call !!ORNACataBtse"))), (Functions{"Btse", "ScomBoltArray"}));
    EXPECT_TRUE(wasPassedOver(13, "has no bolt, nut or flange record"));
}

}  // namespace
