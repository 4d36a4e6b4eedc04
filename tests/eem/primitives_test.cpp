// Records against the primitives of the model: each class by itself, and whole plants.
#include "eem/color.h"
#include "eem/primitives.h"
#include "generator/generate.h"
#include "platform/primaries.h"
#include "rebuilt_primitive.h"
#include "support.h"

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

// Primitives of an object of the model format.
struct Shape {
    explicit Shape(const std::string& primitives)
        : model(TestModel::withObjects(R"({"id":2,"class":"HxDbStruct","in":1,"primitives":[)" + primitives + "]}")) {
        EXPECT_EQ(getPrimaries(openAs<HxDbObject>(HxDbObjectId(2)), items.list(), false, false), Hext::eOk);
    }
    TestModel model;
    PrimaryList items;
};

// One of each code but those of bends, in skew positions.
const char* const everyClass = R"(
    {"type":"HextCylinder3D","startPoint":[1,2,3],"endPoint":[4,5,7],"diameter":9},
    {"type":"HextBox3D","point":[1,2,3],"xLength":4,"yLength":5,"zLength":6,"xAxis":[0,1,0],"yAxis":[0,0,1],"handedness":0},
    {"type":"HextBox3D","point":[1,2,3],"xLength":4,"yLength":5,"zLength":6,"xAxis":[0.6,0.8,0],"yAxis":[-0.8,0.6,0],"pointKind":1},
    {"type":"HextConcone3D","startPoint":[1,2,3],"endPoint":[4,5,7],"startDiameter":9,"endDiameter":3},
    {"type":"HextEcone3D","startPoint":[1,2,3],"endPoint":[4,5,7],"startDiameter":9,"endDiameter":3,"vect":[0,0,2]},
    {"type":"HextOval3D","point":[1,2,3],"vect":[0,1,1],"axialRadius":4,"radialRadius":5,"baseRadius":3},
    {"type":"HextPrism3D","startPoint":[0,0,9],"endPoint":[0,0,0],"vertexPoint":[3,4,0],"sides":5},
    {"type":"HextPrism3D","startPoint":[1,2,9],"endPoint":[1,2,-3],"vertexPoint":[4,2,-3],"sides":6,"sideMode":1},
    {"type":"HextRevolve","center":[1,2,3],"axis":[0,0,2],"angle":3,"profile":[[1,5,0,0],[2,6,0,1],[1,7,0,3],[4,5,0,4]]},
    {"type":"HextRevolve","center":[1,2,3],"axis":[0,0,2],"angle":3},
    {"type":"HextSaddle3D","point":[1,2,3],"axis":[1,0,0],"sectionAxis":[0,1,0],"length":4,"sectionLength":5,"sectionHeight":6,"circleRadius":7},
    {"type":"HextScylinder3D","startPoint":[1,2,3],"endPoint":[4,5,7],"diameter":9,"vect":[1,0,2]},
    {"type":"HextSphere3D","center":[1,2,3],"radius":4},
    {"type":"HextSpolygon","origin":[10,20,30],"xAxis":[0,3,4],"yAxis":[2,0,0],"direction":[0,0,1],"height":8,
     "outline":[[1,0,0,0],[1,10,0,1],[1,10,10,0],[4,0,10,0]],
     "holes":[[[6,2,2,0],[1,3,2,0],[1,2,3,0]],[[1,5,5,0],[1,6,5,0],[4,6,6,-2]]]},
    {"type":"HextSpolygon","origin":[10,20,30],"height":8},
    {"type":"HextSqucir3D","basePoint":[1,2,3],"topCenter":[4,5,6],"xAxis":[0,1,0],"baseNormal":[0,0,1],"xLength":7,"yLength":8,"topRadius":9},
    {"type":"HextSqucone3D","point":[1,2,3],"bottomX":4,"bottomY":5,"topX":6,"topY":7,"height":8,"zAxis":[0,1,0],"xAxis":[1,0,0],"offsetDirection":[0,0,1],"offsetLength":9},
    {"type":"HextWedge3D","point1":[1,2,3],"point2":[4,5,6],"point3":[7,8,10],"wedgeSize":-4},
    {"type":"HextPrimaryLine","startPoint":[1,2,3],"endPoint":[4,5,6]})";

// Bends of every kind of arc, round and square, and by angle: more than 2 pi are degrees as fewer are.
std::string everyBend() {
    std::string text;
    for (const std::string type :
         {"HextTorus3D\",\"startDiameter\":8,\"endDiameter\":6",
          "HextSqutorus3D\",\"startWidth\":1,\"startHeight\":2,\"endWidth\":3,\"endHeight\":4"}) {
        const std::string start = R"({"type":")" + type + R"(,"center":[1,2,3],"startPoint":[11,2,3],)";
        text += start + R"("thirdField":[1,8,11],"arcKind":0},)";
        text += start + R"("thirdField":[1,8,11],"arcKind":1},)";
        text += start + R"("thirdField":[-9,4,3],"arcKind":0},)";
        text += start + R"("thirdField":[0,0,2],"arcKind":2},)";
        text += start + R"("thirdField":[0,2,0],"arcKind":3},)";
        const std::string axis = type.starts_with("HextSq") ? "normal" : "thirdField";
        text += start + "\"" + axis + R"(":[0,0,-1],"form":1,"angle":90},)";
        text += start + "\"" + axis + R"(":[0,0,1],"form":1,"angle":3,"arcKind":2},)";
    }
    text.pop_back();
    return text;
}

TEST(EemPrimitives, EveryClassComesBackAsItIs) {
    const std::pair<std::string, std::string> cases[] = {{everyClass, "0 1 2 3 4 5 6 7 8 8 9 10 11 12 12 13 14 19 20"},
                                                         {everyBend(), "17 17 17 17 17 18 18 15 15 15 15 15 16 16"}};
    for (const auto& [primitives, codes] : cases) {
        Shape shape(primitives);
        const Encoded result = encode(shape.items.list());
        std::string found;
        for (std::size_t i = 0; i < std::min(result.records.size(), shape.items.size()); ++i) {
            found += (i > 0 ? " " : "") + std::to_string(result.records[i].code);
            EXPECT_EQ(difference(result.records[i], *shape.items.list()[i]), "") << "item " << i;
        }
        EXPECT_EQ(found, codes);
        EXPECT_EQ(result.count, static_cast<std::int32_t>(shape.items.size()));
    }
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
