// Writes the scenes of the example and of generated plants that the glTF validator judges afterwards.
#include "generator/generate.h"
#include "support.h"

namespace {

namespace fs = std::filesystem;

class JudgedPlants : public NvTest {
protected:
    JudgedPlants() {
        root.takeInstallation();
        fs::create_directories(TESSARO_JUDGED_DIR);
    }
    void write(const std::string& json, const std::string& name) {
        loadText(json);
        ui.fileAnswer = (fs::path(TESSARO_JUDGED_DIR) / (name + ".nwc")).string();
        nvout();
        const SceneReading scene(*ui.fileAnswer);
        EXPECT_GT(scene.scene().nodes.size(), 100U) << name;
    }
};

TEST_F(JudgedPlants, AreWritten) {
    const std::string example = exampleText("pump-station.json");
    write(example, "example");
    options({"outWeld", "outWeldText", "nvExpandBranch", "orAxiss", "sortNode"});
    write(example, "example-options");
    write(plant::generateModelText({.objects = 2000, .seed = 3}), "generated-3");
    write(plant::generateModelText({.objects = 500, .seed = 8}), "generated-8");
}

}  // namespace
