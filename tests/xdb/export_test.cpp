// The arrays and records of XDBOUT.
#include "frame/progress_slot.h"
#include "platform/hxcom.h"
#include "support/test_support.h"
#include "xdb/export.h"
#include "xdb/text.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace {

using tolmar::RunOutcome;
using Texts = std::vector<std::string>;

const std::string box = R"({"type":"HextBox3D","point":[0,0,0],"xLength":1,"yLength":2,"zLength":3})";
// A pyramid without its base: a square and two triangles.
const std::string subDMesh =
    R"({"type":"HextPrimaryAcadEntity","entity":{"type":"subDMesh","vertices":[[0,0,0],[9,0,0],[9,9,0],[0,9,0],[4,4,5]],
    "faces":[[0,3,2,1],[0,1,4],[1,2,4]],"normals":[[0,0,1],[0,1,0],[1,0,0],[0,0,-1],[0,0,1]]}})";
const std::string line = R"({"type":"HextPrimaryLine","startPoint":[0,0,0],"endPoint":[1,1,1]})";
const std::string pipeline =
    R"({"id":4,"class":"HextPipeline","in":1,"name":"L4","attrs":{"other":"x","lineno":"100-A","roadno":"R1",
    "pipesegmenttype":"T","linestart":"12345678,123456789,100","lineend":"1000,123456789,100"}})";

class XdbTest : public testing::Test {
protected:
    // Objects under the pipeline 4, which is the current manager.
    void load(const std::string& objects, const std::string& manager = pipeline) {
        model.reset();
        model = std::make_unique<TestModel>(
            tolmar::toUtf8(TestModel::withObjects(manager + "," + objects, R"({"currentManager":4})")));
        tolmar::runReport().clear();
    }
    // An object of the pipeline with a box; `members` begin with a comma.
    static std::string object(int id, const std::string& type, const std::string& name,
                              const std::string& members = {}) {
        return R"({"id":)" + std::to_string(id) + R"(,"class":")" + type + R"(","in":4)" +
               (name.empty() ? "" : R"(,"objectName":")" + name + "\"") + members + R"(,"primitives":[)" + box + "]}";
    }
    bool run(int strict = 0) {
        types.clear();
        data.clear();
        colors.clear();
        for (auto* list : {&positions, &normals}) {
            list->clear();
        }
        for (auto* list : {&indices, &normalIndices}) {
            list->clear();
        }
        return xdb::exportXdb({types, colors, positions, indices, normals, normalIndices, data}, strict);
    }
    // The one record of one object; the run must succeed.
    std::string record(const std::string& objects, int strict = 0) {
        load(objects);
        EXPECT_TRUE(run(strict)) << ui.printed;
        EXPECT_EQ(data.size(), 1U);
        return data.empty() ? "(none)" : data[0];
    }
    void expectShapesInStep() {
        ASSERT_EQ(colors.size(), positions.size());
        ASSERT_EQ(indices.size(), positions.size());
        ASSERT_EQ(normals.size(), positions.size());
        ASSERT_EQ(normalIndices.size(), positions.size());
        for (std::size_t i = 0; i < positions.size(); ++i) {
            EXPECT_EQ(normals[i].size(), positions[i].size());
            EXPECT_EQ(indices[i], normalIndices[i]);
            EXPECT_EQ(indices[i].size() % 3, 0U);
            for (const int index : indices[i]) {
                EXPECT_TRUE(index >= 0 && static_cast<std::size_t>(index) * 3 < positions[i].size());
            }
        }
    }
    TestUi ui;
    std::unique_ptr<TestModel> model;
    Texts types;
    Texts data;
    std::vector<std::uint64_t> colors;
    std::vector<std::vector<double>> positions;
    std::vector<std::vector<double>> normals;
    std::vector<std::vector<int>> indices;
    std::vector<std::vector<int>> normalIndices;
};

