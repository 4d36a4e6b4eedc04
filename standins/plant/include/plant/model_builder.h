// The one way into a plant model. A source (a reader of some file format, a generator) tells a builder what it finds,
// in the order in which it finds it; the builder knows no file format, and a source knows nothing of the model's
// memory.
//
// Two builders stand behind this interface: one makes a Model in memory (plant/building/memory_builder.h), one writes
// the text of a model file as it is told (sources/json/writer.h). A third that counts or filters may stand between a
// source and them.
//
// Order of calls: project, labels and databases stand outside of objects, first where a source can; objects are told
// each from beginObject to endObject, a parent before what stands under it; then finish. Several sources may be told
// into one builder, one behind the other; whoever started them calls finish. Within an object the calls stand in any
// order, but an attribute, point, key point, branch, run, tube end or primitive comes behind those of its kind that
// were told before it.
//
// Texts are UTF-8 and are copied; a view need not outlive its call. A text with a zero character is refused. Lengths
// are millimetres in world coordinates, angles as platform/primitives.h has them. References are ids: they may name
// objects that come later, and are resolved by finish.
//
// What cannot be taken is refused by an exception, plant::Refusal (plant/refusal.h): it says what is wrong, and gets
// its place from the source, which alone knows it. A builder that has refused something takes no further call.
#pragma once

#include "platform/primitives.h"

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

namespace plant {

using ObjectId = std::int64_t;  // 1 to 2^53 - 1; 0: none
using Triple = std::array<double, 3>;

// What the file says of the project; a member that is not there keeps the platform's default.
struct ProjectFacts {
    struct Item {
        std::string_view key;
        std::string_view text;
    };
    std::optional<std::string_view> name{};
    std::optional<std::string_view> path{};
    std::optional<std::string_view> user{};
    std::optional<int> module{};  // 48, 65 or 73
    std::optional<std::string_view> database{};
    std::span<const Item> designItems{};
    std::span<const Item> projectItems{};
    std::optional<int> weldColor{};  // 1 to 255
    ObjectId currentManager = 0;
    std::optional<std::string_view> platformPath{};
};

struct DatabaseFacts {
    std::string_view name{};                      // unique
    std::optional<std::string_view> shortName{};  // default: the name
    bool main = false;                            // of one at most; the first one is the main one when none says so
    ObjectId root = 0;                            // 0: the database holds no data
};

struct InsulationFacts {
    double thickness = 0;
    std::optional<std::string_view> material{};
    std::optional<std::string_view> code{};
};

// One end of a tube by its catalogue entry; the first one told is end 1.
struct TubeEndFacts {
    std::optional<std::string_view> size{};
    std::optional<std::string_view> endType{};
    std::optional<double> outer{};
    double inner = 0;
    std::int32_t section = 0;
};

// One value of an attribute. `type` is one of KVParams' types, 0 for the one that follows from the value: text 4, whole
// numbers 5 (7 beyond 32 bits), other numbers 2, points 3.
struct AttributeFacts {
    enum class Form : std::uint8_t { Text, Whole, Real, Point };
    std::string_view key{};
    Form form = Form::Text;
    std::int8_t type = 0;
    std::string_view text{};
    std::int64_t whole = 0;
    double number = 0;
    Triple point{};
    std::string_view description{};  // of this value alone; empty: the key's label
};

// What hangs at a connection point. One id is told as it stands; several are an array in the model file.
struct PointFacts {
    std::int16_t no = 0;  // unique in the object
    Triple at{};
    std::int8_t flow = 0;   // 0, 1 (in) or 2 (out)
    bool saysFlow = false;  // also where it is 0
    std::span<const ObjectId> to{};
    bool toIsArray = false;  // also where it is one id
};

// The kinds that smrtln::isPipe and its like tell apart.
enum class PartKind : std::uint8_t {
    Default,  // by class and item
    None,
    Pipe,
    Bend,
    Gasket,
    VirtualGasket,
    Flange,
    Hose,
    Boss,
    Olet,
    Nozzle,
    Valve
};

// Members that only some classes of objects have; which, and what their values may be, docs/model-format.md says.
enum class TextMember : std::uint8_t {
    DisplayName,
    Standard,
    ObjectName,
    No,
    Type,
    Stan,
    CName,
    PartSpec,  // "spec" of bolts and nuts
    Material,
    BoltSpec,
    Note,
    Size,
    Std,
    EndType,
    Rating,
    UnitText,  // "unit" of the bolts of a flange
};
enum class WholeMember : std::uint8_t { InsNo, RefNo, UnitNumber, SortNo, BoltNum, NutNum };
enum class NumberMember : std::uint8_t { Weight, Price };
enum class VectorMember : std::uint8_t { RefVec, InsVec, InsPoint };
enum class ReferenceMember : std::uint8_t { Owner, Start, Spec, Bolts, SupItem, Bolt, Nut, Flange };
enum class ListMember : std::uint8_t { Members, Subs };

class ModelBuilder {
public:
    virtual ~ModelBuilder() = default;
    ModelBuilder(const ModelBuilder&) = delete;
    ModelBuilder& operator=(const ModelBuilder&) = delete;

