#include "sources/pcf/plant_teller.h"

#include <algorithm>
#include <fmt/core.h>

namespace plant::pcf {

namespace {

constexpr double kilogramsOfCubicMillimetre = 7.85e-6;
constexpr double quarterCircle = 0.7853981633974483;

}  // namespace

ObjectId Library::specification(const std::string& name, const std::vector<SpecificationEnd>& ends) {
    std::string key = name;
    for (const SpecificationEnd& end : ends) {
        key += fmt::format("|{}|{}|{}", end.size.dn, end.size.outer, end.endType);
    }
    ObjectId& id = specifications_[key];
    if (id != 0) {
        return id;
    }
    id = builder_->newId();
    builder_->beginObject(id, "HxDbTubeSpecification");
    builder_->name(name);
    for (const SpecificationEnd& end : ends) {
        const std::string size = fmt::format("{}", end.size.dn);
        builder_->tubeEnd({.size = size,
                           .endType = end.endType,
                           .outer = end.size.outer,
                           .inner = std::max(0.0, end.size.outer - 2 * end.size.wall),
                           .section = 1});
    }
    builder_->endObject();
    return id;
}

Library::BoltIds Library::bolts(const BoltKey& key) {
    const auto known = bolts_.find(key);
    if (known != bolts_.end()) {
        return known->second;
    }
    const BoltIds ids{builder_->newId(), builder_->newId(), builder_->newId()};
    const std::string size = fmt::format("M{:g}x{:g}", key.diameter, key.length);
    builder_->beginObject(ids.bolt, "HextBolt");
    builder_->text(TextMember::CName, "bolt");
    builder_->text(TextMember::Type, "BOLT");
    builder_->text(TextMember::PartSpec, size);
    builder_->whole(WholeMember::UnitNumber, 1);
    builder_->text(TextMember::BoltSpec, size);
    builder_->number(NumberMember::Weight,
                     key.diameter * key.diameter * quarterCircle * key.length * kilogramsOfCubicMillimetre);
    builder_->endObject();
    builder_->beginObject(ids.nut, "HextNut");
    builder_->text(TextMember::CName, "nut");
    builder_->text(TextMember::Type, "NUT");
    builder_->text(TextMember::PartSpec, fmt::format("M{:g}", key.diameter));
    builder_->whole(WholeMember::UnitNumber, 1);
    builder_->endObject();
    builder_->beginObject(ids.flange, "HxDbFlan2BoltNut");
    builder_->whole(WholeMember::BoltNum, key.count);
    builder_->whole(WholeMember::NutNum, key.count);
    builder_->reference(ReferenceMember::Bolt, ids.bolt);
    builder_->text(TextMember::Size, fmt::format("{}", key.dn));
    builder_->text(TextMember::EndType, "FLRF");
    builder_->text(TextMember::UnitText, "1");
    builder_->endObject();
    bolts_.emplace(key, ids);
    return ids;
}

ObjectId Library::supportItem(const std::string& type) {
    ObjectId& id = supportItems_[type];
    if (id == 0) {
        id = builder_->newId();
        builder_->beginObject(id, "HxDbSupportItem");
        builder_->text(TextMember::Type, type);
        builder_->endObject();
    }
    return id;
}

}  // namespace plant::pcf
