// Generated plants and the example plant: that they load, and that what is connected fits together.
#include "generator/generate.h"
#include "plant/model.h"
#include "plant/refusal.h"
#include "platform/entities.h"
#include "platform/hxcom.h"
#include "platform/objects.h"
#include "platform/smrtln.h"
#include "sources/json/writer.h"
#include "support/files.h"
#include "support/full_disk.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <memory>
#include <set>

namespace {

using plant::GenerateOptions;

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

std::string textOf(const HxDbObject* object, const char* key) {
    std::vector<KVParams> attributes;
    smrtln::getObjectBomData(object, attributes);
    const KVParams* found = hxcom::findKVParamArray(attributes, key);
    return found != nullptr && found->valueType == KVParams::Text ? found->value.text : "";
}

// The solids of an object that are, or are not, its insulation.
class Solids {
public:
    Solids(const HxDbObject* object, bool ofInsulation) {
        CadGiDraw::getPrimarys(object, list_, nullptr, 7);
        for (const HextPrimary* primitive : list_) {
            const HextPrimary3D* solid = HextPrimary3D::cast(primitive);
            if (solid != nullptr && (solid->getMaterial() != nullptr) == ofInsulation) {
                solids.push_back(solid);
            }
        }
    }
    ~Solids() { freeHextPrimaryArray(list_); }
    Solids(const Solids&) = delete;
    Solids& operator=(const Solids&) = delete;

