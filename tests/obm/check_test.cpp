// What the checker of packages finds in packages that were damaged.
#include "fixture.h"

#include <random>

namespace {

namespace fs = std::filesystem;

class ObmCheck : public ObmRun {
protected:
    ObmCheck() {
        load(object(2, "HextSite", 1) + object(3, "HextZone", 2) +
             object(4, "HextEquipe", 3, R"(,"attrs":{"eqno":"E"})") +
             object(5, "HxDbEquipment", 4, shape(box() + "," + cylinder())));
        exported();
        whole = root.read("out/plant.pmodel");
    }
    static constexpr const char* folderName = "output/ORNA/";
    // Replaces an entry's text; an empty one removes the entry.
    void change(const std::string& name, const std::function<std::string(std::string)>& edit) {
        int error = 0;
        zip_t* archive = zip_open(target().c_str(), 0, &error);
        const zip_int64_t index = zip_name_locate(archive, name.c_str(), 0);
        const std::string edited = edit(entryOf(target(), name));
        const auto place = static_cast<zip_uint64_t>(index);
        if (edited.empty()) {
            zip_delete(archive, place);
        } else {
            zip_file_replace(archive, place, zip_source_buffer(archive, edited.data(), edited.size(), 0), 0);
        }
        ASSERT_EQ(zip_close(archive), 0);
    }
    std::string found() {
        const ReadPackage read(target());
        root.write("out/plant.pmodel", whole);
        return joined(read.findings);
    }
    static std::string replaced(std::string text, const std::string& from, const std::string& to) {
        const std::size_t at = text.find(from);
        EXPECT_NE(at, std::string::npos) << from;
        return at == std::string::npos ? text : text.replace(at, from.size(), to);
    }

    std::string whole;
};

TEST_F(ObmCheck, DamagedArchivesAreNoPackages) {
    for (const std::size_t size : {std::size_t{0}, std::size_t{10}, whole.size() / 2, whole.size() - 1}) {
        root.write("out/plant.pmodel", whole.substr(0, size));
        EXPECT_EQ(found(), "no whole ZIP archive\n") << size;
    }
    // A byte of the scene, which the archive's checksum covers.
    std::string flipped = whole;
    flipped[flipped.find("glTF") + 1000] ^= 1;
    root.write("out/plant.pmodel", flipped);
    EXPECT_EQ(found(), "output/ORNA/scene.glb: damaged\n");
}

TEST_F(ObmCheck, EveryContradictionIsFound) {
    struct Row {
        const char* file;
        const char* from;
        const char* to;  // null removes the file
        const char* finding;
    };
    const Row rows[] = {
        {"../../package.json", R"("pmodel")", R"("model")", "format pmodel of version 1 expected"},
        {"materials.json", "{", nullptr, "output/ORNA/materials.json: missing"},
        {"model.json", R"(,"properties.json")", "", "properties.json: nothing names this entry"},
        {"model.json", R"("files")", R"("fires")", "model.json: The JSON field"},
        {"materials.json", R"("id":"m0")", R"("id":"m1")", "material m0 is not there"},
        {"modeltree.json", "[1,", "[9,", "node 2 has no parent ahead of it"},
        {"modeltree.json", "]", "", "modeltree.json: "},
        {"properties.json", "[\n[\"", "[\n[\"x", "which no tree holds"},
        {"scene.glb", "\"mesh\":1", "\"mesh\":9", "no such mesh"},
        {"scene.glb", "\"mesh\":0", "\"mush\":0", ""},
        {"scene.glb", "\"children\":[1]", "\"children\":[2]", "child 2 is not there or has another parent"},
        {"scene.glb", "\"min\":[0,", "\"min\":[1,", "min and max are not those of its positions"},
        {"scene.glb", "\"NORMAL\":2", "\"NORMAL\":5", "one normal for each position expected"},
        {"scene.glb", "\"NORMAL\":2", "\"NORMAL\":0", "a normal is no unit vector"},
        {"scene.glb", "\"byteOffset\":0,\"byteLength\"", "\"byteOffset\":9,\"byteLength\"",
         "does not fit its buffer view"},
        {"scene.glb", "\"count\":36", "\"count\":35", "35 indices make no triangles"},
        {"scene.glb", "\"count\":8,", "\"count\":7,", "an index without its vertex"},
        {"scene.glb", "\"material\":\"m0\"", "\"material\":\"m9\"", "material m9 is not there"},
        {"scene.glb", "glTF", "glTf", "no binary glTF 2.0 file"},
        {"scene.glb", "JSON{", "JSOM{", "chunk 0 is broken"},
    };
    for (const Row& row : rows) {
        const std::string name =
            std::string(row.file).starts_with("..") ? "package.json" : std::string(folderName) + row.file;
        change(name,
               [&](const std::string& text) { return row.to == nullptr ? "" : replaced(text, row.from, row.to); });
        const std::string findings = found();
        EXPECT_NE(findings.find(row.finding), std::string::npos) << row.file << " " << row.from << "\n" << findings;
        EXPECT_EQ(findings.empty(), *row.finding == '\0') << findings;
    }
}

// No cut of a scene makes the reader read beyond it.
TEST_F(ObmCheck, CutScenesAreFound) {
    const std::string scene = entryOf(target(), "output/ORNA/scene.glb");
    for (std::size_t size = 0; size < scene.size(); size += 1 + size / 16) {
        readers::Findings findings;
        readers::glb::readGlb(scene.substr(0, size), findings);
        EXPECT_FALSE(findings.empty()) << size;
    }
}

// Numbers and brackets that lie: the reader ends, stays within its bytes, and mostly sees it.
TEST_F(ObmCheck, ChangedScenesDoNotMisleadTheReader) {
    const std::string scene = entryOf(target(), "output/ORNA/scene.glb");
    std::mt19937 random(7);
    int seen = 0;
    for (int round = 0; round < 400; ++round) {
        std::string changed = scene;
        for (std::uint32_t i = 0; i <= random() % 3; ++i) {
            changed[20 + random() % 2200] = "0123456789-[]{},"[random() % 16];
        }
        readers::Findings findings;
        readers::glb::readGlb(changed, findings);
        seen += findings.empty() ? 0 : 1;
    }
    EXPECT_GT(seen, 200);
}

}  // namespace
