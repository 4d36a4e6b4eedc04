// The reader of scenes finds what is wrong with one.
#include "fixture.h"

namespace {

class ReaderTest : public SceneTest {
protected:
    void SetUp() override {
        SceneTest::SetUp();
        reopen(16384);
        const LiNwcGroup group = LiNwcGroupCreate();
        LiNwcNodeSetName(group, u"object");
        LiNwcGroupSetLayer(group, 1);
        const LiNwcGeometry shape = tetrahedron({0, 0, 0});
        paint(shape, {1, 0, 0});
        LiNwcGroupAddNode(group, shape);
        LiNwcNodeDestroy(shape);
        addToScene(group);
        // Too large for the first buffer.
        std::vector<Point> points(1020);
        for (std::size_t i = 0; i < points.size(); ++i) {
            points[i] = {static_cast<double>(i), 0, 0};
        }
        addToScene(triangles(points, {0, 1, 2}));
        EXPECT_EQ(write("good.nwc"), LI_NWC_OK);
        good_ = folder.get("good.nwc");
        read("good.nwc");
    }

    // What is found when `from` in the scene is replaced by `to`, which is as long.
    std::string findingsOf(std::string bytes) {
        folder.put("bad.nwc", bytes);
        readers::Findings findings;
        const readers::scene::Scene found = readers::scene::readScene(folder.file("bad.nwc"), findings);
        check::sceneNumbers(found, findings);
        std::string all;
        for (const readers::Finding& finding : findings) {
            all += finding.place + ": " + finding.text + "\n";
        }
        return all;
    }
    std::string withText(const std::string& from, const std::string& to) const {
        std::string bytes = good_;
        const std::size_t at = bytes.find(from);
        EXPECT_NE(at, std::string::npos) << from;
        EXPECT_EQ(from.size(), to.size());
        return bytes.replace(at, from.size(), to);
    }

    std::string good_;
};

TEST_F(ReaderTest, FaultsInTheTreeAndItsReferencesAreFound) {
    const std::tuple<const char*, const char*, const char*> cases[] = {
        {R"("version":"2.0")", R"("version":"1.0")", "asset: the version is not 2.0"},
        {R"("name":"object")", R"("same":"object")", "nodes[1]: an object without a name"},
        {R"("children":[0])", R"("children":[3])", "nodes[1]: it stands below itself"},
        {R"("children":[0])", R"("children":[9])", "nodes[1]: a child is not there"},
        {R"("children":[1,2])", R"("children":[2,2])", "nodes[2]: it has two parents"},
        {R"("nodes":[3])", R"("nodes":[1])", "scene: a root is not there, or stands below a node"},
        {R"("mesh":0)", R"("mesh":7)", "nodes[0]: its mesh is not there"},
        {R"("material":0)", R"("material":4)", "meshes[0]: its material is not there"},
        {R"("POSITION":0)", R"("POSITION":1)", "meshes[0]: its positions cannot be used"},
        {R"("indices":1)", R"("indices":0)", "meshes[0]: its indices cannot be used"},
        {R"("count":12)", R"("count":11)", "meshes[0]: its triangles are not whole"},
        {R"("count":12)", R"("count":15)", "accessors[1]: it does not fit into its buffer view"},
        {R"("count":4,)", R"("count":3,)", "meshes[0]: the index 3 names no vertex"},
        {R"("max":[0.1,0.1,0.1])", R"("max":[0.1,0.2,0.1])", "accessors[0]: min and max are not those"},
        {R"("byteLength":48)", R"("byteLength":99)", "bufferViews[0]: it does not fit into its buffer"},
        {R"("byteLength":12246)", R"("byteLength":12245)", "buffers[1]: 12245 bytes expected, 12246 found"},
        {R"(bad.1.bin)", R"(bad.7.bin)", "buffers[1]: its file bad.7.bin cannot be read"},
        {R"(bad.1.bin)", R"(..%2F.bin)", "buffers[1]: its file does not stand beside the scene"},
        {R"("rotation":[-0.7)", R"("rotation":[-0.5)", "nodes[3]: its rotation is none"},
        {R"("scene":0)", R"("scene":1)", "scene: there is none to show"},
    };
    // The copies find the buffer file under their own name.
    std::filesystem::copy(folder.file("good.1.bin"), folder.file("bad.1.bin"));
    good_.replace(good_.find("good.1.bin"), 10, "bad.1.bin ");
    good_.replace(good_.find("bad.1.bin \""), 11, "bad.1.bin\" ");
    ASSERT_EQ(findingsOf(good_), "");
    for (const auto& [from, to, finding] : cases) {
        const std::string found = findingsOf(withText(from, to));
        EXPECT_NE(found.find(finding), std::string::npos) << from << " -> " << to << "\n" << found;
    }
}

TEST_F(ReaderTest, AFileThatIsCutOrChangedAnywhereIsReadWithoutHarm) {
    for (std::size_t size = 0; size < good_.size(); size += size < 500 ? 7 : 97) {
        EXPECT_NE(findingsOf(good_.substr(0, size)), "") << size;
    }
    for (std::size_t at = 0; at < good_.size(); at += 5) {
        std::string bytes = good_;
        bytes[at] = static_cast<char>(bytes[at] ^ 0x15);
        findingsOf(bytes);
    }
    // An index and a position of the first shape, which stand at the end of the file.
    std::string bytes = good_;
    bytes[bytes.size() - 1] = 0x7F;
    EXPECT_NE(findingsOf(bytes).find("names no vertex"), std::string::npos);
    bytes = good_;
    bytes.replace(bytes.size() - 72, 4, "\xFF\xFF\xFF\x7F");
    EXPECT_NE(findingsOf(bytes).find("a position that is not finite"), std::string::npos);
    EXPECT_NE(findingsOf(""), "");
}

}  // namespace
