#include "generator/specs.h"

namespace plant::generator {

namespace {

constexpr Id firstSpecification = 1;
constexpr Id firstBolt = 80001;
constexpr Id firstSupportItem = 90001;
constexpr std::size_t specificationCount =
    static_cast<std::size_t>(classCount) * endsCount * layoutCount * sizeCount * sizeCount;
static_assert(specificationCount < firstBolt && firstBolt + 3 * classCount * sizeCount < firstSupportItem);

constexpr const char* supportKindNames[Library::supportKinds] = {"SHOE", "HANGER", "GUIDE"};

std::size_t indexOf(int pipingClass, Ends ends, Layout layout, int size1, int size2) {
    int index = pipingClass;
    index = index * endsCount + static_cast<int>(ends);
    index = index * layoutCount + static_cast<int>(layout);
    index = index * sizeCount + size1;
    return static_cast<std::size_t>(index * sizeCount + size2);
}

// Number of ends that a specification tells.
int endsOf(Ends ends, Layout layout) {
    const bool two = layout == Layout::Reduced;
    const bool three = layout == Layout::ReducedTee;
    return two ? 2 : three ? 3 : row(ends).count;
}

double wallOf(const PipingClass& type, const PipeSize& size) {
    return size.wall * type.wallFactor;
}

}  // namespace

int sizeAtEnd(Layout layout, int size1, int size2, int end) {
    constexpr int firstOfSecond[layoutCount] = {4, 1, 2, 2};
    return end < firstOfSecond[static_cast<int>(layout)] ? size1 : size2;
}

const char* supportKindName(int kind) {
    return supportKindNames[kind];
}

Library::Library(Output& out)
    : out_(&out), specifications_(specificationCount), bolts_(static_cast<std::size_t>(classCount) * sizeCount),
      supportItems_(supportKinds) {}

Output& Library::begin(Id id, std::string_view className) {
    out_->beginObject();
    return out_->text("{\"id\":").whole(id).text(",\"class\":\"").text(className).text("\"");
}

Id Library::specification(int pipingClass, Ends ends, Layout layout, int size1, int size2) {
    const std::size_t index = indexOf(pipingClass, ends, layout, size1, size2);
    const Id id = firstSpecification + static_cast<Id>(index);
    if (!specifications_[index]) {
        specifications_[index] = true;
        writeSpecification(id, pipingClass, ends, layout, {size1, size2});
    }
    return id;
}

void Library::writeSpecification(Id id, int pipingClass, Ends ends, Layout layout, const int (&sizes)[2]) {
    const PipingClass& type = pipingClasses[pipingClass];
    Output& out = begin(id, "HxDbTubeSpecification");
    out.member("name", type.name).text(",\"ends\":[");
    const int count = endsOf(ends, layout);
    for (int end = 0; end < count; ++end) {
        const PipeSize& size = pipeSizes[sizeAtEnd(layout, sizes[0], sizes[1], end)];
        out.text(end == 0 ? "{\"size\":\"" : ",{\"size\":\"").whole(size.dn).text("\"");
        out.member("endType", row(ends).ends[end]).text(",\"outer\":").number(size.outer);
        out.text(",\"inner\":").number(size.outer - 2 * wallOf(type, size)).text(",\"section\":1}");
    }
    out.text("]}");
}

Library::BoltIds Library::bolts(int pipingClass, int size) {
    const int index = pipingClass * sizeCount + size;
    const Id first = firstBolt + 3 * index;
    const BoltIds ids{first, first + 1, first + 2};
    if (!bolts_[static_cast<std::size_t>(index)]) {
        bolts_[static_cast<std::size_t>(index)] = true;
        writeBolts(ids, pipingClass, size);
    }
    return ids;
}

void Library::writeBolts(const BoltIds& ids, int pipingClass, int size) {
    const auto& flange = pipeSizes[size].flange;
    const double diameter = flange.bolt;
    const int length = static_cast<int>(2 * flange.thickness) + 2 * flange.bolt;
    const std::int64_t sortNo = ids.bolt - firstBolt + 1;
    begin(ids.bolt, "HextBolt").member("standard", "BOLT").member("cname", utf8(u8"六角头螺栓"));
    out_->member("type", "HEXBOLT").text(",\"spec\":\"M").whole(flange.bolt).text("x").whole(length).text("\"");
    out_->member("stan", "GB/T 5782").member("material", "35").member("unit", 1);
    out_->text(",\"boltSpec\":\"M").whole(flange.bolt).text("x").whole(length);
    out_->text("\",\"weight\":").number(diameter * diameter * length * 6.2e-6);
    out_->text(",\"price\":").number(diameter * 0.15).member("sortNo", sortNo).text("}");
    begin(ids.nut, "HextNut").member("standard", "NUT").member("cname", utf8(u8"六角螺母"));
    out_->member("type", "HEXNUT").text(",\"spec\":\"M").whole(flange.bolt).text("\"").member("stan", "GB/T 6170");
    out_->member("material", "25").member("unit", 1).text(",\"weight\":").number(diameter * diameter * diameter * 8e-6);
    out_->text(",\"price\":").number(diameter * 0.04).member("sortNo", sortNo + 1).text("}");
    begin(ids.flange, "HxDbFlan2BoltNut").member("boltNum", flange.bolts).member("nutNum", flange.bolts);
    out_->member("bolt", ids.bolt).memberAsText("size", pipeSizes[size].dn).member("std", "HG/T 20592");
    out_->member("endType", "FLRF").member("rating", pipingClasses[pipingClass].rating).member("unit", "1").text("}");
}

Id Library::supportItem(int kind) {
    const Id id = firstSupportItem + kind;
    if (!supportItems_[static_cast<std::size_t>(kind)]) {
        supportItems_[static_cast<std::size_t>(kind)] = true;
        begin(id, "HxDbSupportItem").member("type", supportKindName(kind)).member("stan", supportStandard).text("}");
    }
    return id;
}

}  // namespace plant::generator
