// Records against the primitives of the model: each class by itself, and whole plants.
#include "eem/color.h"
#include "eem/primitives.h"
#include "generator/generate.h"
#include "platform/primaries.h"
#include "rebuilt_primitive.h"
#include "shapes/cases.h"
#include "support.h"

#include <set>

namespace {

constexpr double pi = 3.14159265358979323846;

struct Encoded {
    std::int32_t count = 0;
    std::vector<readers::eem::Record> records;
    std::vector<eem::LeftOut> leftOut;
};

// The list in a block of its own, read back.
Encoded encode(const HextPrimaryArray& list, const ObjectColor& color = {}) {
    std::string bytes;
    tolmar::OutputFile target(std::make_unique<MemorySink>(bytes), tolmar::FileMode::Binary);
    eem::EemFile file(target);
    eem::PrimitiveEncoder encoder(file);
    Encoded result;
    file.beginBlock();
    for (const char* text : {"NA:", "N", "OBJID:"}) {
        file.writeString(text);
    }
    file.writeInt64(1);
    file.writeString("GEO:");
    const std::uint64_t place = file.offset();
    file.writeInt(0);
    result.count = encoder.encodeList(list, color);
    file.patchInt(place, result.count);
    file.endBlock();
    file.writeTrailer();
    file.flush();
    target.close();
    result.leftOut = encoder.leftOut();
    readers::Findings findings;
    result.records = readers::eem::readEem(bytes, findings).blocks.at(0).records;
    EXPECT_EQ(allFindings(findings), "");
    return result;
}

readers::eem::Record encodeOne(HextPrimary& primitive, const ObjectColor& color = {}) {
    const Encoded result = encode({&primitive}, color);
    EXPECT_EQ(result.records.size(), 1U);
    return result.records.empty() ? readers::eem::Record() : result.records[0];
}

// The code of a primitive's record, which tells the primitive as it is.
std::int32_t codeOf(HextPrimary& primitive, const std::string& name) {
    const readers::eem::Record record = encodeOne(primitive);
    EXPECT_EQ(difference(record, primitive), "") << name;
    return record.code;
}

TEST(EemPrimitives, EveryClassComesBackAsItIs) {
    Place skew;
    skew.origin = {1, 2, 3};
    skew.x = {0.6, 0.8, 0};
    skew.y = {0, 0, 1};
    skew.z = {0.8, -0.6, 0};
    std::set<std::int32_t> codes;
    for (const ShapeCase& shape : shapeCases()) {
        const std::unique_ptr<HextPrimary3D> solid = shape.make(skew, 100);
        if (HextBox3D* box = HextBox3D::cast(solid.get())) {
            box->xAxis.normalize();
            box->yAxis.normalize();
        }
        codes.insert(codeOf(*solid, shape.name));
    }
    HextPrism3D turned;
    turned.startPoint = {1, 2, 9};
    turned.endPoint = {1, 2, -3};
    turned.vertexPoint = {4, 2, -3};
    turned.sides = 6;
    turned.sideMode = 1;
    codes.insert(codeOf(turned, "turned prism"));
    HextPrimaryLine line;
    line.startPoint = {1, 2, 3};
    line.endPoint = {4, 5, 6};
    codes.insert(codeOf(line, "line"));
    HextRevolve noProfile;
    HextSpolygon noOutline;
    EXPECT_EQ(codeOf(noProfile, "no profile"), 8);
    EXPECT_EQ(codeOf(noOutline, "no outline"), 12);
    EXPECT_EQ(codes.size(), 21U);
}

TEST(EemPrimitives, ComputedFieldsAreThoseOfTheFormat) {
    HextBox3D box;
    box.pointKind = 1;
    box.xLength = 10;
    box.yLength = 20;
    EXPECT_EQ(encodeOne(box).numbers, (std::vector<double>{-5, -10, 0, 1, 0, 0, 0, 1, 0, 10, 20, 0}));
    HextPrism3D prism;
    prism.startPoint = {0, 0, 5};
    prism.vertexPoint = {2, 0, 0};
    prism.sides = 6;
    prism.sideMode = 1;
    const std::vector<double> turned = encodeOne(prism).numbers;
    EXPECT_NEAR(turned[6], 2 * std::cos(pi / 6), 1e-15);
    EXPECT_NEAR(turned[7], 1, 1e-15) << "30 degrees, right-handed about the axis towards the start";
    HextTorus3D bend;
    bend.startPoint = {2, 0, 0};
    bend.thirdField = {0, 3, 0};
    bend.arcKind = 1;
    EXPECT_EQ(encodeOne(bend).numbers, (std::vector<double>{0, 0, 0, 2, 0, 0, 0, 0, 1, 1.5 * pi, 0, 0}));
}

TEST(EemPrimitives, WhatHasNoRecordDoesNotCount) {
    HextPrimaryLine line;
    HextPrimaryText text;
    HextPrimaryAcadSolid3D host;
    HextSphere3D infinite;
    infinite.radius = 1e308 * 10;
    HextPrism3D sideless;
    sideless.sideMode = 1;
    HextTorus3D huge;
    huge.center = {-1e308, 0, 0};
    huge.startPoint = {1e308, 0, 0};
    const Encoded result = encode({&text, &line, &host, &infinite, &sideless, &huge, &line});
    EXPECT_EQ(result.count, 2);
    ASSERT_EQ(result.records.size(), 2U);
    EXPECT_EQ(result.records[1].code, 20) << "the bytes of those taken back are gone";
    ASSERT_EQ(result.leftOut.size(), 5U);
    EXPECT_EQ(result.leftOut[1].primitive, &host);
    EXPECT_STREQ(result.leftOut[1].why, "its class has no record in an EEM file");
    EXPECT_STREQ(result.leftOut[4].why, "a coordinate or size is not finite");
}

TEST(EemPrimitives, ColourWordsFollowTheCode) {
    const auto word = [](std::uint32_t r, std::uint32_t g, std::uint32_t b, std::uint32_t alpha) {
        return r | g << 8U | b << 16U | alpha << 24U;
    };
    const std::pair<std::int64_t, std::uint32_t> cases[] = {
        {0, word(128, 128, 128, 0)},
        {1, word(255, 0, 0, 0)},
        {20, word(255, 63, 0, 0)},
        {255, word(255, 255, 255, 0)},
        {256, 0},
        {499, 0},
        {500, word(128, 128, 128, 0x33)},
        {503, word(0, 255, 0, 0x33)},
        {755, word(255, 255, 255, 0x33)},
        {999, word(0, 0, 0, 0x33)},
        {1000, word(255, 255, 255, 0)},
        {1003, word(132, 132, 132, 0)},
        {1255, word(128, 128, 128, 0)},
        {1499, 0},
        {1500, word(255, 255, 255, 0x33)},
        {1503, word(132, 132, 132, 0x33)},
        {1756, word(0, 0, 0, 0x33)},
        {-1, 0},
        {std::int64_t{2147483647} + 1500, word(0, 0, 0, 0x33)},
    };
    for (const auto& [code, expected] : cases) {
        EXPECT_EQ(eem::colorWord(code), expected) << code;
    }
}

TEST(EemPrimitives, APipeKeepsItsColourInItsCylindersAlone) {
    HextCylinder3D cylinder;
    HextScylinder3D sloped;
    HextSphere3D sphere;
    HextPrimaryLine line;
    HextCylinder3D insulation;
    HextSphere3D insulated;
    insulation.material = insulated.material = obstructionMaterial;
    sphere.material = "steel";
    const auto colours = [&](const ObjectColor& color) {
        std::vector<std::uint32_t> words;
        for (const auto& record :
             encode({&cylinder, &sloped, &sphere, &insulation, &insulated, &line}, color).records) {
            words.push_back(record.color);
        }
        return words;
    };
    const auto word = [](std::int64_t code) { return eem::colorWord(code); };
    EXPECT_EQ(colours({3, true}), (std::vector<std::uint32_t>{word(3), word(3), word(1003), word(503), word(1503), 3}));
    EXPECT_EQ(colours({3, false}), (std::vector<std::uint32_t>{word(3), word(3), word(3), word(503), word(503), 3}));
    EXPECT_EQ(colours({1003, false}),
              (std::vector<std::uint32_t>{word(1003), word(1003), word(1003), word(1503), word(1503), 1003}));
}

// Every object of a plant, its records beside its primitives.
class EemPlant : public EemRunTest {
protected:
    void compare(const std::string& json, std::size_t leastRecords) {
        loadText(json);
        eem::exportTo(*ui.answer);
        std::size_t records = 0;
        for (const readers::eem::Block& block : read().blocks) {
            PrimaryList shape;
            ASSERT_EQ(getPrimaries(openAs<HxDbObject>(HxDbObjectId(block.id)), shape.list(), false, false), Hext::eOk);
            std::size_t next = 0;
            for (const HextPrimary* primitive : shape) {
                const bool hasRecord = !primitive->isKindOf(HextPrimaryText::desc()) &&
                                       !primitive->isKindOf(HextPrimaryAcad::desc()) &&
                                       !primitive->isKindOf(HextAcadBlockReference::desc());
                if (hasRecord) {
                    ASSERT_LT(next, block.records.size()) << block.id;
                    ASSERT_EQ(difference(block.records[next++], *primitive), "") << block.id;
                }
            }
            EXPECT_EQ(next, block.records.size()) << block.id;
            records += next;
        }
        EXPECT_GE(records, leastRecords);
    }
};

TEST_F(EemPlant, TheExampleComesBackAsItIs) {
    compare(exampleText("pump-station.json"), 450);
}

TEST_F(EemPlant, AGeneratedPlantComesBackAsItIs) {
    compare(plant::generateModelText({.objects = 3000, .seed = 4}), 2500);
}

}  // namespace
