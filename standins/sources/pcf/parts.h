// What the records of a file mean: pipelines with their parts, in millimetres.
//
//     records  ->  Reading: units, pipelines, parts with their ends  ->  Network (network.h)  ->  ModelBuilder
//     (plant_teller.h)
//
// A record that is no part of a pipeline as it stands is told in the report with its line, and with what became of it.
#pragma once

#include "platform/geometry.h"
#include "sources/pcf/records.h"
#include "sources/pcf/units.h"
#include "sources/report.h"
#include "sources/standards/settings.h"

#include <deque>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace plant::pcf {

// How a part meets others. Slots 0 and 1 are the ends of its run, 2 and 3 those of what branches off.
enum class Form : std::uint8_t {
    Straight,  // END-POINT twice
    Turned,    // the same, with a CENTRE-POINT where its two axes meet
    Branched,  // the same, with BRANCH1-POINT, perhaps BRANCH2-POINT
    SetOn,     // stands on a pipe that runs through: CENTRE-POINT and BRANCH1-POINT
    Closing,   // END-POINT once or twice, nothing goes on behind it
    Weld,      // of no length
    Place,     // CO-ORDS alone: supports, bolts
};

struct ComponentKind {
    std::string_view word;
    Form form;
};
// Null for a word that is no component.
const ComponentKind* componentKind(std::string_view word);

struct End {
    HxGePoint3D at;
    standards::PipeSize size;  // dn 0: the file tells none
    std::string_view bore;     // as it stands in the file
    std::string_view endType;  // of the model; empty: none is told
    bool isThere = false;
};

struct Part {
    const Record* record = nullptr;
    const ComponentKind* kind = nullptr;
    const standards::PartType* type = nullptr;
    std::string_view symbolKey;
    End ends[4];
    std::optional<HxGePoint3D> centre;
    std::size_t pipeline = 0;  // in Reading::pipelines
    std::size_t order = 0;     // in the file
    bool isSynthetic = false;  // the rest of a pipe that was split
    bool hasPlace = true;      // false: every coordinate is 0

    double length() const { return (ends[1].at - ends[0].at).length(); }
    bool isPipe() const { return type->smrtln == "Pipe"; }
};

// A support or a set of bolts.
struct Placed {
    const Record* record = nullptr;
    const standards::PartType* type = nullptr;
    HxGePoint3D at;
    std::size_t pipeline = 0;
};

struct Pipeline {
    const Record* record = nullptr;  // null: parts stand before any PIPELINE-REFERENCE
    std::string name;
    std::vector<const Record*> header;  // records of the first column that say more of it
    std::vector<Part> parts;
    std::vector<Placed> supports;
    std::vector<Placed> bolts;
    std::vector<HxGePoint3D> told;  // where the file says that the line ends or goes on elsewhere
};

struct File {
    std::string name;  // for messages
    std::string stem;  // of the file's name
    std::string text;
    std::vector<Record> records;
    Units units;
    std::vector<const Record*> header;  // what stands before the first pipeline
    std::vector<Pipeline> pipelines;
    std::map<std::string_view, std::string_view> materials;  // description by item code
};

// Files stay where they are: parts and records lead into them.
using Files = std::deque<File>;

// Reads a file's records into pipelines. `file.text` stands; everything else is filled, and views lead into it.
class Interpreter {
public:
    Interpreter(File& file, const standards::Settings& settings, SourceReport& report)
        : file_(&file), settings_(&settings), report_(&report) {}
    void run();

private:
    void readHeader();
    void readMaterials(std::size_t first);
    void readRecord(const Record& record);
    void beginPipeline(const Record& record);
    void readPart(const Record& record, const ComponentKind& kind);
    void readUnknown(const Record& record);
    void readPlace(const Record& record);
    void readLineEnd(const Record& record);
    std::optional<Part> makePart(const Record& record, const ComponentKind& kind);
    bool readEnds(Part& part);
    End readEnd(const Member& member, std::string_view symbolKey);
    standards::PipeSize sizeOf(const Member& member, std::string_view bore);
    void placeWithoutCoordinates(Part& part);
    Pipeline& current();
    void tell(const char* code, const Record& record, std::uint32_t line, std::string text, const char* outcome);

    File* file_;
    const standards::Settings* settings_;
    SourceReport* report_;
    std::optional<HxGePoint3D> lastEnd_;  // of the part before, for one without a place
    std::size_t order_ = 0;
};

}  // namespace plant::pcf
