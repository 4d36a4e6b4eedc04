// Writes the text of a model file (docs/model-format.md) as a source tells it.
//
// Text leaves through a sink in pieces of about 1 MiB, so memory does not grow with the plant. Members stand in the
// order in which they were told; what was not told, and what its record says is absent, is left out. Numbers are
// written as sources/json/number_text.h has it, texts as UTF-8 with quotes, backslashes and control characters escaped,
// primitives as sources/json/primitive_writer.h has it.
//
// It refuses (plant::Refusal) only what would make a text that is no model file: a project, label or database behind
// the first object, a member told twice of one object, a list whose records do not stand together, numbers that are not
// finite, texts that are not UTF-8 or hold a zero character. References are not followed.
#pragma once

#include "plant/model_builder.h"
#include "sources/json/writing/attributes.h"
#include "sources/json/writing/output_text.h"
#include "sources/json/writing/primitives.h"

#include <functional>
#include <string>

namespace plant {

class JsonModelWriter final : public ModelBuilder {
public:
    // Takes a piece of text; false when it could not. Nothing is given to it after that.
    using Sink = std::function<bool(std::string_view piece)>;
    // Gets the text of each object, from brace to brace, and may put another in its place.
    using Rewrite = std::function<void(std::string& object)>;

    explicit JsonModelWriter(Sink sink, Rewrite rewrite = {});

    // The sink refused something. A source may go on telling, to no effect.
    bool failed() const { return failed_; }

    using ModelBuilder::attribute;
    void project(const ProjectFacts& facts) override;
    void attributeLabel(std::string_view key, std::string_view label) override;
    void database(const DatabaseFacts& facts) override;
    ObjectId newId() override { return ++largestId_; }
    void reserveIds(ObjectId upTo) override;
    void beginObject(ObjectId id, std::string_view className) override;
    void parent(ObjectId id) override;
    void name(std::string_view text) override;
    void nodeId(ObjectId id) override;
    void color(std::int16_t index) override;
    void available(bool value) override;
    void kind(PartKind kind) override;
    void text(TextMember member, std::string_view value) override;
    void whole(WholeMember member, std::int64_t value) override;
    void number(NumberMember member, double value) override;
    void vector(VectorMember member, const Triple& value) override;
    void reference(ReferenceMember member, ObjectId id) override;
    void references(ListMember member, std::span<const ObjectId> ids) override;
    void insulation(const InsulationFacts& facts) override;
    void attribute(const AttributeFacts& facts) override;
    void point(const PointFacts& facts) override;
    void keyPoints() override;
    void keyPoint(std::int16_t no, const Triple& at) override;
    void tubeEnd(const TubeEndFacts& facts) override;
    void branch(std::span<const ObjectId> items) override;
    void run(std::string_view name, std::span<const ObjectId> items) override;
    void runAttribute(const AttributeFacts& facts) override;
    void shape() override;
    void primitive(const HextPrimary& primitive) override;
    void endObject() override;
    void finish() override;

private:
    enum class Section : std::uint8_t { Head, Project, Labels, Databases, Objects, End };
    // A row of the table of an object's members.
    using Row = std::uint8_t;

    bool enter(Section section);
    OutputText& member(Row row);
    void openList(Row row);
    void list(Row row);
    void mention(Row row);
    void endList();
    void endRun();
    void separate();
    void optional(std::string_view name, const std::optional<std::string_view>& value);
    void optional(std::string_view name, std::int64_t value);
    void items(std::string_view name, std::span<const ProjectFacts::Item> items);
    void rewrite();
    void flush();
    void flushWhenFull();

    Sink sink_;
    Rewrite rewrite_;
    OutputText text_;
    AttributeWriter attributes_{text_};
    PrimitiveWriter primitives_{text_};
    std::string object_;
    Section section_ = Section::Head;
    bool isObjectOpen_ = false;
    bool isFirst_ = true;  // in the section or record
    Row openList_ = 0;     // 0: none
    bool isListEmpty_ = true;
    std::uint64_t told_ = 0;  // a bit for each row
    std::size_t objectStart_ = 0;
    ObjectId largestId_ = 0;
    bool failed_ = false;
};

}  // namespace plant
