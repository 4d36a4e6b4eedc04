// The command as a whole: what goes out of a tree, what is passed over, bars, cancel and failures.
#include "eem/color.h"
#include "support.h"

namespace {

const char* const namesById = "function getNodeName(t) return 'N' .. t.objid end\n";

std::string solid(const std::string& members) {
    return R"({"type":)" + members + "}";
}
const std::string cylinder = solid(R"("HextCylinder3D","startPoint":[0,0,0],"endPoint":[0,0,9],"diameter":2)");
const std::string insulation =
    solid(R"("HextCylinder3D","startPoint":[0,0,0],"endPoint":[0,0,9],"diameter":4,"material":"hext_temp_material")");
const std::string sphere = solid(R"("HextSphere3D","center":[0,0,0],"radius":2)");
const std::string line = solid(R"("HextPrimaryLine","startPoint":[0,0,0],"endPoint":[1,1,1])");
const std::string note = solid(R"("HextPrimaryText","text":"T","position":[0,0,0])");

std::string object(int id, const char* type, int in, const std::string& more = {}) {
    return R"({"id":)" + std::to_string(id) + R"(,"class":")" + type + "\"" +
           (in != 0 ? R"(,"in":)" + std::to_string(in) : "") + (more.empty() ? "" : "," + more) + "}";
}
std::string shaped(int id, const char* type, int in, const std::string& primitives, const std::string& more = {}) {
    return object(id, type, in, "\"primitives\":[" + primitives + "]" + (more.empty() ? "" : "," + more));
}
std::string joined(std::initializer_list<std::string> objects) {
    std::string all;
    for (const std::string& one : objects) {
        all += (all.empty() ? "" : ",") + one;
    }
    return all;
}
std::string siteAndZone() {
    return joined({object(2, "HextSite", 1, R"("name":"S")"), object(3, "HextZone", 2, R"("name":"Z")")});
}

// A pipeline of colour 3 with everything that a pipe may hold, and equipment.
std::string pipeAndPump() {
    return joined({siteAndZone(), object(4, "HextPipeline", 3, R"("name":"L","attrs":{"color":"3"})"),
                   shaped(5, "HxDbPipeSpec", 4, cylinder + "," + sphere + "," + insulation),
                   shaped(6, "HxDbTubeModelSpec", 4, cylinder + "," + line),
                   shaped(7, "HxDbTubeModelSpec", 4, cylinder, R"("kind":"valve")"),
                   shaped(8, "HxDbTubeModelSpec", 4, cylinder, R"("color":7)"), shaped(9, "HxDbTubeWeld", 4, cylinder),
                   shaped(10, "HxDbTubeStop", 4, cylinder), object(20, "HextEquipe", 3, R"("name":"P")"),
                   shaped(21, "HxDbTubeModelSpec", 20, line), shaped(22, "HxDbNonTube", 20, cylinder, R"("color":9)"),
                   shaped(23, "HxDbTubeModelSpec", 20, line), shaped(24, "HxDbEquipment", 20, cylinder)});
}

class Ornaout : public EemRunTest {
protected:
    // The last words of the records of a block.
    std::vector<std::uint32_t> colours(std::int64_t id) {
        std::vector<std::uint32_t> words;
        for (const readers::eem::Block& block : read().blocks) {
            for (const readers::eem::Record& record : block.records) {
                if (block.id == id) {
                    words.push_back(record.color);
                }
            }
        }
        return words;
    }
    // What was printed behind the line about a script that is not there.
    std::string said() const { return ui.printed.substr(std::min(ui.printed.find("准备"), ui.printed.size())); }
    std::string sideText() {
        std::string result;
        read();
        for (const readers::eem::SideMember& member : side) {
            result += member.key + " " + member.className + " " + member.name;
            for (const auto& [key, value] : member.attributes) {
                result += " " + key + "=" + value;
            }
            result += "\n";
        }
        return result;
    }
};

using Words = std::vector<std::uint32_t>;

// --------------------------------------------------------------------------------------------------------- the model

