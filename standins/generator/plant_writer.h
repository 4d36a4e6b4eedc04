// Plans a plant unit by unit and tells each unit to a builder before the next one is planned.
#pragma once

#include "generator/generate.h"
#include "generator/pipework.h"
#include "generator/telling/equipment.h"
#include "generator/telling/parts.h"
#include "generator/telling/structure.h"

#include <functional>
#include <vector>

namespace plant::generator {

class PlantWriter {
public:
    // The builder outlives the writer; `odd` of the options is not looked at.
    PlantWriter(const GenerateOptions& options, ModelBuilder& model);

    // Tells the plant, finish included. Stops behind the unit after which it is no longer wanted.
    void write(const std::function<bool()>& isWanted);

private:
    void tellHead();
    void tellWorld(Id id, std::u8string_view name);
    void tellSites();
    void tellUnit(int budget);
    int planEquipment(int count);
    int tellSurroundings(int budget);
    void tellEquipment();
    void tellPipelines();
    int tellSupports(int most);
    // A manager of nothing but a name.
    void tellNamed(Id id, std::string_view className, Id in, std::string_view name);
    // One whose name begins with the number of the unit.
    Id zone(Id site, std::u8string_view name, std::string_view className = "HextZone");
    Point origin() const;
    Place at(Id in) const { return {in, unit_ + 1, origin()}; }
    Target target() { return {*model_, ids_, library_}; }

    ModelBuilder* model_;
    Ids ids_;
    Library library_;
    Random random_;
    Router router_;
    PipeWork pipeWork_;
    std::int64_t left_;
    int unit_ = 0;
    int equipmentNumber_ = 100;
    Id world_ = 0;
    Id civilWorld_ = 0;
    Id site_ = 0;
    Id civilSite_ = 0;
    Id equipmentZone_ = 0;
    Id pipingZone_ = 0;
    Id insulatedLines_ = 0;
    Id structureZone_ = 0;
    Id floor_ = 0;
    std::vector<NozzlePlan> nozzles_;
    std::vector<EquipmentPlan> equipment_;
    std::vector<Point> foundations_;
};

}  // namespace plant::generator
