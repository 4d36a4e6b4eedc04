#include "support.h"

#include "platform/primaries.h"
#include "rvm/shapes/primitive_writer.h"
#include "shapes/numbers.h"
#include "support/failure.h"
#include "support/test_support.h"

#include <cmath>
#include <memory>

namespace {

using namespace rvm;

// A class that the platform might add: no row of the writer knows it.
class HextUnknown3D final : public HextPrimary3D {
    TLRX_CLASS(HextUnknown3D)
public:
    HextUnknown3D() : HextPrimary3D(classRecord) {}
    HextUnknown3D* clone() const override { return new HextUnknown3D(*this); }
};
const TlRxClass HextUnknown3D::classRecord{"HextUnknown3D", HextPrimary3D::classRecord};

// A class below one that has a row.
class HextShortBox3D final : public HextBox3D {
    TLRX_CLASS(HextShortBox3D)
public:
    HextShortBox3D() : HextBox3D(classRecord) {}
};
const TlRxClass HextShortBox3D::classRecord{"HextShortBox3D", HextBox3D::classRecord};

class PrimitiveWriting : public testing::Test {
protected:
    template <typename Class>
    Class& add() {
        auto* primitive = new Class();
        list.list().push_back(primitive);
        return *primitive;
    }
    HextCylinder3D& addCylinder(double length = 100) {
        auto& cylinder = add<HextCylinder3D>();
        cylinder.diameter = 20;
        cylinder.endPoint = {0, 0, length};
        return cylinder;
    }
    void addEntity(const char* json) { add<HextPrimaryAcadEntity>().serial = json; }

    std::string lastFile;  // bytes of the file that was read last
    // Writes the list into a group, as obstructions, as plain primitives or as both, and reads it back.
    readers::rvm::RvmContent write(bool isObstruction = false, bool compat = false, bool both = false) {
        lastFile.clear();
        tolmar::OutputFile file = memoryFile(lastFile);
        RvmFile out(file);
        PrimitiveWriter writer(out, compat);
        out.writeHeader("p", "d");
        out.writeGroupBegin("object", 4);
        writer.startObject(7, "object");
        const std::uint64_t start = out.offset();
        const std::size_t size = writer.writePrimitiveList(list.list(), isObstruction, 25);
        EXPECT_EQ(out.offset(), start + size);
        if (both) {
            writer.writePrimitiveList(list.list(), !isObstruction, 25);
        }
        out.writeGroupEnd();
        out.writeEnd();
        out.flush();
        EXPECT_TRUE(file.close());
        readers::Findings findings;
        readers::rvm::RvmContent content = readers::rvm::readRvm(lastFile, findings);
        EXPECT_EQ(allFindings(findings), "");
        return content;
    }
    static std::string names(const readers::rvm::RvmContent& content) {
        std::string text;
        for (const std::uint32_t child : content.groups.at(0).children) {
            text += content.groups[child].name + " ";
        }
        return text;
    }
    static std::string reported() {
        std::string text;
        for (const auto& entry : tolmar::runReport().passed()) {
            text += std::to_string(entry.id) + " " + entry.name + " " + entry.what + ": " + entry.why + "\n";
        }
        return text;
    }

