// Operations of specifications, bolts and nuts.
#include "plant/model/data.h"
#include "platform/objects.h"
#include "platform/smrtln.h"

using plant::Member;

namespace {

const plant::TubeEnd* endOf(const plant::ObjectData& data, int number) {
    const plant::Property* ends = data.find(Member::Ends);
    const bool exists = ends != nullptr && number >= 1 && static_cast<std::uint32_t>(number) <= ends->count;
    return exists ? ends->ends + (number - 1) : nullptr;
}

int wholeOf(const plant::ObjectData& data, Member member) {
    return static_cast<int>(data.whole(member));
}

}  // namespace

const char* HxDbTubeSpecification::getSize(int number) const {
    const plant::TubeEnd* end = endOf(*data_, number);
    return end != nullptr ? end->size : nullptr;
}
const char* HxDbTubeSpecification::getEndtype(int number) const {
    const plant::TubeEnd* end = endOf(*data_, number);
    return end != nullptr ? end->endType : nullptr;
}

bool smrtln::getOutDia(const char*, const HxDbTubeSpecification* specification, double& outer, double& inner,
                       int& section, int number, int) {
    const plant::TubeEnd* end = specification != nullptr ? endOf(specification->data(), number) : nullptr;
    outer = end != nullptr ? end->outer : 0;
    inner = end != nullptr ? end->inner : 0;
    section = end != nullptr ? end->section : 0;
    return end != nullptr && end->hasOuter;
}

const char* HxDbSupportItem::getType() const {
    return data_->text(Member::Type);
}
const char* HxDbSupportItem::getStan() const {
    return data_->text(Member::Stan);
}

const char* HextStanParts::getCname() const {
    return data_->text(Member::CName);
}
const char* HextStanParts::getType() const {
    return data_->text(Member::Type);
}
const char* HextStanParts::getSpec() const {
    return data_->text(Member::PartSpec);
}
const char* HextStanParts::getStan() const {
    return data_->text(Member::Stan);
}
const char* HextStanParts::getMaterial() const {
    return data_->text(Member::Material);
}
int HextStanParts::getUnit() const {
    return wholeOf(*data_, Member::UnitNumber);
}

const char* HextBolt::getBoltSpec() const {
    return data_->text(Member::BoltSpec);
}
const char* HextBolt::getBoltNote() const {
    return data_->text(Member::Note);
}
double HextBolt::getBoltWeight() const {
    return data_->number(Member::Weight);
}
double HextBolt::getBoltPrice() const {
    return data_->number(Member::Price);
}
int HextBolt::getBoltSortno() const {
    return wholeOf(*data_, Member::SortNo);
}

const char* HextNut::getNutNote() const {
    return data_->text(Member::Note);
}
double HextNut::getNutWeight() const {
    return data_->number(Member::Weight);
}
double HextNut::getNutPrice() const {
    return data_->number(Member::Price);
}
int HextNut::getNutSortno() const {
    return wholeOf(*data_, Member::SortNo);
}

int HxDbFlan2BoltNut::getBoltNum() const {
    return wholeOf(*data_, Member::BoltNum);
}
int HxDbFlan2BoltNut::getNutNum() const {
    return wholeOf(*data_, Member::NutNum);
}
HextBolt* HxDbFlan2BoltNut::getBolt() const {
    return HextBolt::cast(data_->reference(Member::Bolt));
}
const char* HxDbFlan2BoltNut::getFlanSize() const {
    return data_->text(Member::Size);
}
const char* HxDbFlan2BoltNut::getFlanStd() const {
    return data_->text(Member::Std);
}
const char* HxDbFlan2BoltNut::getFlanEndType() const {
    return data_->text(Member::EndType);
}
const char* HxDbFlan2BoltNut::getFlanRating() const {
    return data_->text(Member::Rating);
}
const char* HxDbFlan2BoltNut::getFlanUnit() const {
    return data_->text(Member::UnitText);
}
