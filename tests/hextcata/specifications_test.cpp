// The tables of specifications and the connection table, beside the catalogue that they name.
#include "fixture.h"

#include "frame/progress_slot.h"
#include "hextinterface/hextcata/nozzle_list.h"
#include "hextinterface/ornatohextprocess/specs/created.h"
#include "hextinterface/ornatohextprocess/specs/generator.h"
#include "hextinterface/ornatohextprocess/specs/pipe_spec.h"

namespace {

class SpecTest : public CatalogueTest {
protected:
    // A component whose sizes, from end 1 on, stand in a specification of their own.
    void addSized(int id, const std::string& item, const std::string& smrtln, const std::string& spec,
                  std::vector<std::string> sizes, const std::string& more = "",
                  const std::string& objectClass = "HxDbTubeModelSpec", const std::string& members = "") {
        std::string ends;
        for (const std::string& size : sizes) {
            ends += (ends.empty() ? "" : ",") + (R"({"size":")" + size + R"("})");
        }
        addJson(R"({"id":)" + std::to_string(id + 1000) + R"(,"class":"HxDbTubeSpecification","ends":[)" + ends + "]}");
        add(id, objectClass,
            R"("item":")" + item + R"(","smrtln":")" + smrtln + R"(","specname":")" + spec + R"(","specid":")" +
                std::to_string(id + 1000) + R"(","minsul":"0","size1":")" + (sizes.empty() ? "" : sizes[0]) + '"' +
                more,
            {{0, {9, 9, 9}}, {1, {-80, 9, 9}}, {2, {90, 9, 9}}, {3, {9, 70, 9}}, {4, {9, -70, 9}}}, members);
    }
    // The catalogue, then the tables of one pipeline with these branches.
    void writeSpecs(const std::vector<std::vector<int>>& branches, const ObjectSet& skip = {}) {
        if (model == nullptr) {
            load();
        }
        tree.assign(1, {});
        for (const auto& ids : branches) {
            ComponentList& branch = tree[0].emplace_back();
            for (const int id : ids) {
                branch.push_back(at(id));
            }
        }
        udas.emplace((root.path() / "temp/hext/uda.txt").string(), *names);
        context.emplace(ExportContext{*names, *udas});
        const ProgressScope progress;
        {
            CataBuilder builder(folder(), *names);
            for (const ComponentList& branch : tree[0]) {
                builder.writeBranch(branch, skip);
            }
        }
        generator.emplace(folder(), *context, tree);
        beforeSpecs(*generator);
        generator->writePipeSpecs(skip);
    }
    std::string folder() const { return (root.path() / "temp" / "hext").string(); }
    // A file with bare line feeds.
    std::string file(const std::string& name) const {
        std::string text = root.read("temp/hext/" + name);
        std::erase(text, '\r');
        return text;
    }
    // What follows the fixed bend.
    std::string table() const {
        const std::string text = file("PipeCompSpecGenerator.txt");
        const std::string mark = "/FIX_BEND-MT =0 =0\n";
        return text.substr(text.find(mark) + mark.size());
    }
    std::string row(int id, const std::string& type, const std::string& bores) {
        const HxDbSmrtlnEntity* object = at(id);
        return type + "  */" + names->components.getSpcoShortName(object) + "  " + bores + "  " +
               names->components.getStype(object) + "  FALSE  /" + names->components.getScomName(object) + "  /" +
               names->components.getDtsetName(object) + "  /" + names->components.getMtsetName(object) + "  =0  =0\n";
    }

    BranchTree tree;  // the generator keeps a reference
    std::optional<UdaWriter> udas;
    std::optional<ExportContext> context;
    std::optional<SpecGenerator> generator;
    std::function<void(SpecGenerator&)> beforeSpecs = [](SpecGenerator&) {};
};

const std::string heading = "\nHEADING\nTYPE  NAME  PBOR0  PBOR1  PBOR2  PBOR3  STYP  SHOP  CATREF  DETAIL  MATXT  "
                            "CMPREF  BLTREF\nDEFAULTS\n-  -  -  -  -  -  =  =\n";
