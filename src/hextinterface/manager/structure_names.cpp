// Names of owners, structure and equipment, and colours.
#include "frame/exceptions.h"
#include "hextinterface/manager/name_state.h"
#include "tolmar/color.h"

#include <iterator>

using naming::noName;

namespace naming {

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
    return std::string(textOf(object != nullptr ? object->getDisplayName() : nullptr));
}

std::string cleaned(std::string text) {
    cleanName(text);
    return text;
}

const std::string& ownerName(UniqueTexts& names, const HxDbObject* owner, const char* prefix, int& sharedNumber) {
    const HxDbObjectId id = idOf(owner);
    if (const std::string* known = names.find(id)) {
        return *known;
    }
    std::string text = prefix + displayNameOf(owner);
    removeBlanks(text);
    return names.add(id, std::move(text), "", sharedNumber);
}

}  // namespace

void BoundEquipment::count(const Names& names, int by) {
    bases_[names.base] += by;
    pairs_[{names.base, names.full}] += by;
}

bool BoundEquipment::bind(HxDbObjectId id, std::string_view baseName, std::string_view finalName) {
    Names names{std::string(baseName), std::string(finalName)};
    const auto same = pairs_.find({names.base, names.full});
    if (this->finalName(id) == finalName || (same != pairs_.end() && same->second > 0)) {
        return false;
    }
    const auto [at, isNew] = bound_.try_emplace(id);
    if (!isNew) {
        count(at->second, -1);
    }
    count(names, 1);
    at->second = std::move(names);
    return true;
}

const std::string& BoundEquipment::finalName(HxDbObjectId id) const {
    const auto at = bound_.find(id);
    return at == bound_.end() ? noName : at->second.full;
}

bool BoundEquipment::hasBase(std::string_view baseName) const {
    const auto at = bases_.find(baseName);
    return at != bases_.end() && at->second > 0;
}

}  // namespace naming

const std::string& NameManager::getSiteName(const HxDbObject* site) {
    return naming::ownerName(state_->siteNames, site, "ORNA_SITE_", state_->sharedNumber);
}

const std::string& NameManager::getZoneName(const HxDbObject* zone) {
    return naming::ownerName(state_->zoneNames, zone, "ORNA_ZONE_", state_->sharedNumber);
}

std::string NameManager::getDbZoneName(ExportDb category) const {
    return std::string("ZONE_") + naming::wordsOf(category).zone;
}

std::string NameManager::getDbTitle(ExportDb category) const {
    return naming::wordsOf(category).title;
}

std::string NameManager::getSupportName(const HxDbObject* object) const {
    std::string name = naming::displayNameOf(openByAttribute<HextSupport>(object, "owner"));
    naming::removeBlanks(name);
    return naming::cleaned(std::move(name));
}

std::string NameManager::getEqnoName(const HxDbObject* object) const {
    std::string name(getBomValue(object, "eqno"));
    naming::removeBlanks(name);
    return naming::cleaned(std::move(name));
}

std::string NameManager::getNozzleName(const HxDbObject* object) const {
    const HxDbNozzleModel* nozzle = HxDbNozzleModel::cast(object);
    return naming::cleaned(std::string(naming::textOf(nozzle != nullptr ? nozzle->getNo() : nullptr)));
}

std::string NameManager::getColourName(const TlCmColor& colour) const {
    constexpr int byBlock = 0, byLayer = 256;
    std::string index = std::to_string(colour.colorIndex());
    if (colour.colorIndex() == byBlock || colour.colorIndex() == byLayer) {
        throw ExportException("不支持的颜色值！" + index);
    }
    return index;
}

void NameManager::registerEquipName(HxDbObjectId objectId, std::string_view baseName, std::string_view finalName) {
    if (!state_->equipment.bind(objectId, baseName, finalName)) {
        throw ExportException("设备命名冲突");
    }
}

const std::string& NameManager::getBoundEquipNo(HxDbObjectId objectId) const {
    return state_->equipment.finalName(objectId);
}

bool NameManager::hasEquipName(std::string_view baseName) const {
    return state_->equipment.hasBase(baseName);
}

void cleanName(std::string& text) {
    constexpr std::string_view replaced = " \t\n\v\f\r~`*^()+='\",./\\|?";
    for (char& c : text) {
        if (replaced.find(c) != std::string_view::npos) {
            c = '_';
        }
    }
}
