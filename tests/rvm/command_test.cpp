#include "generator/generate.h"
#include "support.h"

#include "platform/hxcom.h"
#include "rvm/command.h"
#include "rvm/shapes/object_material.h"
#include "scripts/node_name.h"
#include "support/export_test.h"
#include "tolmar/code_page.h"

#include <map>

namespace {

const char* const namesById = "function getNodeName(t) return 'N' .. t.objid end\n";

std::string cylinder(const char* material = nullptr) {
    return R"({"type":"HextCylinder3D","startPoint":[0,0,0],"endPoint":[0,0,9],"diameter":2)" +
           (material != nullptr ? R"(,"material":")" + std::string(material) + "\"" : "") + "}";
}

// Two sites of a main database. Site 2 has a pipeline with two branches, site 20 a grid and equipment.
const std::string plantObjects =
    R"({"id":2,"class":"HextSite","in":1,"name":"S"},{"id":3,"class":"HextZone","in":2,"name":"Z"},
    {"id":4,"class":"HextPipeline","in":3,"name":"L","color":3,"branches":[[5,6],[7]]},
    {"id":5,"class":"HxDbPipeSpec","in":4,"primitives":[)" +
    cylinder() + "," + cylinder("hext_temp_material") + R"(]},
    {"id":6,"class":"HxDbTubeModelSpec","in":4,"primitives":[)" +
    cylinder() + R"(,{"type":"HextPrimaryLine","startPoint":[0,0,0],"endPoint":[1,1,1]}]},
    {"id":7,"class":"HxDbTubeModelSpec","in":4,"kind":"valve","primitives":[]},
    {"id":8,"class":"HxDbTubeWeld","in":4,"primitives":[)" +
    cylinder() + R"(]},{"id":9,"class":"HxDbTubeModelSpec","in":4},
    {"id":20,"class":"HextSite","in":1,"name":"T"},{"id":21,"class":"HextZone","in":20},
    {"id":22,"class":"HextAxiss","in":21,"name":"grid"},
    {"id":23,"class":"HxDbAxissLine","in":22,"primitives":[]},
    {"id":24,"class":"HextEquipe","in":21,"name":"E"},{"id":25,"class":"HxDbEquipment","in":24,"color":9,"primitives":[)" +
    cylinder() + "]}";

class Rvmout : public ExportTest<TestUi> {
protected:
    Rvmout() { ui.answer = out().string(); }

    void load(const std::string& objects = plantObjects, const std::string& project = R"({"name":"P"})") {
        ExportTest::load(objects, project);
    }
    void option(const char* key) { root.write("plugins/nvoutplugins.ini", std::string("[Control]\n") + key + "=1\n"); }
    ReadPair readPair(const std::string& base = "out/P_M") {
        return {root.read(base + ".rvm"), root.read(base + ".txt")};
    }
    // The attribute text behind its header, without carriage returns.
    std::string attributes(const std::string& base = "out/P_M") {
        std::string text = root.read(base + ".txt");
        std::erase(text, '\r');
        const std::size_t end = text.find("END\n");
        return end == std::string::npos ? text : text.substr(end + 4);
    }
};

// ------------------------------------------------------------------------------------------------------------ forms

TEST_F(Rvmout, PlainFormWritesBothFilesInStep) {
    load();
    script(namesById);
    rvmout();
    const ReadPair pair = readPair();
    EXPECT_EQ(pair.rvm.project, "P");
    EXPECT_EQ(pair.rvm.database, "MAIN");
    EXPECT_EQ(pair.text.project, "P");
    EXPECT_EQ(pair.groups(), "M[1]\n"
                             "M/N2[1]\n"
                             "M/N2/N3[1]\n"
                             "M/N2/N3/N4[1]\n"
                             "M/N2/N3/N4/N5[5]\n"
                             "M/N2/N3/N4/N5/HextCylinder3D1[5] 8!\n"
                             "M/N2/N3/N4/N5/HextCylinder3D1[5] 8\n"
                             "M/N2/N3/N4/N6[252]\n"
                             "M/N2/N3/N4/N6/HextCylinder3D1[252] 8\n"
                             "M/N2/N3/N4/N7[5]\n"
                             "M/N20[1]\n"
                             "M/N20/N21[1]\n"
                             "M/N20/N21/N24[1]\n"
                             "M/N20/N21/N24/N25[19]\n"
                             "M/N20/N21/N24/N25/HextCylinder3D1[19] 8\n");
    EXPECT_EQ(attributes(), "NEW M\nNEW N2\n\tNEW N3\n\t\tNEW N4\n\t\t\tNEW N5\n\t\t\tEND\n\t\t\tNEW N6\n\t\t\tEND\n"
                            "\t\t\tNEW N7\n\t\t\tEND\n\t\tEND\n\tEND\nEND\n"
                            "NEW N20\n\tNEW N21\n\t\tNEW N24\n\t\t\tNEW N25\n\t\t\tEND\n\t\tEND\n\tEND\nEND\n");
    EXPECT_EQ(ui.boxes, std::vector<std::string>{"导出结束"});
    EXPECT_EQ(passedOverRows(), "6 primitive: HextPrimaryLine: it is no solid\n"
                                "9 object: it has no shape\n"
                                "22 grid: grids have no place in an RVM file\n");
    EXPECT_EQ(tolmar::runReport().outcome(), tolmar::RunOutcome::Done);
    EXPECT_EQ(tolmar::runReport().files().size(), 2U);
}

const char* const twoDatabases =
    R"({"format":"tessaro-plant","version":1,"project":{"name":"P:1"},"databases":[{"name":"MAIN","shortName":"M","root":1},
    {"name":"O","shortName":"m","root":101},{"name":"E","shortName":"E","root":201}],"objects":[
    {"id":1,"class":"HextWorld"},{"id":2,"class":"HextSite","in":1,"name":"A"},
    {"id":101,"class":"HextWorld"},{"id":102,"class":"HextSite","in":101,"name":"B"},
    {"id":201,"class":"HextWorld"}]})";

TEST_F(Rvmout, PlainFormGoesOnAfterARootThatFails) {
    loadText(twoDatabases);
    script(namesById);
    rvmout();
    EXPECT_EQ(readPair("out/P_1_M").groups(), "M[1]\nM/N2[1]\n");
    EXPECT_EQ(readPair("out/P_1_m_2").groups(), "m[1]\nm/N102[1]\n") << "one name in another case gets its own file";
    EXPECT_NE(ui.printed.find("\n导出E失败"), std::string::npos);
    const std::string failed = root.read("out/P_1_E.rvm");
    EXPECT_EQ(failed.size(), 216U + rvm::textSize("P:1") + rvm::textSize("MAIN")) << "no END: behind the header";
    EXPECT_EQ(ui.boxes, std::vector<std::string>{"导出结束"});
    EXPECT_EQ(tolmar::runReport().passed().size(), 1U);
}

TEST_F(Rvmout, CustomFormJoinsAllRoots) {
    loadText(twoDatabases);
    script(std::string(namesById) + "function checkExportCustom() return true end");
    rvmout();
    const ReadPair pair = readPair("out/P_1");
    EXPECT_EQ(pair.groups(), "WORLD[1]\nWORLD/N2[1]\nWORLD/N102[1]\n");
    EXPECT_EQ(pair.rvm.project, "P:1");
    EXPECT_EQ(attributes("out/P_1"), "NEW WORLD\nNEW N2\nEND\nNEW N102\nEND\n");
}

TEST_F(Rvmout, CustomFormWithoutSitesIsAnEmptyFile) {
    load("");
    script("function checkExportCustom() return true end");
    rvmout();
    const ReadPair pair = readPair("out/P");
    EXPECT_EQ(pair.rvm.groups.size(), 0U);
    EXPECT_EQ(root.read("out/P.txt"), "");
    EXPECT_EQ(tolmar::runReport().passed().size(), 1U);
}

// ------------------------------------------------------------------------------------------------- names and scripts

TEST_F(Rvmout, NamesOfAPipelineAreCountedFromTheSecondUseOn) {
    load();
    script("function getNodeName(t) if t.isplineobj and t.objid > 4 then return 'V1' end return '' end");
    rvmout();
    const std::string groups = readPair().groups();
    EXPECT_NE(groups.find("M/Other/Other/Other/V1[5]\n"), std::string::npos) << groups;
    EXPECT_NE(groups.find("M/Other/Other/Other/V12[252]\n"), std::string::npos) << groups;
    EXPECT_NE(groups.find("M/Other/Other/Other/V13[5]\n"), std::string::npos) << groups;
    EXPECT_NE(groups.find("M/V1/V1/V1/Other"), std::string::npos) << "down to managers all count as pipeline objects";
}

TEST_F(Rvmout, NamesAndTextsAreUtf8InBothFiles) {
    load(R"({"id":2,"class":"HextSite","in":1,"name":"厂"})", R"({"name":"工程"})");
    script("function getNodeName(t) return plant.displayName(t.objid) end\n"
           "function getReferenceRvm(t) return {{'名', plant.displayName(t.objid)}} end");
    rvmout();
    const ReadPair pair = readPair(tolmar::toUtf8("out/工程_M"));
    EXPECT_EQ(pair.rvm.groups.at(1).name, tolmar::toUtf8("厂"));
    EXPECT_EQ(pair.rvm.project, "工程") << "as the platform delivers it";
    EXPECT_EQ(pair.text.project, tolmar::toUtf8("工程"));
    const std::pair<std::string, std::string> attribute(tolmar::toUtf8("名"), tolmar::toUtf8("厂"));
    ASSERT_EQ(pair.text.elements.at(1).attributes.size(), 1U);
    EXPECT_EQ(pair.text.elements[1].attributes[0], attribute);
    option("rvmCompat");
    rvmout();
    EXPECT_EQ(readPair(tolmar::toUtf8("out/工程_M")).rvm.project, tolmar::toUtf8("工程")) << "for strict readers";
}

TEST_F(Rvmout, TheScriptIsLoadedAfreshForEachRun) {
    load();
    script(namesById);
    rvmout();
    script("function getNodeName(t) return 'second' end");
    rvmout();
    EXPECT_EQ(readPair().rvm.groups.at(1).name, "second");
    script("function getNodeName(t) return 'early' end error('late')");
    rvmout();
    EXPECT_EQ(readPair().rvm.groups.at(1).name, "early") << "what a failing script has defined is called";
}

// --------------------------------------------------------------------------------------------------------- branches

TEST_F(Rvmout, ExpandedPipelinesHaveAGroupForEachBranch) {
    load();
    script(std::string(namesById) + "function getReferenceRvm(t) return {{'id', t.objid}} end");
    option("nvExpandBranch");
    rvmout();
    const std::string groups = readPair().groups();
    EXPECT_NE(groups.find("M/N2/N3/N4[1]\nM/N2/N3/N4/Branch:0[1]\nM/N2/N3/N4/Branch:0/N5[5]\n"), std::string::npos)
        << groups;
    EXPECT_NE(groups.find("M/N2/N3/N4/Branch:1[1]\nM/N2/N3/N4/Branch:1/N7[5]\n"), std::string::npos) << groups;
    EXPECT_NE(attributes().find("\t\tNEW Branch:0\n\t\tid:=  0\n\t\t\tNEW N5\n\t\t\t\tid:=  5\n"), std::string::npos)
        << attributes();
    EXPECT_EQ(attributes().find("NEW N4"), std::string::npos);
    EXPECT_EQ(passedOverIds(), "6 9 22 ") << "a line, a component in no branch, and a grid";
}

// -------------------------------------------------------------------------------------------------------- selection

TEST_F(Rvmout, WithoutASelectionNothingIsWritten) {
    load();
    ui.onForm = [](OrnLogicForm& form) { form.onControlClicked(OrnLogicForm::ResultCancel); };
    rvmout();
    EXPECT_EQ(tolmar::runReport().outcome(), tolmar::RunOutcome::Cancelled);
    ui.onForm = [](OrnLogicForm& form) { form.onControlClicked(OrnLogicForm::ResultOk); };
    rvmout();
    EXPECT_EQ(tolmar::runReport().outcome(), tolmar::RunOutcome::Failed);
    EXPECT_TRUE(ui.boxes.empty());
    EXPECT_FALSE(root.exists("out/P_M.rvm"));
    tolmar::runReport().clear();
    loadText(R"({"format":"tessaro-plant","version":1,"databases":[{"name":"D"}],"objects":[]})");
    rvmout();
    EXPECT_EQ(ui.boxes.size(), 1U);
    EXPECT_EQ(tolmar::runReport().outcome(), tolmar::RunOutcome::Refused);
}

TEST_F(Rvmout, UncheckedManagersStayOut) {
    load();
    script(namesById);
    ui.uncheck({u"L", u"E"});
    rvmout();
    EXPECT_EQ(readPair().groups(), "M[1]\nM/N20[1]\nM/N20/N21[1]\n") << "an only child takes its parents along";
}

// ------------------------------------------------------------------------------------------- progress, cancel, files

TEST_F(Rvmout, EveryLevelHasItsRow) {
    load();
    script(namesById);
    class Watcher final : public TestUi {
    public:
        void progressChanged(const tolmar::ProgressState& state) override {
            if (state.open) {
                titles.push_back(state.title);
                for (const auto& bar : state.bars) {
                    seen[bar.text] = bar.value;
                }
                rows = state.bars.size();
            }
        }
        std::vector<std::string> titles;
        std::map<std::string, int> seen;
        std::size_t rows = 0;
    };
    Watcher watcher;
    watcher.answer = ui.answer;
    rvmout();
    EXPECT_EQ(watcher.rows, 3U);
    EXPECT_EQ(watcher.titles.front(), "导出M");
    EXPECT_EQ(watcher.seen.at("Site:S"), 50);
    EXPECT_EQ(watcher.seen.at("Site:T"), 100);
    EXPECT_EQ(watcher.seen.at("Zone:Zone:"), 100);
    EXPECT_EQ(watcher.seen.at("N4"), 33) << "a grid counts as a manager of the tree";
}

TEST_F(Rvmout, ACancelledExportLeavesNoFileThatLooksWhole) {
    load();
    ui.cancelAt = 5;
    rvmout();
    EXPECT_EQ(ui.boxes, std::vector<std::string>{"导出取消"});
    EXPECT_FALSE(ui.progress.open);
    readers::Findings findings;
    EXPECT_FALSE(std::filesystem::exists(root.path() / "out" / "P_M.rvm"));
    EXPECT_FALSE(readers::rvm::readRvm(root.read("out/P_M.rvm.incomplete"), findings).isWhole);
}

// ----------------------------------------------------------------------------------------------------------- colours

TEST_F(Rvmout, ColoursBecomeMaterials) {
    const std::uint32_t materials[] = {0, 25, 4, 5, 6, 7, 16, 17, 18, 19, 10, 11};
    for (int index = 0; index < 12; ++index) {
        EXPECT_EQ(rvm::rvmMaterial(index), materials[index]);
    }
    EXPECT_EQ(rvm::rvmMaterial(255), 255U);
    EXPECT_EQ(rvm::rvmMaterial(-1), 0U);
}

TEST_F(Rvmout, AnObjectsColourIsItsOwnOrItsOwners) {
    const std::string objects =
        R"({"id":2,"class":"HextPipeline","in":1,"color":7},{"id":10,"class":"HxDbPipeSpec","in":2,"color":3},
        {"id":11,"class":"HxDbTubeModelSpec","in":2,"kind":"valve","color":3},
        {"id":12,"class":"HxDbTubeModelSpec","in":2,"color":3},{"id":13,"class":"HxDbEquipment","in":2,"color":3},
        {"id":14,"class":"HxDbAcadSerialObject","in":2,"color":4},{"id":15,"class":"HxDbTubeWeld","in":2,"color":5},
        {"id":16,"class":"HxDbTubeModelSpec","owner":13},{"id":17,"class":"HxDbTubeStop","in":2,"color":2})";
    const auto materials = [] {
        std::string text;
        for (int id = 10; id <= 17; ++id) {
            text += std::to_string(rvm::objectMaterial(*openAs<HxDbSmrtlnEntity>(HxDbObjectId(id)))) + " ";
        }
        return text;
    };
    load(objects);
    EXPECT_EQ(materials(), "17 17 248 5 6 7 255 4 ");
    load(objects, R"({"weldColor":8})");
    EXPECT_EQ(materials(), "17 17 248 5 6 18 255 4 ");
}