// ------------------------------------------------------------------------------------------------- kinds and shapes

TEST_F(XdbTest, TheFirstRowThatFitsDecides) {
    load(object(10, "HxDbEquipment", "TPPE") + "," + object(11, "HxDbStruct", "") + "," +
         object(12, "HxDbTubeModelSpec", "GASK") + "," + object(13, "HxDbTubeModelSpec", "weld_field") + "," +
         object(14, "HxDbBalloon", "BALLOON\\\\a-1") + "," + object(15, "HxDbAxissLine", "axis") + "," +
         object(16, "HxDbTubeModelSpec", "FLAN", R"(,"kind":"flange")") + "," +
         object(17, "HxDbTubeModelSpec", "wall_rect") + "," +
         object(18, "HxDbStruct", "stair", R"(,"attrs":{"P3":"1"})"));
    ASSERT_TRUE(run());
    EXPECT_EQ(types, (Texts{"proxy", "fitting", "stair"}));
    ASSERT_EQ(data.size(), 2U);
    EXPECT_EQ(data[0], "");
    EXPECT_EQ(data[1].substr(0, 11), "linkpoints:");
    EXPECT_EQ(positions.size(), 4U) << "11 has a shape and nothing else";
    expectShapesInStep();
    EXPECT_EQ(passedOverRows(), "");
    EXPECT_FALSE(ui.progress.open);
    EXPECT_EQ(progressSlot(), nullptr);
}

TEST_F(XdbTest, StructuralListsTakeTheirFieldsInTheOrderOfTheAttributes) {
    const std::string attributes = R"(,"attrs":[{"key":"kpt_2","value":"k2"},{"key":"kpt_1","value":[1,2,3]},
        {"key":"p2","value":"no"},{"key":"P4","value":"4"},{"key":"P3","value":"3"},{"key":"inspt","value":"i"},
        {"key":"P2","value":2.5}])";
    const std::pair<const char*, const char*> rows[] = {
        {"wall_lean", "kpt_2:k2;kpt_1:1.00000000\t2.00000000\t3.00000000;P3:3;P2:2.500000;"},
        {"arbeam_gjhz3", "kpt_2:k2;kpt_1:1.00000000\t2.00000000\t3.00000000;P4:4;inspt:i;P2:2.500000;"},
        {"stbeamxg", "kpt_2:k2;kpt_1:1.00000000\t2.00000000\t3.00000000;P4:4;inspt:i;P2:2.500000;"},
        {"stcolumn_circp", "kpt_2:k2;kpt_1:1.00000000\t2.00000000\t3.00000000;P4:4;P2:2.500000;"},
        {"PLATE11", "P3:3;"},
        {"plat_arc1", "P3:3;"}};
    for (const auto& [name, expected] : rows) {
        EXPECT_EQ(record(object(10, "HxDbStruct", name, attributes)), expected);
        EXPECT_EQ(types, Texts{name});
    }
    EXPECT_EQ(record(object(10, "HxDbStruct", "wall_rect")), "") << "a record without fields stands all the same";
}

TEST_F(XdbTest, ColoursAreSignExtendedWords) {
    load(object(10, "HxDbEquipment", "", R"(,"color":20)") + "," + object(11, "HxDbEquipment", ""));
    ASSERT_TRUE(run());
    EXPECT_EQ(colors, (std::vector<std::uint64_t>{0xFFFFFFFFFFFF3F00U, 0xFFFFFFFFFF808080U}));
}

TEST_F(XdbTest, SolidsOfAnObjectAreOneGeometryWithUnitNormals) {
    load(R"({"id":10,"class":"HxDbEquipment","in":4,"primitives":[)" + box + "," + box + "]}");
    ASSERT_TRUE(run());
    ASSERT_EQ(positions.size(), 1U);
    EXPECT_EQ(positions[0].size(), 8U * 3) << "both boxes have the same corners";
    EXPECT_EQ(indices[0].size(), 2U * 12 * 3);
    expectShapesInStep();
    for (std::size_t i = 0; i < normals[0].size(); i += 3) {
        const double* n = normals[0].data() + i;
        EXPECT_NEAR(std::hypot(n[0], n[1], n[2]), 1, 1e-9);
        EXPECT_GT((positions[0][i] - 0.5) * n[0], 0) << "away from the middle of the box";
    }
}

