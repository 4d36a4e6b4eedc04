// Primitives from the file, and the lists that objects hand out.
#include "loaded_model.h"

#include "sources/json/short_number.h"

#include <charconv>
#include <cmath>

namespace {

// Frees a list at the end.
class List {
public:
    ~List() { freeHextPrimaryArray(list); }
    HextPrimaryArray list;
};

std::string withShape(const std::string& primitives, const std::string& className = "HxDbTubeModelSpec") {
    return fileWith(R"({"id":2,"class":")" + className + R"(","primitives":[)" + primitives + "]}");
}

// The one primitive of an object, with its model.
template <typename T>
class Read {
public:
    explicit Read(const std::string& primitive) : model_(withShape(primitive)) {
        EXPECT_EQ(CadGiDraw::getPrimarys(&model_.get<HxDbObject>(2), shape_.list, nullptr, 1), Hext::eOk);
        if (shape_.list.size() != 1 || T::cast(shape_.list[0]) == nullptr) {
            throw std::runtime_error("not the primitive that stands in the file");
        }
    }
    const T& operator*() const { return *T::cast(shape_.list[0]); }
    const T* operator->() const { return &**this; }

private:
    LoadedModel model_;
    List shape_;
};

TEST(Primitives, DefaultsOfTheFormat) {
    const Read<HextBox3D> box(R"({"type":"HextBox3D","point":[1,2,3],"xLength":4,"yLength":5,"zLength":6})");
    const auto& b = *box;
    EXPECT_EQ(b.getColor(), 0);
    EXPECT_EQ(b.handedness, 1);
    EXPECT_EQ(b.getMaterial(), nullptr);
    EXPECT_EQ(b.pointKind, 0);
    EXPECT_TRUE(b.yAxis.isEqualTo({0, 1, 0}));
    EXPECT_TRUE(b.center().isEqualTo({3, 4.5, 6}));
    const Read<HextPrimaryText> text(R"({"type":"HextPrimaryText","text":"\u00e9","position":[0,0,1]})");
    EXPECT_EQ(text->height, 100);
    EXPECT_EQ(text->style, "");
    const Read<HextOval3D> oval(
        R"({"type":"HextOval3D","point":[0,0,0],"vect":[0,0,2],"axialRadius":50,"radialRadius":100,"baseRadius":60})");
    EXPECT_EQ(oval->segments, 32);
    EXPECT_DOUBLE_EQ(oval->getHeadHeight(60), 10);
    EXPECT_DOUBLE_EQ(oval->getHeadHeight(200), 50) << "a negative radicand counts as 0";
    const Read<HextSpolygon> polygon(R"({"type":"HextSpolygon","origin":[0,0,0],"height":1})");
    EXPECT_FALSE(polygon->outline);
    EXPECT_FALSE(polygon->holes);
}

TEST(Primitives, FieldsGoToTheirPlaces) {
    const Read<HextBox3D> box(
        R"({"type":"HextBox3D","zLength":6,"point":[0,0,0],"xAxis":[0,2,0],"yAxis":[2,0,0],"xLength":4,"yLength":5,)"
        R"("handedness":0,"pointKind":0,"color":3,"material":"hext_temp_material"})");
    const auto& b = *box;
    EXPECT_EQ(b.getColor(), 3);
    EXPECT_STREQ(b.getMaterial(), obstructionMaterial);
    EXPECT_TRUE(b.center().isEqualTo({2.5, 2, 3})) << "left-handed: the third axis runs against the cross product";
    const Read<HextTorus3D> torus(
        R"({"type":"HextTorus3D","center":[1,0,0],"startPoint":[2,0,0],"thirdField":[3,0,0],"startDiameter":4,)"
        R"("endDiameter":5,"arcKind":3,"form":1,"angle":6})");
    const auto& t = *torus;
    EXPECT_EQ(t.center.x + t.startPoint.x * 10 + t.thirdField.x * 100, 321);
    EXPECT_EQ(t.startDiameter + t.endDiameter * 10 + t.arcKind * 100 + t.form * 1000 + t.angle * 10000, 61354);
    const Read<HextScylinder3D> sloped(
        R"({"type":"HextScylinder3D","startPoint":[1,0,0],"endPoint":[2,0,0],"diameter":3,"vect":[0,4,0]})");
    const auto& s = *sloped;
    EXPECT_TRUE(s.isKindOf(HextCylinder3D::desc()));
    EXPECT_EQ(s.getStartPoint().x + s.getEndPoint().x * 10 + s.getDiameter() * 100 + s.vect.y * 1000, 4321);
    const Read<HextSqucone3D> frustum(
        R"({"type":"HextSqucone3D","point":[0,0,0],"bottomX":1,"bottomY":2,"topX":3,"topY":4,"height":5,)"
        R"("offsetDirection":[0,1,0],"offsetLength":6})");
    EXPECT_TRUE(frustum->topCenter().isEqualTo({0, 6, 5}));
    const Read<HextSpolygon> polygon(
        R"({"type":"HextSpolygon","origin":[0,0,0],"height":1,"outline":[[1,0,0,0],[2,1,0,0],[4,1,1,0]],)"
        R"("holes":[[[6,0,0,0]],[]]})");
    const auto& p = *polygon;
    ASSERT_EQ(p.outline->size(), 3U);
    EXPECT_EQ((*p.outline)[1].kind, 2);
    EXPECT_EQ((*p.outline)[2].point.y, 1);
    ASSERT_EQ(p.holes->size(), 2U);
    EXPECT_EQ((*p.holes)[0][0].kind, 6);
}

TEST(Primitives, EntitiesKeepTheirText) {
    const std::string entity = R"({ "type" : "line", "at":[1, 2e3 ], "t":"}\"\u4e2d" })";
    const Read<HextPrimaryAcadSolid3D> shape(R"({"type":"HextPrimaryAcadSolid3D","entity":)" + entity +
                                             R"( ,"color":1})");
    EXPECT_EQ(shape->getSer(), entity);
    EXPECT_TRUE(shape->isKindOf(HextPrimary3D::desc()));
    const Read<HextAcadBlockReference> asText(R"({"type":"HextAcadBlockReference","entity":"{\"a\":1}"})");
    EXPECT_EQ(asText->getSer(), R"({"a":1})");
    EXPECT_EQ(HextPrimaryAcad::cast(&*asText), nullptr);
}