// ---------------------------------------------------------------------------------------------------- strict readers

const std::string severalManagers =
    R"({"id":2,"class":"HextSite","in":1},{"id":3,"class":"HextZone","in":2},
    {"id":4,"class":"HextEquipe","in":3},{"id":5,"class":"HxDbEquipment","in":4,"primitives":[)" +
    cylinder() + R"(]},{"id":6,"class":"HextEquipe","in":4},{"id":7,"class":"HxDbEquipment","in":6,"primitives":[)" +
    cylinder() + R"(]},{"id":8,"class":"HextEquipe","in":3},{"id":9,"class":"HxDbEquipment","in":8,"primitives":[)" +
    cylinder() + "," + cylinder("hext_temp_material") + R"(]},
    {"id":10,"class":"HxDbEquipment","in":8,"primitives":[]},
    {"id":11,"class":"HextPipeline","in":3,"branches":[[12],[]]},{"id":12,"class":"HxDbPipeSpec","in":11,"primitives":[]},
    {"id":13,"class":"HextPipeline","in":3,"branches":[[14]]},{"id":14,"class":"HxDbPipeSpec","in":13,"primitives":[]},
    {"id":15,"class":"HextZone","in":2},{"id":16,"class":"HextZone","in":2})";

TEST_F(Rvmout, SeveralPartsOfAManagerShareItsGroup) {
    load(severalManagers);
    script(namesById);
    rvmout();
    EXPECT_NE(attributes().find("\t\tNEW N4\n\t\t\tNEW N5\n\t\t\tEND\n\t\tEND\n\t\tNEW N4\n\t\t\tNEW N7\n"),
              std::string::npos)
        << attributes();
    EXPECT_NE(readPair().groups().find("M/N2/N3/N4[1]\nM/N2/N3/N4/N5[0]\nM/N2/N3/N4/N5/HextCylinder3D1[0] 8\n"
                                       "M/N2/N3/N4/N7[0]\n"),
              std::string::npos);
}