const std::string newHead = "\nMATREF =0\nFLUREF =0\nLINETYPE NULL\nBSPEC =0\n\nTEXT 'PIPING'\n";

TEST_F(SpecTest, GroupsByNameAndTypeAndWritesEachRowOnce) {
    configure(R"("skey":["TEE|##|##|##|##|##|TE","OLET|##|##|##|##|##|TE","##|##|##|##|##|##|AA"],)"
              R"("type":{"TE":"TEE","AA":"ACOM"})");
    addSized(10, "TEE", "Tee", "s2", {"50", "40", "30"}, R"(,"rating":"16","stan":"GB","serial":"S'1","note":"n")");
    addSized(11, "OLET", "Normal", "s2", {"80", "25"});
    addSized(12, "TEE", "Tee", "s2", {"60", "40", "30", "20"});
    addSized(13, "PART", "Normal", "s2", {"50"});
    addSized(14, "PART", "Cross", "S1", {"50", "40", "30", "20"});
    addSized(15, "TEE", "Tee", "s2", {"50", "40", "30"}, R"(,"rating":"16","stan":"GB","serial":"S'1","note":"n")");
    addSized(16, "WELD", "Weld", "s2", {}, "", "HxDbTubeWeld");
    addSized(17, "NOZ", "Normal", "s2", {}, "", "HxDbNozzleModel");
    addSized(18, "DUCT", "Tee", "s2", {"50"});
    writeSpecs({{11, 10, 12, 13, 14, 15, 16, 17, 18}, {16, 17}, {15}}, {at(18)});
    const std::string upper = names->components.getSpecName(at(14));
    const std::string lower = names->components.getSpecName(at(10));
    const std::string spec = "SPECIFICATION /";
    EXPECT_LT(upper, lower);
    EXPECT_EQ(table(), "\nNEW " + spec + upper + newHead + heading + row(14, "ACOM", "50  40  30  20") + "\nNEW " +
                           spec + lower + newHead + heading + row(13, "ACOM", "50  0  0  0") + heading +
                           row(10, "TEE", "50  40  30  0") + row(12, "TEE", "60  40  30  0") +
                           row(11, "TEE", "80  25  0  0") + "\nOLD " + spec + lower + "\n" + heading);
    const std::string tee = "OLD /" + names->components.getSpcoName(at(10)) +
                            "\n:Rating '16' \n:Standard 'GB' \n:StdSerial 'S''1' \n:CompNotes 'n' \n";
    const std::string values = file("PipeSpcoUdaSet.txt");
    EXPECT_NE(values.find(tee), std::string::npos) << values;
    EXPECT_NE(values.find(tee, values.find(tee) + 1), std::string::npos);  // again in the third branch
    EXPECT_EQ(values.find("Manu"), std::string::npos);
    EXPECT_EQ(createdSpcos().size(), 5U);
    EXPECT_EQ(createdSpcos().count(names->components.getSpcoName(at(15))), 1U);
    EXPECT_EQ(file("PipeCompSpecGenerator.txt")
                  .find("NEW SPECIFICATION /BEND_FIX\nMATREF =0\nFLUREF =0\nLINETYPE NULL\n"
                        "BSPEC =0\nTEXT 'PIPING'\nHEADING\nTYPE  NAME  PBOR0"),
              0U);
}

TEST_F(SpecTest, BoreColumnsGoByTheFamily) {
    addSized(10, "ELBOW", "Arc", "S", {"50", "50", "40"});
    addSized(11, "RELBOW", "Arc", "S", {"50", "0", "40"});
    addSized(12, "PIPE", "Pipe", "S", {"50", "50"});
    addSized(13, "RED", "Ru", "S", {"50", "40", "30", "20"});
    addSized(14, "GASKET", "Tee", "S", {"50", "40", "30"}, "", "HxDbTubeModelSpec", R"("kind":"virtualGasket")");
    addSized(15, "VALVE", "Angle", "S", {"50", "40", "30"}, "", "HxDbTubeModelSpec", R"("kind":"valve")");
    addSized(16, "TESO", "Pipe", "S", {"50", "40", "30"});
    addSized(17, "RED", "Ecc", "S", {"50", "40"});
    const std::vector<int> expected[] = {{0}, {0, 2}, {0}, {0, 1, 2}, {0, 1}, {0, 1}, {0, 1, 2}, {0, 1}};
    for (int id = 10; id < 18; ++id) {
        EXPECT_EQ(columnOrder(at(id)), expected[id - 10]) << id;
        EXPECT_EQ(columnCount(at(id)), static_cast<int>(expected[id - 10].size())) << id;
    }
    EXPECT_EQ(sizeAt(at(11), 3), 40);
    EXPECT_EQ(sizeAt(at(12), 9), 0);
}

TEST_F(SpecTest, BalloonsBorrowTheirBore) {
    addSized(10, "TEE", "Tee", "S", {"50", "40"});
    add(11, "HxDbBalloon", R"("item":"INST","specname":"S","minsul":"0")", {{1, {9, 9, 9}, 0, 10}},
        R"("refVec":[0,1,0],"insVec":[0,0,1])");
    writeSpecs({{10, 11}});
    EXPECT_NE(table().find(row(11, "INST", "50  050  050  050")), std::string::npos) << table();
}

TEST_F(SpecTest, ARowNeedsItsCatalogueEntryAndASpecificationItsName) {
    addSized(10, "TEE", "Tee", "S", {"50"});
    addSized(11, "TEE", "Tee", "", {"60"});
    addSized(12, "TEE", "Tee", "S", {"70"});
    beforeSpecs = [&](SpecGenerator&) { plant::setAttribute(*plant::currentModel(), 10, "sch", "new"); };
    writeSpecs({{11, 10}, {12}, {10, 12}});
    EXPECT_NE(ui.printed.find("Error:11<等级名称为空>"), std::string::npos);
    EXPECT_TRUE(wasPassedOver(11, "等级名称为空"));
    EXPECT_NE(table().find(row(12, "PCOM", "70  0  0  0")), std::string::npos) << table();
    EXPECT_EQ(createdSpcos().count(names->components.getSpcoName(at(11))), 0U);
}

// They go out as they are; the run report tells what the target cannot read.
TEST_F(SpecTest, TextsAndNamesThatBreakTheirLinesAreTold) {
    addSized(10, "TEE", "Tee", "S 1", {"50"}, R"(,"stan":"O'N","material":")" + std::string(121, 'm') + '"');
    addSized(11, "TEE", "Tee", "S'2", {"60"}, R"(,"sch":"a\nb","note":"c\rd")");
    addSized(12, "TEE", "Tee", std::string(45, 's'), {"70"},
             R"(,"stan":"O''N|","material":")" + std::string(120, 'm') + '"');
    addSized(13, "TEE", "Tee", std::string(52, 't'), {"80"});
    writeSpecs({{10, 11, 12, 13}});
    const std::pair<int, const char*> expected[] = {
        {10, "stan: a quote in it ends its argument too early"},
        {10, "material: it is cut to what an argument holds"},
        {10, "a blank or line break in it ends it wherever it is named"},
        {11, "specification: a quote in it ends its argument too early"},
        {11, "description: a line break splits its line"},
        {11, "sch: a line break splits its line"},
        {11, "note: a line break splits its line"},
        {12, "stan: a quote in it ends its argument too early"},
        {12, "it is longer than a name may be"},
        {13, "it is longer than a name may be"},
    };
    for (const auto& [id, why] : expected) {
        EXPECT_TRUE(wasPassedOver(id, why)) << id << " " << why;
    }
    EXPECT_EQ(tolmar::runReport().passed().size(), std::size(expected));
}

TEST_F(SpecTest, ComponentsThatTheCatalogueNeverMetHaveNoRow) {
    addSized(10, "TEE", "Tee", "S", {"50"}, R"(,"rating":"9")");
    const ComponentList branch = list({10});
    udas.emplace((root.path() / "temp/hext/uda.txt").string(), *names);
    context.emplace(ExportContext{*names, *udas});
    {
        PipeSpecWriter writer(folder() + "/a.txt", folder() + "/b.txt", *context);
        writer.writeBranchSpecs(branch, {});
        writer.close();
    }
    EXPECT_EQ(ui.printed, "Error:10<未创建该对象的SCOM>");
    EXPECT_TRUE(wasPassedOver(10, "未创建该对象的SCOM"));
    EXPECT_EQ(file("a.txt").find("*/"), std::string::npos);
    EXPECT_EQ(file("b.txt"), "OLD /" + names->components.getSpcoName(at(10)) + "\n:Rating '9' \n");
    EXPECT_TRUE(createdSpcos().empty());
    EXPECT_EQ(failureOf([&] { PipeSpecWriter(folder() + "/no/a.txt", folder() + "/b.txt", *context); }),
              "文件 " + folder() + "/no/a.txt 打开失败！");
}

TEST_F(SpecTest, HeadsNameABoltSpecificationThatStands) {
    addJson(R"({"id":5,"class":"HextBolt","type":"ST","spec":"M16","standard":"BOLT","boltSpec":"S"},
               {"id":6,"class":"HextNut","type":"NT","spec":"M16"},
               {"id":7,"class":"HxDbFlan2BoltNut","boltNum":4,"bolt":5,"size":"50","std":"HG'1"},
               {"id":8,"class":"HxDbBoltNutModel","bolt":5,"nut":6,"flange":7},
               {"id":15,"class":"HextBolt","type":"ST","spec":"M16","standard":"BOLT","boltSpec":"厂"},
               {"id":17,"class":"HxDbFlan2BoltNut","boltNum":4,"bolt":15,"size":"50"},
               {"id":18,"class":"HxDbBoltNutModel","bolt":15,"nut":6,"flange":17})");
    addSized(10, "TEE", "Tee", "S", {"50"});
    addSized(11, "TEE", "Tee", "S", {"60"});
    const std::vector<HxDbBoltNutModel*> bolts = {at<HxDbBoltNutModel>(8), at<HxDbBoltNutModel>(8),
                                                  at<HxDbBoltNutModel>(18)};
    beforeSpecs = [&](SpecGenerator& specs) { specs.writeBoltSpecs(bolts); };
    writeSpecs({{10}, {11}});
    const std::string name = names->components.getSpecName(at(10));
    EXPECT_NE(table().find("NEW SPECIFICATION /" + name +
                           "\nMATREF =0\nFLUREF =0\nLINETYPE NULL\nBSPEC /BOLT_S\n"
                           "BLTMETHOD 'NEW'\n\nTEXT 'PIPING'\n"),
              std::string::npos)
        << table();
    EXPECT_NE(table().find("OLD SPECIFICATION /" + name + "\nBSPEC /BOLT_S\nBLTMETHOD 'NEW'\n"), std::string::npos);
    std::string spec = file("BoltSpec.txt");
    const std::size_t second = spec.find("\nNEW SPEC", spec.find("BOLT  */"));
    EXPECT_NE(spec.find(tolmar::toUtf8("厂\nMATREF"), second), std::string::npos) << "heads are UTF-8: " << spec;
    spec.resize(std::min(second, spec.size()));
    EXPECT_EQ(spec.substr(0, spec.find("BOLT  */")),
              "\nNEW SPECIFICATION /BOLT_S\nMATREF =0\nFLUREF =0\nLINETYPE NULL\nBLTMETHOD 'NEW'\n\n\nHEADING\n"
              "TYPE  NAME  BDIA  BTYP  CATREF  DETAIL  MATXT  CMPREF  BLTREF\nDEFAULTS\n-  -  -  STUD\n\n");
    std::vector<std::string> rows;
    std::istringstream lines(spec.substr(spec.find("BOLT  */")));
    for (std::string line; std::getline(lines, line);) {
        rows.push_back(line);
    }
    ASSERT_EQ(rows.size(), 2U) << spec;
    EXPECT_NE(rows[0].find("_B-DT  /"), std::string::npos);
    EXPECT_NE(rows[0].find("_B-MT  =0  /BOLT_S_"), std::string::npos);
    EXPECT_NE(rows[1].find("_N-DT  /"), std::string::npos);
    EXPECT_EQ(rows[1].substr(rows[1].size() - 13), "_N-MT  =0  =0");
    const std::string values = file("BoltSpcoUdaSet.txt");
    EXPECT_EQ(values.find("OLD /BOLT_S/"), 0U);
    EXPECT_NE(values.find("\n:Standard |HG'1|\nOLD /BOLT_S/"), std::string::npos) << values;
}

TEST_F(SpecTest, TheFirstBranchTellsTheConnectionTable) {
    addSized(10, "TEE", "Tee", "S", {"50"}, R"(,"end1":"FLG")");
    addSized(11, "WELD", "Weld", "S", {"50"}, R"(,"end2":"BW")", "HxDbTubeWeld");
    writeSpecs({{}, {10}, {11}});
    std::string expected = "NEW CCTA /CCTA_1\n";
    for (const auto& [a, b] : {std::pair("ATT", "ATT"),
                               {"ATT", "CLAM"},
                               {"ATT", "FLG"},
                               {"ATT", "NONE"},
                               {"CATT", "CATT"},
                               {"CATT", "WELD"},
                               {"FLG", "OPEN"},
                               {"NONE", "WELD"}}) {
        expected += "NEW COCO /ORNA_" + std::string(a) + "_" + b + "\nCTYPE " + a + " " + b + "\nEND\n";
    }
    EXPECT_EQ(file("ConnTable.txt"), expected + "END\n");
}

TEST_F(SpecTest, NozzlesHaveATableOfTheirOwn) {
    const std::string nozzle = R"(,"size":"DN50","nozno":"N)";
    addSized(10, "NOZ", "Normal", "S", {"50"}, nozzle + R"(1","rating":"150")", "HxDbNozzleModel");
    addSized(11, "NOZ", "Normal", "S", {"20*30"}, nozzle + "2\"", "HxDbNozzleModel");
    addSized(12, "NOZ", "Normal", "T", {"50"}, nozzle + "3\"", "HxDbNozzleModel");
    std::vector<HxDbNozzleModel*> nozzles;
    for (const int id : {12, 11, 10, 10}) {
        nozzles.push_back(at<HxDbNozzleModel>(id));
    }
    writeSpecs({});
    const ProgressScope progress;
    generator->writeSpecHead();
    generator->writeNozzleSpecs({});
    EXPECT_FALSE(root.exists("temp/hext/nozzleSpec.txt"));
    generator->writeNozzleSpecs({nozzles[1]});
    EXPECT_EQ(file("nozzleSpec.txt"), "");
    generator->writeNozzleSpecs(nozzles);
    const auto block = [&](int id, const std::string& rating) {
        const HxDbSmrtlnEntity* object = at(id);
        return "\nNEW SPECIFICATION /" + names->components.getSpecName(object) + "\nPURPOSE NOZZLE\nDESC '#" + rating +
               "'\nMATREF =0\nFLUREF =0\nLINETYPE NULL\nBSPEC =0\n\n\nHEADING\n"
               "TYPE  NAME  PBOR0  CATREF  DETAIL  MATXT  CMPREF  BLTREF\nDEFAULTS\n-  -  0.00\nNOZZLE  */" +
               names->components.getSpcoShortName(object) + "  DN50  /" + names->components.getScomName(object) +
               "  =0  /" + names->components.getMtsetName(object) + "  =0  =0\n";
    };
    EXPECT_EQ(file("nozzleSpec.txt"),
              "Paragon\nOLD /*\nNEW SPWL /SPWL_NOZZLE\nPURPOSE EQUI\nDESC 'Equipment'\nSpecon\n" + block(12, "0.0") +
                  block(10, "150"));
    EXPECT_EQ(file("SpecCreate.txt"),
              "OLD /*\nParagon\nOLD /*\nNEW SPWL /SPWL_COMP\nOLD /SPWL_COMP\nNEW SPEC /*LIMBOSPEC\nSpecon\n");
}

TEST_F(SpecTest, InsulationIsGroupedByItsCode) {
    const auto pipe = [&](int id, const std::string& size, int thickness) {
        addSized(id, "PIPE", "Pipe", "S", {size}, "", "HxDbPipeSpec",
                 R"("insulation":{"thickness":)" + std::to_string(thickness) + R"(,"code":"H1"})");
    };
    pipe(10, "50", 40);
    pipe(11, "80", 40);
    pipe(12, "80", 60);
    createdIspecs().clear();
    writeSpecs({});
    for (const int id : {10, 11, 12}) {
        names->insulation.registerInsulation(at(id));
    }
    generator->writeInsulSpecs({});
    EXPECT_FALSE(root.exists("temp/hext/TempSpecGenerator.txt"));
    generator->writeInsulSpecs({at(10)});
    EXPECT_EQ(file("TempSpecGenerator.txt"),
              "\nNEW SPECIFICATION /H1\nMATREF =0\nFLUREF =0\nRATING 0.000\nLINETYPE NULL\nBSPEC =0\n\nTEXT 'INSUL'\n\n"
              "\nHEADING\nTYPE  NAME  TEMP  PBOR0  CATREF  DETAIL  MATXT  CMPREF  BLTREF\n"
              "INSU  */H1_40-SP  0,0  50,80  /INS_H1_40-SC  =0  /INS_H1_40-MT  =0  =0\n"
              "INSU  */H1_60-SP  0,0  80,80  /INS_H1_60-SC  =0  /INS_H1_60-MT  =0  =0\n");
    EXPECT_EQ(createdIspecs().count("H1"), 1U);
}

TEST_F(SpecTest, SupportsAndAttachmentsWhenTheyAreAskedFor) {
    addSized(10, "PIPE", "Pipe", "S", {"50"}, R"(,"end1":"BW")", "HxDbPipeSpec");
    for (const auto& [id, to] : {std::pair(20, 10), std::pair(21, 10), std::pair(22, 0)}) {
        add(id, "HxDbSupportModel", R"("item":"SUP","specname":"Q","size1":")" + std::to_string(id) + '"',
            {{1, {}, 0, to}});
    }
    const std::vector<HxDbSupportModel*> supports = {at<HxDbSupportModel>(20), at<HxDbSupportModel>(21),
                                                     at<HxDbSupportModel>(22)};
    writeSpecs({});
    generator->writeSupportSpecs({supports[0], supports[2]});
    generator->writeAttachSpecs(supports);
    const std::string head = "\nMATREF =0\nFLUREF =0\nLINETYPE NULL\nBSPEC =0\n\nTEXT 'PIPING'\n\nHEADING\n"
                             "TYPE  NAME  PBOR0  STYP  CATREF  DETAIL  MATXT  CMPREF  BLTREF\nDEFAULTS\n-  -  -  ";
    EXPECT_EQ(file("SpecSupportSpec.pmlmac"), "\nNEW SPECIFICATION /" + names->components.getSpecName(at(20)) + head +
                                                  "=\nPCLA  */" + names->components.getSpcoShortName(at(20)) +
                                                  "  50  TEXT 'SUPPORT'  /" + names->components.getScomName(at(20)) +
                                                  "  /" + names->components.getDtsetName(at(20)) + "  =0  =0  =0\n");
    EXPECT_EQ(file("SpecAttachSpec.pmlmac"), "\nNEW SPECIFICATION /ATTA_SPEC" + head + "ATTA\nATTA  */" +
                                                 names->attachments.getAttaShortName(at(10)) + "  50  " +
                                                 names->attachments.getAttaStype(at(10)) + "  /" +
                                                 names->attachments.getPointSetScName(at(10)) + "  /" +
                                                 names->attachments.getPointSetDtName(at(10)) + "  =0  =0  =0\n");
    EXPECT_EQ(file("SpecExecute.mac.tpl"), "$m [path]\\SupportSpec.pmlmac\n$m [path]\\AttachSpec.pmlmac\n");
    std::string lost;
    for (const tolmar::PassedOver& p : tolmar::runReport().passed()) {
        lost += std::to_string(p.id) + " " + p.what + ": " + p.why + "\n";
    }
    EXPECT_EQ(lost, "22 support row: is connected to nothing\n22 attachment row: is connected to nothing\n");
}

}  // namespace
