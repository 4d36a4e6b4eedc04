#include "sources/json/writer.h"

#include "plant/refusal.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace plant {

namespace {

constexpr std::size_t pieceSize = std::size_t{1} << 20;

// The members of an object; those that a kind of call has follow its first row in the order of their enumeration.
enum : std::uint8_t {
    NoRow,
    In,
    Name,
    Node,
    Color,
    Available,
    Kind,
    Insulation,
    Attributes,
    Points,
    KeyPoints,
    Ends,
    Branches,
    Runs,
    Primitives,
    FirstText,
    FirstWhole = FirstText + static_cast<int>(TextMember::UnitText) + 1,
    FirstNumber = FirstWhole + static_cast<int>(WholeMember::NutNum) + 1,
    FirstVector = FirstNumber + static_cast<int>(NumberMember::Price) + 1,
    FirstReference = FirstVector + static_cast<int>(VectorMember::InsPoint) + 1,
    FirstList = FirstReference + static_cast<int>(ReferenceMember::Flange) + 1,
    RowCount = FirstList + static_cast<int>(ListMember::Subs) + 1
};

constexpr std::string_view openings[] = {
    "", ",\"in\":", ",\"name\":", ",\"node\":", ",\"color\":", ",\"available\":", ",\"kind\":", ",\"insulation\":",
    ",\"attrs\":", ",\"points\":", ",\"keyPoints\":", ",\"ends\":", ",\"branches\":", ",\"runs\":", ",\"primitives\":",
    // TextMember
    ",\"displayName\":", ",\"standard\":", ",\"objectName\":", ",\"no\":", ",\"type\":", ",\"stan\":", ",\"cname\":",
    ",\"spec\":", ",\"material\":", ",\"boltSpec\":", ",\"note\":", ",\"size\":", ",\"std\":", ",\"endType\":",
    ",\"rating\":", ",\"unit\":",
    // WholeMember
    ",\"insNo\":", ",\"refNo\":", ",\"unit\":", ",\"sortNo\":", ",\"boltNum\":", ",\"nutNum\":",
    // NumberMember
    ",\"weight\":", ",\"price\":",
    // VectorMember
    ",\"refVec\":", ",\"insVec\":", ",\"insPoint\":",
    // ReferenceMember
    ",\"owner\":", ",\"start\":", ",\"spec\":", ",\"bolts\":", ",\"supItem\":", ",\"bolt\":", ",\"nut\":",
    ",\"flange\":",
    // ListMember
    ",\"members\":", ",\"subs\":"};
static_assert(std::size(openings) == RowCount && RowCount <= 64);

template <typename Member>
std::uint8_t rowOf(int first, Member member) {
    return static_cast<std::uint8_t>(first + static_cast<int>(member));
}

constexpr std::string_view kindNames[] = {"",       "none", "pipe", "bend", "gasket", "virtualGasket",
                                          "flange", "hose", "boss", "olet", "nozzle", "valve"};
static_assert(std::size(kindNames) == static_cast<int>(PartKind::Valve) + 1);

void writeTriple(OutputText& text, const Triple& triple) {
    text.raw('[').numbers(triple[0], triple[1], triple[2]).raw(']');
}

}  // namespace

JsonModelWriter::JsonModelWriter(Sink sink, Rewrite rewrite) : sink_(std::move(sink)), rewrite_(std::move(rewrite)) {
    text_.raw("{\"format\":\"tessaro-plant\",\"version\":1");
}

// ---------------------------------------------------------------------------------------------------- before the
// objects

// Opens a section behind those before it; false when it is open.
bool JsonModelWriter::enter(Section section) {
    static constexpr std::string_view starts[] = {
        "", ",\n\"project\":{", ",\n\"attributeLabels\":{", ",\n\"databases\":[", ",\n\"objects\":[", ""};
    static constexpr std::string_view ends[] = {"", "}", "}", "]", "]", ""};
    if (section == section_ && section != Section::Project && section != Section::End) {
        return false;
    }
    if (section <= section_) {
        refuse("the project, labels, databases and objects are told in this order");
    }
    if (section >= Section::Objects && section_ < Section::Databases) {
        refuse("a model file has a database");
    }
    text_.raw(ends[static_cast<int>(section_)]).raw(starts[static_cast<int>(section)]);
    section_ = section;
    isFirst_ = true;
    return true;
}

void JsonModelWriter::separate() {
    text_.raw(isFirst_ ? "" : ",");
    isFirst_ = false;
}

void JsonModelWriter::optional(std::string_view name, const std::optional<std::string_view>& value) {
    if (value) {
        separate();
        text_.quoted(name).raw(':').quoted(*value);
    }
}

