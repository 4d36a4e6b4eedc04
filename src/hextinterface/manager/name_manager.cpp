#include "hextinterface/manager/name_manager.h"

#include "frame/exceptions.h"
#include "hextinterface/manager/name_state.h"

using naming::NameTable;

namespace naming {

HxDbObjectId idOf(const HxDbObject* object) {
    return object != nullptr ? object->objectId() : HxDbObjectId();
}

std::string stemWith(std::string_view stem, std::string_view suffix, std::size_t length) {
    std::string name(stem.substr(0, length));
    return name += suffix;
}

std::string_view withoutPrefix(std::string_view name) {
    return name.substr(namePrefix.size());
}

void removeBlanks(std::string& text) {
    std::erase(text, ' ');
}

namespace {

struct FixedName {
    const char* name;
    NameKind kind;
};
constexpr FixedName fixedNames[] = {
    {"SITE_CATA", NameKind::SiteName},
    {"SITE_EQUIP", NameKind::SiteName},
    {"SITE_EQUIP_BASE", NameKind::SiteName},
    {"SITE_EQUIP_STRUCTURE", NameKind::SiteName},
    {"SITE_PIPE_LINE", NameKind::SiteName},
    {"SITE_SPEC", NameKind::SiteName},
    {"SITE_SUPPORT", NameKind::SiteName},
    {"ORNA_SITE", NameKind::SiteName},
    {"ZONE_CATA", NameKind::ZoneName},
    {"ZONE_EQUIP", NameKind::ZoneName},
    {"ZONE_EQUIP_BASE", NameKind::ZoneName},
    {"ZONE_EQUIP_STRUCTURE", NameKind::ZoneName},
    {"ZONE_EQUIP_SUPPORT", NameKind::ZoneName},
    {"ZONE_PIPE_LINE", NameKind::ZoneName},
    {"ZONE_SPEC", NameKind::ZoneName},
    {"ZONE_SUPPORT", NameKind::ZoneName},
    {"SUP_LIST", NameKind::Spec},
    {"ATTA_SPEC", NameKind::Spec},
    {"CATA_SUPP", NameKind::Cata},
    {"BOLT_CATA", NameKind::Cata},
    {"BOLT_SECT", NameKind::Section},
    {"CCTA_1", NameKind::ConnTable},
    {"SPWL_COMP", NameKind::WeldSpec},
    {"SPWL_NOZZLE", NameKind::WeldSpec},
    {"SPWL_SUPPORT", NameKind::WeldSpec},
    {"MDB_CATA", NameKind::Mdb},
    {"MDB_DESI", NameKind::Mdb},
    {"BLTAB", NameKind::Bltab},
    {"BLIST", NameKind::Blist},
    {"ORNA_UGRO", NameKind::UdaGroup},
};

}  // namespace

}  // namespace naming

naming::ComponentEntry& NameManager::State::entryOf(const HxDbObject* object) {
    naming::ComponentEntry*& entry = factsOf(object).entry;
    if (entry == nullptr) {
        entry = &components.find(object, codes);
    }
    return *entry;
}

NameManager::NameManager() : state_(std::make_unique<State>()) {
    for (const auto& [name, kind] : naming::fixedNames) {
        state_->put(name, kind);
    }
}

NameManager::~NameManager() = default;

void NameManager::markNameCreated(std::string_view name) {
    if (!markIfNotCreated(name)) {
        throw RunException(fillPlaceholder("%1% 命名已被创建！", std::string(name)));
    }
}

bool NameManager::markIfNotCreated(std::string_view name) {
    NameEntry* entry = state_->m_nameCreatedFlagMap.find(name);
    if (entry == nullptr) {
        throw RunException(fillPlaceholder("%1% 命名不是来之命名类！", std::string(name)));
    }
    return !std::exchange(entry->created, true);
}

bool NameManager::isNameCreated(std::string_view name) const {
    const NameEntry* entry = findName(name);
    return entry != nullptr && entry->created;
}

bool NameManager::isNameKnown(std::string_view name) const {
    return findName(name) != nullptr;
}

void NameManager::addUdaName(std::string_view name) {
    if (isNameKnown(name)) {
        throw ExportException(fillPlaceholder("%1% 命名已存在！", std::string(name)));
    }
    state_->put(name, NameKind::Uda);
}

const NameEntry* NameManager::findName(std::string_view name) const {
    return std::as_const(state_->m_nameCreatedFlagMap).find(name);
}
