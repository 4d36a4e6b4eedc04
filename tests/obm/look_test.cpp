// Shapes, material codes and properties.
#include "fixture.h"

#include <array>

namespace {

class ObmLook : public ObmRun {
protected:
    // Objects of a pipeline that has the attributes `attributes`.
    void loadPipeline(const std::string& objects, const std::string& attributes = "{}") {
        load(object(2, "HextSite", 1) + object(3, "HextZone", 2) +
             object(4, "HextPipeline", 3, R"(,"attrs":)" + attributes) + objects);
    }
    // The codes of every object, a line each.
    std::string codes() {
        std::string text = outline();
        return text.substr(text.find("    N4\n") + 7);
    }
};

// ------------------------------------------------------------------------------------------------------------ codes

TEST_F(ObmLook, CodesTellColourTranslucenceAndInversion) {
    const std::string three = shape(cylinder() + "," + box() + "," + cylinder(translucent));
    loadPipeline(object(5, "HxDbPipeSpec", 4, R"(,"color":7)" + three) +
                     object(6, "HxDbTubeModelSpec", 4, R"(,"color":7)" + three) +
                     object(7, "HxDbTubeModelSpec", 4, R"(,"kind":"valve","color":7)" + three) +
                     object(8, "HxDbNozzleModel", 4, three) + object(9, "HxDbEquipment", 4, three),
                 R"({"color":"3"})");
    EXPECT_EQ(codes(), "     N5 m7 m1007 m507\n"
                       "     N6 m1007 m1007 m1507\n"
                       "     N7 m7 m7 m507\n"
                       "     N8 m1003 m1003 m1503\n"
                       "     N9 m0 m0 m500\n");
}

TEST_F(ObmLook, APipelinesColourServesComponentsWithoutOne) {
    const std::string pipe = object(5, "HxDbPipeSpec", 4, shape(cylinder()));
    loadPipeline(pipe);
    EXPECT_EQ(codes(), "     N5 m0\n") << "a pipeline without the attribute";
    loadPipeline(pipe, R"({"Color":"3","color":"12x"})");
    EXPECT_EQ(codes(), "     N5 m12\n");
    loadPipeline(pipe, R"([{"key":"color","value":"5"},{"key":"color","value":"9"}])");
    EXPECT_EQ(codes(), "     N5 m5\n") << "the first of several";
    loadPipeline(pipe, R"({"color":"507"})");
    EXPECT_EQ(codes(), "     N5 m0\n") << "no colour of the table, and none that reads as a flag";
    loadPipeline(pipe, R"({"color":"2147483647"})");
    EXPECT_EQ(codes(), "     N5 m0\n");
}

TEST_F(ObmLook, AnythingButATubeChangesTheColourOfWhatFollows) {
    loadPipeline(object(5, "HxDbPipeSpec", 4, shape(cylinder())) +
                     object(6, "HxDbNonTube", 4, R"(,"color":9)" + shape(box())) +
                     object(7, "HxDbPipeSpec", 4, shape(cylinder())),
                 R"({"color":"3"})");
    EXPECT_EQ(codes(), "     N5 m3\n     N6 m9\n     N7 m9\n");
}

TEST_F(ObmLook, MaterialsHaveTheColoursOfTheTable) {
    const auto pipe = [](int id, int color, const std::string& primitive) {
        return object(id, "HxDbPipeSpec", 4, R"(,"color":)" + std::to_string(color) + shape(primitive));
    };
    loadPipeline(pipe(5, 7, cylinder()) + pipe(6, 7, cylinder(translucent)) + pipe(7, 7, box(translucent)) +
                 pipe(8, 22, box()));
    const ReadPackage read = exported();
    const auto& materials = read.model().materials;
    const auto check = [&materials](const char* id, std::array<double, 4> color) {
        const readers::package::Material& material = materials.at(id);
        EXPECT_EQ(material.name, id);
        for (std::size_t i = 0; i < 4; ++i) {
            EXPECT_FLOAT_EQ(static_cast<float>(material.diffuse[i]), static_cast<float>(color[i])) << id;
        }
        EXPECT_EQ(material.ambient, material.diffuse);
        EXPECT_EQ(material.specular, (std::array<double, 4>{1, 1, 1, 1}));
        EXPECT_EQ(material.transparency, 1 - color[3]);
    };
    check("m7", {1, 1, 1, 1});
    check("m507", {1, 1, 1, 0.25});
    check("m1507", {0, 0, 0, 0.25});
    check("m1022", {51 / 255.0, 204 / 255.0, 1, 1});
    for (const readers::glb::Material& material : read.scene().materials) {
        EXPECT_EQ(material.isBlended, material.color[3] < 1) << material.name;
    }
}

// ----------------------------------------------------------------------------------------------------------- shapes

// Volume enclosed by an outward-oriented mesh.
double volumeOf(const std::vector<std::array<float, 3>>& v, const std::vector<std::uint32_t>& indices) {
    double six = 0;
    for (std::size_t i = 0; i + 2 < indices.size(); i += 3) {
        const auto& a = v[indices[i]];
        const auto& b = v[indices[i + 1]];
        const auto& c = v[indices[i + 2]];
        six += a[0] * (double{b[1]} * c[2] - double{b[2]} * c[1]) + a[1] * (double{b[2]} * c[0] - double{b[0]} * c[2]) +
               a[2] * (double{b[0]} * c[1] - double{b[1]} * c[0]);
    }
    return six / 6;
}

TEST_F(ObmLook, MeshesShareTheirVerticesAndHaveUnitNormals) {
    load(object(2, "HextSite", 1) + object(3, "HextZone", 2) + object(4, "HextEquipe", 3) +
         object(5, "HxDbEquipment", 4, shape(box())));
    const ReadPackage read = exported();
    const readers::glb::Scene& scene = read.scene();
    ASSERT_EQ(scene.meshes.size(), 1U);
    const auto positions = scene.vectors(scene.meshes[0].positions);
    const auto normals = scene.vectors(scene.meshes[0].normals);
    EXPECT_EQ(positions.size(), 8U);
    EXPECT_DOUBLE_EQ(volumeOf(positions, scene.indices(scene.meshes[0].indices)), 6.0);
    for (std::size_t i = 0; i < 8; ++i) {
        const std::array<float, 3> centre = {0.5F, 1, 1.5F};
        for (std::size_t k = 0; k < 3; ++k) {
            EXPECT_GT(normals[i][k] * (positions[i][k] - centre[k]), 0) << "a normal points outward";
        }
    }
}

TEST_F(ObmLook, WhatHasNoMeshAddsNothing) {
    const std::string line = R"({"type":"HextPrimaryLine","startPoint":[0,0,0],"endPoint":[1,1,1]})";
    const std::string flat = R"({"type":"HextBox3D","point":[0,0,0],"xLength":0,"yLength":2,"zLength":3})";
    const std::string content =
        R"({"type":"HextPrimaryAcadEntity","entity":{"type":"line","startPoint":[0,0,0],"endPoint":[1,0,0]}})";
    load(object(2, "HextSite", 1) + object(3, "HextZone", 2) + object(4, "HextEquipe", 3) +
         object(5, "HxDbEquipment", 4,
                shape(line + "," + flat + "," + content + "," + line + "," + box(R"(,"color":5)"))) +
         object(6, "HxDbEquipment", 4));
    EXPECT_EQ(outline(), "P\n M\n  N2\n   N3\n    N4\n     N5 m0\n     N6\n");
    EXPECT_EQ(passedOverRows(), "5 primitive: HextPrimaryLine, 2 of them: it is no solid\n"
                                "5 primitive: HextBox3D: a size is zero or negative\n"
                                "5 primitive: HextPrimaryAcadEntity: its host content is no parametric solid\n"
                                "6 object: it has no shape\n");
}

// ------------------------------------------------------------------------------------------------------- properties

const std::string labelled = R"(,"attrs":[{"key":"lineno","value":"L1","description":"label"},
    {"key":"b","value":2.5,"description":"Z"},{"key":"c","value":7,"description":"label"}])";

