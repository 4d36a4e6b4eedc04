// Files that lie: a reader ends, stays within its bytes, and tells of a file that is not whole.
#include "readers/fixture.h"
#include "readers/mapped_file.h"

#include <sys/stat.h>

#include <random>

namespace {

using namespace readertest;

// Small outputs with a parametric solid, triangles, a line, attributes and a shape behind its own group.
constexpr const char* plant = R"({"format":"tessaro-plant","version":1,"project":{"name":"P","module":65},
    "databases":[{"name":"P","shortName":"P","main":true,"root":1}],"objects":[
    {"id":1,"class":"HextWorld","name":"W"},
    {"id":2,"class":"HextSite","in":1,"name":"S"},{"id":3,"class":"HextZone","in":2,"name":"Z"},
    {"id":4,"class":"HextEquipe","in":3,"name":"E","attrs":{"eqno":"E"}},
    {"id":5,"class":"HxDbEquipment","in":4,"attrs":{"eqno":"E"},"primitives":[
        {"type":"HextCylinder3D","startPoint":[0,0,0],"endPoint":[0,0,9],"diameter":4},
        {"type":"HextSqucone3D","point":[0,0,0],"bottomX":2,"bottomY":2,"topX":1,"topY":1,"height":3},
        {"type":"HextRevolve","center":[0,0,0],"axis":[0,1,0],"angle":1,"profile":[[1,1,0,0],[1,2,0,0],[1,2,1,0]]},
        {"type":"HextPrimaryLine","startPoint":[0,0,0],"endPoint":[5,0,0]}]}]})";

class Hostile : public Outputs {
protected:
    Hostile() {
        std::ofstream(root() / "plant.json") << plant;
        exportAll(root() / "plant.json");
    }
    static void put(const fs::path& file, const std::string& bytes) {
        std::ofstream(file, std::ios::binary | std::ios::trunc) << bytes;
    }
    std::vector<fs::path> files() const {
        std::vector<fs::path> files;
        for (const auto& entry : fs::directory_iterator(out())) {
            files.push_back(entry.path());
        }
        std::sort(files.begin(), files.end());
        return files;
    }
    // The chief file of the pair that a file belongs to.
    fs::path chiefOf(const fs::path& file) const {
        static const std::map<std::string, std::string> chiefs{{".txt", ".rvm"}, {".json", ".eem"}, {".xml", ".orna"}};
        const auto at = chiefs.find(file.extension().string());
        return at == chiefs.end() ? file : fs::path(file).replace_extension(at->second);
    }
};

TEST_F(Hostile, NoCutFileLooksWhole) {
    for (const fs::path& file : files()) {
        const std::string whole = realmodule::readFile(file);
        ASSERT_EQ(Read(chiefOf(file)).told(), "") << file;
        const std::size_t content = whole.find_last_not_of("\r\n\t ") + 1;
        // Every length near both ends, where heads and trailers are, and a hundred between.
        for (std::size_t size = 0; size < content; size += size < 64 || size + 64 > content ? 1 : 1 + content / 100) {
            put(file, whole.substr(0, size));
            // Of an attribute or JSON file nothing at all is as much as none.
            const bool isNone = size == 0 && chiefOf(file) != file;
            EXPECT_TRUE(isNone || Read(chiefOf(file)).told() != "") << file << " " << size;
        }
        put(file, whole);
    }
}

TEST_F(Hostile, ChangedBytesNeverMisleadAReader) {
    std::mt19937 random(11);
    for (const fs::path& file : files()) {
        const std::string whole = realmodule::readFile(file);
        std::size_t told = 0;
        for (int round = 0; round < 150; ++round) {
            std::string changed = whole;
            for (std::uint32_t i = 0; i <= random() % 3; ++i) {
                changed[random() % changed.size()] = static_cast<char>(random() % 4 == 0 ? 0xFF : random());
            }
            put(file, changed);
            const Read found(chiefOf(file));
            told += found.findings.empty() ? 0 : 1;
            EXPECT_LE(found.findings.size(), 3 * readers::mostFindings);
            for (const Object& object : found.objects) {
                for (const readers::Solid& solid : object.solids) {
                    for (const std::uint32_t index : solid.indices) {
                        ASSERT_LT(index, solid.points.size()) << file << " " << round;
                    }
                }
            }
        }
        EXPECT_GT(told, 0U) << file;
        put(file, whole);
    }
}

// Neither waits for the other end of a pipe.
TEST_F(Hostile, APipeOrAFolderInThePlaceOfAFileIsTold) {
    const std::pair<const char*, const char*> checks[] = {
        {"rvm", "rvm"}, {"nwc", "scene"}, {"pmodel", "package"}, {"eem", "eem"}, {"orna", "max"}};
    for (const auto& [ending, kind] : checks) {
        const fs::path file = output("P", ending);
        for (const bool isPipe : {true, false}) {
            fs::remove(file);
            ASSERT_EQ(isPipe ? ::mkfifo(file.c_str(), 0600) : (fs::create_directory(file) ? 0 : 1), 0);
            const std::string told = Read(file).told();
            EXPECT_NE(told.find("cannot be read: it is no regular file"), std::string::npos) << ending << ": " << told;
            EXPECT_EQ(tessaro(std::string("check ") + kind + " '" + out().string() + "'"), 2);
            EXPECT_NE(said().find("cannot be read: it is no regular file"), std::string::npos) << said();
        }
    }
    fs::remove(folder() / "uda.txt");
    ASSERT_EQ(::mkfifo((folder() / "uda.txt").c_str(), 0600), 0);
    EXPECT_NE(Read(folder()).told().find("uda.txt: cannot be read"), std::string::npos);
    EXPECT_EQ(Read(out() / "P.log").told(), "P.log: no output by its name\n");
}

}  // namespace
