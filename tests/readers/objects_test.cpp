// One plant in all formats: its objects are the same objects, whatever they were written in.
#include "readers/fixture.h"

#include <cmath>

namespace {

using namespace readertest;

struct Box {
    Point low{INFINITY, INFINITY, INFINITY};
    Point high{-INFINITY, -INFINITY, -INFINITY};

    void add(const Point& point) {
        for (std::size_t i = 0; i < 3; ++i) {
            low[i] = std::min(low[i], point[i]);
            high[i] = std::max(high[i], point[i]);
        }
    }
};

Box boxOf(const Object& object) {
    Box box;
    for (const readers::Solid& solid : object.solids) {
        if (solid.form == readers::SolidForm::Triangles) {
            for (const std::uint32_t corner : solid.indices) {
                box.add(solid.points.at(corner));
            }
        }
    }
    return box;
}

std::string valueOf(const Object& object, const std::string& key) {
    for (const readers::Attribute& attribute : object.attributes) {
        if (attribute.key == key) {
            return attribute.value;
        }
    }
    return "(none)";
}

class OnePlant : public Outputs {
protected:
    OnePlant() { exportAll(realmodule::examples / "pump-station.json"); }
    Read read(const std::string& ending) const { return Read(output("PumpStation", ending)); }
};

TEST_F(OnePlant, IsReadWholeFromEveryFormat) {
    for (const char* ending : endings) {
        const Read found = read(ending);
        EXPECT_EQ(found.told(), "") << ending;
        const std::vector<const Object*> nozzles = found.shapesOf(ending == std::string("orna") ? "N1" : "P-101A-N1");
        ASSERT_FALSE(nozzles.empty()) << ending;
        const Object& nozzle = *nozzles.front();
        EXPECT_EQ(nozzle.path.back(), nozzle.name) << ending;
        EXPECT_FALSE(nozzle.place.empty()) << ending;
        EXPECT_NE(valueOf(nozzle, ending == std::string("rvm") || ending == std::string("orna") ? "nozno" : "管口号"),
                  "")
            << ending;
        for (const Object& object : found.objects) {
            for (const readers::Solid& solid : object.solids) {
                const bool isShown = solid.look.color.has_value() || !solid.look.material.empty();
                EXPECT_TRUE(isShown) << ending << " " << object.pathText() << " " << solid.place;
            }
        }
    }
    const Read folder(this->folder());
    EXPECT_EQ(folder.told(), "");
    std::set<std::string> names;
    for (const Object& object : folder.objects) {
        EXPECT_EQ(object.place.find(".txt:") == std::string::npos, false) << object.name << " " << object.place;
        names.insert(object.name);
    }
    EXPECT_TRUE(names.contains("P-101A_1")) << names.size();
}

// Solids that are triangles in three formats stand in one place: a wrong axis, unit or parent would move them.
TEST_F(OnePlant, StandsInOnePlaceInEveryFormatOfTriangles) {
    const Read scene = read("nwc");
    const Read package = read("pmodel");
    int compared = 0;
    for (const Object& object : scene.objects) {
        const std::vector<const Object*> others = package.shapesOf(object.name);
        // Host content has no place in a package.
        if (others.size() != 1 || scene.shapesOf(object.name).size() != 1 ||
            others.front()->solids.size() != object.solids.size()) {
            continue;
        }
        const Box one = boxOf(object);
        const Box other = boxOf(*others.front());
        if (!std::isfinite(one.low[0]) || !std::isfinite(other.low[0])) {
            continue;
        }
        ++compared;
        for (std::size_t i = 0; i < 3; ++i) {
            EXPECT_NEAR(one.low[i], other.low[i], 0.01) << object.pathText();
            EXPECT_NEAR(one.high[i], other.high[i], 0.01) << object.pathText();
        }
    }
    EXPECT_GT(compared, 20);
    const Read max = read("orna");
    const auto isPump = [](const Object& object) {
        return object.path.size() > 1 && object.path[object.path.size() - 2] == "P-101A_4" && object.id == "5";
    };
    const auto found = std::find_if(max.objects.begin(), max.objects.end(), isPump);
    ASSERT_NE(found, max.objects.end());
    const Box pump = boxOf(*found);
    EXPECT_NEAR(pump.low[0], 16550, 0.001);
    EXPECT_NEAR(pump.low[2], -200, 0.001);
    const Box other = boxOf(*package.shapesOf("P-101A").at(0));
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_NEAR(other.low[i], pump.low[i], 0.01);
        EXPECT_NEAR(other.high[i], pump.high[i], 0.01);
    }
    EXPECT_EQ(valueOf(*found, "eqno"), "P-101A");
    EXPECT_EQ(found->attributes.at(3).keyNote.empty(), false) << "its description";
}

TEST_F(OnePlant, KeepsParametersOfSolidsAsTheFormatHasThem) {
    const Read eem = read("eem");
    const Read rvm = read("rvm");
    const Object& one = *eem.shapesOf("P-101A").at(0);
    const Object& other = *rvm.shapesOf("P-101A").at(0);
    EXPECT_EQ(one.className, "HxDbEquipment");
    EXPECT_EQ(other.className, "HxDbEquipment");
    EXPECT_EQ(other.path.front(), "WORLD");
    ASSERT_EQ(one.solids.size(), other.solids.size());
    int cylinders = 0;
    for (std::size_t i = 0; i < one.solids.size(); ++i) {
        if (one.solids[i].kind != 0) {
            continue;
        }
        ++cylinders;
        const std::vector<double>& n = one.solids[i].numbers;
        const readers::Solid& cylinder = other.solids[i];
        ASSERT_EQ(cylinder.kind, 8);
        EXPECT_NEAR(cylinder.numbers[0], n[6], 1e-3);
        for (std::size_t axis = 0; axis < 3; ++axis) {
            EXPECT_NEAR(cylinder.placement.origin[axis], (n[axis] + n[axis + 3]) / 2, 0.01);
        }
    }
    EXPECT_GT(cylinders, 1);
}

TEST_F(OnePlant, ToldWithoutTheFileBesideItLacksWhatThatHolds) {
    const std::pair<const char*, const char*> pairs[] = {{"rvm", "txt"}, {"eem", "json"}, {"orna", "xml"}};
    for (const auto& [ending, beside] : pairs) {
        const std::size_t shapes = read(ending).shapesOf("P-101A").size();
        fs::remove(output("PumpStation", beside));
        const Read alone = read(ending);
        EXPECT_EQ(alone.told(), "PumpStation." + std::string(beside) + ": cannot be read\n");
        EXPECT_EQ(alone.shapesOf("P-101A").size(), shapes);
        for (const Object& object : alone.objects) {
            for (const readers::Attribute& attribute : object.attributes) {
                EXPECT_EQ(attribute.group, "spline") << object.pathText();
            }
        }
    }
}

}  // namespace