TEST_F(Ornaout, WritesSmartObjectsInTheirColours) {
    loadObjects(pipeAndPump());
    ornaout();
    EXPECT_EQ(blocks(), "5[0 11 0] 6[0 20] 7[0] 8[0] 21[20] 22[0] 23[20] 24[0]");
    EXPECT_EQ(colours(5), (Words{eem::colorWord(3), eem::colorWord(1003), eem::colorWord(503)}));
    EXPECT_EQ(colours(6), (Words{eem::colorWord(1003), 1003})) << "a fitting is inverse";
    EXPECT_EQ(colours(7), (Words{eem::colorWord(3)})) << "a valve is not";
    EXPECT_EQ(colours(8), (Words{eem::colorWord(1007)})) << "its own colour comes first";
    EXPECT_EQ(colours(21), Words{1000});
    EXPECT_EQ(colours(23), Words{1009}) << "the colour of the object before it";
    EXPECT_EQ(colours(24), Words{eem::colorWord(0)}) << "no component";
    EXPECT_EQ(passedOver(), "") << "welds and stops are no losses";
    EXPECT_EQ(ui.boxes, std::vector<std::string>{"导出结束"});
    EXPECT_EQ(said(), "准备输出10个对象已经输出10个对象");
    EXPECT_EQ(ui.dialog.defaultExtension + ui.dialog.filter + ui.dialog.fileName, "eemEEM文件 (*.eem)|*.eem||");
    EXPECT_TRUE(ui.dialog.save && ui.dialog.overwritePrompt);
    EXPECT_EQ(outcome(), tolmar::RunOutcome::Done);
    EXPECT_EQ(tolmar::runReport().files().size(), 2U);
}

TEST_F(Ornaout, NamesAndPropertiesComeFromTheScript) {
    loadObjects(pipeAndPump());
    script(std::string(namesById) +
           "function getReference(t) if t.objid > 6 then return {} end\n"
           "return {{key='管线号',value='L-1'},{key='n',value=t.objid},{key='',value='\"'}} end");
    ornaout();
    EXPECT_EQ(sideText().substr(0, sideText().find("\n7 ")),
              "5 HxDbPipeSpec N5 管线ID=L-1 n=5 =\"\n6 HxDbTubeModelSpec N6 管线号=L-1 n=6 =\"");
    EXPECT_EQ(side.at(2).attributes.size(), 0U);
    root.write("plugins/nvoutplugins.lua", "");
    destroyScriptHost();
    ornaout();
    EXPECT_EQ(sideText().substr(0, 21), "5 HxDbPipeSpec Other\n");
}

TEST_F(Ornaout, PrimitivesWithoutARecordLeaveTheCount) {
    loadObjects(joined({siteAndZone(), object(4, "HextEquipe", 3), shaped(5, "HxDbEquipment", 4, note + "," + note),
                        shaped(6, "HxDbEquipment", 4, line + "," + note), shaped(7, "HxDbEquipment", 4, ""),
                        object(8, "HxDbEquipment", 4, R"("name":"bare")"),
                        shaped(9, "HxDbAcadSerialObject", 4, cylinder), shaped(10, "HxDbBoltNutModel", 4, cylinder)}));
    ornaout();
    EXPECT_EQ(blocks(), "5[] 6[20] 7[]");
    EXPECT_EQ(read().blocks[0].end, 50U) << "the name Other is a byte longer than one that makes 49";
    EXPECT_EQ(passedOver(), "5 primitive; 5 primitive; 6 primitive; 8 object; 9 object; 10 object; ");
}

TEST_F(Ornaout, AnUnselectedObjectEndsItsList) {
    loadObjects(joined({siteAndZone(), object(4, "HextEquipe", 3), shaped(5, "HxDbEquipment", 4, line),
                        shaped(6, "HxDbEquipment", 4, line, R"("name":"out")"), shaped(7, "HxDbEquipment", 4, line),
                        shaped(8, "HxDbTubeWeld", 4, line), object(9, "HextEquipe", 3, R"("name":"none")"),
                        shaped(10, "HxDbEquipment", 9, line), object(11, "HextEquipe", 3),
                        shaped(12, "HxDbEquipment", 11, line)}));
    ui.uncheck({u"out", u"none"});
    ornaout();
    EXPECT_EQ(blocks(), "5[20] 12[20]");
    EXPECT_EQ(passedOver(), "7 object; ") << "what was not selected is no loss";
    EXPECT_EQ(said(), "准备输出4个对象已经输出1个对象");
}