TEST_F(ObmLook, AManagerInAZoneHasItsAttributesByLabel) {
    script("function getNodeName(t) return plant.displayName(t.objid) end\n"
           "function getReference(t) return {{key='k', value='v' .. t.objid}} end");
    load(object(2, "HextSite", 1) + object(3, "HextZone", 2) + object(4, "HextPipeline", 3, labelled) +
         object(5, "HxDbPipeSpec", 4, shape(cylinder())));
    const ReadPackage read = exported();
    EXPECT_EQ(read.propertiesOf("N4"), "Z=2.500000\nlabel=7\n");
    EXPECT_EQ(read.propertiesOf("N5"), "k=v5\n");
    EXPECT_EQ(read.propertiesOf("N3"), "");
    EXPECT_EQ(read.model().properties[0].category, tolmar::toUtf8("Orna属性"));
    EXPECT_EQ(read.model().properties[0].valueType, "String");
}

TEST_F(ObmLook, AManagerInADirectoryLeavesItsPropertiesThere) {
    const std::string inDirectory =
        object(2, "HextSite", 1) + object(3, "HextZone", 2) +
        object(4, "HextZoneDirectory", 3, R"(,"displayName":"D")") +
        object(5, "HextPipeline", 4, R"(,"attrs":[{"key":"color","value":"3","description":"c"}])") +
        object(6, "HxDbPipeSpec", 5, shape(cylinder()));
    // The record made by the directory itself, not the one that it has as a son of its zone.
    const auto last = [](const ReadPackage& read) {
        const std::string id = std::find_if(read.nodes().rbegin(), read.nodes().rend(), [](const auto& node) {
                                   return node.name == "D";
                               })->databaseId;
        std::string text;
        for (const readers::package::Property& property : read.model().properties) {
            text += property.databaseId == id ? property.name + "=" + property.value + " " : "";
        }
        return text;
    };
    load(inDirectory);
    ReadPackage read = exported();
    EXPECT_EQ(last(read), "c=3 ");
    EXPECT_NE(read.outline().find("    D\n     N6 m3\n"), std::string::npos) << read.outline();
    script("function getNodeName(t) return plant.displayName(t.objid) end\n"
           "function getReference(t) return {{key='管线号', value='s' .. t.objid}} end");
    destroyScriptHost();
    read = exported();
    EXPECT_EQ(last(read), tolmar::toUtf8("管线号=s5 "));
    EXPECT_EQ(read.outline().find("m3"), std::string::npos) << "the colour comes with the attributes by label only";
    EXPECT_EQ(read.propertiesOf("N6"), tolmar::toUtf8("管线ID=s6\n"));
}

}  // namespace