void JsonModelWriter::optional(std::string_view name, std::int64_t value) {
    if (value != 0) {
        separate();
        text_.quoted(name).raw(':').whole(value);
    }
}

void JsonModelWriter::items(std::string_view name, std::span<const ProjectFacts::Item> items) {
    if (items.empty()) {
        return;
    }
    separate();
    text_.quoted(name).raw(':');
    char before = '{';
    for (const ProjectFacts::Item& item : items) {
        text_.raw(before).quoted(item.key).raw(':').quoted(item.text);
        before = ',';
    }
    text_.raw('}');
}

void JsonModelWriter::project(const ProjectFacts& facts) {
    enter(Section::Project);
    optional("name", facts.name);
    optional("path", facts.path);
    optional("user", facts.user);
    optional("module", facts.module.value_or(0));
    optional("database", facts.database);
    items("designItems", facts.designItems);
    items("projectItems", facts.projectItems);
    optional("weldColor", facts.weldColor.value_or(0));
    optional("currentManager", facts.currentManager);
    optional("platformPath", facts.platformPath);
}

void JsonModelWriter::attributeLabel(std::string_view key, std::string_view label) {
    enter(Section::Labels);
    separate();
    text_.quoted(key).raw(':').quoted(label);
}

void JsonModelWriter::database(const DatabaseFacts& facts) {
    enter(Section::Databases);
    separate();
    text_.raw("{\"name\":").quoted(facts.name);
    optional("shortName", facts.shortName);
    if (facts.main) {
        text_.raw(",\"main\":true");
    }
    optional("root", facts.root);
    text_.raw('}');
    reserveIds(facts.root);
}

void JsonModelWriter::reserveIds(ObjectId upTo) {
    largestId_ = std::max(largestId_, upTo);
}

// --------------------------------------------------------------------------------------------------- members of an
// object

void JsonModelWriter::beginObject(ObjectId id, std::string_view className) {
    enter(Section::Objects);
    if (isObjectOpen_) {
        refuse("an object begins in another one");
    }
    text_.raw(isFirst_ ? "\n" : ",\n");
    isFirst_ = false;
    isObjectOpen_ = true;
    told_ = 0;
    objectStart_ = text_.size();
    reserveIds(id);
    text_.raw("{\"id\":").whole(id).raw(",\"class\":").quoted(className);
}

OutputText& JsonModelWriter::member(Row row) {
    if (!isObjectOpen_) [[unlikely]] {
        refuse("no object is open");
    }
    endList();
    const std::uint64_t bit = std::uint64_t{1} << row;
    if ((told_ & bit) != 0) [[unlikely]] {
        const std::string_view name = openings[row].substr(2, openings[row].size() - 4);
        refuse("\"" + std::string(name) + "\" of one object is told in two places");
    }
    told_ |= bit;
    return text_.raw(openings[row]);
}

void JsonModelWriter::openList(Row row) {
    member(row).raw('[');
    openList_ = row;
    isListEmpty_ = true;
}

// The array of a member: opens it, or goes on with it.
void JsonModelWriter::list(Row row) {
    if (openList_ != row) {
        openList(row);
    }
    text_.raw(isListEmpty_ ? "" : ",");
    isListEmpty_ = false;
}

// The list stands in the file, were it empty.
void JsonModelWriter::mention(Row row) {
    if ((told_ & std::uint64_t{1} << row) == 0) {
        openList(row);
    }
}

void JsonModelWriter::endList() {
    if (openList_ == NoRow) {
        return;
    }
    if (openList_ == Attributes) {
        attributes_.close();
    } else {
        endRun();
        text_.raw(']');
    }
    openList_ = NoRow;
}

void JsonModelWriter::endRun() {
    if (openList_ != Runs) {
        return;
    }
    if (attributes_.isOpen()) {
        attributes_.close();
    }
    text_.raw('}');
}

void JsonModelWriter::parent(ObjectId id) {
    member(In).whole(id);
}

void JsonModelWriter::name(std::string_view text) {
    member(Name).quoted(text);
}

void JsonModelWriter::nodeId(ObjectId id) {
    member(Node).whole(id);
}

void JsonModelWriter::color(std::int16_t index) {
    member(Color).whole(index);
}

void JsonModelWriter::available(bool value) {
    member(Available).raw(value ? "true" : "false");
}

void JsonModelWriter::kind(PartKind kind) {
    if (kind != PartKind::Default) {
        member(Kind).quoted(kindNames[static_cast<int>(kind)]);
    }
}

