// Names of point sets and attachments, welds, connections, and bolts.
#include "hextinterface/manager/name_state.h"

#include <algorithm>
#include <charconv>

using naming::stemWith;

namespace {

const std::string attaSpec = "ATTA_SPEC";
const std::string connTable = "CCTA_1";
const std::string weldSpecs[] = {"SPWL_COMP", "SPWL_NOZZLE", "SPWL_SUPPORT"};
const std::string boltTable = "BLTAB";
const std::string boltList = "BLIST";
const std::string boltCatalogue = "BOLT_CATA";
const std::string boltSection = "BOLT_SECT";

std::string decimal(std::int64_t value) {
    char text[24];
    return {text, std::to_chars(text, text + sizeof text, value).ptr};
}

std::string boltText(std::string_view spec) {
    return std::string("BOLT_").append(spec);
}

}  // namespace

const std::string& NameManager::getPointSetBaseName(const HxDbObject* object) {
    std::string name(naming::namePrefix);
    name += state_->codes.end.code(getBomValue(object, "end1"));
    (name += '_') += state_->codes.size.code(getBomValue(object, "size1"));
    return state_->put(name, NameKind::Component);
}

const std::string& NameManager::getPointSetScName(const HxDbObject* object) {
    return state_->put(stemWith(getPointSetBaseName(object), "-SC"), NameKind::Scom);
}

const std::string& NameManager::getPointSetDtName(const HxDbObject* object) {
    return state_->put(stemWith(getPointSetBaseName(object), "-DT", naming::stemLength - 1), NameKind::Dtset);
}

const std::string& NameManager::getAttaSpecName() const {
    return attaSpec;
}

const std::string& NameManager::getAttaShortName(const HxDbObject* object) {
    return state_->put(stemWith(naming::withoutPrefix(getPointSetBaseName(object)), "-SP"), NameKind::Short);
}

std::string NameManager::getAttaStype(const HxDbObject* object) {
    return std::string("ATTA").append(state_->codes.end.code(getBomValue(object, "end1")));
}

const std::string& NameManager::getAttaSpcoName(const HxDbObject* object) {
    return state_->put(attaSpec + "/" + getAttaShortName(object), NameKind::Spco);
}

const std::string& NameManager::getWeldSpecName(int which) const {
    return weldSpecs[which == 1 || which == 2 ? which : 0];
}

const std::string& NameManager::getConnTableName() const {
    return connTable;
}

const std::string& NameManager::getCocoName(std::string_view end1, std::string_view end2) {
    const auto [first, second] = std::minmax(end1, end2);
    std::string name(naming::namePrefix);
    ((name += first) += '_') += second;
    return state_->put(name, NameKind::Coco);
}

const std::string& NameManager::getBoltObjectName(const HxDbObject* object) {
    return state_->put("BOLT_" + decimal(naming::idOf(object).toInt()), NameKind::BoltObject);
}

const std::string& NameManager::getBltabName() const {
    return boltTable;
}

const std::string& NameManager::getBlistName() const {
    return boltList;
}

const std::string& NameManager::getBoltCataName() const {
    return boltCatalogue;
}

const std::string& NameManager::getBoltSectName() const {
    return boltSection;
}

const std::string& NameManager::getBoltSpecName(std::string_view spec) {
    return state_->put(boltText(spec), NameKind::Spec);
}

const std::string& NameManager::getBoltKeyName(const FlangeData& flange) {
    naming::CodeTables& codes = state_->codes;
    std::string name;
    codes.spec.append(name, flange.spec);
    codes.standard.append(name, flange.code);
    codes.end.append(name, flange.endtype);
    codes.size.append(name, decimal(flange.size));
    codes.rating.append(name, flange.rating);
    return state_->put(name, NameKind::Component);
}

const std::string& NameManager::getBoltStype(const FlangeData& flange, std::string_view partType) {
    std::string text = getBoltKeyName(flange);
    state_->codes.item.append(text, partType);
    const auto [number, isNew] = state_->boltTexts.add(text);
    if (isNew) {
        state_->boltStypes.push_back(std::string("B").append(naming::letters(number + 1)));
    }
    return state_->boltStypes[number];
}

const std::string& NameManager::getBoltShortName(const FlangeData& flange, std::string_view partType) {
    return state_->put(getBoltStype(flange, partType) + "_2-SP", NameKind::Short);
}

const std::string& NameManager::getBoltSpcoName(std::string_view spec, const FlangeData& flange,
                                                std::string_view partType) {
    return state_->put(boltText(spec) + "/" + getBoltShortName(flange, partType), NameKind::Spco);
}

const std::string& NameManager::getBoltItemName(std::string_view spec, const FlangeData& flange,
                                                std::string_view partType) {
    constexpr std::size_t suffixLength = 3;
    std::string name = boltText(spec) + "_" + getBoltShortName(flange, partType);
    name.resize(name.size() - suffixLength);
    return state_->put(name, NameKind::BoltItem);
}

const std::string& NameManager::getBoltDtsetName(const FlangeData& flange) {
    return state_->put(getBoltKeyName(flange) + "_B-DT", NameKind::Dtset);
}

const std::string& NameManager::getBoltMtsetName(const FlangeData& flange) {
    return state_->put(getBoltKeyName(flange) + "_B-MT", NameKind::Dtset);
}

const std::string& NameManager::getNutDtsetName(const FlangeData& flange) {
    return state_->put(getBoltKeyName(flange) + "_N-DT", NameKind::Dtset);
}

const std::string& NameManager::getNutMtsetName(const FlangeData& flange) {
    return state_->put(getBoltKeyName(flange) + "_N-MT", NameKind::Dtset);
}