// A directory in a zone is walked as such; one in a directory with it and once more by itself.
std::string directories() {
    return joined({siteAndZone(), object(10, "HextZoneDirectory", 3, R"("name":"D")"),
                   object(11, "HextPipeline", 10, R"("attrs":{"color":"5"})"), shaped(12, "HxDbPipeSpec", 11, cylinder),
                   object(13, "HextZoneDirectory", 10), object(14, "HextEquipe", 13),
                   shaped(15, "HxDbEquipment", 14, line), object(16, "HextAxiss", 10),
                   shaped(17, "HxDbAxissLine", 16, line), object(18, "HextAxiss", 3, R"("name":"unwanted")"),
                   shaped(19, "HxDbAxissLine", 18, line)});
}

TEST_F(Ornaout, DirectoriesAreWalkedWithTheirOwn) {
    loadObjects(directories());
    ui.uncheck({u"unwanted"});
    ornaout();
    EXPECT_EQ(blocks(), "12[0] 15[20] 15[20]");
    EXPECT_EQ(colours(12), Words{eem::colorWord(5)});
    EXPECT_EQ(passedOver(), "16 grid; ");
    script("function getReference(t) return {a='b'} end");
    destroyScriptHost();
    ornaout();
    EXPECT_EQ(colours(12), Words{eem::colorWord(0)}) << "properties take the place of the attributes";
}

TEST_F(Ornaout, TellsWhatNoZoneLeadsTo) {
    loadObjects(joined({siteAndZone(), object(4, "HextEquipe", 2), shaped(5, "HxDbEquipment", 4, line),
                        shaped(6, "HxDbEquipment", 3, line), object(7, "HextZone", 2, R"("available":false)"),
                        object(8, "HextStdFloor", 2), object(9, "HextStruct", 8), object(10, "HextStruct", 9),
                        shaped(11, "HxDbStruct", 10, line)}));
    ornaout();
    EXPECT_EQ(blocks(), "11[20]");
    EXPECT_EQ(passedOver(), "7 object; 6 object; 4 manager; ") << "the dialog tells what does not open";
}

TEST_F(Ornaout, BrokenLinksEndNothingElse) {
    loadObjects(joined({directories(), object(30, "HextZone", 2), object(31, "HextEquipe", 30),
                        shaped(32, "HxDbEquipment", 31, line), object(33, "HextEquipe", 30)}));
    HxDbTreeNode* zone = hxcom::getDataManTreeRoot()->getSon()->getSon();
    HxDbTreeNode* directory = zone->getSon();
    HxDbTreeNode* inner = directory->getSon()->getBrother();
    HxDbTreeNode* manager = zone->getBrother()->getSon();
    plant::relinkSon(model->model(), *inner, directory);
    plant::relinkBrother(model->model(), *manager->getBrother(), manager);
    ornaout();
    EXPECT_NE(ui.printed.find("节点指向错误"), std::string::npos);
    EXPECT_EQ(ui.boxes, std::vector<std::string>{"导出结束"});
    EXPECT_EQ(blocks().substr(0, 5), "12[0]");
    EXPECT_EQ(blocks().find("32["), std::string::npos) << "the sons of a broken chain are passed over";
    EXPECT_NE(passedOver().find("tree"), std::string::npos);
}

