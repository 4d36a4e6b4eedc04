#include "generator/plant_writer.h"

#include "generator/telling/facts.h"

#include <algorithm>

namespace plant::generator {

namespace {

constexpr int unitsPerSite = 20;
constexpr int unitObjects = 600;
constexpr int mostEquipment = 6;
constexpr std::uint64_t mostObjects = std::uint64_t{1} << 40;

struct Label {
    std::string_view key;
    std::u8string_view text;
};
constexpr Label labels[] = {{"item", u8"类别"},       {"itype", u8"子类"},      {"specname", u8"管道等级"},
                            {"size1", u8"公称直径1"}, {"size2", u8"公称直径2"}, {"rating", u8"公称压力"},
                            {"material", u8"材料"},   {"name", u8"名称"},       {"tag", u8"位号"},
                            {"lineno", u8"管线号"},   {"eqno", u8"设备位号"},   {"destemp", u8"设计温度"}};

}  // namespace

PlantWriter::PlantWriter(const GenerateOptions& options, ModelBuilder& model)
    : model_(&model), library_(model), random_(options.seed), router_(random_, ids_), pipeWork_(random_, ids_, router_),
      left_(static_cast<std::int64_t>(std::min(options.objects, mostObjects))) {}

void PlantWriter::write(const std::function<bool()>& isWanted) {
    constexpr std::int64_t worthAnotherUnit = 30;
    const std::int64_t slack = std::min(worthAnotherUnit, left_ / 20);
    tellHead();
    while (left_ > slack && isWanted()) {
        tellUnit(static_cast<int>(std::min<std::int64_t>(left_, unitObjects)));
        ++unit_;
    }
    model_->finish();
}

void PlantWriter::tellHead() {
    world_ = ids_.next();
    civilWorld_ = ids_.next();
    model_->project(
        {.name = "GeneratedPlant", .user = "designer", .module = 65, .weldColor = 1, .currentManager = world_});
    for (const Label& label : labels) {
        model_->attributeLabel(label.key, utf8(label.text));
    }
    model_->database({.name = "PLANT", .main = true, .root = world_});
    model_->database({.name = "CIVIL", .root = civilWorld_});
    tellWorld(world_, u8"全厂");
    tellWorld(civilWorld_, u8"土建");
}

void PlantWriter::tellWorld(Id id, std::u8string_view name) {
    model_->beginObject(id, "HextWorld");
    model_->name(utf8(name));
    model_->endObject();
}

Point PlantWriter::origin() const {
    constexpr int unitsInRow = 40;
    return {unit_ % unitsInRow * unitWidth, unit_ / unitsInRow * unitDepth, 0};
}

void PlantWriter::tellNamed(Id id, std::string_view className, Id in, std::string_view name) {
    beginObject(*model_, id, className, in);
    model_->name(name);
    model_->endObject();
}

Id PlantWriter::zone(Id site, std::u8string_view name, std::string_view className) {
    const Id id = ids_.next();
    tellNamed(id, className, site, TextLine(unit_ + 1, utf8(name)));
    return id;
}

void PlantWriter::tellSites() {
    site_ = ids_.next();
    civilSite_ = ids_.next();
    const int number = unit_ / unitsPerSite + 1;
    tellNamed(site_, "HextSite", world_, TextLine(utf8(u8"第"), number, utf8(u8"分区")));
    tellNamed(civilSite_, "HextSite", civilWorld_, TextLine(utf8(u8"土建"), number, utf8(u8"分区")));
}

void PlantWriter::tellUnit(int budget) {
    if (unit_ % unitsPerSite == 0) {
        tellSites();
    }
    equipmentZone_ = zone(site_, u8"单元设备");
    pipingZone_ = zone(site_, u8"单元管道");
    insulatedLines_ = zone(pipingZone_, u8"单元保温管道", "HextZoneDirectory");
    structureZone_ = zone(site_, u8"单元结构");
    floor_ = zone(civilSite_, u8"单元基础层", "HextStdFloor");
    const int mostSupports = budget / 18;
    int told = planEquipment(std::clamp(budget / 90, 1, mostEquipment));
    told += tellSurroundings(budget);
    told += pipeWork_.plan(budget - told - mostSupports);
    tellEquipment();
    tellPipelines();
    told += tellSupports(mostSupports);
    left_ -= told;
}

int PlantWriter::tellSupports(int most) {
    const std::span<const SupportPoint> points = pipeWork_.supportPoints();
    const std::size_t count = std::min(points.size(), static_cast<std::size_t>(most));
    return count == 0 ? 0 : generator::tellSupports(target(), at(structureZone_), points.first(count));
}

int PlantWriter::planEquipment(int count) {
    constexpr double spacing = 6500;
    nozzles_.clear();
    equipment_.clear();
    foundations_.clear();
    for (int i = 0; i < count; ++i) {
        const Point at = origin() + Vector(3500 + i * spacing, 5500, 0);
        equipment_.push_back(generator::planEquipment(random_, ids_, at, ++equipmentNumber_, nozzles_));
        foundations_.push_back(at);
    }
    pipeWork_.begin(origin(), nozzles_);
    return count + static_cast<int>(nozzles_.size());
}

int PlantWriter::tellSurroundings(int budget) {
    constexpr int smallestWithDucts = 300;
    const Place structures = at(structureZone_);
    const Place lines = at(pipingZone_);
    int told = tellRack(target(), structures, std::clamp(budget / 16, 2, 40));
    told += tellGrid(target(), structures, std::clamp(budget / 80, 2, 9));
    told += tellFoundations(target(), at(floor_), foundations_);
    if (budget >= smallestWithDucts) {
        told += unit_ % 3 == 0 ? tellDucts(target(), lines) : 0;
        told += unit_ % 3 == 1 ? tellTrays(target(), lines) : 0;
        told += unit_ % unitsPerSite == 0 ? tellDrawing(target(), structures) : 0;
    }
    return told;
}

void PlantWriter::tellEquipment() {
    std::span<const NozzlePlan> rest = nozzles_;
    for (const EquipmentPlan& plan : equipment_) {
        const auto end =
            std::find_if(rest.begin(), rest.end(), [&](const NozzlePlan& n) { return n.equipment != plan.id; });
        const auto count = static_cast<std::size_t>(end - rest.begin());
        generator::tellEquipment(*model_, library_, plan, equipmentZone_, rest.first(count));
        rest = rest.subspan(count);
    }
}

void PlantWriter::tellPipelines() {
    for (PipelinePlan& pipeline : pipeWork_.pipelines()) {
        pipeline.in = pipeline.insulated ? insulatedLines_ : pipingZone_;
        tellPipeline(*model_, library_, pipeline, pipingZone_);
    }
}

}  // namespace plant::generator