TEST_F(XdbTest, ASubDivisionMeshIsAGeometryOfItsOwn) {
    load(R"({"id":10,"class":"HxDbEquipment","in":4,"primitives":[)" + box + "," + subDMesh + "," + line + "]}");
    ASSERT_TRUE(run());
    ASSERT_EQ(positions.size(), 2U);
    expectShapesInStep();
    EXPECT_EQ(indices[0], (std::vector<int>{0, 3, 2, 0, 2, 1, 0, 1, 4, 1, 2, 4}));
    EXPECT_EQ(std::vector<double>(positions[0].end() - 3, positions[0].end()), (std::vector<double>{4, 4, 5}));
    EXPECT_EQ(std::vector<double>(normals[0].begin(), normals[0].begin() + 6), (std::vector<double>{0, 0, 1, 0, 1, 0}));
    EXPECT_EQ(indices[1].size(), 36U);
    EXPECT_EQ(types, Texts{"proxy"});
    EXPECT_EQ(data, (Texts{"", ""}));
    EXPECT_NE(ui.printed.find("TlDbLine\n"), std::string::npos);
    EXPECT_EQ(passedOverRows(), "10 HextPrimaryLine: it is no solid and no mesh\n");
}

TEST_F(XdbTest, AnObjectWithoutSolidsHasAnEmptyGeometry) {
    load(R"({"id":10,"class":"HxDbEquipment","in":4,"primitives":[)" + line + R"(]},
        {"id":11,"class":"HxDbEquipment","in":4,"primitives":[{"type":"HextCylinder3D","startPoint":[0,0,0],
        "endPoint":[0,0,0],"diameter":1}]},{"id":12,"class":"HxDbEquipment","in":4},
        {"id":13,"class":"HxDbTubeWeld","in":4},{"id":14,"class":"HxDbEquipment","in":4,"available":false})");
    ASSERT_TRUE(run());
    ASSERT_EQ(positions.size(), 2U);
    EXPECT_TRUE(positions[0].empty() && indices[0].empty() && normals[0].empty() && normalIndices[0].empty());
    EXPECT_EQ(tolmar::runReport().passed().size(), 4U) << passedOverRows();
    EXPECT_NE(passedOverRows().find("12 object: it has no shape"), std::string::npos);
    EXPECT_EQ(passedOverRows().find("14 object: it cannot be opened"), 0U);
    EXPECT_NE(ui.printed.find("对象ID'12'取图形库失败"), std::string::npos);
}

TEST_F(XdbTest, ArraysAreAppendedTo) {
    load(object(10, "HxDbEquipment", ""));
    types = {"before"};
    data = {"before"};
    colors = {7};
    positions = {{}};
    EXPECT_TRUE(xdb::exportXdb({types, colors, positions, indices, normals, normalIndices, data}, 0));
    EXPECT_EQ(types, (Texts{"before", "proxy"}));
    EXPECT_EQ(data, (Texts{"before", ""}));
    EXPECT_EQ(colors.size(), 2U);
    EXPECT_EQ(positions.size(), 2U);
}

// ---------------------------------------------------------------------------------------------------------- records

const std::string points = R"(,"points":[{"no":0,"at":[0,0,0]},{"no":1,"at":[1000.25,0,-2]},{"no":2,"at":[0,0,3000]},
    {"no":3,"at":[1234567.891234,5,6]}])";

