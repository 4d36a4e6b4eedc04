// Serialised host entities: every type, and texts that are none.
#include "mesh_of.h"
#include "tolmar/code_page.h"

#include <memory>
#include <random>

namespace {

using EntityPtr = std::unique_ptr<TlDbEntity>;

EntityPtr entityOf(std::string_view serial) {
    return EntityPtr(hxcad::setEntitySerialString(serial));
}

template <typename Class>
struct Read {
    explicit Read(std::string_view serial) : owner(entityOf(serial)), entity(Class::cast(owner.get())) {}
    EntityPtr owner;
    Class* entity;
    explicit operator bool() const { return entity != nullptr; }
    Class* operator->() const { return entity; }
};

constexpr std::string_view sphere = R"({"type":"HextSphere3D","center":[1,2,3],"radius":100,"color":5})";

std::string with(std::string_view head, std::string_view primitive, std::string_view tail = "}") {
    return std::string(head) + std::string(primitive) + std::string(tail);
}

TEST(Serial, CurvesAndTextsHaveTheirFields) {
    const Read<TlDbLine> line(R"({"type":"line","startPoint":[1,2,3],"endPoint":[4,5.5,-6e2],"color":3})");
    ASSERT_TRUE(line);
    EXPECT_EQ(line->endPoint().z, -600);
    EXPECT_EQ(line->colorIndex(), 3);
    EXPECT_STREQ(line->isA()->name(), "TlDbLine");
    const Read<TlDbCircle> circle(R"({"type":"circle","center":[1,2,3],"radius":7})");
    ASSERT_TRUE(circle);
    EXPECT_EQ(circle->normal().z, 1);
    EXPECT_EQ(circle->colorIndex(), 7);
    const Read<TlDbArc> arc(
        R"({"type":"arc","center":[1,2,3],"radius":7,"startAngle":1,"endAngle":2,"normal":[1,0,0]})");
    ASSERT_TRUE(arc && arc->isKindOf(TlDbCurve::desc()));
    const Read<TlDbPolyline> polyline(R"({"type":"polyline","points":[[0,0,0],[1,0,0],[1,1,0]]})");
    ASSERT_TRUE(polyline && polyline->numVerts() == 3);
    TlGePoint3d p;
    EXPECT_EQ(polyline->getPointAt(2, p), Tl::eOk);
    EXPECT_EQ(p.y, 1);
    EXPECT_EQ(polyline->getPointAt(3, p), Tl::eInvalidInput);
    // Serial texts are UTF-8, an entity's are in the code page.
    const Read<TlDbText> text(tolmar::toUtf8(
        R"({"type":"text","text":"管道 \"1\"","position":[1,2,3],"rotation":0.5,"height":30,"style":"宋体"})"));
    ASSERT_TRUE(text);
    EXPECT_STREQ(text->textString(), "管道 \"1\"");
    EXPECT_STREQ(text->textStyle(), "宋体");
    EXPECT_TRUE(Read<TlDbHatch>(R"({"type":"hatch"})"));
    EXPECT_TRUE(Read<TlDbPoint>(R"({"type":"point","position":[0,0,1]})"));
}

TEST(Serial, SolidsAndSurfacesHaveABoundary) {
    const Read<TlDb3dSolid> solid(with(R"({"type":"solid","color":9,"primitive":)", sphere));
    ASSERT_TRUE(solid && solid->body() != nullptr);
    tolmar::TriangleMesh mesh;
    ASSERT_EQ(tolmar::meshBody(*solid->body(), 1, mesh), tolmar::MeshStatus::Ok);
    EXPECT_TRUE(isManifold(plainMesh(mesh)));
    const Read<TlDbSurface> surface(with(R"({"type":"surface","color":9,"colors":[1,2],"primitive":)", sphere));
    ASSERT_TRUE(surface && surface->body() != nullptr);
    EXPECT_EQ(surface->subentColor(1, 9).colorIndex(), 2);
    EXPECT_EQ(surface->subentColor(1, 13).colorIndex(), 9);
    EXPECT_EQ(surface->subentColor(2, 5).colorIndex(), 9);
    // A parametric entity is made whatever its sizes; a solid is not.
    const std::string flat = R"({"type":"HextSphere3D","center":[1,2,3],"radius":0})";
    const Read<ORNACadPrimary3D> parametric(with(R"({"type":"parametric","gsFlags":65536,"primitive":)", flat));
    ASSERT_TRUE(parametric);
    EXPECT_TRUE(parametric->checkGsFlag(0x10000));
    TlDb3dSolid* none = nullptr;
    EXPECT_EQ(parametric->getSolid(none), Tl::eZeroSize);
    std::vector<TlDbEntity*> parts;
    EXPECT_EQ(parametric->explode(parts), Tl::eZeroSize);
    EXPECT_TRUE(parts.empty());
    EXPECT_EQ(entityOf(with(R"({"type":"solid","primitive":)", flat)), nullptr);
    const Read<ORNACadPrimary3D> whole(with(R"({"type":"parametric","primitive":)", sphere));
    ASSERT_TRUE(whole);
    EXPECT_EQ(whole->colorIndex(), 5);
    ASSERT_EQ(whole->explode(parts), Tl::eOk);
    const EntityPtr part(parts.at(0));
    EXPECT_TRUE(part->isKindOf(TlDb3dSolid::desc()));
}

TEST(Serial, EveryFieldOfAPrimitiveIsRead) {
    const Read<TlDb3dSolid> solid(with(R"({"type":"solid","primitive":)",
                                       R"({"type":"HextSpolygon","origin":[0,0,0],"height":10,"handedness":0,
                                           "material":"hext_temp_material","xAxis":[0,1,0],"yAxis":[-1,0,0],
                                           "outline":[[1,0,0,0],[1,10,0,0],[1,10,10,0],[4,0,10,0]],
                                           "holes":[[[1,2,2,0],[1,4,2,0],[4,4,4,0]]]})"));
    ASSERT_TRUE(solid);
    tolmar::TriangleMesh mesh;
    ASSERT_EQ(tolmar::meshBody(*solid->body(), 1, mesh), tolmar::MeshStatus::Ok);
    EXPECT_NEAR(volumeOf(plainMesh(mesh)), 980, 1e-9);
}

TEST(Serial, MeshesHaveTheirPointsAndFaces) {
    const Read<HextPolygonMeshView> view(
        R"({"type":"mesh","points":[[0,0,0],[1,0,0],[0,1,0],[0,0,1]],"faces":[[0,2,1],[0,1,3],[1,2,3],[2,0,3]]})");
    ASSERT_TRUE(view);
    const std::unique_ptr<TlDbPolyFaceMesh> mesh(view->convertToPolyfaceMesh());
    ASSERT_NE(mesh, nullptr);
    std::vector<TlGePoint3d> points{{9, 9, 9}};
    std::vector<std::int32_t> faces{9};
    ASSERT_EQ(HextPolygonMeshView::getPolyFaceMeshData(mesh.get(), points, faces), Tl::eOk);
    EXPECT_EQ(points.size(), 4U);
    EXPECT_EQ(faces, (std::vector<std::int32_t>{3, 0, 2, 1, 3, 0, 1, 3, 3, 1, 2, 3, 3, 2, 0, 3}));
    const Read<HextPolygonMeshView> empty(R"({"type":"mesh","points":[[0,0,0]],"faces":[]})");
    ASSERT_TRUE(empty);
    EXPECT_EQ(empty->convertToPolyfaceMesh(), nullptr);

    const Read<TlDbSubDMesh> sub(
        R"({"type":"subDMesh","vertices":[[0,0,0],[1,0,0],[1,1,0],[0,1,0],[5,5,5]],"faces":[[0,1,2,3]]})");
    ASSERT_TRUE(sub);
    std::int32_t count = 0;
    sub->numOfVertices(count);
    EXPECT_EQ(count, 5);
    sub->getFaceArray(faces);
    EXPECT_EQ(faces, (std::vector<std::int32_t>{4, 0, 1, 2, 3}));
    std::vector<TlGeVector3d> normals;
    sub->getNormalArray(normals);
    ASSERT_EQ(normals.size(), 5U);
    EXPECT_TRUE(normals[2].isEqualTo({0, 0, 1}));
    const Read<TlDbSubDMesh> given(
        R"({"type":"subDMesh","vertices":[[0,0,0],[1,0,0],[1,1,0]],"faces":[[0,1,2]],"normals":[[1,0,0],[0,1,0],[0,0,1]]})");
    ASSERT_TRUE(given);
    given->getNormalArray(normals);
    EXPECT_TRUE(normals[1].isEqualTo({0, 1, 0}));
}

std::string nestedBlock(int depth) {
    std::string text;
    for (int i = 0; i < depth; ++i) {
        text += R"({"type":"block","parts":[)";
    }
    text += R"({"type":"hatch"})";
    for (int i = 0; i < depth; ++i) {
        text += "]}";
    }
    return text;
}

TEST(Serial, BlocksFallIntoNewPartsEachTime) {
    const Read<TlDbBlockReference> block(with(
        R"({"type":"block","parts":[{"type":"line","startPoint":[0,0,0],"endPoint":[1,0,0]},
            {"type":"block","parts":[{"type":"hatch","color":1}]},{"type":"solid","primitive":)",
        sphere, "}]}"));
    ASSERT_TRUE(block);
    for (int round = 0; round < 2; ++round) {
        std::vector<TlDbEntity*> parts;
        ASSERT_EQ(block->explode(parts), Tl::eOk);
        std::vector<EntityPtr> owned(parts.begin(), parts.end());
        ASSERT_EQ(owned.size(), 3U);
        EXPECT_TRUE(owned[0]->isKindOf(TlDbLine::desc()));
        EXPECT_TRUE(owned[1]->isKindOf(TlDbBlockReference::desc()));
        EXPECT_TRUE(owned[2]->isKindOf(TlDb3dSolid::desc()));
    }
    EXPECT_NE(entityOf(nestedBlock(16)), nullptr);
    EXPECT_EQ(entityOf(nestedBlock(17)), nullptr);
    EXPECT_EQ(entityOf(nestedBlock(100000)), nullptr);
}

TEST(Serial, WhatIsNoEntityGivesNull) {
    const std::string_view bad[] = {
        "",
        " ",
        "null",
        "1",
        "[]",
        "{}",
        "\xFF\xFE",
        R"({"type":"line"})",
        R"({"type":"nothing"})",
        R"({"type":1})",
        R"({"type":"line","startPoint":[0,0,0],"endPoint":[1,0,0],"startpoint":[1,0,0]})",
        R"({"type":"line","startPoint":[0,0,0],"endPoint":[1,0,0],"endPoint":[1,0,0]})",
        R"({"type":"line","startPoint":[0,0],"endPoint":[1,0,0]})",
        R"({"type":"line","startPoint":[0,0,"0"],"endPoint":[1,0,0]})",
        R"({"type":"line","startPoint":[0,0,1e999],"endPoint":[1,0,0]})",
        R"({"type":"line","startPoint":[0,0,0],"endPoint":[1,0,0],"color":300})",
        R"({"type":"text","text":"a\u0000b","position":[0,0,0]})",
        R"({"type":"mesh","points":[[0,0,0]],"faces":[[0,0,1]]})",
        R"({"type":"mesh","points":[[0,0,0]],"faces":[[0,0,-1]]})",
        R"({"type":"mesh","points":[[0,0,0]],"faces":[[0,0]]})",
        R"({"type":"subDMesh","vertices":[[0,0,0]],"faces":[[0,0]]})",
        R"({"type":"subDMesh","vertices":[[0,0,0]],"faces":[[0,0,7]]})",
        R"({"type":"solid","primitive":{"type":"HextPrimaryLine","startPoint":[0,0,0],"endPoint":[1,0,0]}})",
        R"({"type":"solid","primitive":{"type":"HextPrimaryAcad","entity":"{}"}})",
        R"({"type":"solid","primitive":{"type":"HextSphere3D","center":[0,0,0]}})",
        R"({"type":"solid","primitive":{"type":"HextSphere3D","center":[0,0,0],"radius":1,"size":1}})",
        R"({"type":"hatch"} x)",
    };
    for (const std::string_view text : bad) {
        EXPECT_EQ(entityOf(text), nullptr) << text;
    }
    const std::string good = with(R"({"type":"block","parts":[{"type":"solid","primitive":)", sphere, "}]}");
    ASSERT_NE(entityOf(good), nullptr);
    for (std::size_t size = 0; size < good.size(); ++size) {
        EXPECT_EQ(entityOf(good.substr(0, size)), nullptr) << size;
    }
    // Changed bytes give an entity or null.
    std::mt19937 random(5);
    int entities = 0;
    for (int round = 0; round < 20000; ++round) {
        std::string changed = good;
        for (int k = 0; k <= round % 3; ++k) {
            changed[random() % changed.size()] = static_cast<char>(random() % 256);
        }
        entities += entityOf(changed) != nullptr ? 1 : 0;
    }
    EXPECT_GT(entities, 0);
    EXPECT_LT(entities, 20000);
}

TEST(Serial, PrimitivesBecomeTheEntityTheyCarry) {
    HextPrimaryAcadSolid3D solid;
    solid.serial = with(R"({"type":"solid","primitive":)", sphere);
    HextAcadBlockReference block;
    block.serial = nestedBlock(1);
    HextPrimaryAcadEntity broken;
    broken.serial = "{";
    HextPrimaryLine line;
    line.endPoint = {1, 2, 3};
    line.color = 4;
    HextPrimaryText text;
    text.text = "T";
    HextBox3D box;
    HextPrimaryArray list{&solid, &block, &broken, &line, &text, &box};
    const TransHextPrimary trans(list);
    std::vector<EntityPtr> owned(trans.get().begin(), trans.get().end());
    ASSERT_EQ(owned.size(), 6U);
    EXPECT_TRUE(owned[0]->isKindOf(TlDb3dSolid::desc()));
    EXPECT_TRUE(owned[1]->isKindOf(TlDbBlockReference::desc()));
    EXPECT_EQ(owned[2], nullptr);
    EXPECT_EQ(TlDbLine::cast(owned[3].get())->colorIndex(), 4);
    EXPECT_STREQ(TlDbText::cast(owned[4].get())->textString(), "T");
    EXPECT_STREQ(owned[5]->isA()->name(), "ORNACadPrimary3D");
    EXPECT_TRUE(EntityPtr(hxcad::trans_solid_to_primary(&solid))->isKindOf(TlDb3dSolid::desc()));
    EXPECT_EQ(hxcad::trans_solid_to_primary(&broken), nullptr);
    EXPECT_EQ(hxcad::trans_solid_to_primary(nullptr), nullptr);
}

}  // namespace