    virtual void project(const ProjectFacts& facts) = 0;
    // The label (description) of an attribute key; each key once.
    virtual void attributeLabel(std::string_view key, std::string_view label) = 0;
    virtual void database(const DatabaseFacts& facts) = 0;

    // An id above all that were told or handed out, for sources whose objects have none. A source that mixes its own
    // ids with these tells its own largest one first, by reserveIds.
    virtual ObjectId newId() = 0;
    virtual void reserveIds(ObjectId upTo) = 0;

    virtual void beginObject(ObjectId id, std::string_view className) = 0;
    // The object under which this one stands in the tree; told earlier. Brothers stand in the order of these calls.
    virtual void parent(ObjectId id) = 0;
    virtual void name(std::string_view text) = 0;
    virtual void nodeId(ObjectId id) = 0;
    virtual void color(std::int16_t index) = 0;  // 0 to 255
    virtual void available(bool value) = 0;
    virtual void kind(PartKind kind) = 0;
    virtual void text(TextMember member, std::string_view value) = 0;
    virtual void whole(WholeMember member, std::int64_t value) = 0;
    virtual void number(NumberMember member, double value) = 0;
    virtual void vector(VectorMember member, const Triple& value) = 0;
    virtual void reference(ReferenceMember member, ObjectId id) = 0;
    virtual void references(ListMember member, std::span<const ObjectId> ids) = 0;
    virtual void insulation(const InsulationFacts& facts) = 0;

    // Records of one kind, told one behind the other. A key may repeat.
    virtual void attribute(const AttributeFacts& facts) = 0;
    virtual void point(const PointFacts& facts) = 0;
    // The object has key points of its own in the place of its points, were it none; told by the first one, too.
    virtual void keyPoints() = 0;
    virtual void keyPoint(std::int16_t no, const Triple& at) = 0;
    virtual void tubeEnd(const TubeEndFacts& facts) = 0;
    // A branch of a pipeline in connection order.
    virtual void branch(std::span<const ObjectId> items) = 0;
    // A run of a pipeline, its name unique there; and an attribute of the run told last.
    virtual void run(std::string_view name, std::span<const ObjectId> items) = 0;
    virtual void runAttribute(const AttributeFacts& facts) = 0;

    // The object has a shape, were it an empty one; told by the first primitive, too.
    virtual void shape() = 0;
    // A primitive of any class that platform/primitives.h names, copied. Its material, where it has one, is UTF-8.
    virtual void primitive(const HextPrimary& primitive) = 0;
    virtual void endObject() = 0;

    // Resolves references and checks what only the whole can show. Nothing is told behind it.
    virtual void finish() = 0;

    // Shorter forms of the commonest calls.
    void attribute(std::string_view key, std::string_view text) { attribute({.key = key, .text = text}); }
    void attribute(std::string_view key, double number) {
        attribute({.key = key, .form = AttributeFacts::Form::Real, .number = number});
    }
    void attribute(std::string_view key, std::int64_t whole) {
        attribute({.key = key, .form = AttributeFacts::Form::Whole, .whole = whole});
    }

protected:
    ModelBuilder() = default;
};

}  // namespace plant