TEST_F(XdbTest, PipesHaveEndsAttributesAndTheirPipelinesFields) {
    EXPECT_EQ(record(object(10, "HxDbPipeSpec", "TPPE",
                            points + R"(,"insNo":2,"refNo":3,"attrs":{"thick":"7.1","size1":"100","angle":"90",
                            "radius":"1.5","specuser1":"u","item":"PIPE","lineno":"4.9"})")),
              "pstart:0\t0\t3000\t;pend:1234567.891\t5\t6\t;thick:7.1;size1:100;specuser1:u;lineno:100-A;roadno:R1;"
              "pipesegmenttype:T;linestart:12345.678,123456.789,0.1;lineend:1000,123456.789,0.1;");
    EXPECT_EQ(types, Texts{"TPPE"});
    EXPECT_EQ(
        record(object(10, "HxDbPipeSpec", "TPPE", points + R"(,"kind":"hose","attrs":{"size1":"50","lineno":"99"})")),
        "size1:50;")
        << "a hose has no ends, and 99 is no pipeline";
}

TEST_F(XdbTest, ABendHasItsArc) {
    // A right angle: corner 0 at the origin, ends at (0,0,150) and (150,0,0), so the centre is (150,0,150).
    const std::string bend = R"(,"points":[{"no":0,"at":[0,0,0]},{"no":1,"at":[0,0,500]},{"no":2,"at":[0,0,150]},
        {"no":3,"at":[150,0,0]}],"insNo":7,"attrs":{"size1":"100","radius":"1.5","angle":"90"})";
    EXPECT_EQ(record(object(10, "HxDbPipeSpec", "BEND_BW", bend)),
              "pstart:0\t0\t500\t;pend:150\t0\t0\t;size1:100;angle:90;pcenter:150\t0\t150\t;sa:1.5708;radius:150;");
    const std::string cornerless = R"(,"points":[{"no":1,"at":[0,0,500]},{"no":3,"at":[150,0,0]}])";
    EXPECT_EQ(record(object(10, "HxDbPipeSpec", "BEND_BW", cornerless)), "pstart:0\t0\t500\t;pend:150\t0\t0\t;");
    EXPECT_NE(passedOverRows().find("10 arc of a bend: "), std::string::npos);
}

TEST_F(XdbTest, AShortPipeHasAnEmptyRecordAndItsShape) {
    const std::string ends = R"(,"points":[{"no":1,"at":[1,2,3]},{"no":2,"at":[1,2,3.999]}],"attrs":{"size1":"50"})";
    EXPECT_EQ(record(object(10, "HxDbPipeSpec", "TPPE", ends)), "");
    EXPECT_EQ(types, Texts{"TPPE"});
    EXPECT_EQ(positions.size(), 1U);
    EXPECT_NE(ui.printed.find("\nerror point: 1.000000,2.000000,3.000000"), std::string::npos);
    EXPECT_NE(passedOverRows().find("10 record: "), std::string::npos);
}

TEST_F(XdbTest, AMissingEndIsAnError) {
    for (const auto& [numbers, text] :
         {std::pair(R"(,"insNo":8)", "\n错误：对象的插入点序号为'8'，该序号无对应的点对象"),
          std::pair(R"(,"refNo":9)", "\n错误：对象的插入参考点序号为'9'，该序号无对应的点对象")}) {
        ui.printed.clear();
        load(object(9, "HxDbEquipment", "") + "," + object(10, "HxDbPipeSpec", "TPPE", points + numbers) + "," +
             object(11, "HxDbEquipment", ""));
        EXPECT_FALSE(run());
        EXPECT_NE(ui.printed.find(text), std::string::npos) << ui.printed;
        EXPECT_EQ(types, (Texts{"proxy", "TPPE"})) << "what was added stays, what follows does not come";
        EXPECT_EQ(data, Texts{""});
        EXPECT_EQ(tolmar::runReport().outcome(), RunOutcome::Failed);
        EXPECT_FALSE(ui.progress.open);
    }
}

