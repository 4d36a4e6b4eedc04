// Keys of solids: apart from their place, and nothing else.
#include "exportbase/solid_key.h"
#include "shapes/cases.h"
#include "shapes/numbers.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

using plant::FieldRow;
using plant::FieldType;

std::vector<std::uint64_t> wordsOf(const HextPrimary& primitive) {
    SolidKey key;
    EXPECT_TRUE(makeSolidKey(primitive, key)) << primitive.isA()->name();
    return key.words;
}

std::unique_ptr<HextPrimary> copyOf(const HextPrimary& primitive) {
    return std::unique_ptr<HextPrimary>(primitive.clone());
}

// What a point alone tells of is the place.
bool isPlaceAlone(const HextPrimary& primitive) {
    const auto& fields = classOf(primitive).fields;
    return std::count_if(fields.begin(), fields.end(), [](const FieldRow& f) { return f.type == FieldType::Point; }) ==
           1;
}

TEST(SolidKey, ChangesWithEveryNumberOfTheSolid) {
    for (const ShapeCase& shape : shapeCases()) {
        const std::unique_ptr<HextPrimary3D> solid = shape.make(Place(), 100);
        const std::vector<std::uint64_t> words = wordsOf(*solid);
        for (const FieldRow& field : classOf(*solid).fields) {
            const std::unique_ptr<HextPrimary> other = copyOf(*solid);
            void* place = field.place != nullptr ? field.place(*other) : nullptr;
            if (field.type == FieldType::Double) {
                *static_cast<double*>(place) += 1;
            } else if (field.type == FieldType::Vector) {
                static_cast<HxGeVector3D*>(place)->y += 0.5;
            } else if (field.type == FieldType::Point && !isPlaceAlone(*solid)) {
                static_cast<HxGePoint3D*>(place)->y += 0.5;
            } else if (field.type == FieldType::Int32) {
                ++*static_cast<std::int32_t*>(place);
            } else if (field.type == FieldType::Int16) {
                ++*static_cast<std::int16_t*>(place);
            } else {
                continue;
            }
            const bool isLook = field.name == "color" || field.name == "segments";
            EXPECT_EQ(wordsOf(*other) == words, isLook) << shape.name << ", " << field.name;
        }
    }
    EXPECT_NE(wordsOf(HextCylinder3D()), wordsOf(HextConcone3D())) << "another class";
}

// However much is lost in adding up.
TEST(SolidKey, IsTheSameAtEveryPlace) {
    Place moved;
    moved.origin = {1234567.1, -0.3, 1.0 / 3};
    for (const ShapeCase& shape : shapeCases()) {
        SolidKey here;
        SolidKey there;
        EXPECT_TRUE(makeSolidKey(*shape.make(Place(), 100), here) && makeSolidKey(*shape.make(moved, 100), there));
        EXPECT_EQ(there.words, here.words) << shape.name;
        EXPECT_LT(((there.place - here.place) - moved.origin.asVector()).length(), 1e-9) << shape.name;
    }
}

TEST(SolidKey, IsNoneWhereTheSolidIsRefused) {
    SolidKey key;
    for (const ShapeCase& shape : shapeCases()) {
        const std::unique_ptr<HextPrimary3D> solid = shape.make(Place(), 100);
        for (const FieldRow& field : classOf(*solid).fields) {
            for (const double bad : {std::numeric_limits<double>::quiet_NaN(), 1.1e9, -1.1e9}) {
                const std::unique_ptr<HextPrimary> other = copyOf(*solid);
                const bool isPoint = field.type == FieldType::Point && field.name != "thirdField";
                if (isPoint) {
                    static_cast<HxGePoint3D*>(field.place(*other))->y = bad;
                    EXPECT_FALSE(makeSolidKey(*other, key)) << shape.name << ", " << field.name;
                }
            }
        }
    }
    HextTorus3D bend;
    bend.thirdField.y = 1.1e9;
    EXPECT_FALSE(makeSolidKey(bend, key)) << "the end of a bend";
    bend.form = 1;
    EXPECT_TRUE(makeSolidKey(bend, key)) << "a direction";
    EXPECT_FALSE(makeSolidKey(HextPrimaryLine(), key));
    EXPECT_FALSE(makeSolidKey(HextPrimaryAcadSolid3D(), key));
}

TEST(SolidKey, OutlinesCountWithAllTheirVertices) {
    HextSpolygon extrusion;
    extrusion.outline = HextVertexList{{1, {0, 0, 0}}, {1, {1, 0, 0}}, {1, {0, 1, 0}}};
    HextRevolve turn;
    turn.profile = *extrusion.outline;
    const std::pair<HextPrimary*, HextVertexList*> solids[] = {{&extrusion, extrusion.outline.get()},
                                                               {&turn, turn.profile.get()}};
    for (const auto& [solid, outline] : solids) {
        const std::vector<std::uint64_t> words = wordsOf(*solid);
        for (HextVertex& vertex : *outline) {
            for (double* number : {&vertex.point.x, &vertex.point.y, &vertex.point.z}) {
                *number += 0.5;
                EXPECT_NE(wordsOf(*solid), words);
                *number -= 0.5;
            }
            vertex.kind = 3;
            EXPECT_NE(wordsOf(*solid), words);
            vertex.kind = 1;
        }
    }
    extrusion.outline->pop_back();
    const std::vector<std::uint64_t> two = wordsOf(extrusion);
    extrusion.holes = std::vector<HextVertexList>{*extrusion.outline};
    EXPECT_NE(wordsOf(extrusion), two);
    extrusion.outline = {};
    EXPECT_NE(wordsOf(extrusion), two) << "a hole is no outline";
    extrusion.outline = HextVertexList(1'000'000);
    SolidKey key;
    EXPECT_FALSE(makeSolidKey(extrusion, key)) << "as large as a mesh";
    EXPECT_LT(key.words.size(), 1000U);
}

}  // namespace
