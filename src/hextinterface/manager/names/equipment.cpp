#include "hextinterface/manager/names/equipment.h"

#include "frame/exceptions.h"
#include "hextinterface/manager/register/names.h"

void EquipmentNames::count(const Names& names, int by) {
    bases_[names.base] += by;
    pairs_[{names.base, names.full}] += by;
}

void EquipmentNames::registerEquipName(HxDbObjectId objectId, std::string_view baseName, std::string_view finalName) {
    Names names{std::string(baseName), std::string(finalName)};
    const auto same = pairs_.find({names.base, names.full});
    if (getBoundEquipNo(objectId) == finalName || (same != pairs_.end() && same->second > 0)) {
        throw ExportException("设备命名冲突");
    }
    const auto [at, isNew] = bound_.try_emplace(objectId);
    if (!isNew) {
        count(at->second, -1);
    }
    count(names, 1);
    at->second = std::move(names);
}

const std::string& EquipmentNames::getBoundEquipNo(HxDbObjectId objectId) const {
    const auto at = bound_.find(objectId);
    return at == bound_.end() ? naming::noName : at->second.full;
}

bool EquipmentNames::hasEquipName(std::string_view baseName) const {
    const auto at = bases_.find(baseName);
    return at != bases_.end() && at->second > 0;
}