TEST_F(Ornaout, AllTreesStandInOneFile) {
    loadText(
        R"({"format":"tessaro-plant","version":1,"databases":[{"name":"A","root":1},{"name":"B","root":101},{"name":"C"}],
         "objects":[{"id":1,"class":"HextWorld"},)" +
        joined({siteAndZone(), object(4, "HextEquipe", 3), shaped(5, "HxDbEquipment", 4, line),
                object(101, "HextZone", 0), object(102, "HextEquipe", 101), shaped(103, "HxDbEquipment", 102, line)}) +
        "]}");
    ornaout();
    EXPECT_EQ(blocks(), "5[20] 103[20]");
    EXPECT_EQ(said(), "准备输出2个对象已经输出2个对象");
    EXPECT_EQ(ui.log, "open 导出REVIT 3\n0=总进度:\n1=S\n2=Z\n3:100\n3:0\n1:100\nclose\n"
                      "open 导出REVIT 1\n0=总进度:\n1:100\n1:0\nclose\n");
}

TEST_F(Ornaout, BarsFollowTheLevels) {
    loadObjects(
        joined({object(2, "HextSite", 1), object(3, "HextZone", 2), object(4, "HextEquipe", 3),
                shaped(5, "HxDbEquipment", 4, line), shaped(6, "HxDbEquipment", 4, line), object(7, "HextEquipe", 3),
                shaped(8, "HxDbEquipment", 7, line), object(9, "HextZone", 2), object(10, "HextZoneDirectory", 2)}));
    ornaout();
    EXPECT_EQ(ui.log,
              "open 导出REVIT 3\n0=总进度:\n1=ORNA_SITE\n2=ORNA_ZONE\n3:50\n3:100\n3:0\n3:100\n3:0\n2:50\n1:33\n"
              "1:66\n2=ORNA_ZONEDIR\n2:0\nclose\n");
}

// ---------------------------------------------------------------------------------------------------------- papers

std::string papers() {
    return joined({object(2, "HextItem", 1), object(3, "HextUnit", 2, R"("name":"U")"),
                   object(4, "HextSite", 3, R"("name":"S")"), object(5, "HextZone", 4),
                   object(6, "HextPIDPaperManager", 5, R"("name":"P1")"), shaped(7, "HxDbEquipment", 6, line),
                   object(8, "HextEquipe", 5), shaped(9, "HxDbEquipment", 8, line),
                   object(10, "HextPIDPaperManager", 5, R"("name":"P2")"),
                   object(11, "HextPIDPaperManager", 4, R"("name":"P3")")});
}

TEST_F(Ornaout, TheModuleOfPapersWritesPapersAlone) {
    loadObjects(papers(), 73);
    script(std::string(namesById) + "function getReference(t) return {id=t.objid} end");
    ui.uncheck({u"P2"});
    ornaout();
    EXPECT_TRUE(read().isPapers);
    EXPECT_EQ(blocks(), "6[] 10[]") << "the selection plays no part";
    EXPECT_EQ(sideText(), "6 HextPIDPaperManager N6 id=6\n10 HextPIDPaperManager N10 id=10\n");
    EXPECT_EQ(passedOver(), "11 manager; ");
    EXPECT_EQ(said(), "准备输出2个对象已经输出2个对象");
    EXPECT_EQ(ui.log, "open 导出数据 3\n0=总进度:\n1=ORNA_ITEM\n1=U\n1=S\n2=ORNA_ZONE\n3:100\n3:0\n3:100\n3:0\n2:33\n"
                      "2:66\n1:50\nclose\n");
    EXPECT_EQ(bytes().substr(0, 11), std::string("\3\0\0\0PID\1\0\0\0", 11));
}

TEST_F(Ornaout, OtherModulesAndNoScopeGiveTheTrailerAlone) {
    const std::string trailer("\4\0\0\0ENDE", 8);
    loadObjects(pipeAndPump(), 48);
    ornaout();
    EXPECT_EQ(bytes(), trailer);
    EXPECT_EQ(root.read("plant.v1.json"), "{\r\n}");
    EXPECT_EQ(outcome(), tolmar::RunOutcome::Done);
    EXPECT_EQ(passedOver(), "48 model; ");
    for (const int module : {65, 73}) {
        tolmar::runReport().clear();
        ui.boxes.clear();
        loadObjects(papers(), module);
        ui.onForm = [](OrnLogicForm& form) { form.onControlClicked(OrnLogicForm::ResultCancel); };
        ornaout();
        EXPECT_EQ(bytes(), trailer);
        EXPECT_EQ(root.read("plant.v1.json"), "{\r\n}");
        EXPECT_EQ(ui.boxes, std::vector<std::string>{"导出结束"});
        EXPECT_EQ(outcome(), tolmar::RunOutcome::Cancelled);
    }
}