TEST_F(XdbTest, FittingsHaveLinkPointsAndTheirType) {
    EXPECT_EQ(
        record(object(10, "HxDbTubeModelSpec", "any",
                      R"(,"keyPoints":[{"no":1,"at":[1000,-2500,0.5]},{"no":2,"at":[0,0,1]}],"attrs":{"mtype":"fitting",
            "note":"n","objid":"77","item":"TEE","rating":"PN16","lineno":"4"})")),
        "linkpoints:1.000000 -2.500000 0.000500602188401730.000000 0.000000 0.00100060218840173;note:n;rating:PN16;"
        "fittype:Tee;linestart:12345.678,123456.789,0.1;lineend:1000,123456.789,0.1;roadno:R1;pipesegmenttype:T;"
        "lineno:100-A;77");
    const std::tuple<const char*, const char*, const char*> kinds[] = {
        {"valve", "TEE", "Valve"},      {"fitting", "RCROSS", "Cross"},
        {"fitting", "LTEE", "Tee"},     {"fitting", "RELBOW", "Elbow"},
        {"fitting", "SCRED", "Reduce"}, {"fitting", "CAP", "Other"},
        {"pipe", "TEE", "Other"},       {"", "", "Other"}};
    for (const auto& [mtype, item, type] : kinds) {
        EXPECT_EQ(record(object(10, "HxDbTubeModelSpec", "any",
                                R"(,"attrs":{"mtype":")" + std::string(mtype) + R"(","item":")" + item + "\"}")),
                  "linkpoints:;fittype:" + std::string(type) + ";");
    }
}

TEST_F(XdbTest, AFittingsOwnRoadComesFirst) {
    const auto roads = [&](const std::string& own, const std::string& lines) {
        load(object(10, "HxDbTubeModelSpec", "any", R"(,"attrs":{"lineno":"4","roadno":")" + own + "\"}"),
             R"({"id":4,"class":"HextPipeline","in":1,"attrs":{)" + lines + "}}");
        EXPECT_TRUE(run());
        return data.at(0).substr(data.at(0).find("fittype"));
    };
    EXPECT_EQ(roads("own", R"("roadno":"R")"), "fittype:Other;roadno:own;pipesegmenttype:;lineno:;");
    EXPECT_EQ(roads("", R"("roadno":"R")"), "fittype:Other;roadno:R;pipesegmenttype:;lineno:;");
    EXPECT_EQ(roads("", R"("roadno":"")"), "fittype:Other;roadno:;pipesegmenttype:;lineno:;");
}

// ------------------------------------------------------------------------------------------- the pipeline's demands

struct StrictCase {
    const char* lines;
    const char* fields;  // without strict, of a pipe
    const char* box;     // with it; null: no error
    const char* said;    // for a fitting
    const char* saidOfPipe;
};

class XdbStrict : public XdbTest, public testing::WithParamInterface<StrictCase> {};

TEST_P(XdbStrict, GapsAreErrorsOnlyWhenStrict) {
    const StrictCase& which = GetParam();
    const std::string manager =
        R"({"id":4,"class":"HextPipeline","in":1,"name":"L4","attrs":{)" + std::string(which.lines) + "}}";
    const std::string pipe = object(10, "HxDbPipeSpec", "TPPE", R"(,"kind":"hose","attrs":{"lineno":"4"})");
    const std::string fitting = object(11, "HxDbTubeModelSpec", "any", R"(,"attrs":{"lineno":"4"})");
    load(pipe, manager);
    EXPECT_TRUE(run(0));
    EXPECT_TRUE(run(2)) << "only 1 is strict";
    EXPECT_EQ(data, Texts{which.fields});
    EXPECT_TRUE(ui.boxes.empty());
    for (const auto& [objects, said] : {std::pair(pipe, which.saidOfPipe), std::pair(fitting, which.said)}) {
        ui.boxes.clear();
        ui.printed.clear();
        load(objects, manager);
        EXPECT_EQ(run(1), which.box == nullptr);
        EXPECT_EQ(ui.boxes, which.box == nullptr ? Texts{} : Texts{which.box});
        EXPECT_NE(ui.printed.find(said), std::string::npos) << ui.printed;
        EXPECT_EQ(data.empty(), which.box != nullptr);
        EXPECT_EQ(types.size(), 1U);
    }
}

