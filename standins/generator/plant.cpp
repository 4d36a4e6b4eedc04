// A plausible plant of any size: process units side by side, each with equipment, pipelines, structures, supports and a
// grid, planned and written one after the other.
#include "generator/equipment.h"
#include "generator/odd.h"
#include "generator/parts.h"
#include "generator/pipework.h"
#include "generator/structure.h"
#include "plant/model.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>

namespace plant {

namespace {

using namespace generator;

constexpr int unitsPerSite = 20;
constexpr int unitObjects = 600;

// Writes unit after unit until the plant has its objects.
class PlantWriter {
public:
    PlantWriter(const GenerateOptions& options, Output& out)
        : out_(&out), library_(out), random_(options.seed), router_(random_, ids_), pipeWork_(random_, ids_, router_),
          left_(static_cast<std::int64_t>(std::min<std::uint64_t>(options.objects, most))) {}

    void write();

private:
    static constexpr std::uint64_t most = std::uint64_t{1} << 40;
    static constexpr int mostEquipment = 6;

    void writeHead();
    void writeSites();
    void writeUnit(int budget);
    int planEquipment(int count);
    int writeSurroundings(int budget);
    void writeEquipment();
    void writePipelines();
    Id zone(Id site, std::u8string_view name, std::string_view className = "HextZone");
    void numbered(std::u8string_view before, int number, std::u8string_view behind);
    Point origin() const;