TEST_F(Rvmout, StrictReadersGetTheSameUniqueTreeInBothFiles) {
    load(severalManagers);
    for (const bool expands : {false, true}) {
        root.write("plugins/nvoutplugins.ini",
                   std::string("[Control]\nrvmCompat=1\nnvExpandBranch=") + (expands ? "1" : "0") + "\n");
        rvmout();
        const ReadPair pair = readPair();
        EXPECT_TRUE(pair.text.isRootClosed());
        const std::string groups = pair.groups();
        EXPECT_NE(groups.find("M/Other/Other/Other[1]\nM/Other/Other/Other/Other[0]\n"), std::string::npos) << groups;
        EXPECT_NE(groups.find("M/Other/Other/Other_2/Other[0]\n"), std::string::npos) << groups;
        EXPECT_NE(groups.find("M/Other/Other/Other_3/Other_2[0]\n"), std::string::npos) << groups;
        EXPECT_NE(groups.find("M/Other/Other_3[1]\n"), std::string::npos) << groups;
        EXPECT_NE(groups.find("/HextCylinder3D1_2[0] 8\n"), std::string::npos) << groups;
        EXPECT_EQ(groups.find("/Branch:0_2[1]\n") != std::string::npos, expands) << groups;
    }
}

TEST_F(Rvmout, NamesOfTwoLinesAreOneForStrictReadersAndReportedElse) {
    load();
    script("function getNodeName(t) return 'two\\r\\nlines' end");
    const auto namesReported = [] {
        const auto& passed = tolmar::runReport().passed();
        return std::count_if(passed.begin(), passed.end(), [](const auto& one) { return one.what == "name"; });
    };
    tolmar::runReport().clear();
    rvmout();
    EXPECT_GT(namesReported(), 5);
    option("rvmCompat");
    tolmar::runReport().clear();
    rvmout();
    EXPECT_EQ(namesReported(), 0);
    const std::string groups = readPair().groups();
    EXPECT_NE(groups.find("/two lines"), std::string::npos) << groups;
}

