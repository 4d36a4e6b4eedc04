// Callers that call anything at any time with any handle, dead ones among them.
#include "fixture.h"

#include <functional>
#include <limits>
#include <random>

namespace {

class RandomCallsTest : public SceneTest {
protected:
    template <typename Handle>
    Handle anyOf(const std::vector<Handle>& handles) {
        // Mostly a young one, which may well live.
        if (handles.empty()) {
            return nullptr;
        }
        const std::size_t back = std::min<std::size_t>(random_() % (random_() % 4 == 0 ? 1000 : 8), handles.size() - 1);
        return handles[handles.size() - 1 - back];
    }
    double number() { return random_() % 50 == 0 ? std::numeric_limits<double>::quiet_NaN() : random_() % 7 * 1e3; }

    void draw(LiNwcGeometryStream stream) {
        const double place[] = {number(), number(), number(), 1, 0, 0};
        switch (random_() % 8) {
        case 0:
            LiNwcGeometryStreamPushTransform(stream);
            break;
        case 1:
            LiNwcGeometryStreamPopTransform(stream);
            break;
        case 2:
            LiNwcGeometryStreamCircle(stream, place, place + 3, number());
            break;
        case 3:
            LiNwcGeometryStreamLineStripIndex(stream, static_cast<int>(random_() % 4));
            LiNwcGeometryStreamLineStripVertex(stream, place[0], place[1], place[2]);
            break;
        default:
            LiNwcGeometryStreamIndexedVertex(stream, place[0], place[1], place[2]);
            LiNwcGeometryStreamTriangleIndex(stream, static_cast<int>(random_() % 3));
        }
    }

    void drawSection(LiNwcGeometryStream stream) {
        LiNwcGeometryStreamBegin(stream, static_cast<int>(random_() % 2 * LI_NWC_HAS_COLOR));
        for (std::uint64_t i = random_() % 30; i > 0; --i) {
            draw(stream);
        }
        LiNwcGeometryStreamEnd(stream);
    }

    void call() {
        const std::function<void()> calls[] = {
            [this] { nodes_.push_back(LiNwcGroupCreate()); },
            [this] { nodes_.push_back(LiNwcGeometryCreate()); },
            [this] { LiNwcNodeCreateRef(anyOf(nodes_)); },
            [this] { LiNwcNodeDestroy(anyOf(nodes_)); },
            [this] { LiNwcGroupDestroy(anyOf(nodes_)); },
            [this] { LiNwcGroupAddNode(anyOf(nodes_), anyOf(nodes_)); },
            [this] { LiNwcGroupAddNode(anyOf(nodes_), anyOf(nodes_)); },
            [this] { LiNwcSceneAddNode(scene, anyOf(nodes_)); },
            [this] { LiNwcGroupSetLayer(anyOf(nodes_), 1); },
            [this] { LiNwcNodeSetName(anyOf(nodes_), u"n"); },
            [this] { attributes_.push_back(LiNwcMaterialCreate()); },
            [this] { attributes_.push_back(LiNwcPropertyAttributeCreate()); },
            [this] { LiNwcNodeAddAttribute(anyOf(nodes_), anyOf(attributes_)); },
            [this] { LiNwcAttributeCreateRef(anyOf(attributes_)); },
            [this] { LiNwcAttributeDestroy(anyOf(attributes_)); },
            [this] { LiNwcMaterialSetDiffuseColor(anyOf(attributes_), number() / 6e3, 0, 0); },
            [this] { streams_.push_back(LiNwcGeometryOpenStream(anyOf(nodes_))); },
            [this] { LiNwcGeometryCloseStream(anyOf(nodes_), anyOf(streams_)); },
            [this] { drawSection(anyOf(streams_)); },
            [this] { shapes_.push_back(LiNwcGeometryShape(anyOf(nodes_))); },
            [this] { LiNwcGroupAddShape(anyOf(nodes_), anyOf(shapes_), anyOf(attributes_), number(), 0, 0); },
            [this] { LiNwcShapeDestroy(anyOf(shapes_)); },
            [this] { draw(anyOf(streams_)); },
        };
        calls[random_() % std::size(calls)]();
    }

    std::mt19937_64 random_{11};
    std::vector<LiNwcNode> nodes_;
    std::vector<LiNwcAttribute> attributes_;
    std::vector<LiNwcGeometryStream> streams_;
    std::vector<LiNwcShape> shapes_;
};

TEST_F(RandomCallsTest, TheSceneStaysWholeAndTheBalanceTrue) {
    for (int round = 0; round < 20; ++round) {
        for (int i = 0; i < 2000; ++i) {
            call();
        }
        // Objects without a name are the caller's affair, all else must hold.
        EXPECT_EQ(write("random.nwc"), LI_NWC_OK);
        readers::Findings findings;
        readers::scene::Scene found = readers::scene::readScene(folder.file("random.nwc"), findings);
        for (readers::scene::Node& node : found.nodes) {
            node.isLayer = false;
        }
        check::sceneNumbers(found, findings);
        for (const readers::Finding& finding : findings) {
            FAIL() << "round " << round << ": " << finding.place << ": " << finding.text;
        }
        if (round % 5 == 4) {
            LiNwcSceneDestroy(scene);
            scene = LiNwcSceneCreate();
        }
    }
    EXPECT_GT(LiNwcInspectScene(scene).nodes + told.size(), 1000U);
    LiNwcSceneDestroy(scene);
    std::uint64_t live = 0;
    for (int kind = 0; kind < LI_NWC_HANDLE_KINDS; ++kind) {
        live += LiNwcInspectLive(static_cast<LiNwcHandleKind>(kind));
    }
    EXPECT_EQ(LiNwcInspectBalance().left, live);
    for (const LiNwcNode node : nodes_) {
        while (LiNwcNodeDestroy(node) == LI_NWC_OK) {
        }
    }
    for (const LiNwcAttribute attribute : attributes_) {
        while (LiNwcAttributeDestroy(attribute) == LI_NWC_OK) {
        }
    }
    EXPECT_EQ(LiNwcInspectLive(LI_NWC_NODE), 0U);
    EXPECT_EQ(LiNwcInspectLive(LI_NWC_ATTRIBUTE), 0U);
}

}  // namespace