    TestRoot root;
    TestUi ui;
    PrimaryList list;
};

TEST_F(PrimitiveWriting, EveryClassGoesItsWayAndIsNumberedByItself) {
    addCylinder();
    add<HextBox3D>();
    addCylinder();
    add<HextShortBox3D>();
    add<HextBox3D>();
    const auto content = write();
    EXPECT_EQ(names(content), "HextCylinder3D1 HextBox3D1 HextCylinder3D2 HextShortBox3D1 HextBox3D2 ");
    const std::uint32_t kinds[] = {8, 2, 8, 2, 2};
    for (std::size_t i = 0; i < 5; ++i) {
        const auto& group = content.groups[i + 1];
        EXPECT_EQ(group.material, 25U);
        ASSERT_EQ(group.primitives.size(), 1U);
        EXPECT_EQ(content.primitives[group.primitives[0]].kind, kinds[i]);
        EXPECT_FALSE(content.primitives[i].isObstruction());
        EXPECT_EQ(content.primitives[i].box, (std::array<float, 6>{}));
    }
}

TEST_F(PrimitiveWriting, OnePrimitiveIsSpelledOut) {
    std::string bytes;
    tolmar::OutputFile file = memoryFile(bytes);
    RvmFile out(file);
    PrimitiveWriter writer(out, false);
    auto& sphere = add<HextSphere3D>();
    sphere.center = {1000, 2000, -500};
    sphere.radius = 1.5;
    EXPECT_EQ(writer.writePrimitiveList(list.list(), false, 5), 64U + 108 + 28);
    out.flush();
    file.close();
    const std::string expected =
        bytesOf("00000043 0000004E 00000054 00000042 00000040 00000001 00000002 00000004") + "HextSphere3D1" +
        bytesOf("000000 00000000 00000000 00000000 00000005"
                "00000050 00000052 00000049 0000004D 000000AC 00000001 00000001 00000009"
                "3A83126F 00000000 00000000 00000000 3A83126F 00000000 00000000 00000000 3A83126F"
                "3F800000 40000000 BF000000"
                "00000000 00000000 00000000 00000000 00000000 00000000 3FC00000"
                "00000043 0000004E 00000054 00000045 000000C8 00000001 00000002");
    EXPECT_EQ(hexOf(bytes), hexOf(expected));
}

TEST_F(PrimitiveWriting, WhatCannotBeWrittenIsTakenBackButCounted) {
    addCylinder();
    addCylinder(1e39);
    add<HextUnknown3D>();
    addCylinder(7);
    const auto content = write();
    EXPECT_EQ(names(content), "HextCylinder3D1 HextCylinder3D3 ");
    ASSERT_EQ(ui.boxes.size(), 1U);
    EXPECT_EQ(ui.boxes[0], "HextUnknown3D不是可输出体元");
    EXPECT_EQ(reported(), "7 object/HextCylinder3D2 primitive: a coordinate or size is not finite\n"
                          "7 object/HextUnknown3D1 primitive: its class has no output form\n");
}

TEST_F(PrimitiveWriting, ClassesWithoutACounterpartBecomeFacets) {
    auto& cut = add<HextScylinder3D>();
    cut.diameter = 100;
    cut.endPoint = {0, 0, 300};
    cut.vect = {0.3, 0, 1};
    auto& frustum = add<HextSqucone3D>();
    frustum.bottomX = frustum.bottomY = 10;
    frustum.topX = frustum.topY = 5;
    frustum.height = 20;
    const auto content = write(true);
    EXPECT_EQ(names(content), "HextScylinder3D1 HextSqucone3D1 ");
    ASSERT_EQ(content.primitives.size(), 2U);
    const auto& facets = content.primitives[1];
    EXPECT_EQ(facets.kind, 11U);
    EXPECT_TRUE(facets.isObstruction());
    EXPECT_EQ(facets.matrix, (std::array<float, 12>{0.001F, 0, 0, 0, 0.001F, 0, 0, 0, 0.001F, 0, 0, 0}));
    EXPECT_EQ(facets.triangles, 12U);
    float highest = 0;
    const std::vector<float> numbers = readers::rvm::facetsOf(lastFile, facets);
    for (std::size_t i = 0; i < numbers.size(); i += 6) {
        highest = std::max(highest, numbers[i + 2]);
        EXPECT_LE(std::fabs(numbers[i]), 5.0F);
    }
    EXPECT_EQ(highest, 20.0F);
}

TEST_F(PrimitiveWriting, ASolidThatCannotBeMadeLeavesAnEmptyFacetList) {
    add<HextSpolygon>();
    add<HextRevolve>();
    auto& prism = add<HextPrism3D>();
    prism.sides = 2;
    const auto content = write();
    ASSERT_EQ(content.primitives.size(), 3U);
    for (const auto& primitive : content.primitives) {
        EXPECT_EQ(primitive.kind, 11U);
        EXPECT_EQ(primitive.triangles, 0U);
    }
    EXPECT_EQ(tolmar::runReport().passed().size(), 3U) << reported();
}

TEST_F(PrimitiveWriting, HostContentComesByItsEntity) {
    addEntity(R"({"type":"line","startPoint":[0,0,0],"endPoint":[0,0,250]})");
    addEntity("{");
    addEntity(R"({"type":"circle","center":[0,0,0],"normal":[0,0,1],"radius":5})");
    addEntity(R"({"type":"mesh","points":[[0,0,0],[10,0,0],[0,10,0]],"faces":[[0,1,2]]})");
    add<HextPrimaryAcad>().serial = R"({"type":"line","startPoint":[0,0,0],"endPoint":[0,0,250]})";
    const auto content = write(true);
    EXPECT_EQ(names(content), "HextPrimaryAcadEntity1 HextPrimaryAcadEntity4 ") << reported();
    ASSERT_EQ(content.primitives.size(), 2U) << "a line outside of its class has no facets";
    EXPECT_TRUE(content.primitives[0].isObstruction());
    EXPECT_EQ(content.primitives[0].kind, 10U);
    EXPECT_EQ(content.primitives[0].parameters[0], 5.0F);
    EXPECT_EQ(content.primitives[0].parameters[1], 250.0F);
    ASSERT_EQ(content.primitives[1].triangles, 1U);
    EXPECT_EQ(readers::rvm::facetsOf(lastFile, content.primitives[1])[3 + 2], 100.0F)
        << "the cross product as it stands";
    EXPECT_EQ(tolmar::runReport().passed().size(), 3U) << reported();
}

TEST_F(PrimitiveWriting, BlocksFallIntoTheirParts) {
    addCylinder();
    add<HextAcadBlockReference>().serial =
        R"({"type":"block","parts":[
            {"type":"solid","color":3,"primitive":{"type":"HextBox3D","point":[0,0,0],"xLength":1,"yLength":1,"zLength":1}},
            {"type":"block","parts":[{"type":"solid","color":12,"primitive":{"type":"HextBox3D","point":[0,0,0],"xLength":1,"yLength":1,"zLength":1}}]},
            {"type":"line","startPoint":[0,0,0],"endPoint":[1,0,0]}]})";
    addCylinder();
    const auto content = write(true);
    EXPECT_EQ(names(content), "HextCylinder3D1 aent1 aent2 aent3 HextCylinder3D2 ") << ui.printed;
    ASSERT_EQ(content.groups.size(), 6U);
    EXPECT_EQ(content.groups[2].material, 5U);
    EXPECT_EQ(content.groups[3].material, 12U);
    EXPECT_FALSE(content.primitives[1].isObstruction());
    EXPECT_EQ(content.primitives[1].triangles, 12U);
    EXPECT_EQ(content.primitives[3].triangles, 0U) << "a line has no surface";
    EXPECT_NE(ui.printed.find("\nTlDb3dSolid"), std::string::npos);
    EXPECT_NE(ui.printed.find("\nTlDbBlockReference"), std::string::npos);
}

