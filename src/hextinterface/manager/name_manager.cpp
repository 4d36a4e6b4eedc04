#include "hextinterface/manager/name_manager.h"

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

NameManager::NameManager() {
    for (const auto& [name, kind] : fixedNames) {
        put(name, kind);
    }
}