constexpr const char* roadBox = "道路编号为空,具体信息显示在命令行";
constexpr const char* coordBox = "提取错误,详细信息查看命令行提示";
INSTANTIATE_TEST_SUITE_P(
    Gaps, XdbStrict,
    testing::Values(
        StrictCase{R"("roadno":"")", "roadno:;", roadBox, "\n11道路编号为空", "\nL4道路编号为空"},
        StrictCase{R"("lineno":"x")", "lineno:x;", roadBox, "\n11道路编号为空", "\nL4道路编号为空"},
        StrictCase{R"("roadno":"R","linestart":"1,2")", "roadno:R;linestart:1,2,0;", coordBox,
                   "\n坐标值必须包含3个维度 :1,2", "\n坐标值必须包含3个维度 :1,2"},
        StrictCase{R"("lineend":"","roadno":"R")", "lineend:0,0,0;roadno:R;", coordBox,
                   "\n坐标值必须包含3个维度 :", "\n坐标值必须包含3个维度 :"},
        StrictCase{R"("roadno":"R","lineend":"1,2,3,4")", "roadno:R;lineend:1,2,3;", nullptr, "", ""},
        StrictCase{R"("roadno":"R","lineend":"1e7,1e8,5")", "roadno:R;lineend:10000000,100000000,5;", nullptr, "", ""},
        StrictCase{R"("roadno":"R","lineend":"10000001,7,5")", "roadno:R;lineend:10000.001,7,5;", nullptr, "", ""}));

// ----------------------------------------------------------------------------------------------- manager and cancel

TEST_F(XdbTest, WithoutAManagerNothingIsTouched) {
    TestModel none(TestModel::withObjects(""));
    tolmar::runReport().clear();
    EXPECT_FALSE(run());
    EXPECT_TRUE(types.empty() && data.empty() && positions.empty() && colors.empty());
    EXPECT_EQ(tolmar::runReport().outcome(), RunOutcome::Refused);
}

TEST_F(XdbTest, ACancelClearsUpAndGivesFalse) {
    load(object(10, "HxDbEquipment", "") + "," + object(11, "HxDbEquipment", ""));
    ui.cancelAt = 3;
    EXPECT_FALSE(run());
    EXPECT_EQ(types, Texts{"proxy"});
    EXPECT_EQ(tolmar::runReport().outcome(), RunOutcome::Cancelled);
    EXPECT_FALSE(ui.progress.open);
    EXPECT_EQ(progressSlot(), nullptr);
}

TEST_F(XdbTest, AnOuterCommandKeepsItsProgressObject) {
    load(object(10, "HxDbEquipment", ""));
    const ProgressScope outer;
    EXPECT_TRUE(run());
    EXPECT_NE(progressSlot(), nullptr);
    EXPECT_FALSE(ui.progress.open) << "the dialog is closed at the end all the same";
}

TEST_F(XdbTest, NumbersHaveTheirDigits) {
    std::string text;
    xdb::appendNumber10(text, 1234567.891234);
    text += ' ';
    xdb::appendNumber10(text, 1e12);
    text += ' ';
    xdb::appendNumber10(text, -0.1);
    text += ' ';
    xdb::appendNumber5(text, 3.14159265);
    text += ' ';
    xdb::appendNumber5(text, 123456);
    EXPECT_EQ(text, "1234567.891 1e+12 -0.1 3.1416 1.2346e+05");
}

}  // namespace
