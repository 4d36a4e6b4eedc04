// Generated plants and the example plant: that they load, and that what is connected fits together.
#include "plant/model.h"
#include "platform/hxcom.h"
#include "platform/objects.h"
#include "platform/smrtln.h"

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <set>

namespace {

using plant::GenerateOptions;

std::string bytesOf(const std::filesystem::path& file) {
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

std::string idText(const HxDbObject* object) {
    return std::to_string(object->objectId().toInt());
}

// A loaded model as the platform's current one, with all objects of its trees.
class Loaded {
public:
    explicit Loaded(plant::LoadResult result) : result_(std::move(result)) {
        if (!result_) {
            return;
        }
        plant::setCurrentModel(result_.model.get());
        std::vector<HxDbObject*> roots;
        hxcom::getTreeRootOfOther(roots);
        roots.insert(roots.begin(), hxcom::getDataManTreeRoot());
        for (HxDbObject* root : roots) {
            std::vector<HxDbObject*> below;
            getAllSubObjects(HxDbTreeNode::cast(root), below);
            objects.insert(objects.end(), below.begin(), below.end());
        }
    }
    ~Loaded() { plant::setCurrentModel(nullptr); }
    Loaded(const Loaded&) = delete;
    Loaded& operator=(const Loaded&) = delete;

    const std::string& error() const { return result_.error; }
    template <typename T>
    std::vector<T*> all() const {
        std::vector<T*> found;
        for (HxDbObject* object : objects) {
            if (T* one = T::cast(object)) {
                found.push_back(one);
            }
        }
        return found;
    }

    std::vector<HxDbObject*> objects;

private:
    plant::LoadResult result_;
};

// Bolt sets hang on flanges and stand in no tree.
std::size_t smartObjects(const Loaded& plant) {
    std::size_t count = 0;
    for (HxDbSmrtlnEntity* object : plant.all<HxDbSmrtlnEntity>()) {
        count += 1 + (smrtln::getAttachBoltNut(HxDbTubeModelSpec::cast(object)) != nullptr ? 1 : 0);
    }
    return count;
}

// Both sides know the connection, stand at one place, and what flows out of one flows into the other.
void expectConnectionsFit(const Loaded& plant) {
    std::size_t connections = 0;
    for (HxDbSmrtlnEntity* object : plant.all<HxDbSmrtlnEntity>()) {
        std::vector<HxDbObject*> connected;
        object->getAllConnObject(connected);
        for (HxDbObject* other : connected) {
            const HxDbSmrtlnEntity* neighbour = HxDbSmrtlnEntity::cast(other);
            const int here = object->getConnNoOfSmrtln(neighbour);
            const int there = neighbour->getConnNoOfSmrtln(object);
            if (here == 0 || there == 0) {
                EXPECT_TRUE(HxDbSupportModel::cast(object) || HxDbSupportModel::cast(neighbour)) << idText(object);
                continue;
            }
            ++connections;
            ASSERT_LT(object->getCoordOfNo(here).distanceTo(neighbour->getCoordOfNo(there)), 0.01) << idText(object);
            const bool inHvacOrTray = object->getFlow(here) == 0 && neighbour->getFlow(there) == 0;
            ASSERT_TRUE(inHvacOrTray || object->getFlow(here) + neighbour->getFlow(there) == 3) << idText(object);
        }
    }
    EXPECT_GT(connections, plant.objects.size() / 2);
}

// Adjacent items are connected, the flow keeps its direction, and nothing stands in two branches.
void expectBranchesFit(const Loaded& plant) {
    std::map<std::int64_t, std::string> branchOf;
    for (HextPipeline* pipeline : plant.all<HextPipeline>()) {
        std::vector<std::vector<HxDbObjectId>> branches;
        smrtln::getBranchOfPipeline_piping(pipeline->objectId(), branches);
        for (const std::vector<HxDbObjectId>& branch : branches) {
            std::set<int> flows;
            for (std::size_t i = 0; i < branch.size(); ++i) {
                ASSERT_TRUE(branchOf.emplace(branch[i].toInt(), idText(pipeline)).second) << branch[i].toInt();
                if (i == 0) {
                    continue;
                }
                const auto* before = openAs<HxDbSmrtlnEntity>(branch[i - 1]);
                const int number = before->getConnNoOfSmrtln(openAs<HxDbSmrtlnEntity>(branch[i]));
                ASSERT_GT(number, 0) << idText(before);
                flows.insert(before->getFlow(number));
            }
            ASSERT_LE(flows.size(), 1U) << idText(pipeline);
        }
    }
    for (HxDbPipeSpec* pipe : plant.all<HxDbPipeSpec>()) {
        EXPECT_EQ(branchOf.count(pipe->objectId().toInt()), 1U) << idText(pipe);
    }
}

// The points that each geometric family is made of.
void expectPointsOfFamilies(const Loaded& plant, std::set<std::string>& families) {
    const std::map<std::string, std::vector<int>> numbers = {
        {"Pipe", {1, 2}},       {"Normal", {0, 1, 2}},    {"Weld", {0, 1, 2}},   {"Tee", {0, 1, 2, 3}},
        {"Arc", {0, 1, 3}},     {"Angle", {0, 1, 3}},     {"Ecc", {1, 2, 3, 4}}, {"Cross", {0, 1, 2, 3, 4}},
        {"Hose", {1, 2, 3, 4}}, {"Latera", {0, 1, 2, 3}}, {"Y", {0, 1, 3, 4}},
    };
    for (HxDbTubeModel* model : plant.all<HxDbTubeModel>()) {
        const std::string family = model->getSmrtlnType();
        families.insert(family);
        if (HxDbTubeStop::cast(model) || HxDbBalloon::cast(model)) {
            continue;
        }
        std::vector<HxGePoint3D> points;
        for (const int number : numbers.at(family)) {
            ASSERT_NE(model->getPointOfNo(number), nullptr) << idText(model) << " " << family << number;
            points.push_back(model->getCoordOfNo(number));
        }
        if (family == "Normal" || family == "Weld") {
            EXPECT_GT(points[0].distanceTo(points[1]), 0.5) << idText(model);
            EXPECT_GT(points[0].distanceTo(points[2]), 0.5) << idText(model);
            EXPECT_GT(points[1].distanceTo(points[2]), 0.5) << idText(model);
        }
    }
}

void expectPlantFits(const Loaded& plant) {
    expectConnectionsFit(plant);
    expectBranchesFit(plant);
    std::set<std::string> families;
    expectPointsOfFamilies(plant, families);
}

TEST(Generate, SameSeedGivesTheSameBytes) {
    const std::string text = plant::generateModelText({2000, 5});
    EXPECT_EQ(text, plant::generateModelText({2000, 5}));
    EXPECT_NE(text, plant::generateModelText({2000, 6}));

    const auto file = std::filesystem::temp_directory_path() / "tessaro_generate_test.json";
    std::string error;
    ASSERT_TRUE(plant::generateModel({2000, 5}, file, error)) << error;
    EXPECT_EQ(bytesOf(file), text);
    std::filesystem::remove(file);
}

TEST(Generate, SaysWhyAFileCannotBeWritten) {
    std::string error;
    EXPECT_FALSE(plant::generateModel({100, 1}, std::filesystem::temp_directory_path(), error));
    EXPECT_NE(error.find("cannot be written: "), std::string::npos) << error;
    error.clear();
    EXPECT_FALSE(plant::generateModel({3000, 1}, "/dev/full", error));
    EXPECT_NE(error.find("/dev/full"), std::string::npos) << error;
}

class GeneratedPlant : public testing::TestWithParam<GenerateOptions> {};

TEST_P(GeneratedPlant, LoadsHasItsSizeAndFitsTogether) {
    const GenerateOptions options = GetParam();
    const Loaded plant(plant::loadModelText(plant::generateModelText(options), "generated"));
    ASSERT_EQ(plant.error(), "");
    EXPECT_NEAR(static_cast<double>(smartObjects(plant)), static_cast<double>(options.objects),
                static_cast<double>(options.objects) * 0.1 + 1);
    expectPlantFits(plant);
}

INSTANTIATE_TEST_SUITE_P(Sizes, GeneratedPlant,
                         testing::Values(GenerateOptions{40, 1}, GenerateOptions{100, 2}, GenerateOptions{300, 3},
                                         GenerateOptions{700, 4}, GenerateOptions{2500, 5}, GenerateOptions{2500, 6},
                                         GenerateOptions{20000, 7}),
                         [](const auto& test) {
                             return std::to_string(test.param.objects) + "_" + std::to_string(test.param.seed);
                         });

TEST(Generate, AnEmptyPlantIsStillAPlant) {
    const Loaded plant(plant::loadModelText(plant::generateModelText({0, 1}), "generated"));
    EXPECT_EQ(plant.error(), "");
    EXPECT_EQ(smartObjects(plant), 0U);
}

TEST(Generate, ALargePlantHasEveryFamilyAndNoNameTwice) {
    const Loaded plant(plant::loadModelText(plant::generateModelText({20000, 1}), "generated"));
    ASSERT_EQ(plant.error(), "");
    std::set<std::string> families;
    expectPointsOfFamilies(plant, families);
    for (const char* family :
         {"Pipe", "Normal", "Tee", "Cross", "Arc", "Angle", "Ecc", "Latera", "Y", "Hose", "Weld"}) {
        EXPECT_EQ(families.count(family), 1U) << family;
    }
    std::set<std::string> names;
    for (HextNameNode* manager : plant.all<HextNameNode>()) {
        EXPECT_TRUE(names.insert(manager->getDisplayName()).second) << manager->getDisplayName();
    }
}

class ExamplePlant : public testing::Test {
protected:
    Loaded plant_{plant::loadModel(TESSARO_SOURCE_DIR "/examples/pump-station.json")};
};

TEST_F(ExamplePlant, LoadsAndFitsTogether) {
    ASSERT_EQ(plant_.error(), "");
    expectPlantFits(plant_);
}

// A flow of 1 at the first item towards the second is what turns a branch round.
TEST_F(ExamplePlant, HasBranchesThatRunWithTheFlowAndAgainstIt) {
    std::set<int> flows;
    for (HextPipeline* pipeline : plant_.all<HextPipeline>()) {
        std::vector<std::vector<HxDbObjectId>> branches;
        smrtln::getBranchOfPipeline_piping(pipeline->objectId(), branches);
        for (const std::vector<HxDbObjectId>& branch : branches) {
            if (branch.size() > 1) {
                const auto* first = openAs<HxDbSmrtlnEntity>(branch[0]);
                flows.insert(first->getFlow(first->getConnNoOfSmrtln(openAs<HxDbSmrtlnEntity>(branch[1]))));
            }
        }
    }
    EXPECT_EQ(flows, (std::set<int>{1, 2}));
}

TEST_F(ExamplePlant, ShowsEveryKindOfPrimitive) {
    std::set<std::string> seen;
    for (HxDbObject* object : plant_.objects) {
        HextPrimaryArray list;
        CadGiDraw::getPrimarys(object, list, nullptr, 7);
        for (const HextPrimary* primitive : list) {
            seen.insert(primitive->isA()->name());
        }
        freeHextPrimaryArray(list);
    }
    const std::set<std::string> all = {
        "HextBox3D",
        "HextCylinder3D",
        "HextScylinder3D",
        "HextConcone3D",
        "HextEcone3D",
        "HextSqucone3D",
        "HextWedge3D",
        "HextPrism3D",
        "HextOval3D",
        "HextSphere3D",
        "HextTorus3D",
        "HextSqutorus3D",
        "HextSaddle3D",
        "HextSqucir3D",
        "HextSpolygon",
        "HextRevolve",
        "HextPrimaryAcad",
        "HextPrimaryAcadEntity",
        "HextPrimaryAcadSolid3D",
        "HextAcadBlockReference",
        "HextPrimaryLine",
        "HextPrimaryText",
    };
    EXPECT_EQ(seen, all);
}

}  // namespace
