#include "generator/telling/specs.h"

#include "generator/telling/text_line.h"

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

Library::Library(ModelBuilder& model)
    : model_(&model), specifications_(specificationCount), bolts_(static_cast<std::size_t>(classCount) * sizeCount),
      supportItems_(supportKinds) {}

Id Library::specification(int pipingClass, Ends ends, Layout layout, int size1, int size2) {
    const std::size_t index = indexOf(pipingClass, ends, layout, size1, size2);
    const Id id = firstSpecification + static_cast<Id>(index);
    if (!specifications_[index]) {
        specifications_[index] = true;
        tellSpecification(id, pipingClass, ends, layout, {size1, size2});
    }
    return id;
}

void Library::tellSpecification(Id id, int pipingClass, Ends ends, Layout layout, const int (&sizes)[2]) {
    const PipingClass& type = pipingClasses[pipingClass];
    model_->beginObject(id, "HxDbTubeSpecification");
    model_->name(type.name);
    const int count = endsOf(ends, layout);
    for (int end = 0; end < count; ++end) {
        const PipeSize& size = pipeSizes[sizeAtEnd(layout, sizes[0], sizes[1], end)];
        const TextLine dn(size.dn);
        model_->tubeEnd({.size = dn,
                         .endType = row(ends).ends[end],
                         .outer = thousandths(size.outer),
                         .inner = thousandths(size.outer - 2 * wallOf(type, size)),
                         .section = 1});
    }
    model_->endObject();
}

Library::BoltIds Library::bolts(int pipingClass, int size) {
    const int index = pipingClass * sizeCount + size;
    const Id first = firstBolt + 3 * index;
    const BoltIds ids{first, first + 1, first + 2};
    if (!bolts_[static_cast<std::size_t>(index)]) {
        bolts_[static_cast<std::size_t>(index)] = true;
        const std::int64_t sortNo = ids.bolt - firstBolt + 1;
        tellBolt(ids.bolt, size, sortNo);
        tellNut(ids.nut, size, sortNo + 1);
        tellBoltedFlange(ids, pipingClass, size);
    }
    return ids;
}

void Library::tellBolt(Id id, int size, std::int64_t sortNo) {
    const auto& flange = pipeSizes[size].flange;
    const double diameter = flange.bolt;
    const int length = static_cast<int>(2 * flange.thickness) + 2 * flange.bolt;
    const TextLine spec("M", flange.bolt, "x", length);
    model_->beginObject(id, "HextBolt");
    model_->text(TextMember::Standard, "BOLT");
    model_->text(TextMember::CName, utf8(u8"六角头螺栓"));
    model_->text(TextMember::Type, "HEXBOLT");
    model_->text(TextMember::PartSpec, spec);
    model_->text(TextMember::Stan, "GB/T 5782");
    model_->text(TextMember::Material, "35");
    model_->whole(WholeMember::UnitNumber, 1);
    model_->text(TextMember::BoltSpec, spec);
    model_->number(NumberMember::Weight, thousandths(diameter * diameter * length * 6.2e-6));
    model_->number(NumberMember::Price, thousandths(diameter * 0.15));
    model_->whole(WholeMember::SortNo, sortNo);
    model_->endObject();
}

void Library::tellNut(Id id, int size, std::int64_t sortNo) {
    const double diameter = pipeSizes[size].flange.bolt;
    model_->beginObject(id, "HextNut");
    model_->text(TextMember::Standard, "NUT");
    model_->text(TextMember::CName, utf8(u8"六角螺母"));
    model_->text(TextMember::Type, "HEXNUT");
    model_->text(TextMember::PartSpec, TextLine("M", pipeSizes[size].flange.bolt));
    model_->text(TextMember::Stan, "GB/T 6170");
    model_->text(TextMember::Material, "25");
    model_->whole(WholeMember::UnitNumber, 1);
    model_->number(NumberMember::Weight, thousandths(diameter * diameter * diameter * 8e-6));
    model_->number(NumberMember::Price, thousandths(diameter * 0.04));
    model_->whole(WholeMember::SortNo, sortNo);
    model_->endObject();
}

void Library::tellBoltedFlange(const BoltIds& ids, int pipingClass, int size) {
    const int bolts = pipeSizes[size].flange.bolts;
    model_->beginObject(ids.flange, "HxDbFlan2BoltNut");
    model_->whole(WholeMember::BoltNum, bolts);
    model_->whole(WholeMember::NutNum, bolts);
    model_->reference(ReferenceMember::Bolt, ids.bolt);
    model_->text(TextMember::Size, TextLine(pipeSizes[size].dn));
    model_->text(TextMember::Std, "HG/T 20592");
    model_->text(TextMember::EndType, "FLRF");
    model_->text(TextMember::Rating, pipingClasses[pipingClass].rating);
    model_->text(TextMember::UnitText, "1");
    model_->endObject();
}

Id Library::supportItem(int kind) {
    const Id id = firstSupportItem + kind;
    if (!supportItems_[static_cast<std::size_t>(kind)]) {
        supportItems_[static_cast<std::size_t>(kind)] = true;
        model_->beginObject(id, "HxDbSupportItem");
        model_->text(TextMember::Type, supportKindName(kind));
        model_->text(TextMember::Stan, supportStandard);
        model_->endObject();
    }
    return id;
}

}  // namespace plant::generator
