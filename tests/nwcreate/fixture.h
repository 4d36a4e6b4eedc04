// A library session with a scene, what its error handler heard, and the scene read back.
#pragma once

#include "nwcreate/inspect.h"
#include "nwcreate/shapes.h"
#include "support/scratch_folder.h"
#include "tessaro/check/scene/rules.h"
#include "tolmar/code_page.h"
#include "tolmar/run_report.h"

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <utility>
#include <vector>

using Point = std::array<double, 3>;

class SceneTest : public testing::Test {
protected:
    void SetUp() override {
        told.clear();
        tolmar::runReport().clear();
        open();
    }
    void TearDown() override { LiNwcApiTerminate(); }

    void open(std::uint64_t fileLimit = 0) {
        LiNwcApiErrorInitialise();
        ASSERT_EQ(LiNwcApiInitialise(), LI_NWC_OK);
        LiNwcApiSetErrorHandler([](int kind, const char* text) { told.emplace_back(kind, text); }, nullptr);
        LiNwcApiSetSpoolFolder(wide(folder.path().string()).c_str());
        LiNwcApiSetFileLimit(fileLimit);
        scene = LiNwcSceneCreate();
    }
    void reopen(std::uint64_t fileLimit) {
        LiNwcSceneDestroy(scene);
        LiNwcApiTerminate();
        open(fileLimit);
    }

    static std::u16string wide(const std::string& utf8) { return tolmar::utf8ToWide(utf8); }

    // Literals that are not plain ASCII stand in UTF-8 by this, whatever the code page.
    static std::string utf8(std::u16string_view text) { return tolmar::wideToUtf8(text); }

    LiNwcStatus write(const std::string& name, const char16_t* title = u"Orna Model") {
        return LiNwcSceneWriteCacheEx(scene, title, wide(folder.file(name)).c_str(), nullptr, nullptr);
    }
    readers::scene::Scene read(const std::string& name) {
        readers::Findings findings;
        readers::scene::Scene found = readers::scene::readScene(folder.file(name), findings);
        check::sceneNumbers(found, findings);
        for (const readers::Finding& finding : findings) {
            ADD_FAILURE() << name << ": " << finding.place << ": " << finding.text;
        }
        return found;
    }
    readers::scene::Scene writeAndRead(const std::string& name = "plant.nwc") {
        EXPECT_EQ(write(name), LI_NWC_OK);
        return read(name);
    }

    // A group below `parent`, or below the scene; its handle is given back.
    static LiNwcGroup groupIn(LiNwcGroup parent, const char16_t* name) {
        const LiNwcGroup group = LiNwcGroupCreate();
        LiNwcNodeSetName(group, name);
        EXPECT_EQ(LiNwcGroupAddNode(parent, group), LI_NWC_OK);
        return group;
    }
    void addToScene(LiNwcNode node) {
        EXPECT_EQ(LiNwcSceneAddNode(scene, node), LI_NWC_OK);
        LiNwcNodeDestroy(node);
    }

    template <typename Fill>
    static LiNwcGeometry geometry(Fill&& fill) {
        const LiNwcGeometry node = LiNwcGeometryCreate();
        const LiNwcGeometryStream stream = LiNwcGeometryOpenStream(node);
        fill(stream);
        LiNwcGeometryCloseStream(node, stream);
        return node;
    }
    static LiNwcGeometry triangles(const std::vector<Point>& points, const std::vector<int>& indices) {
        return geometry([&](LiNwcGeometryStream stream) {
            LiNwcGeometryStreamBegin(stream, 0);
            for (const Point& p : points) {
                LiNwcGeometryStreamIndexedVertex(stream, p[0], p[1], p[2]);
            }
            for (const int index : indices) {
                LiNwcGeometryStreamTriangleIndex(stream, index);
            }
            lastEnd = LiNwcGeometryStreamEnd(stream);
        });
    }
    // A tetrahedron of this size, its first corner at `at`.
    static LiNwcGeometry tetrahedron(const Point& at, double size = 100.0) {
        std::vector<Point> points(4, at);
        for (std::size_t axis = 0; axis < 3; ++axis) {
            points[axis + 1][axis] += size;
        }
        return triangles(points, {0, 2, 1, 0, 1, 3, 0, 3, 2, 1, 2, 3});
    }
    static void paint(LiNwcNode node, const Point& color, double transparency = 0.0) {
        const LiNwcMaterial material = LiNwcMaterialCreate();
        LiNwcMaterialSetAmbientColor(material, color[0], color[1], color[2]);
        LiNwcMaterialSetDiffuseColor(material, color[0], color[1], color[2]);
        LiNwcMaterialSetTransparency(material, transparency);
        LiNwcNodeAddAttribute(node, material);
        LiNwcAttributeDestroy(material);
    }
    static LiNwcAttribute properties(const std::vector<std::pair<std::u16string, std::u16string>>& pairs) {
        const LiNwcAttribute attribute = LiNwcPropertyAttributeCreate();
        LiNwcAttributeSetClassName(attribute, u"Orna属性", u"OrnaProperty");
        for (const auto& [key, value] : pairs) {
            const LiNwcData data = LiNwcDataCreate();
            LiNwcDataSetName(data, value.c_str(), u"");
            EXPECT_EQ(LiNwcPropertyAttributeAddProperty(attribute, key.c_str(), u"", data), LI_NWC_OK);
            LiNwcDataDestroy(data);
        }
        return attribute;
    }

    // Names of a scene's nodes below the root that turns it, as "A(B C(D))".
    static std::string treeOf(const readers::scene::Scene& found) {
        return found.roots.empty() ? std::string() : childrenOf(found, found.roots[0]);
    }
    static std::string childrenOf(const readers::scene::Scene& found, std::uint64_t number) {
        std::string text;
        for (const std::uint64_t child : found.nodes[number].children) {
            const readers::scene::Node& node = found.nodes[child];
            const std::string below = childrenOf(found, child);
            text += (text.empty() ? "" : " ") + (node.name.empty() ? "-" : node.name) +
                    (below.empty() ? "" : "(" + below + ")");
        }
        return text;
    }
    static const readers::scene::Node& nodeOf(const readers::scene::Scene& found, const std::string& name) {
        for (const readers::scene::Node& node : found.nodes) {
            if (node.name == name) {
                return node;
            }
        }
        ADD_FAILURE() << "no node " << name;
        return found.nodes.front();
    }
    // Positions of a node's first primitive, in millimetres of the plant.
    static std::vector<Point> placesOf(const readers::scene::Scene& found, const readers::scene::Node& node) {
        std::vector<Point> places;
        const readers::scene::Primitive& primitive = found.meshes[node.mesh].primitives[0];
        for (const auto& local : positionsOf(found, found.accessors[primitive.positions])) {
            Point place;
            for (std::size_t axis = 0; axis < 3; ++axis) {
                place[axis] = (node.translation[axis] + local[axis]) * 1000.0;
            }
            places.push_back(place);
        }
        return places;
    }

    static void expectPlaces(const std::vector<Point>& found, const std::vector<Point>& expected,
                             double tolerance = 1e-3) {
        ASSERT_EQ(found.size(), expected.size());
        for (std::size_t i = 0; i < found.size(); ++i) {
            for (std::size_t axis = 0; axis < 3; ++axis) {
                EXPECT_NEAR(found[i][axis], expected[i][axis], tolerance) << "vertex " << i << ", axis " << axis;
            }
        }
    }

    static inline std::vector<std::pair<int, std::string>> told;
    static inline LiNwcStatus lastEnd = LI_NWC_OK;
    ScratchFolder folder;
    LiNwcScene scene = nullptr;
};