    Output* out_;
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

void PlantWriter::write() {
    constexpr std::int64_t worthAnotherUnit = 30;
    const std::int64_t slack = std::min(worthAnotherUnit, left_ / 20);
    writeHead();
    while (left_ > slack && !out_->failed()) {
        writeUnit(static_cast<int>(std::min<std::int64_t>(left_, unitObjects)));
        ++unit_;
    }
    out_->endObject();
    out_->text("]}\n");
    out_->flush();
}

void PlantWriter::numbered(std::u8string_view before, int number, std::u8string_view behind) {
    out_->text(",\"name\":\"").text(utf8(before)).whole(number).text(utf8(behind)).text("\"");
}

void PlantWriter::writeHead() {
    world_ = ids_.next();
    civilWorld_ = ids_.next();
    out_->text("{\"format\":\"tessaro-plant\",\"version\":1,\n");
    out_->text("\"project\":{\"name\":\"GeneratedPlant\",\"user\":\"designer\",\"module\":65,\"weldColor\":1");
    out_->member("currentManager", world_).text("},\n\"attributeLabels\":{");
    out_->text(utf8(u8"\"item\":\"类别\",\"itype\":\"子类\",\"specname\":\"管道等级\",\"size1\":\"公称直径1\","
                    u8"\"size2\":\"公称直径2\",\"rating\":\"公称压力\",\"material\":\"材料\",\"name\":\"名称\","
                    u8"\"tag\":\"位号\",\"lineno\":\"管线号\",\"eqno\":\"设备位号\",\"destemp\":\"设计温度\"},\n"));
    out_->text("\"databases\":[{\"name\":\"PLANT\",\"main\":true").member("root", world_);
    out_->text("},{\"name\":\"CIVIL\"").member("root", civilWorld_).text("}],\n\"objects\":[");
    out_->beginObject();
    out_->text("{\"id\":").whole(world_).text(",\"class\":\"HextWorld\"").member("name", utf8(u8"全厂")).text("}");
    out_->beginObject();
    out_->text("{\"id\":").whole(civilWorld_).text(",\"class\":\"HextWorld\"").member("name", utf8(u8"土建"));
    out_->text("}");
}

Point PlantWriter::origin() const {
    constexpr int unitsInRow = 40;
    return {unit_ % unitsInRow * unitWidth, unit_ / unitsInRow * unitDepth, 0};
}

Id PlantWriter::zone(Id site, std::u8string_view name, std::string_view className) {
    const Id id = ids_.next();
    beginObject(*out_, id, className, site);
    numbered(u8"", unit_ + 1, name);
    out_->text("}");
    return id;
}

void PlantWriter::writeSites() {
    site_ = ids_.next();
    civilSite_ = ids_.next();
    const int number = unit_ / unitsPerSite + 1;
    beginObject(*out_, site_, "HextSite", world_);
    numbered(u8"第", number, u8"分区");
    out_->text("}");
    beginObject(*out_, civilSite_, "HextSite", civilWorld_);
    numbered(u8"土建", number, u8"分区");
    out_->text("}");
}

void PlantWriter::writeUnit(int budget) {
    if (unit_ % unitsPerSite == 0) {
        writeSites();
    }
    equipmentZone_ = zone(site_, u8"单元设备");
    pipingZone_ = zone(site_, u8"单元管道");
    insulatedLines_ = zone(pipingZone_, u8"单元保温管道", "HextZoneDirectory");
    structureZone_ = zone(site_, u8"单元结构");
    floor_ = zone(civilSite_, u8"单元基础层", "HextStdFloor");
    int written = planEquipment(std::clamp(budget / 90, 1, mostEquipment));
    written += writeSurroundings(budget);
    const int supports = budget / 18;
    written += pipeWork_.plan(budget - written - supports);
    writeEquipment();
    writePipelines();
    const auto& points = pipeWork_.supportPoints();
    const std::size_t supported = std::min(points.size(), static_cast<std::size_t>(supports));
    if (supported > 0) {
        written +=
            writeSupports(*out_, ids_, library_, {structureZone_, unit_ + 1, origin()}, {points.data(), supported});
    }
    left_ -= written;
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

int PlantWriter::writeSurroundings(int budget) {
    constexpr int smallestWithDucts = 300;
    const Place structures{structureZone_, unit_ + 1, origin()};
    const Place lines{pipingZone_, unit_ + 1, origin()};
    int written = writeRack(*out_, ids_, structures, std::clamp(budget / 16, 2, 40));
    written += writeGrid(*out_, ids_, structures, std::clamp(budget / 80, 2, 9));
    written += writeFoundations(*out_, ids_, {floor_, unit_ + 1, origin()}, foundations_);
    if (budget >= smallestWithDucts && unit_ % 3 == 0) {
        written += writeDucts(*out_, ids_, lines);
    }
    if (budget >= smallestWithDucts && unit_ % 3 == 1) {
        written += writeTrays(*out_, ids_, lines);
    }
    if (budget >= smallestWithDucts && unit_ % unitsPerSite == 0) {
        written += writeDrawing(*out_, ids_, structures);
    }
    return written;
}

void PlantWriter::writeEquipment() {
    std::span<const NozzlePlan> rest = nozzles_;
    for (const EquipmentPlan& plan : equipment_) {
        const auto end =
            std::find_if(rest.begin(), rest.end(), [&](const NozzlePlan& n) { return n.equipment != plan.id; });
        const auto count = static_cast<std::size_t>(end - rest.begin());
        generator::writeEquipment(*out_, library_, plan, equipmentZone_, rest.first(count));
        rest = rest.subspan(count);
    }
}

void PlantWriter::writePipelines() {
    for (PipelinePlan& pipeline : pipeWork_.pipelines()) {
        pipeline.in = pipeline.insulated ? insulatedLines_ : pipingZone_;
        writePipeline(*out_, library_, pipeline, pipingZone_);
    }
}

void generate(const GenerateOptions& options, Output& out) {
    OddPlant odd(options.seed);
    if (options.odd) {
        out.rewriteObjects([&odd](std::string& object) { odd.disturb(object); });
    }
    PlantWriter(options, out).write();
}

}  // namespace

bool generateModel(const GenerateOptions& options, const std::filesystem::path& file, std::string& error) {
    std::FILE* target = std::fopen(file.c_str(), "wb");
    bool good = target != nullptr;
    int reason = errno;
    if (good) {
        Output out([&](std::string_view text) {
            const bool whole = std::fwrite(text.data(), 1, text.size(), target) == text.size();
            reason = whole ? reason : errno;
            return whole;
        });
        generate(options, out);
        const bool closed = std::fclose(target) == 0;
        good = closed && !out.failed();
        reason = closed ? reason : errno;
    }
    if (!good) {
        std::error_code ignored;
        if (target != nullptr && std::filesystem::is_regular_file(file, ignored)) {
            std::filesystem::remove(file, ignored);
        }
        error = file.string() + ": cannot be written: " + std::strerror(reason);
    }
    return good;
}

std::string generateModelText(const GenerateOptions& options) {
    std::string json;
    Output out([&](std::string_view text) {
        json += text;
        return true;
    });
    generate(options, out);
    return json;
}

}  // namespace plant