    std::vector<const HextPrimary3D*> solids;

private:
    HextPrimaryArray list_;
};

// Nominal sizes agree where two parts meet, and with the specification.
void expectSizesFit(const Loaded& plant) {
    for (HxDbTubeModel* model : plant.all<HxDbTubeModel>()) {
        std::vector<HxDbObject*> connected;
        model->getAllConnObject(connected);
        for (HxDbObject* other : connected) {
            const HxDbTubeModel* neighbour = HxDbTubeModel::cast(other);
            const int here = model->getConnNoOfSmrtln(other);
            const char* size = smrtln::getSize(model, here);
            const char* next =
                neighbour != nullptr ? smrtln::getSize(neighbour, neighbour->getConnNoOfSmrtln(model)) : nullptr;
            if (here > 0 && size != nullptr && next != nullptr) {
                EXPECT_STREQ(size, next) << idText(model) << " and " << idText(neighbour);
            }
        }
        const HxDbTubeModelSpec* specified = HxDbTubeModelSpec::cast(model);
        if (specified != nullptr && specified->getSpec() != nullptr) {
            EXPECT_EQ(textOf(model, "specid"), idText(specified->getSpec()));
            EXPECT_EQ(textOf(model, "size1"), specified->getSpec()->getSize(1)) << idText(model);
        }
    }
}

void expectPipeShape(const HxDbPipeSpec* pipe) {
    const Solids shape(pipe, false);
    const auto* first = HextCylinder3D::cast(shape.solids.front());
    const auto* last = HextCylinder3D::cast(shape.solids.back());
    EXPECT_LT(first->startPoint.distanceTo(pipe->getCoordOfNo(1)), 0.01) << idText(pipe);
    EXPECT_LT(last->endPoint.distanceTo(pipe->getCoordOfNo(2)), 0.01) << idText(pipe);
    double thickness = 0;
    std::string material;
    smrtln::getInsulation(pipe, thickness, material);
    EXPECT_EQ(textOf(pipe, "minsul") != "0", thickness > 0) << idText(pipe);
    const Solids shell(pipe, true);
    ASSERT_EQ(!shell.solids.empty(), thickness > 0) << idText(pipe);
    if (thickness > 0) {
        EXPECT_NEAR(HextCylinder3D::cast(shell.solids.front())->diameter, first->diameter + 2 * thickness, 0.001);
    }
}

// A quarter or an eighth of a circle from end to end, of the radius that the attributes tell in nominal sizes.
void expectArcShape(const HxDbTubeModel* elbow) {
    const Solids shape(elbow, false);
    const auto* arc = HextTorus3D::cast(shape.solids.front());
    ASSERT_NE(arc, nullptr) << idText(elbow);
    const double radius = std::stod(textOf(elbow, "radius")) * std::stod(textOf(elbow, "size1"));
    EXPECT_LT(arc->startPoint.distanceTo(elbow->getCoordOfNo(1)), 0.01) << idText(elbow);
    EXPECT_LT(arc->thirdField.distanceTo(elbow->getCoordOfNo(3)), 0.01) << idText(elbow);
    EXPECT_NEAR(arc->center.distanceTo(arc->startPoint), radius, 0.01) << idText(elbow);
    EXPECT_NEAR(arc->center.distanceTo(arc->thirdField), radius, 0.01) << idText(elbow);
    const double angle =
        (elbow->getCoordOfNo(0) - elbow->getCoordOfNo(1)).angleTo(elbow->getCoordOfNo(3) - elbow->getCoordOfNo(0));
    EXPECT_NEAR(angle * 180 / tlGePi, std::stod(textOf(elbow, "angle")), 0.001) << idText(elbow);
}

void expectShapesFit(const Loaded& plant) {
    for (HxDbTubeModelSpec* model : plant.all<HxDbTubeModelSpec>()) {
        if (const HxDbPipeSpec* pipe = HxDbPipeSpec::cast(model)) {
            expectPipeShape(pipe);
        } else if (model->getSmrtlnType() == "Arc" && textOf(model, "module") == "Piping") {
            expectArcShape(model);
        }
        if (const HxDbBoltNutModel* bolts = smrtln::getAttachBoltNut(model)) {
            const Solids shape(bolts, false);
            EXPECT_EQ(static_cast<int>(shape.solids.size()), bolts->getFlanIdx()->getBoltNum()) << idText(model);
            EXPECT_EQ(textOf(model, "size1"), bolts->getFlanIdx()->getFlanSize()) << idText(model);
        }
    }
}

// Every primitive can be drawn: a solid has a boundary, carried host content can be read.
void expectDrawable(const Loaded& plant) {
    for (HxDbObject* object : plant.objects) {
        HextPrimaryArray list;
        CadGiDraw::getPrimarys(object, list, nullptr, 7);
        for (const HextPrimary* primitive : list) {
            const std::unique_ptr<TlDbEntity> entity(transHextPrimary(primitive));
            ASSERT_NE(entity, nullptr) << idText(object);
            if (const ORNACadPrimary3D* parametric = ORNACadPrimary3D::cast(entity.get())) {
                TlDb3dSolid* solid = nullptr;
                EXPECT_EQ(parametric->getSolid(solid), Tl::eOk) << idText(object) << " " << primitive->isA()->name();
                delete solid;
            }
        }
        freeHextPrimaryArray(list);
    }
}

void expectPlantFits(const Loaded& plant) {
    expectConnectionsFit(plant);
    expectBranchesFit(plant);
    std::set<std::string> families;
    expectPointsOfFamilies(plant, families);
    expectSizesFit(plant);
    expectShapesFit(plant);
    expectDrawable(plant);
}

TEST(Generate, SameSeedGivesTheSameBytes) {
    const std::string text = plant::generateModelText({2000, 5});
    EXPECT_EQ(text, plant::generateModelText({2000, 5}));
    EXPECT_NE(text, plant::generateModelText({2000, 6}));

    const auto file = std::filesystem::temp_directory_path() / "tessaro_generate_test.json";
    std::string error;
    ASSERT_TRUE(plant::generateModel({2000, 5}, file, error)) << error;
    EXPECT_EQ(fileBytes(file), text);
    std::filesystem::remove(file);
}

TEST(Generate, TellsABuilderWhatTheTextSays) {
    std::string told;
    plant::JsonModelWriter writer([&told](std::string_view piece) {
        told += piece;
        return true;
    });
    plant::generateInto({2000, 5}, writer);
    EXPECT_EQ(told, plant::generateModelText({2000, 5}));
    EXPECT_THROW(plant::generateInto({2000, 5, true}, writer), plant::Refusal);
}

TEST(Generate, OddPlantsLoadAndAreOdd) {
    for (std::uint64_t seed = 1; seed <= 30; ++seed) {
        const std::string text = plant::generateModelText({120, seed, true});
        ASSERT_EQ(text, plant::generateModelText({120, seed, true}));
        const plant::LoadResult result = plant::loadModelText(text);
        ASSERT_TRUE(result) << seed << ": " << result.error;
        EXPECT_NE(text, plant::generateModelText({120, seed}));
        EXPECT_NE(text.find("1e12"), std::string::npos) << seed;
    }
    // A component whose class would change, and at which a pipeline starts.
    const plant::LoadResult result = plant::loadModelText(plant::generateModelText({1000, 15, true}));
    EXPECT_TRUE(result) << result.error;
}

TEST(Generate, SaysWhyAFileCannotBeWritten) {
    std::string error;
    EXPECT_FALSE(plant::generateModel({100, 1}, std::filesystem::temp_directory_path(), error));
    EXPECT_NE(error.find("cannot be written: "), std::string::npos) << error;
    error.clear();
    EXPECT_FALSE(plant::generateModel({3000, 1}, "/dev/full", error));
    EXPECT_NE(error.find("/dev/full"), std::string::npos) << error;
}

// The file size limit plays the full disk.
TEST(Generate, LeavesNothingOfAFileThatItCannotFinish) {
    const auto file = std::filesystem::temp_directory_path() / "tessaro_generate_full.json";
    std::string error;
    {
        const FullDisk full(200'000);
        EXPECT_FALSE(plant::generateModel({3000, 1}, file, error));
    }
    EXPECT_NE(error.find("tessaro_generate_full.json: cannot be written: "), std::string::npos) << error;
    EXPECT_FALSE(std::filesystem::exists(file));
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

TEST(Generate, ALargePlantHasEveryFamilyAndFewNamesTwice) {
    const Loaded plant(plant::loadModelText(plant::generateModelText({20000, 1}), "generated"));
    ASSERT_EQ(plant.error(), "");
    std::set<std::string> families;
    expectPointsOfFamilies(plant, families);
    for (const char* family :
         {"Pipe", "Normal", "Tee", "Cross", "Arc", "Angle", "Ecc", "Latera", "Y", "Hose", "Weld"}) {
        EXPECT_EQ(families.count(family), 1U) << family;
    }
    std::set<std::string> names;
    std::size_t sharedLines = 0;
    for (HextNameNode* manager : plant.all<HextNameNode>()) {
        if (!names.insert(manager->getDisplayName()).second) {
            EXPECT_NE(HextPipeline::cast(manager), nullptr) << manager->getDisplayName();
            ++sharedLines;
        }
    }
    EXPECT_GT(sharedLines, 0U);
    EXPECT_LT(sharedLines, plant.all<HextPipeline>().size() / 20);
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
