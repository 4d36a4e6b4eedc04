// The files of a scene: buffer files beside it, limits, failures, equal bytes.
#include "fixture.h"
#include "support/full_disk.h"
#include "tolmar/system.h"

#include <map>

namespace {

class FilesTest : public SceneTest {
protected:
    // Shapes of 12000 bytes of vertices and 6 of indices, all different.
    void addShapes(int count, int vertices = 1000) {
        const LiNwcGroup group = LiNwcGroupCreate();
        LiNwcNodeSetName(group, u"G");
        for (int i = 0; i < count; ++i) {
            std::vector<Point> points(static_cast<std::size_t>(vertices));
            for (std::size_t n = 0; n < points.size(); ++n) {
                points[n] = {static_cast<double>(n), static_cast<double>(i), 1e6};
            }
            points[1][2] += i;
            const LiNwcGeometry shape = triangles(points, {0, 1, 2});
            EXPECT_EQ(lastEnd, LI_NWC_OK);
            LiNwcGroupAddNode(group, shape);
            LiNwcNodeDestroy(shape);
        }
        addToScene(group);
    }
    void addNames(int count, const std::u16string& name) {
        const LiNwcGroup group = LiNwcGroupCreate();
        for (int i = 0; i < count; ++i) {
            LiNwcGroupDestroy(groupIn(group, name.c_str()));
        }
        addToScene(group);
    }
    using Sizes = std::map<std::string, std::uint64_t>;
    Sizes files() const {
        Sizes found;
        for (const auto& entry : std::filesystem::directory_iterator(folder.path())) {
            found[entry.path().filename().string()] = entry.file_size();
        }
        return found;
    }
    static Sizes reported() {
        Sizes found;
        for (const tolmar::WrittenFile& file : tolmar::runReport().files()) {
            found[std::filesystem::path(tolmar::toUtf8(file.path)).filename().string()] = file.size;
        }
        return found;
    }
    void expectNothingLeft(const std::string& why) {
        EXPECT_TRUE(files().empty());
        EXPECT_TRUE(reported().empty());
        ASSERT_EQ(tolmar::runReport().failures().size(), 1U);
        EXPECT_NE(tolmar::runReport().failures()[0].find(why), std::string::npos) << tolmar::runReport().failures()[0];
        EXPECT_EQ(tolmar::runReport().outcome(), tolmar::RunOutcome::Failed);
        EXPECT_TRUE(told.empty());
    }
};

TEST_F(FilesTest, ShapesGoOnInBufferFilesBesideTheScene) {
    reopen(65536);
    addShapes(10);
    EXPECT_EQ(LiNwcInspectScene(scene).buffers, 3U);
    const readers::scene::Scene found = writeAndRead(utf8(u"厂 1.a.nwc"));
    EXPECT_EQ(files(), reported());
    ASSERT_EQ(files().size(), 3U);
    EXPECT_EQ(files()[utf8(u"厂 1.a.1.bin")], 4U * 12000) << "their indices stand in the scene file";
    EXPECT_EQ(files()[utf8(u"厂 1.a.2.bin")], 2U * 12000);
    EXPECT_LE(files()[utf8(u"厂 1.a.nwc")], 65536U);
    // The last shape is whole, and where it was put.
    const readers::scene::Node& group = nodeOf(found, "G");
    expectPlaces({placesOf(found, found.nodes[group.children[9]])[999]}, {{999, 9, 1e6}});
}

TEST_F(FilesTest, VerticesThatStandInOneBufferMayHaveTheirIndicesInAnother) {
    reopen(65536);
    addShapes(4);
    std::vector<Point> points(1000);
    std::vector<int> indices;
    for (int n = 0; n < 1000; ++n) {
        points[static_cast<std::size_t>(n)] = {static_cast<double>(n), 0, 1e6};
        indices.insert(indices.end(), {n, (n + 1) % 1000, (n + 2) % 1000});
    }
    LiNwcNode node = triangles(points, indices);
    LiNwcNodeSetName(node, u"again");
    addToScene(node);
    EXPECT_EQ(LiNwcInspectScene(scene).bytes, 4U * 12000 + 6 + 6000);
    const readers::scene::Scene found = writeAndRead("apart.nwc");
    EXPECT_EQ(files()["apart.1.bin"], 6000U);
    const readers::scene::Primitive& again = found.meshes[nodeOf(found, "again").mesh].primitives[0];
    const readers::scene::Node& first = found.nodes[nodeOf(found, "G").children[0]];
    EXPECT_EQ(again.positions, found.meshes[first.mesh].primitives[0].positions);
    EXPECT_EQ(indicesOf(found, found.accessors[again.indices]),
              std::vector<std::uint32_t>(indices.begin(), indices.end()));
}

TEST_F(FilesTest, NoFilePassesTheLimitButForOneShapeThatDoes) {
    reopen(65536);
    addShapes(3);
    addNames(1000, u"thirty letters of a long name.");
    // Vertices and tree fit into a file each, not into one.
    writeAndRead("apart.nwc");
    EXPECT_EQ(files().size(), 2U);
    EXPECT_EQ(files()["apart.1.bin"], 3U * 12000 + 6);
    addShapes(1, 10000);
    writeAndRead("large.nwc");
    EXPECT_EQ(files()["large.2.bin"], 120000U);
    addNames(1000, u"thirty letters of a long name.");
    for (const auto& [name, size] : files()) {
        std::filesystem::remove(folder.file(name));
    }
    tolmar::runReport().clear();
    EXPECT_EQ(write("none.nwc"), LI_NWC_NOT_WRITTEN);
    expectNothingLeft("a file at most 65536");
}

TEST_F(FilesTest, ASceneThatCannotBeOpenedIsReported) {
    addShapes(1);
    EXPECT_EQ(write("missing/plant.nwc"), LI_NWC_NOT_WRITTEN);
    expectNothingLeft("No such file");
    tolmar::runReport().clear();
    std::filesystem::create_directory(folder.file("plant.nwc"));
    EXPECT_EQ(write("plant.nwc"), LI_NWC_NOT_WRITTEN);
    EXPECT_TRUE(std::filesystem::is_directory(folder.file("plant.nwc")));
    // The library goes on working.
    writeAndRead("good.nwc");
}

TEST_F(FilesTest, AFullDiskLeavesNoFileOfTheScene) {
    reopen(65536);
    addShapes(10);
    {
        const FullDisk full(50000);  // both buffer files fit, the scene does not
        EXPECT_EQ(write("plant.nwc"), LI_NWC_NOT_WRITTEN);
    }
    expectNothingLeft("File too large");
    writeAndRead();
}

TEST_F(FilesTest, ATemporaryFileThatCannotBeWrittenFailsTheScene) {
    {
        const FullDisk full(100000);
        addShapes(60);
    }
    // Later shapes are taken, but the scene is lost.
    addShapes(1);
    EXPECT_EQ(write("plant.nwc"), LI_NWC_NOT_WRITTEN);
    expectNothingLeft("temporary file in " + folder.path().string() + ": File too large");

    tolmar::runReport().clear();
    LiNwcSceneDestroy(scene);
    LiNwcApiSetSpoolFolder(wide(folder.file("missing")).c_str());
    scene = LiNwcSceneCreate();
    addShapes(60);
    EXPECT_EQ(write("plant.nwc"), LI_NWC_NOT_WRITTEN);
    expectNothingLeft("No such file");
}

TEST_F(FilesTest, ADryRunWritesNothing) {
    tolmar::setDryRun(true);
    addShapes(60);
    EXPECT_EQ(write("plant.nwc"), LI_NWC_OK);
    tolmar::setDryRun(false);
    EXPECT_TRUE(files().empty());
}

}  // namespace
