// Operations of connected objects.
#include "plant/model/data.h"
#include "platform/objects.h"
#include "tolmar/text.h"

using plant::Connection;
using plant::Member;
using plant::Property;

namespace {

HxGePoint3D pointOf(const plant::ObjectData& data, Member member, int otherwise) {
    if (const Property* given = data.find(member)) {
        return {given->vector[0], given->vector[1], given->vector[2]};
    }
    for (const HxDbSmrtlnPoint& point : data.pointSpan()) {
        if (point.number() == otherwise) {
            return point.getCoord();
        }
    }
    return {};
}

HxGeVector3D vectorOf(const plant::ObjectData& data, Member member, const HxGeVector3D& otherwise) {
    const Property* given = data.find(member);
    return given != nullptr ? HxGeVector3D(given->vector[0], given->vector[1], given->vector[2]) : otherwise;
}

constexpr int usualInsNo = 1;
constexpr int usualRefNo = 2;
constexpr HxGeVector3D usualRefVec{1, 0, 0};
constexpr HxGeVector3D usualInsVec{0, 0, 1};

}  // namespace

short HxDbSmrtlnEntity::getColorIdx() const {
    return data_->color;
}
void HxDbSmrtlnEntity::setColorIdx(short index) {
    data_->color = index;
}
const char* HxDbSmrtlnEntity::getObjectName() const {
    return data_->text(Member::ObjectName);
}

void HxDbSmrtlnEntity::getAllConnObject(std::vector<HxDbObject*>& out) const {
    out.clear();
    for (const Connection& connection : data_->connectionSpan()) {
        HxDbObject* object = connection.repeated ? nullptr : connection.to.object->opened();
        if (object != nullptr) {
            out.push_back(object);
        }
    }
}

HxDbSmrtlnEntity* HxDbSmrtlnEntity::getConnSmrtln(int number, int) const {
    for (const Connection& connection : data_->connectionSpan()) {
        if (connection.number == number && connection.to.object->available) {
            return HxDbSmrtlnEntity::cast(&connection.to.object->object());
        }
    }
    return nullptr;
}

int HxDbSmrtlnEntity::getConnNoOfSmrtln(const HxDbObject* other, int) const {
    for (const Connection& connection : data_->connectionSpan()) {
        if (&connection.to.object->object() == other) {
            return connection.number;
        }
    }
    return 0;
}

const HxDbSmrtlnPoint* HxDbSmrtlnEntity::getPointOfNo(int number, int) const {
    for (const HxDbSmrtlnPoint& point : data_->pointSpan()) {
        if (point.number() == number) {
            return &point;
        }
    }
    return nullptr;
}

HxGePoint3D HxDbSmrtlnEntity::getCoordOfNo(int number) const {
    const HxDbSmrtlnPoint* point = getPointOfNo(number);
    return point != nullptr ? point->getCoord() : HxGePoint3D();
}

Plant::Flow HxDbSmrtlnEntity::getFlow(int number) const {
    const HxDbSmrtlnPoint* point = getPointOfNo(number);
    return point != nullptr ? point->getFlow() : 0;
}

void HxDbSmrtlnEntity::getKeyPoints(std::vector<std::pair<short, HxGePoint3D>>& out) const {
    out.clear();
    const Property* given = data_->find(Member::KeyPoints);
    const std::span<const HxDbSmrtlnPoint> points =
        given != nullptr ? std::span(given->points, given->count) : data_->pointSpan();
    for (const HxDbSmrtlnPoint& point : points) {
        out.emplace_back(point.number(), point.getCoord());
    }
}

std::string HxDbTubeModel::getSmrtlnType() const {
    const char* type = data_->attributeText("smrtln");
    return tolmar::textOrEmpty(type);
}
int HxDbTubeModel::getInsNo() const {
    return static_cast<int>(data_->whole(Member::InsNo, usualInsNo));
}
int HxDbTubeModel::getRefNo() const {
    return static_cast<int>(data_->whole(Member::RefNo, usualRefNo));
}
HxGePoint3D HxDbTubeModel::getInsPnt() const {
    return pointOf(*data_, Member::InsPoint, getInsNo());
}

HxGePoint3D HxDbTubeGeneral::getInspt() const {
    return getInsPnt();
}
HxGeVector3D HxDbTubeGeneral::getInsvec() const {
    return vectorOf(*data_, Member::InsVec, usualInsVec);
}
HxGeVector3D HxDbTubeGeneral::getRefvec() const {
    return vectorOf(*data_, Member::RefVec, usualRefVec);
}

const char* HxDbBalloon::getNo() const {
    return data_->text(Member::No);
}
const char* HxDbNozzleModel::getNo() const {
    return data_->text(Member::No);
}
const char* HxDbAxissLine::getNo() const {
    return data_->text(Member::No);
}

const char* HxDbTubeModelSpec::getSpecName() const {
    return data_->attributeText("specname");
}
HxGeVector3D HxDbTubeModelSpec::getRefVec() const {
    return vectorOf(*data_, Member::RefVec, usualRefVec);
}

// The attribute holds the id as text, read as a number with a fraction and cut.
HxDbTubeSpecification* HxDbTubeModelSpec::getSpec() const {
    if (data_->find(Member::Spec) != nullptr) {
        return HxDbTubeSpecification::cast(data_->reference(Member::Spec));
    }
    const std::int64_t id = plant::idOfText(data_->attributeText("specid"));
    return id != 0 ? HxDbTubeSpecification::cast(data_->model->find(id)) : nullptr;
}

HxDbSupportItem* HxDbSupportModel::getSupItem() const {
    return HxDbSupportItem::cast(data_->reference(Member::SupItem));
}
const char* HxDbSupportModel::getSupNo() const {
    return data_->text(Member::No);
}

HextBolt* HxDbBoltNutModel::getBolt() const {
    return HextBolt::cast(data_->reference(Member::Bolt));
}
HextNut* HxDbBoltNutModel::getNut() const {
    return HextNut::cast(data_->reference(Member::Nut));
}
HxDbFlan2BoltNut* HxDbBoltNutModel::getFlanIdx() const {
    return HxDbFlan2BoltNut::cast(data_->reference(Member::Flange));
}
