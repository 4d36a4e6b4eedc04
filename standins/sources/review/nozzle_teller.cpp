#include "sources/review/nozzle_teller.h"

#include "sources/attributes/values.h"
#include "sources/review/part_teller.h"

namespace plant::review {

namespace {

constexpr std::string_view usualSpecification = "NOZZLE";
constexpr double usualLength = 100;

}  // namespace

void NozzleTeller::prepare(const Node& nozzle, const Facts& facts, std::string_view name, std::string_view equipment) {
    id_ = nozzle.id;
    name_ = name;
    equipment_ = equipment;
    const std::string_view own = specificationName(facts[Key::SpecificationPart]);
    specificationName_ = own.empty() ? usualSpecification : decoder_.decode(own);
    const auto bore = attributes::readBore(facts[facts.has(Key::Bore) ? Key::Bore : Key::ArriveBore]);
    size_ = bore && *bore > 0 ? shortNumber(*bore) : "";
    specification_ = specifications_->idOf(specificationName_, {2, {size_, size_, "", ""}, {"NONE", "FLRF", "", ""}});
    place(nozzle, facts);
}

// The face stands where the pipe begins, else where the nozzle says that it is.
void NozzleTeller::place(const Node& nozzle, const Facts& facts) {
    isPlaced_ = false;
    for (const Link& link : piping_->linksOf(id_)) {
        if (link.hasPlace) {
            face_ = link.place;
            isPlaced_ = true;
        }
    }
    if (const auto at = attributes::readPosition(facts[Key::Position]); at && !isPlaced_) {
        face_ = *at;
        isPlaced_ = true;
    }
    if (isPlaced_) {
        const auto orientation = attributes::readOrientation(facts[Key::Orientation]);
        const Vector along = orientation ? orientation->z : Vector::kZAxis;
        inner_ = face_ - along * attributes::readLength(facts[Key::Height]).value_or(usualLength);
        findInner(nozzle);
    }
}

// The end of the nozzle's neck that is farthest from its face.
void NozzleTeller::findInner(const Node& nozzle) {
    if (nozzle.group == rvm::noGroup) {
        return;
    }
    double farthest = samePlace;
    for (const LoosePrimitive& one : shapes_->loosePrimitives(nozzle.group)) {
        for (const Point& end : {one.from, one.to}) {
            if (one.isStraight && end.distanceTo(face_) > farthest) {
                farthest = end.distanceTo(face_);
                inner_ = end;
            }
        }
    }
}

void NozzleTeller::tellMembers() {
    builder_->text(TextMember::No, name_);
    builder_->reference(ReferenceMember::Spec, specification_);
}

void NozzleTeller::tellAttributes() {
    const std::pair<std::string_view, std::string> rows[] = {
        {"item", "NOZZLE"},
        {"itype", "RF"},
        {"smrtln", "Normal"},
        {"specname", specificationName_},
        {"specid", std::to_string(specification_)},
        {"skey", "NZFS"},
        {"eqno", equipment_},
        {"nozno", name_},
        {"end", "FLRF"},
        {"end1", "NONE"},
        {"end2", "FLRF"},
        {"size", size_},
        {"size1", size_},
        {"size2", size_},
        {"P1", isPlaced_ ? shortNumber(inner_.distanceTo(face_)) : ""},
        {"insul", "0"},
        {"minsul", "0"},
    };
    for (const auto& [key, value] : rows) {
        if (!value.empty()) {
            builder_->attribute(key, std::string_view(value));
        }
    }
}

void NozzleTeller::tellPoints() {
    if (!isPlaced_) {
        return;
    }
    std::vector<ObjectId> connected;
    for (const Link& link : piping_->linksOf(id_)) {
        connected.push_back(link.to);
    }
    const Point middle = inner_ + (face_ - inner_) / 2;
    builder_->point({.no = 0, .at = {middle.x, middle.y, middle.z}});
    builder_->point({.no = 1, .at = {inner_.x, inner_.y, inner_.z}, .flow = 1});
    builder_->point({.no = 2, .at = {face_.x, face_.y, face_.z}, .flow = 2, .to = connected});
}

}  // namespace plant::review