// ------------------------------------------------------------------------------------------------- generated plants

TEST_F(Rvmout, GeneratedPlantsComeOutWholeWithEveryOption) {
    plant::GenerateOptions size;
    size.objects = 3000;
    loadText(plant::generateModelText(size));
    const std::string project = HextSystem::getCurrentProjName();
    const std::string base = "out/" + project;
    std::size_t primitives = 0;
    for (const char* custom : {"true", "false"}) {
        script("function getNodeName(t) return plant.displayName(t.objid) end\n"
               "function getReferenceRvm(t) return plant.attributes(t.objid) end\n"
               "function checkExportCustom() return " +
               std::string(custom) + " end");
        for (const char* options : {"", "nvExpandBranch=1", "rvmCompat=1", "nvExpandBranch=1\nrvmCompat=1"}) {
            std::filesystem::remove_all(root.path() / "out");
            std::filesystem::create_directories(root.path() / "out");
            root.write("plugins/nvoutplugins.ini", std::string("[Control]\n") + options + "\n");
            ui.boxes.clear();
            rvmout();
            EXPECT_EQ(ui.boxes, std::vector<std::string>{"导出结束"});
            std::size_t count = 0;
            for (const auto& entry : std::filesystem::directory_iterator(root.path() / "out")) {
                if (entry.path().extension() == ".rvm") {
                    count += readPair("out/" + entry.path().stem().string()).rvm.primitives.size();
                }
            }
            EXPECT_GT(count, 3000U) << options;
            primitives = *options == '\0' && *custom == 't' ? count : primitives;
            if (*options == '\0') {
                EXPECT_EQ(count, primitives) << "both forms hold the same";
            }
        }
    }
}

}  // namespace
