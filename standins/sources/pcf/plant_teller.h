// Pipelines as objects of the plant model: a site for each file, a zone for its pipelines, and in it managers,
// components, specifications, bolts and supports, told to a ModelBuilder.
#pragma once

#include "plant/model_builder.h"
#include "sources/pcf/network.h"
#include "sources/pcf/parts.h"
#include "sources/pcf/place_index.h"

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace plant::pcf {

// From the place of bolts to the face that they hold: they are told in the middle of the gasket, or behind the flange.
inline constexpr double boltReach = 60;
// From a support to the axis of its pipe: no pipe is wider.
inline constexpr double pipeReach = 2000;

// Numbers of the points of a part, by slot, in the order in which classes of the model have them.
struct PointNumbers {
    std::int16_t centre;
    std::int16_t ofSlot[4];  // the slot that is point 1 counts as slot 0
};

// Objects that many parts refer to: told when they are asked for first.
class Library {
public:
    explicit Library(ModelBuilder& builder) : builder_(&builder) {}

    struct SpecificationEnd {
        standards::PipeSize size;
        std::string_view endType;
    };
    // Not while an object is being told.
    ObjectId specification(const std::string& name, const std::vector<SpecificationEnd>& ends);
    struct BoltKey {
        double diameter = 0;  // millimetres
        double length = 0;
        std::int64_t count = 0;
        double dn = 0;  // of the flange
        auto operator<=>(const BoltKey&) const = default;
    };
    struct BoltIds {
        ObjectId bolt;
        ObjectId nut;
        ObjectId flange;
    };
    BoltIds bolts(const BoltKey& key);
    ObjectId supportItem(const std::string& type);

private:
    ModelBuilder* builder_;
    std::map<std::string, ObjectId> specifications_;
    std::map<BoltKey, BoltIds> bolts_;
    std::map<std::string, ObjectId> supportItems_;
};

class PlantTeller {
public:
    PlantTeller(const Files& files, const Network& network, const standards::Settings& settings, SourceReport& report)
        : files_(&files), network_(&network), settings_(&settings), report_(&report) {}
    // Everything, under an object that was told.
    void tell(ObjectId world, ModelBuilder& builder);

private:
    // What one pipeline's parts have in common.
    struct Line {
        const File* file = nullptr;
        const Pipeline* pipeline = nullptr;
        std::size_t number = 0;
        ObjectId id = 0;
        ObjectId zone = 0;
        std::string name;
        std::string specification;
        std::string insulation;  // name of its specification; empty: none
        const standards::InsulationType* insulationType = nullptr;
    };
    // How a part lies in its chain.
    struct Lie {
        std::uint8_t first = 0;  // slot of point 1
        std::uint8_t in = 0;     // slot by which the flow enters
        PointNumbers numbers{};
        const standards::PartType* type = nullptr;  // the part's own but for an eccentric one without an offset
        std::string_view ends[4];
        HxGeVector3D offset;  // of an eccentric part, unit vector; zero: it has none
        HxGeVector3D across;
    };

    void giveIds();
    void indexPlaces();
    void tellFile(const File& file, std::size_t firstPipeline, ObjectId world);
    Line lineOf(const File& file, const Pipeline& pipeline, std::size_t number, ObjectId zone) const;
    void tellLine(const Line& line);
    void tellLineAttributes(const Line& line);
    void tellBranches(const Line& line);
    void tellParts(const Line& line);
    void tellPart(const Line& line, std::uint32_t index);
    void tellComponent(const Line& line, std::uint32_t index);
    void tellWeld(const Line& line, std::uint32_t index);
    void tellTypeAttributes(const standards::PartType& type, const Part& part);
    void tellSizes(const Part& part, const Lie& lie);
    void tellBend(const Part& part);
    void tellDescription(const Line& line, const Part& part);
    void tellInsulation(const Line& line, const Part& part);
    void tellPoints(const Line& line, std::uint32_t index, const Lie& lie);
    void tellEccentricPoints(const Part& part, const Lie& lie);
    void tellPoint(std::int16_t no, const HxGePoint3D& at, int flow = 0, Mate mate = {});
    void tellMembers(const Record& record);
    void tellBolts(const Line& line);
    std::optional<std::uint32_t> flangeAt(const Line& line, const HxGePoint3D& at) const;
    std::optional<std::uint32_t> pipeAt(const Line& line, const HxGePoint3D& at) const;
    void tellSupports(const Line& line);
    void tellSupport(const Line& line, const Placed& support, ObjectId manager, std::size_t number);

    Lie lieOf(std::uint32_t index) const;
    std::uint8_t flangeFace(std::uint32_t index) const;
    std::string_view endTypeOf(std::uint32_t index, std::uint8_t slot) const;
    void findOffset(const Part& part, std::uint32_t index, Lie& lie) const;
    HxGeVector3D acrossOf(const Part& part) const;
    int flowAt(std::uint32_t index, std::uint8_t slot, const Lie& lie) const;
    bool endsInFlange(const Part& part, std::string_view endType) const;
    void note(const char* code, SourceGrade grade, const File& file, std::uint32_t lineNumber, std::string text);

    const Files* files_;
    const Network* network_;
    const standards::Settings* settings_;
    SourceReport* report_;
    ModelBuilder* builder_ = nullptr;
    Library* library_ = nullptr;
    PlaceIndex faces_{boltReach};  // of flanges
    PlaceIndex pipes_{pipeReach};
    std::vector<ObjectId> ids_;         // of knots
    std::vector<ObjectId> boltIds_;     // of the bolts on a knot; 0: none
    std::vector<std::uint8_t> inSlot_;  // by which the flow enters a knot
};

}  // namespace plant::pcf