TEST_F(PrimitiveWriting, NoSizesMakeABadFile) {
    const auto classes = oneOfEachClass();
    for (const bool compat : {false, true}) {
        for (const double value : {0.0, -1.0, 1e-300, 1e12, 1e30, 1e39, 1e300, -1e300, std::nan(""), HUGE_VAL}) {
            freeHextPrimaryArray(list.list());
            for (const auto& primitive : classes) {
                const std::size_t numbers = numbersOf(*primitive).size();
                for (std::size_t i = 0; HextPrimary3D::cast(primitive.get()) != nullptr && i < numbers; ++i) {
                    list.list().push_back(primitive->clone());
                    *numbersOf(*list.list().back())[i] = value;
                }
            }
            tolmar::runReport().clear();
            const std::size_t written = write(false, compat).primitives.size();
            EXPECT_TRUE(value == 0 ? written == list.size() : written <= list.size()) << value;
            EXPECT_GE(written + tolmar::runReport().passed().size(), list.size()) << value;
        }
    }
}

TEST_F(PrimitiveWriting, LongAndCrossingOutlinesAreWritten) {
    auto& extrusion = add<HextSpolygon>();
    extrusion.height = 10;
    HextVertexList round;
    for (int i = 0; i < 100000; ++i) {
        const double angle = i * 2 * tlGePi / 100000;
        round.push_back({1, {1e4 * std::cos(angle), 1e4 * std::sin(angle), 0}});
    }
    extrusion.outline = round;
    auto& crossing = add<HextSpolygon>();
    crossing.height = 10;
    crossing.outline = HextVertexList{{1, {0, 0, 0}}, {1, {10, 10, 0}}, {1, {10, 0, 0}}, {4, {0, 10, 0}}};
    const auto content = write();
    ASSERT_EQ(content.primitives.size(), 2U);
    EXPECT_GT(content.primitives[0].triangles, 2U * 222) << "fewer cannot hold the tolerance";
}

TEST_F(PrimitiveWriting, APrimitiveThatIsNoPolygonBodyEndsTheExport) {
    MeshIndices indices;
    MeshPositions positions;
    MeshNormals normals;
    const auto mesh = [&] { meshPrimitive(HextBox3D(), indices, positions, normals); };
    EXPECT_EQ(failureOf<NoPolygonBody>(mesh), "HextBox3D不是多边形体元");
}

TEST_F(PrimitiveWriting, StrictReadersGetBoxesDiametersAndUniqueNames) {
    auto& sphere = add<HextSphere3D>();
    sphere.radius = 6;
    auto& frustum = add<HextSqucone3D>();
    frustum.point = {100, 0, 0};
    frustum.bottomX = 10;
    frustum.bottomY = frustum.topX = frustum.topY = 4;
    frustum.height = 20;
    const auto content = write(false, true);
    EXPECT_EQ(content.primitives.at(0).parameters[0], 12.0F);
    EXPECT_EQ(content.primitives[0].box, (std::array<float, 6>{-6, -6, -6, 6, 6, 6}));
    EXPECT_EQ(content.primitives.at(1).box, (std::array<float, 6>{95, -2, 0, 105, 2, 20}));
    EXPECT_EQ(names(write(true, true, true)), "HextSphere3D1 HextSqucone3D1 HextSphere3D1_2 HextSqucone3D1_2 ");
}

TEST(SiblingNames, SkipNamesThatAreTaken) {
    SiblingNames names;
    EXPECT_EQ(names.unique("V"), "V");
    EXPECT_EQ(names.unique("V_2"), "V_2");
    EXPECT_EQ(names.unique("V"), "V_3");
    EXPECT_EQ(names.unique("V_2"), "V_2_2");
    EXPECT_EQ(names.unique("V"), "V_4");
}

}  // namespace
