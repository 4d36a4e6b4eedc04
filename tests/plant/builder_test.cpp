// What a builder takes and refuses that no model file can say: the calls themselves, ids handed out, several sources.
#include "loaded_model.h"

#include "plant/building/memory_builder.h"
#include "plant/refusal.h"
#include "tolmar/code_page.h"

#include <cmath>
#include <filesystem>
#include <fstream>
#include <functional>
#include <unistd.h>

namespace {

using plant::MemoryBuilder;
using plant::ModelBuilder;
using plant::PointFacts;

// What a builder says of calls; "taken" when nothing. A database with the object 1, a HextWorld, stands before them.
std::string saidOf(const std::function<void(ModelBuilder&)>& calls) {
    plant::ModelPtr model(new plant::Model);
    MemoryBuilder builder(*model);
    builder.database({.name = "MAIN", .root = 1});
    builder.beginObject(1, "HextWorld");
    builder.endObject();
    try {
        calls(builder);
        return "taken";
    } catch (const plant::Refusal& refusal) {
        return refusal.text();
    }
}
std::string saidOfObject(const char* className, const std::function<void(ModelBuilder&)>& calls) {
    return saidOf([&](ModelBuilder& builder) {
        builder.beginObject(2, className);
        calls(builder);
        builder.endObject();
        builder.finish();
    });
}
std::string saidOfPart(const std::function<void(ModelBuilder&)>& calls) {
    return saidOfObject("HxDbPipeSpec", calls);
}

TEST(Builder, RefusesCallsInAnotherOrder) {
    EXPECT_EQ(saidOf([](ModelBuilder& b) { b.name("x"); }), "told of no object");
    EXPECT_EQ(saidOf([](ModelBuilder& b) { b.attribute("k", "v"); }), "told of no object");
    EXPECT_EQ(saidOf([](ModelBuilder& b) { b.point({}); }), "told of no object");
    EXPECT_EQ(saidOf([](ModelBuilder& b) { b.whole(plant::WholeMember::InsNo, 1); }), "told of no object");
    EXPECT_EQ(saidOf([](ModelBuilder& b) { b.endObject(); }), "told of no object");
    EXPECT_EQ(saidOfPart([](ModelBuilder& b) { b.beginObject(3, "HextSite"); }),
              "an object is not ended before an object");
    EXPECT_EQ(saidOfPart([](ModelBuilder& b) { b.database({.name = "B"}); }),
              "an object is not ended before a database");
    EXPECT_EQ(saidOfPart([](ModelBuilder& b) { b.finish(); }), "an object is not ended before the end");
    EXPECT_EQ(saidOf([](ModelBuilder& b) {
                  b.finish();
                  b.attributeLabel("k", "label");
              }),
              "the plant is complete before a label");
    EXPECT_EQ(saidOfObject("HextPipeline", [](ModelBuilder& b) { b.runAttribute({.key = "k"}); }),
              "an attribute of a run before the run");
}

TEST(Builder, RefusesWhatAnObjectCannotHaveOrHasAlready) {
    EXPECT_EQ(saidOfPart([](ModelBuilder& b) { b.text(plant::TextMember::Rating, "x"); }),
              "no member \"rating\" of a smart object");
    EXPECT_EQ(saidOfObject("HextSite", [](ModelBuilder& b) { b.shape(); }),
              "no member \"primitives\" of an object of this class");
    EXPECT_EQ(saidOfObject("HextSite", [](ModelBuilder& b) { b.branch({}); }),
              "no member \"branches\" of an object of this class");
    EXPECT_EQ(saidOfPart([](ModelBuilder& b) {
                  b.text(plant::TextMember::No, "1");
                  b.text(plant::TextMember::No, "2");
              }),
              "member \"no\" is told twice");
    EXPECT_EQ(saidOfPart([](ModelBuilder& b) {
                  b.parent(1);
                  b.parent(1);
              }),
              "the object has a parent already");
    EXPECT_EQ(saidOfPart([](ModelBuilder& b) {
                  b.nodeId(7);
                  b.nodeId(8);
              }),
              "the node has an id already");
}

TEST(Builder, RefusesValuesThatNoFileCanHold) {
    EXPECT_EQ(saidOf([](ModelBuilder& b) { b.beginObject(0, "HextSite"); }),
              "id: an object id from 1 to 9007199254740991 expected, 0 found");
    EXPECT_EQ(saidOf([](ModelBuilder& b) { b.beginObject(1, "HextSite"); }), "id: id 1 is that of objects[0]");
    EXPECT_EQ(saidOf([](ModelBuilder& b) { b.beginObject(2, "HextSit"); }),
              "class: the name of a class expected, \"HextSit\" found");
    EXPECT_EQ(saidOfPart([](ModelBuilder& b) { b.color(256); }), "a whole number from 0 to 255 expected, 256 found");
    EXPECT_EQ(saidOfPart([](ModelBuilder& b) { b.whole(plant::WholeMember::InsNo, -1); }),
              "a whole number from 0 to 32767 expected, -1 found");
    EXPECT_EQ(saidOfPart([](ModelBuilder& b) { b.name(std::string_view("a\0b", 3)); }),
              "a text holds a zero character");
    EXPECT_EQ(saidOfPart([](ModelBuilder& b) { b.attribute("k", std::nan("")); }),
              "a finite number expected, nan found");
    EXPECT_EQ(saidOfPart([](ModelBuilder& b) { b.attribute({.key = "k", .type = 10, .text = "x"}); }),
              "type 10 is none");
    EXPECT_EQ(saidOfPart([](ModelBuilder& b) { b.point({.no = -1}); }),
              "no: a whole number from 0 to 32767 expected, -1 found");
    EXPECT_EQ(saidOfPart([](ModelBuilder& b) {
                  b.point({.at = {0, HUGE_VAL, 0}});
              }),
              "at: a finite number expected, inf found");
    EXPECT_EQ(saidOfPart([](ModelBuilder& b) { b.point({.flow = 3}); }),
              "flow: a whole number from 0 to 2 expected, 3 found");
    const plant::ObjectId self[] = {1, 2};
    EXPECT_EQ(saidOfPart([&](ModelBuilder& b) { b.point({.to = self}); }), "to[1]: an object does not hang at itself");
    EXPECT_EQ(saidOf([](ModelBuilder& b) { b.project({.module = 1}); }), "module: 48, 65 or 73 expected, 1 found");
    plant::Model none;
    EXPECT_THROW(MemoryBuilder(none).finish(), plant::Refusal) << "a plant without a database";
}

TEST(Builder, CopiesPrimitivesWithTheirTexts) {
    plant::ModelPtr model(new plant::Model);
    MemoryBuilder builder(*model);
    builder.database({.name = "MAIN"});
    {
        std::string material = "\xE9\x92\xA2";  // UTF-8
        HextSpolygon slab;
        slab.material = material.c_str();
        slab.outline = HextVertexList{{1, {0, 0, 0}}, {4, {1, 2, 3}}};
        HextPrimaryText text;
        text.text = material;
        builder.beginObject(1, "HxDbStruct");
        builder.primitive(slab);
        builder.primitive(text);
        builder.endObject();
        material.assign("gone");
    }
    builder.finish();
    const auto kept = model->objects[0].primitiveSpan();
    ASSERT_EQ(kept.size(), 2U);
    const auto& slab = dynamic_cast<const HextSpolygon&>(*kept[0]);
    EXPECT_EQ(tolmar::toUtf8(slab.material), "\xE9\x92\xA2");
    EXPECT_EQ(slab.outline->at(1).point.z, 3);
    EXPECT_EQ(tolmar::toUtf8(dynamic_cast<const HextPrimaryText&>(*kept[1]).text), "\xE9\x92\xA2");

    HextSphere3D endless;
    endless.radius = HUGE_VAL;
    EXPECT_EQ(saidOfPart([&](ModelBuilder& b) { b.primitive(endless); }),
              "radius: a finite number expected, inf found");
    HextRevolve odd;
    odd.profile = HextVertexList{{1, {}}, {8, {}}};
    EXPECT_EQ(saidOfPart([&](ModelBuilder& b) { b.primitive(odd); }),
              "profile[1]: a whole number from 1 to 7 expected, 8 found");
    HextSphere3D turned;
    turned.handedness = 2;
    EXPECT_EQ(saidOfPart([&](ModelBuilder& b) { b.primitive(turned); }),
              "handedness: a whole number from 0 to 1 expected, 2 found");
}

TEST(Builder, HandsOutIdsAboveAllOthers) {
    plant::ModelPtr model(new plant::Model);
    MemoryBuilder builder(*model);
    EXPECT_EQ(builder.newId(), 1);
    EXPECT_EQ(builder.newId(), 2);
    builder.beginObject(10, "HextSite");
    builder.nodeId(20);
    builder.endObject();
    EXPECT_EQ(builder.newId(), 21);
    builder.reserveIds(15);
    EXPECT_EQ(builder.newId(), 22);
    builder.reserveIds(plant::largestId);
    EXPECT_THROW(builder.newId(), plant::Refusal);
}

// Records of an object may stand between one another.
TEST(Builder, TakesRecordsInAnyOrder) {
    plant::ModelPtr model(new plant::Model);
    MemoryBuilder builder(*model);
    builder.database({.name = "MAIN"});
    const plant::ObjectId items[] = {2};
    builder.beginObject(1, "HextPipeline");
    builder.run("r", items);
    builder.runAttribute({.key = "of", .text = "r"});
    builder.attribute("of", "pipeline");
    builder.branch(items);
    builder.run("s", {});
    builder.attribute("length", std::int64_t{5});
    builder.runAttribute({.key = "of", .text = "s"});
    builder.branch({});
    builder.endObject();
    builder.beginObject(2, "HxDbPipeSpec");
    builder.keyPoints();
    builder.point({.no = 4, .at = {1, 2, 3}});
    builder.endObject();
    builder.finish();
    plant::setCurrentModel(model.get());
    smrtln::PipeRuns runs;
    smrtln::PipeRunParams params;
    ASSERT_TRUE(smrtln::getPiperunOfPipeline(HxDbObjectId(1), runs, params, 0));
    ASSERT_EQ(runs.size(), 2U);
    EXPECT_EQ(numbersOf(runs[0].second), Numbers{2});
    const plant::ObjectData& pipeline = model->objects[0];
    EXPECT_STREQ(pipeline.attributeText("of"), "pipeline");
    EXPECT_STREQ(pipeline.attributeText("length"), "5");
    const plant::PipeRun* kept = pipeline.find(plant::Member::Runs)->runs;
    EXPECT_STREQ(kept[0].attributes.records[0].text, "r");
    EXPECT_STREQ(kept[1].attributes.records[0].text, "s");
    EXPECT_EQ(pipeline.find(plant::Member::Branches)->count, 2U);
    std::vector<std::pair<short, HxGePoint3D>> keyPoints;
    static_cast<const HxDbSmrtlnEntity&>(model->objects[1].object()).getKeyPoints(keyPoints);
    EXPECT_TRUE(keyPoints.empty()) << "an empty list of its own";
    plant::setCurrentModel(nullptr);
}

// A folder with files of one plant.
class PlantOfFiles : public testing::Test {
protected:
    PlantOfFiles() : folder_(std::filesystem::temp_directory_path() / ("plant-files-" + std::to_string(::getpid()))) {
        std::filesystem::create_directories(folder_);
    }
    ~PlantOfFiles() override { std::filesystem::remove_all(folder_); }
    void add(const std::string& name, const std::string& database, const std::string& objects) {
        files_.push_back(folder_ / name);
        std::ofstream(files_.back()) << R"({"format":"tessaro-plant","version":1,"project":{"name":")" << name
                                     << R"("},"databases":[)" << database << R"(],"objects":[)" << objects << "]}";
    }
    // With the folder taken off the names of files.
    std::string error() const {
        std::string text = plant::loadPlant(files_).error;
        const std::string start = folder_.string() + "/";
        for (std::size_t at = text.find(start); at != std::string::npos; at = text.find(start)) {
            text.erase(at, start.size());
        }
        return text;
    }
    std::filesystem::path folder_;
    std::vector<std::filesystem::path> files_;
};