TEST(Shapes, ListsBelongToTheCaller) {
    LoadedModel model(
        withShape(R"({"type":"HextSphere3D","center":[0,0,0],"radius":1},)"
                  R"({"type":"HextRevolve","center":[0,0,0],"axis":[0,0,1],"angle":1,"profile":[[1,0,0,0]]})"));
    auto& object = model.get<HxDbTubeModelSpec>(2);
    List one;
    List two;
    ASSERT_EQ(smrtln::getSmrtlnGraphy(&object, "reality", one.list), Hext::eOk);
    ASSERT_EQ(smrtln::getSmrtlnGraphy(&object, "reality", two.list), Hext::eOk);
    ASSERT_EQ(one.list.size(), 2U);
    HextSphere3D::cast(one.list[0])->radius = 5;
    EXPECT_EQ(HextSphere3D::cast(two.list[0])->radius, 1);
    EXPECT_NE(HextRevolve::cast(one.list[1])->profile.get(), HextRevolve::cast(two.list[1])->profile.get());
    EXPECT_EQ(smrtln::getSmrtlnGraphy(&object, "axis", one.list), 18);
    EXPECT_TRUE(one.list.empty());
}

TEST(Shapes, StatusOfObjectsWithoutOne) {
    LoadedModel model(fileWith(R"({"id":2,"class":"HxDbEquipment"},{"id":3,"class":"HxDbEquipment","primitives":[]},)"
                               R"({"id":4,"class":"HxDbBoltNutModel","primitives":[]},)"
                               R"({"id":5,"class":"HxDbTubeWeld","primitives":[]})"));
    List shape;
    EXPECT_EQ(smrtln::getEquipReality(&model.get<HxDbEquipment>(2), shape.list), 18);
    EXPECT_STRNE(hxcom::getLastErrorText(), "");
    EXPECT_EQ(smrtln::getEquipReality(&model.get<HxDbEquipment>(3), shape.list), Hext::eOk);
    EXPECT_EQ(smrtln::getEquipReality(nullptr, shape.list), 18);
    const auto status = [&](std::int64_t id, int flags) {
        return CadGiDraw::getPrimarys(&model.get<HxDbObject>(id), shape.list, nullptr, flags);
    };
    EXPECT_EQ(status(4, 1), 2);
    EXPECT_EQ(status(4, 3), Hext::eOk);
    EXPECT_EQ(status(5, 3), 2);
    EXPECT_EQ(status(5, 5), Hext::eOk);
    EXPECT_EQ(status(1, 7), 18) << "a manager draws nothing";
}

TEST(ShortNumbers, AgreeWithTheCompleteReader) {
    for (const std::string text : {"0",
                                   "-0",
                                   "7",
                                   "123456789012345",
                                   "0.1",
                                   "-0.000001",
                                   "52428.125",
                                   "99999.9999999999",
                                   "100000000000000.1",
                                   "0.30000000000000004",
                                   "1e5",
                                   "1E5",
                                   "-",
                                   "",
                                   "01",
                                   "1.",
                                   ".5",
                                   "+1",
                                   "1.5e",
                                   "nan"}) {
        double fast = -1;
        const bool taken = plant::shortNumber((text + ",").c_str(), fast);
        double exact = -2;
        const auto result = std::from_chars(text.data(), text.data() + text.size(), exact);
        if (taken) {
            EXPECT_EQ(result.ptr, text.data() + text.size()) << text;
            EXPECT_EQ(fast, exact) << text;
            EXPECT_EQ(std::signbit(fast), std::signbit(exact)) << text;
        }
        const bool isShort = text == "0" || text == "-0" || text == "7" || text == "123456789012345" || text == "0.1" ||
                             text == "-0.000001" || text == "52428.125" || text == "99999.9999999999";
        EXPECT_EQ(taken, isShort) << text;
    }
    double number = 0;
    EXPECT_FALSE(plant::shortNumber("12x", number));
}

}  // namespace
