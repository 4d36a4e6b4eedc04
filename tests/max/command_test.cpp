// The tree, the groups and the rows of both files, and everything that a script can do to them.
#include "support.h"

#include "max/names.h"
#include "max/rapidxml.h"
#include "platform/hxcom.h"

#include <algorithm>
#include <set>

namespace {

using tolmar::RunOutcome;
using tolmar::toUtf8;

std::string box(const std::string& members = {}) {
    return R"({"type":"HextBox3D","point":[0,0,0],"xLength":1,"yLength":2,"zLength":3.5)" + members + "}";
}

// Object 5 has two boxes that share a side, 6 a line alone, 7 no shape at all.
const std::string line = R"({"type":"HextPrimaryLine","startPoint":[0,0,0],"endPoint":[1,1,1]})";
const std::string plantObjects =
    R"({"id":2,"class":"HextSite","in":1,"name":"S"},{"id":3,"class":"HextZone","in":2,"name":"Z"},
    {"id":4,"class":"HextPipeline","in":3,"name":"L"},
    {"id":5,"class":"HxDbPipeSpec","in":4,"color":20,"primitives":[)" +
    box() + R"(,{"type":"HextBox3D","point":[1.5,1,1.75],"pointKind":1,"xLength":1,"yLength":2,"zLength":3.5}]},
    {"id":6,"class":"HxDbTubeModelSpec","in":4,"objectName":"TEE","primitives":[)" +
    line + R"(]},
    {"id":7,"class":"HxDbTubeWeld","in":4},
    {"id":8,"class":"HextZone","in":2,"name":"empty"},
    {"id":10,"class":"HextZone","in":2,"name":"Y"},
    {"id":11,"class":"HextEquipe","in":10,"name":"E"},
    {"id":12,"class":"HxDbEquipment","in":11,"primitives":[)" +
    box() + "]}";

// "id Name" of all objects of a document by depth, one a line.
std::string outline(const Element& element, const std::string& indent = {}) {
    std::string text = indent + element["id"] + " " + element["Name"] + "\n";
    for (const Element& child : element.children) {
        if (child.name == "object") {
            text += outline(child, indent + " ");
        }
    }
    return text;
}

// The counts and numbers of a mesh group are those of its content.
void expectWholeMesh(const Element& group) {
    ASSERT_EQ(group.name, "meshGroup");
    const std::size_t points = group.number("pointNum");
    const std::size_t faces = group.number("faceNum");
    ASSERT_EQ(group.children.size(), points + faces);
    std::set<std::size_t> used;
    for (std::size_t i = 0; i < group.children.size(); ++i) {
        const Element& child = group.children[i];
        ASSERT_EQ(child.name, i < points ? "point" : "face");
        ASSERT_EQ(child.attributeNames(), "index pointX pointY pointZ");
        ASSERT_EQ(child.number("index"), i < points ? i : i - points);
        for (const char* corner : {"pointX", "pointY", "pointZ"}) {
            if (i >= points) {
                used.insert(child.number(corner));
            }
        }
    }
    EXPECT_EQ(used.size(), points);
    EXPECT_LT(*used.rbegin(), points);
}

TEST_F(MaxTest, BothFilesMirrorTheTreeUnderTheSameIds) {
    load(plantObjects);
    scriptWith("");
    run();
    EXPECT_EQ(outline(geometry), "1 W\n 2 S_2\n  3 Z_3\n   4 L_4\n    5 Pipe\n    6 TEE\n"
                                 "  8 Y_8\n   9 E_9\n    10 Other\n");
    EXPECT_EQ(outline(properties), "1 W\n 2 S_2\n  3 Z_3\n   4 L_4\n    5 ST-Pipe_5\n    6 ST-TEE_6\n    7 ST-Weld_7\n"
                                   "  8 Y_8\n   9 E_9\n    10 ST-Other_10\n");
    EXPECT_EQ(passedOverRows(), "6 primitive: it is no solid\n7 geometry: it has no shape\n");
    EXPECT_EQ(outcome(), RunOutcome::Done);
    EXPECT_EQ(ui.prompts, (std::vector<std::string>{"设置项目编码", "设置站场编号"}));
    EXPECT_TRUE(ui.boxes.empty());
    ASSERT_EQ(tolmar::runReport().files().size(), 2U);
}

TEST_F(MaxTest, AllSolidsOfAnObjectAreOneMesh) {
    load(plantObjects);
    scriptWith("function getObjCenterPt(id) if id == 5 then return {1, -2.5, 3e6} end return 'none' end");
    run();
    const Element& object = geometry.find("Name", "Pipe");
    ASSERT_EQ(object.children.size(), 1U);
    const Element& group = object.children[0];
    expectWholeMesh(group);
    EXPECT_EQ(group.attributeNames(), "insptX insptY insptZ pointNum faceNum colorR colorG colorB");
    EXPECT_EQ(group["insptX"] + group["insptY"] + group["insptZ"], "1.000000-2.5000003000000.000000");
    EXPECT_EQ(group["pointNum"] + " " + group["faceNum"], "12 24") << "the side in common once";
    EXPECT_EQ(group["colorR"] + " " + group["colorG"] + " " + group["colorB"], "255 63 0");
    std::multiset<std::string> corners;
    for (std::size_t i = 0; i < 8; ++i) {
        corners.insert(group.children[i]["pointX"] + group.children[i]["pointY"] + group.children[i]["pointZ"]);
    }
    EXPECT_EQ(corners.count("0.0000000.0000000.000000"), 1U);
    EXPECT_EQ(corners.count("1.0000002.0000003.500000"), 1U);
    const Element& other = geometry.find("Name", "Other").children.at(0);
    expectWholeMesh(other);
    EXPECT_EQ(other.attributeNames(), "pointNum faceNum colorR colorG colorB") << "its centre is no table";
    EXPECT_TRUE(geometry.find("Name", "TEE").children.empty()) << "no solid, no group";
}

TEST_F(MaxTest, SplinesHaveKnotsAtTheStartOfEachPart) {
    load(plantObjects);
    scriptWith("function isObjChangeMesh(id) return id ~= 5 end\nfunction getPartNum() return 3 end\n"
               "function getObjsize(id) return 'size ' .. id end\n"
               "function getObjCenterPt() return {0, 0, 1} end\n"
               "function changeObj4Spline() local t = {} for i = 1, 7 do t[i] = {i, 0, -i / 4} end return t end");
    run();
    const Element& group = geometry.find("Name", "Pipe").children.at(0);
    EXPECT_EQ(group.name, "splineGroup");
    EXPECT_EQ(group.attributeNames(), "insptX insptY insptZ pointNum partNum partSize colorR colorG colorB");
    EXPECT_EQ(group["pointNum"] + " " + group["partNum"] + " " + group["partSize"], "7 3 size 5");
    std::string types;
    for (std::size_t i = 0; i < group.children.size(); ++i) {
        const Element& point = group.children[i];
        EXPECT_EQ(point.name, "point");
        EXPECT_EQ(point.attributeNames(), "type index pointX pointY pointZ");
        EXPECT_EQ(point.number("index"), i);
        types += point["type"] + " ";
    }
    EXPECT_EQ(types, "knot interp interp knot interp interp knot ");
    EXPECT_EQ(group.children.at(6)["pointX"] + " " + group.children.at(6)["pointZ"], "7.000000 -1.750000");
}

TEST_F(MaxTest, PropertyRowsStandBehindTheFixedOnes) {
    load(plantObjects);
    scriptWith("function maxOutdata(id) return {{description = 'd', value = 12, key = 'k'}, {key = id}} end");
    run();
    const Element& object = properties.find("Name", "ST-Pipe_5");
    EXPECT_EQ(object.attributeNames(), "id Name ProjectCode stationname");
    EXPECT_EQ(object["ProjectCode"] + " " + object["stationname"], "PC ST");
    ASSERT_EQ(object.children.size(), 1U);
    const Element& group = object.children[0];
    EXPECT_EQ(group.name + " " + group.attributeNames() + " " + group["Name"], "propertyGroup Name ORNA");
    std::string rows;
    for (const Element& row : group.children) {
        EXPECT_EQ(row.attributeNames(), "key value description");
        rows += row["key"] + "=" + row["value"] + "/" + row["description"] + ";";
    }
    EXPECT_EQ(rows, toUtf8("site_no=ST/站场代号;unit_no=PC/项目编码;k=12/d;5=/;"));
}

TEST_F(MaxTest, NamesComeByClass) {
    load(R"({"id":20,"class":"HextPipeline","name":"a","displayName":"L"},{"id":21,"class":"HextEquipe","name":"E"},
        {"id":22,"class":"HxDbNozzleModel","no":"N1","objectName":"x"},{"id":23,"class":"HextStruct","name":"S"},
        {"id":24,"class":"HxDbStruct","objectName":"wall"},{"id":25,"class":"HextAxiss","name":"A"},
        {"id":26,"class":"HxDbAxissLine","objectName":"axis","no":"1"},{"id":27,"class":"HextSupport","name":"U"},
        {"id":28,"class":"HextBolt","cname":"bolt"},{"id":29,"class":"HxDbBalloon","no":"B7"},
        {"id":30,"class":"HxDbPipeSpec","objectName":"x"},{"id":31,"class":"HxDbTubeModelSpec","objectName":"TEE"},
        {"id":32,"class":"HxDbTubeWeld","objectName":"x"},{"id":33,"class":"HxDbTubeModel","objectName":"x"},
        {"id":34,"class":"HxDbTubeModelSpec"})");
    std::string names;
    for (int id = 20; id <= 34; ++id) {
        names += std::string(maxfile::objectName(*openAs<HxDbObject>(HxDbObjectId(id)))) + " ";
    }
    EXPECT_EQ(names, "L E N1 S wall A axis U bolt B7 Pipe TEE Weld Other  ");
}

TEST_F(MaxTest, NodesThatDoNotOpenTakeTheirBranchAlong) {
    load(plantObjects + R"(,{"id":9,"class":"HextPipeline","in":8,"available":false})");
    plant::makeUnavailable(model->model(), 3);
    scriptWith("");
    run();
    EXPECT_EQ(outline(geometry), "1 W\n 2 S_2\n  7 Y_7\n   8 E_8\n    9 Other\n") << "the ids of 4 to 6 are used up";
    EXPECT_EQ(passedOverRows(), "3 node: its object does not open\n4 node: its parent has no element\n"
                                "5 object: its manager has no element\n6 object: its manager has no element\n"
                                "7 object: its manager has no element\n9 node: its object does not open\n");
}

TEST_F(MaxTest, EmptyNamesFallBack) {
    load(R"({"id":2,"class":"HextPipeline","in":1},{"id":3,"class":"HxDbEquipment","in":2,"primitives":[]})");
    scriptWith("");
    run();
    EXPECT_EQ(outline(geometry), "1 W\n 2 _2\n  3 Other\n");
    TestModel nameless(R"({"format":"tessaro-plant","version":1,"project":{"name":"P"},"databases":[{"name":"MAIN",
        "root":1}],"objects":[{"id":1,"class":"HextWorld"},{"id":2,"class":"HextSite","in":1,"name":"S"}]})");
    ui.inputs = {"PC", "ST"};
    run();
    EXPECT_EQ(outline(geometry), "1 MAIN\n") << "the site has nothing below it";
}

// ------------------------------------------------------------------------------------------------------- the script

TEST_F(MaxTest, AScriptThatDoesNotLoadCostsTheObjectsAlone) {
    for (const char* lua : {"", "function (", "error('at load')", "if plant.className then error('x') end"}) {
        root.write("plugins/maxoutplugins.lua", lua);
        if (*lua == '\0') {
            std::filesystem::remove(root.path() / "plugins/maxoutplugins.lua");
        }
        tolmar::runReport().clear();
        ui.inputs = {"PC", "ST"};
        load(plantObjects);
        run();
        const std::string nodes = "1 W\n 2 S_2\n  3 Z_3\n   4 L_4\n  8 Y_8\n   9 E_9\n";
        EXPECT_EQ(outline(geometry), nodes) << lua;
        EXPECT_EQ(outline(properties), nodes) << lua;
        EXPECT_EQ(tolmar::runReport().passed().size(), 9U) << "the script, and four objects in two files";
        EXPECT_FALSE(ui.printed.empty());
        ui.printed.clear();
    }
}

TEST_F(MaxTest, NoStateSurvivesFromOneObjectOrDocumentToTheNext) {
    load(plantObjects);
    scriptWith("count = (count or 0) + 1\nstring.count = (string.count or 0) + 1\n"
               "getmetatable('').__index.seen = (getmetatable('').__index.seen or 0) + 1\n"
               "local function n() count = count + 1 return count .. string.count .. ('').seen end\n"
               "function isObjChangeMesh() return false end\nfunction getObjsize() return n() end\n"
               "function maxOutdata() return {{key = 'n', value = n()}} end");
    run();
    for (const char* name : {"Pipe", "TEE", "Weld", "Other"}) {
        EXPECT_EQ(geometry.find("Name", name).children.at(0)["partSize"], "211") << name;
    }
    for (const char* name : {"ST-Pipe_5", "ST-TEE_6", "ST-Weld_7", "ST-Other_10"}) {
        EXPECT_EQ(properties.find("Name", name).find("key", "n")["value"], "211") << name;
    }
}

TEST_F(MaxTest, AFailedCallReadsAsNil) {
    load(plantObjects);
    scriptWith("local function fail(id) if id == 5 then error('at 5') end end\n"
               "function isObjChangeMesh(id) fail(id) return true end\n"
               "function getObjCenterPt(id) fail(id) return {1, 2, 3} end\n"
               "function changeObj4Spline(id) fail(id) end\nfunction getObjsize(id) fail(id) end\n"
               "function maxOutdata(id) fail(id) return {{key = 'k'}} end");
    run();
    const Element& group = geometry.find("Name", "Pipe").children.at(0);
    EXPECT_EQ(group.name, "splineGroup") << "no answer is no mesh";
    EXPECT_EQ(group.attributeNames(), "pointNum partNum partSize colorR colorG colorB");
    EXPECT_EQ(group["pointNum"] + group["partSize"], "0");
    EXPECT_EQ(properties.find("Name", "ST-Pipe_5").children.at(0).children.size(), 2U);
    EXPECT_EQ(properties.find("Name", "ST-TEE_6").children.at(0).children.size(), 3U);
    for (const char* function : {"isObjChangeMesh", "getObjCenterPt", "changeObj4Spline", "getObjsize", "maxOutdata"}) {
        EXPECT_NE(passedOverRows().find(std::string("5 script result: the script function ") + function + " failed"),
                  std::string::npos)
            << function;
    }
}

TEST_F(MaxTest, ResultsOfTheWrongFormAreLeftOutAndReported) {
    load(plantObjects);
    scriptWith("function isObjChangeMesh(id) if id == 12 then return 0 end end\n"
               "function getObjCenterPt() return {1, 'x', 3} end\n"
               "function changeObj4Spline() return {{1, 2, 3}, 7, {4, 5}, {6, 7, 1 / 0}, {'8', 9, 10}} end\n"
               "function getObjsize() return {} end\n"
               "function maxOutdata(id) if id == 5 then return 17 end return {5, {key = 'k', value = {}}} end");
    run();
    const Element& group = geometry.find("Name", "Pipe").children.at(0);
    EXPECT_EQ(group["insptX"], "(none)");
    EXPECT_EQ(group["partSize"], "");
    EXPECT_EQ(group.number("pointNum"), group.children.size());
    EXPECT_EQ(group.children.at(0)["pointX"], "1.000000");
    EXPECT_EQ(group.children.back().number("index"), group.children.size() - 1);
    EXPECT_FALSE(group.has("pointX", "7.000000"));
    EXPECT_EQ(geometry.find("Name", "Other").children.at(0).name, "meshGroup") << "0 is true in Lua";
    EXPECT_EQ(properties.find("Name", "ST-TEE_6").find("key", "k")["value"], "");
    EXPECT_NE(passedOverRows().find("5 insertion point: "), std::string::npos);
    EXPECT_NE(passedOverRows().find("5 entry: "), std::string::npos);
    EXPECT_NE(passedOverRows().find("5 script result: maxOutdata gave no table"), std::string::npos);
}

TEST_F(MaxTest, PartNumbersBelowOneCostTheSpline) {
    for (const char* number : {"0", "-3", "0.5", "'x'", "nil", "0/0"}) {
        tolmar::runReport().clear();
        ui.inputs = {"PC", "ST"};
        load(plantObjects);
        scriptWith("function isObjChangeMesh(id) return id ~= 5 end\nfunction getPartNum() return " +
                   std::string(number) + " end");
        run();
        EXPECT_FALSE(geometry.has("Name", "Pipe")) << number;
        EXPECT_TRUE(geometry.has("Name", "TEE")) << number;
        EXPECT_TRUE(properties.has("Name", "ST-Pipe_5")) << number;
        EXPECT_NE(passedOverRows().find("5 geometry: getPartNum gives no number"), std::string::npos) << number;
    }
}

TEST_F(MaxTest, MissingFunctionsAreReportedOnceEach) {
    load(plantObjects);
    script("function getPartNum() return 2.9 end");
    run();
    EXPECT_EQ(geometry.find("Name", "Pipe").children.at(0)["partNum"], "2");
    EXPECT_EQ(passedOverRows(), "0 script function: maxoutplugins.lua does not define it\n"
                                "0 script function: maxoutplugins.lua does not define it\n"
                                "0 script function: maxoutplugins.lua does not define it\n"
                                "0 script function: maxoutplugins.lua does not define it\n"
                                "0 script function: maxoutplugins.lua does not define it\n");
    EXPECT_NE(ui.printed.find("attempt to call global `maxOutdata' (not a function)"), std::string::npos);
}

// ------------------------------------------------------------------------------------------------- dialogs and files

TEST_F(MaxTest, CancelledDialogsAndEmptyTextsEndTheCommand) {
    load(plantObjects);
    scriptWith("");
    const auto ends = [&](std::deque<std::string> inputs, RunOutcome wanted, std::vector<std::string> boxes) {
        tolmar::runReport().clear();
        ui.boxes.clear();
        ui.inputs = std::move(inputs);
        maxout();
        EXPECT_EQ(outcome(), wanted);
        EXPECT_EQ(ui.boxes, boxes);
        EXPECT_TRUE(std::filesystem::is_empty(root.path() / "out"));
    };
    ends({}, RunOutcome::Cancelled, {});
    ends({"PC"}, RunOutcome::Cancelled, {});
    ends({"", "ST"}, RunOutcome::Refused, {"项目编码不能为空"});
    ends({"PC", ""}, RunOutcome::Refused, {"站场编号不能为空"});
    ui.answer.reset();
    ui.prompts.clear();
    ends({"PC", "ST"}, RunOutcome::Cancelled, {});
    EXPECT_TRUE(ui.prompts.empty()) << "the folder is asked for first";
}

TEST_F(MaxTest, AModelWithoutDataIsRefused) {
    TestModel empty(R"({"format":"tessaro-plant","version":1,"databases":[{"name":"MAIN"}],"objects":[]})");
    scriptWith("");
    maxout();
    EXPECT_EQ(outcome(), RunOutcome::Refused);
    EXPECT_TRUE(std::filesystem::is_empty(root.path() / "out"));
}

TEST_F(MaxTest, AFileThatCannotBeWrittenIsToldAndTheOtherIsWhole) {
    load(plantObjects);
    scriptWith("");
    for (const auto& [bad, good] : {std::pair("P.xml", "P.orna"), std::pair("P.orna", "P.xml")}) {
        std::filesystem::remove_all(root.path() / "out");
        std::filesystem::create_directories(root.path() / "out" / bad);
        tolmar::runReport().clear();
        ui.printed.clear();
        ui.inputs = {"PC", "ST"};
        maxout();
        EXPECT_EQ(outcome(), RunOutcome::Failed);
        ASSERT_EQ(tolmar::runReport().failedFiles().size(), 1U) << bad;
        EXPECT_NE(ui.printed.find(std::string(bad) + "失败"), std::string::npos) << ui.printed;
        EXPECT_EQ(parseXml(root.read(std::string("out/") + good)).name, "object");
    }
}

TEST_F(MaxTest, FilesAreTextInTheFormOfRapidXml) {
    load(R"({"id":2,"class":"HextPipeline","in":1,"name":"管 <\"&'>\u0007"},
        {"id":3,"class":"HxDbEquipment","in":2,"primitives":[)" +
             box() + "]}",
         R"({"name":"厂:1"})");
    scriptWith("function maxOutdata() return {{key = 'a\"b', value = \"it's\", description = '<\\1>'}} end");
    maxout();
    const std::string bytes = root.read("out/" + toUtf8("厂_1") + ".orna");
    EXPECT_EQ(bytes.substr(0, 41), "<?xml version='1.0' encoding='utf-8' ?>\r\n");
    EXPECT_EQ(std::count(bytes.begin(), bytes.end(), '\n'), std::count(bytes.begin(), bytes.end(), '\r'));
    EXPECT_EQ(parseXml(bytes).children.at(0)["Name"], toUtf8("管 <\"&'> _2")) << "a control character is a blank";
    const Element row = parseXml(root.read("out/" + toUtf8("厂_1") + ".xml")).find("value", "it's");
    EXPECT_EQ(row["key"] + row["description"], "a\"b< >");
    EXPECT_EQ(passedOverRows(), "2 node: its name holds characters that XML cannot hold\n"
                                "3 text: it holds characters that XML cannot hold\n");

    // RapidXML's own printer gives the same bytes for the same tree.
    std::string text = bytes;
    std::erase(text, '\r');
    rapidxml::xml_document<char> document;
    std::string parsed = text;
    document.parse<rapidxml::parse_no_data_nodes>(parsed.data());
    std::string printed;
    rapidxml::print(std::back_inserter(printed), document, 0);
    EXPECT_EQ(text.substr(text.find('\n') + 1), printed);
}

TEST_F(MaxTest, InTheCodePageUtf8TheFilesAreValidAsDeclared) {
    if (std::string(TESSARO_CODE_PAGE) != "UTF-8") {
        GTEST_SKIP() << "the declaration is true in the code page UTF-8 alone";
    }
    load(R"({"id":2,"class":"HextPipeline","in":1,"name":"a\uFFFFb"},
        {"id":3,"class":"HxDbEquipment","in":2,"primitives":[]})");
    scriptWith("function maxOutdata() return {{key = '\\255\\228\\184', value = '\\228\\184\\173'}} end");
    run();
    EXPECT_TRUE(geometry.has("Name", "a?b_2"));
    const Element& row = properties.find("value", "中");
    EXPECT_TRUE(tolmar::isValidUtf8(row["key"]));
    EXPECT_NE(row["key"], "");
    EXPECT_EQ(passedOverRows(), "2 node: its name holds characters that XML cannot hold\n"
                                "3 text: it holds characters that XML cannot hold\n");
}

}  // namespace