// --------------------------------------------------------------------------------------------- cancels and failures

TEST_F(Ornaout, ACancelAtAnyCallKeepsTheOldFileAndSetsWholeBlocksAside) {
    for (const int module : {65, 73}) {
        loadObjects(module == 65 ? pipeAndPump() : papers(), module);
        ornaout();
        const std::string whole = bytes();
        for (const int at : {1, 5, 10}) {
            std::filesystem::remove(root.path() / "plant.v1.json");
            tolmar::runReport().clear();
            ui.boxes.clear();
            ui.cancelAsked = 0;
            ui.cancelAt = at;
            ornaout();
            EXPECT_EQ(ui.boxes, std::vector<std::string>{"导出取消"});
            EXPECT_EQ(outcome(), tolmar::RunOutcome::Cancelled);
            EXPECT_FALSE(hasSideFile() || ui.progress.open);
            readers::Findings findings;
            const std::string cut = root.read("plant.v1.eem.incomplete");
            EXPECT_FALSE(readers::eem::readEem(cut, findings).isWhole);
            ASSERT_EQ(findings.size(), 1U) << allFindings(findings);
            EXPECT_EQ(findings[0].text, "the trailer is missing");
            EXPECT_EQ(cut, whole.substr(0, cut.size()));
            EXPECT_EQ(bytes(), whole) << "of the run before";
        }
        ui.cancelAt = 0;
    }
}

TEST_F(Ornaout, AFileThatCannotBeWrittenIsSaid) {
    std::filesystem::create_directories(root.path() / "side.json");
    struct Case {
        std::optional<std::string> answer;
        std::vector<std::string> boxes;
        tolmar::RunOutcome outcome;
    };
    // A side file that fails is told to the report alone.
    const Case cases[] = {
        {std::nullopt, {}, tolmar::RunOutcome::Cancelled},
        {(root.path() / "none" / "x.eem").string(), {"文件打开失败", "导出结束"}, tolmar::RunOutcome::Failed},
        {"/dev/full", {"文件写入失败", "导出结束"}, tolmar::RunOutcome::Failed},
        {(root.path() / "side.eem").string(), {"导出结束"}, tolmar::RunOutcome::Failed}};
    loadObjects(pipeAndPump());
    for (const Case& one : cases) {
        tolmar::runReport().clear();
        ui.boxes.clear();
        ui.answer = one.answer;
        ornaout();
        EXPECT_EQ(ui.boxes, one.boxes);
        EXPECT_EQ(outcome(), one.outcome);
    }
    EXPECT_FALSE(std::filesystem::exists("/dev/full.json"));
}

TEST_F(Ornaout, AFileThatWouldBeTooLargeIsRefused) {
    loadObjects(pipeAndPump());
    eem::exportTo(*ui.answer);
    const std::uint64_t size = bytes().size();
    std::filesystem::remove(root.path() / "plant.v1.json");
    eem::exportTo(*ui.answer, size - 1);
    EXPECT_EQ(ui.boxes.back(), "the EEM file would be larger than 2 GiB");
    EXPECT_EQ(bytes().size(), size) << "what stood there before stands still, and no part beside it";
    EXPECT_FALSE(std::filesystem::exists(*ui.answer + ".incomplete"));
    EXPECT_FALSE(hasSideFile());
    EXPECT_EQ(outcome(), tolmar::RunOutcome::Failed);
    eem::exportTo(*ui.answer, size);
    EXPECT_EQ(read().blocks.size(), 8U);
}

}  // namespace