void JsonModelWriter::text(TextMember which, std::string_view value) {
    member(rowOf(FirstText, which)).quoted(value);
}

void JsonModelWriter::whole(WholeMember which, std::int64_t value) {
    member(rowOf(FirstWhole, which)).whole(value);
}

void JsonModelWriter::number(NumberMember which, double value) {
    member(rowOf(FirstNumber, which)).number(value);
}

void JsonModelWriter::vector(VectorMember which, const Triple& value) {
    writeTriple(member(rowOf(FirstVector, which)), value);
}

void JsonModelWriter::reference(ReferenceMember which, ObjectId id) {
    member(rowOf(FirstReference, which)).whole(id);
}

void JsonModelWriter::references(ListMember which, std::span<const ObjectId> ids) {
    member(rowOf(FirstList, which)).list(ids);
}

void JsonModelWriter::insulation(const InsulationFacts& facts) {
    member(Insulation).raw("{\"thickness\":").number(facts.thickness);
    optional("material", facts.material);
    optional("code", facts.code);
    text_.raw('}');
}

// ------------------------------------------------------------------------------------------------- records of an
// object

void JsonModelWriter::attribute(const AttributeFacts& facts) {
    if (openList_ != Attributes) {
        member(Attributes);
        openList_ = Attributes;
    }
    attributes_.add(facts);
}

void JsonModelWriter::point(const PointFacts& facts) {
    list(Points);
    text_.raw("{\"no\":").whole(facts.no).raw(",\"at\":");
    writeTriple(text_, facts.at);
    if (facts.flow != 0 || facts.saysFlow) {
        text_.raw(",\"flow\":").whole(facts.flow);
    }
    if (facts.to.size() == 1 && !facts.toIsArray) {
        text_.raw(",\"to\":").whole(facts.to[0]);
    } else if (!facts.to.empty() || facts.toIsArray) {
        text_.raw(",\"to\":").list(facts.to);
    }
    text_.raw('}');
}

void JsonModelWriter::keyPoints() {
    mention(KeyPoints);
}

void JsonModelWriter::keyPoint(std::int16_t no, const Triple& at) {
    list(KeyPoints);
    text_.raw("{\"no\":").whole(no).raw(",\"at\":");
    writeTriple(text_, at);
    text_.raw('}');
}

void JsonModelWriter::tubeEnd(const TubeEndFacts& facts) {
    list(Ends);
    text_.raw('{');
    isFirst_ = true;
    optional("size", facts.size);
    optional("endType", facts.endType);
    if (facts.outer) {
        separate();
        text_.raw("\"outer\":").number(*facts.outer);
    }
    if (facts.inner != 0) {
        separate();
        text_.raw("\"inner\":").number(facts.inner);
    }
    optional("section", facts.section);
    text_.raw('}');
    isFirst_ = false;
}

void JsonModelWriter::branch(std::span<const ObjectId> items) {
    list(Branches);
    text_.list(items);
}

void JsonModelWriter::run(std::string_view name, std::span<const ObjectId> items) {
    endRun();
    list(Runs);
    text_.raw("{\"name\":").quoted(name).raw(",\"items\":").list(items);
}

void JsonModelWriter::runAttribute(const AttributeFacts& facts) {
    if (openList_ != Runs) {
        refuse("an attribute of a run that was not told");
    }
    if (!attributes_.isOpen()) {
        text_.raw(",\"attrs\":");
    }
    attributes_.add(facts);
}

void JsonModelWriter::shape() {
    mention(Primitives);
}

void JsonModelWriter::primitive(const HextPrimary& primitive) {
    list(Primitives);
    primitives_.write(primitive);
    if (!rewrite_) {
        flushWhenFull();
    }
}

void JsonModelWriter::endObject() {
    if (!isObjectOpen_) {
        refuse("no object is open");
    }
    endList();
    text_.raw('}');
    isObjectOpen_ = false;
    if (rewrite_) {
        rewrite();
    }
    flushWhenFull();
}

void JsonModelWriter::rewrite() {
    object_ = text_.from(objectStart_);
    rewrite_(object_);
    text_.cutTo(objectStart_);
    text_.raw(object_);
}

void JsonModelWriter::finish() {
    if (isObjectOpen_) {
        refuse("an object is not complete");
    }
    enter(Section::Objects);
    enter(Section::End);
    text_.raw("}\n");
    flush();
}

void JsonModelWriter::flushWhenFull() {
    if (text_.size() >= pieceSize) {
        flush();
    }
}

void JsonModelWriter::flush() {
    failed_ = failed_ || !sink_(text_.view());
    text_.cutTo(0);
}

}  // namespace plant
