// The example configuration maps every component of the example and of generated plants.
#include "generator/generate.h"
#include "hextinterface/manager/name_manager.h"
#include "platform/hxcom.h"
#include "platform/smrtln.h"
#include "support/test_support.h"

#include <set>

namespace {

class PlantsMapping : public testing::Test {
protected:
    PlantsMapping() {
        std::filesystem::copy(TESSARO_SOURCE_DIR "/examples/install/temp/hext/config.json",
                              root_.path() / "temp/hext/config.json");
        names_.types.loadSkeyTable();
        names_.types.loadTypeTable();
    }

    // Words that the mapping gave; every object of a pipeline or an equipment has one.
    std::set<std::string> mapAll(plant::LoadResult loaded) {
        EXPECT_TRUE(loaded) << loaded.error;
        plant::setCurrentModel(loaded.model.get());
        clearBomCache();
        std::set<std::string> words;
        std::vector<HxDbObject*> objects;
        getAllSubObjects(hxcom::getDataManTreeRoot(), objects);
        for (const HxDbObject* object : objects) {
            const HxDbTubeModel* model = HxDbTubeModel::cast(object);
            if (model != nullptr && openAs<HextStruct>(model->getOwnerId()) == nullptr) {
                EXPECT_FALSE(names_.types.getSkey(model).empty()) << model->objectId().toInt();
                const std::string word(names_.types.getGtype(model));
                EXPECT_FALSE(word.empty()) << model->objectId().toInt();
                words.insert(word);
            }
        }
        clearBomCache();
        plant::setCurrentModel(nullptr);
        return words;
    }

    TestUi ui_;
    TestRoot root_;
    NameManager names_;
};

TEST_F(PlantsMapping, FindsEverythingInTheExample) {
    const std::set<std::string> words = mapAll(plant::loadModel(TESSARO_SOURCE_DIR "/examples/pump-station.json"));
    for (const char* word : {"TUBE", "FTUB", "ELBO", "BEND", "TEE", "CROS", "OLET", "REDU", "VALV", "FLAN", "FBLI",
                             "GASK", "CAP", "FILT", "TRAP", "INST", "WELD", "NOZZLE", "PCOM"}) {
        EXPECT_EQ(words.count(word), 1U) << word;
    }
    EXPECT_FALSE(root_.exists("temp/hext/gtype_lost.log"));
}

TEST_F(PlantsMapping, FindsEverythingInGeneratedPlants) {
    for (const std::uint64_t seed : {1, 2, 3}) {
        EXPECT_GT(mapAll(plant::loadModelText(plant::generateModelText({5000, seed}))).size(), 15U);
    }
    EXPECT_FALSE(root_.exists("temp/hext/gtype_lost.log"));
}

}  // namespace
