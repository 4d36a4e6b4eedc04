#include "hextinterface/manager/names/owners.h"

#include "frame/exceptions.h"
#include "hextinterface/manager/register/cleaned_texts.h"
#include "hextinterface/manager/register/names.h"
#include "platform/attribute_cache.h"
#include "platform/hxcom.h"
#include "tolmar/color.h"
#include "tolmar/text.h"

#include <iterator>

namespace {

struct DbWords {
    const char* title;
    const char* zone;
};
// By the value of ExportDb.
constexpr DbWords dbWords[] = {
    {"Cata", "CATA"},      {"Spec", "SPEC"},
    {"Equip", "EQUIP"},    {"EquipStru", "EQUIP_STRUCTURE"},
    {"Supp", "SUPPORT"},   {"EquipSupp", "EQUIP_SUPPORT"},
    {"Pipe", "PIPE_LINE"}, {"EquipBase", "EQUIP_BASE"},
    {"Common", ""},
};

const DbWords& wordsOf(ExportDb category) {
    static constexpr DbWords none = {"", ""};
    const auto number = static_cast<std::size_t>(category);
    return number < std::size(dbWords) ? dbWords[number] : none;
}

std::string displayNameOf(const HxDbObject* object) {
    return object != nullptr ? tolmar::textOrEmpty(object->getDisplayName()) : "";
}

std::string cleaned(std::string text) {
    cleanName(text);
    return text;
}

const std::string& ownerName(naming::UniqueTexts& names, const HxDbObject* owner, const char* prefix,
                             int& sharedNumber) {
    const HxDbObjectId id = naming::idOf(owner);
    if (const std::string* known = names.find(id)) {
        return *known;
    }
    std::string text = prefix + displayNameOf(owner);
    naming::removeBlanks(text);
    return names.add(id, std::move(text), "", sharedNumber);
}

}  // namespace

const std::string& OwnerNames::getPipeName(const HxDbObject* pipeline) {
    if (pipeline == nullptr) {
        return naming::noName;
    }
    const HxDbObjectId id = pipeline->objectId();
    const std::string* known = pipes_.find(id);
    return known != nullptr ? *known : pipes_.add(id, std::string(getBomValue(pipeline, "lineno")), "_", sharedNumber_);
}

const std::string& OwnerNames::getSiteName(const HxDbObject* site) {
    return ownerName(sites_, site, "ORNA_SITE_", sharedNumber_);
}

const std::string& OwnerNames::getZoneName(const HxDbObject* zone) {
    return ownerName(zones_, zone, "ORNA_ZONE_", sharedNumber_);
}

std::string OwnerNames::getZoneNameOf(const HxDbObject* manager, const std::string& fallback) {
    HextSite* site = nullptr;
    HextZone* zone = nullptr;
    hxcom::getSizeZone(manager, site, zone);
    return zone != nullptr ? getZoneName(zone) : fallback;
}

std::string OwnerNames::getDbZoneName(ExportDb category) const {
    return std::string("ZONE_") + wordsOf(category).zone;
}

std::string OwnerNames::getDbTitle(ExportDb category) const {
    return wordsOf(category).title;
}

std::string OwnerNames::getSupportName(const HxDbObject* object) const {
    std::string name = displayNameOf(openByAttribute<HextSupport>(object, "owner"));
    naming::removeBlanks(name);
    return cleaned(std::move(name));
}

std::string OwnerNames::getEqnoName(const HxDbObject* object) const {
    std::string name(getBomValue(object, "eqno"));
    naming::removeBlanks(name);
    return cleaned(std::move(name));
}

std::string OwnerNames::getNozzleName(const HxDbObject* object) const {
    const HxDbNozzleModel* nozzle = HxDbNozzleModel::cast(object);
    return nozzle != nullptr ? cleaned(tolmar::textOrEmpty(nozzle->getNo())) : "";
}

std::string OwnerNames::getColourName(const TlCmColor& colour) const {
    constexpr int byBlock = 0, byLayer = 256;
    std::string index = std::to_string(colour.colorIndex());
    if (colour.colorIndex() == byBlock || colour.colorIndex() == byLayer) {
        throw ExportException("不支持的颜色值！" + index);
    }
    return index;
}