TEST_F(PlantOfFiles, IsOnePlant) {
    add("a", R"({"name":"A","root":1})",
        R"({"id":1,"class":"HextWorld"},{"id":2,"class":"HxDbPipeSpec","in":1,"points":[{"no":1,"at":[0,0,0],"to":4}]})");
    add("b", R"({"name":"B","main":true})", R"({"id":3,"class":"HextSite","in":1},{"id":4,"class":"HxDbPipeSpec"})");
    const plant::LoadResult result = plant::loadPlant(files_);
    ASSERT_TRUE(result) << result.error;
    EXPECT_EQ(plant::objectCount(*result.model), 4U);
    EXPECT_STREQ(result.model->project.name, "a");
    EXPECT_STREQ(result.model->mainDatabase().name, "B");
    plant::setCurrentModel(result.model.get());
    std::vector<HxDbObject*> connected;
    static_cast<const HxDbSmrtlnEntity&>(result.model->objects[3].object()).getAllConnObject(connected);
    EXPECT_EQ(numbersOf(connected), Numbers{2});
    plant::setCurrentModel(nullptr);
}

TEST_F(PlantOfFiles, RefusalsNameTheFileAndThePlaceInIt) {
    add("a", R"({"name":"A"})", R"({"id":1,"class":"HextWorld"},{"id":2,"class":"HxDbPipeSpec","spec":9})");
    EXPECT_EQ(error(), "a: objects[1].spec: no object 9");
    add("b", R"({"name":"B","root":8})",
        R"({"id":9,"class":"HxDbTubeSpecification"},{"id":3,"class":"HextSite","in":7})");
    EXPECT_EQ(error(), "b: objects[1].in: no object 7 before this one");
    files_.pop_back();
    add("c", R"({"name":"C","root":8})", R"({"id":9,"class":"HxDbTubeSpecification"})");
    EXPECT_EQ(error(), "c: databases[0].root: no object 8");
    files_.pop_back();
    add("d", R"({"name":"D"})", R"({"id":9,"class":"HextSite"})");
    EXPECT_EQ(error(), "a: objects[1].spec: object 9 is a HextSite, a HxDbTubeSpecification expected");
    files_.pop_back();
    add("e", R"({"name":"E"})", R"({"id":4,"class":"HextSite"},{"id":2,"class":"HextSite"})");
    EXPECT_EQ(error(), "e: objects[1].id: id 2 is that of objects[1] of a");
}

}  // namespace
