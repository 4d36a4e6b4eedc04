#include "hextinterface/manager/names/bolts.h"

#include "hextinterface/manager/register/cleaned_texts.h"

#include <charconv>

namespace {

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

const std::string& BoltNames::getBoltObjectName(const HxDbObject* object) {
    return names_.put("BOLT_" + decimal(naming::idOf(object).toInt()), NameKind::BoltObject);
}

const std::string& BoltNames::getBltabName() const {
    return boltTable;
}

const std::string& BoltNames::getBlistName() const {
    return boltList;
}

const std::string& BoltNames::getBoltCataName() const {
    return boltCatalogue;
}

const std::string& BoltNames::getBoltSectName() const {
    return boltSection;
}

const std::string& BoltNames::getBoltSpecName(std::string_view spec) {
    return names_.put(boltText(spec), NameKind::Spec);
}

const std::string& BoltNames::getBoltKeyName(const FlangeData& flange) {
    naming::CodeTables& codes = codes_;
    std::string name;
    codes.spec.append(name, flange.spec);
    codes.standard.append(name, flange.code);
    codes.end.append(name, flange.endtype);
    codes.size.append(name, decimal(flange.size));
    codes.rating.append(name, flange.rating);
    return names_.put(name, NameKind::Component);
}

const std::string& BoltNames::getBoltStype(const FlangeData& flange, std::string_view partType) {
    std::string text = getBoltKeyName(flange);
    codes_.item.append(text, partType);
    const auto [number, isNew] = partTexts_.add(text);
    if (isNew) {
        stypes_.push_back(std::string("B").append(naming::letters(number + 1)));
    }
    return stypes_[number];
}

const std::string& BoltNames::getBoltShortName(const FlangeData& flange, std::string_view partType) {
    return names_.put(getBoltStype(flange, partType) + "_2-SP", NameKind::Short);
}

const std::string& BoltNames::getBoltSpcoName(std::string_view spec, const FlangeData& flange,
                                              std::string_view partType) {
    return names_.put(boltText(spec) + "/" + getBoltShortName(flange, partType), NameKind::Spco);
}

const std::string& BoltNames::getBoltItemName(std::string_view spec, const FlangeData& flange,
                                              std::string_view partType) {
    constexpr std::size_t suffixLength = 3;
    std::string name = boltText(spec) + "_" + getBoltShortName(flange, partType);
    name.resize(name.size() - suffixLength);
    return names_.put(name, NameKind::BoltItem);
}

const std::string& BoltNames::getBoltDtsetName(const FlangeData& flange) {
    return names_.put(getBoltKeyName(flange) + "_B-DT", NameKind::Dtset);
}

const std::string& BoltNames::getBoltMtsetName(const FlangeData& flange) {
    return names_.put(getBoltKeyName(flange) + "_B-MT", NameKind::Dtset);
}

const std::string& BoltNames::getNutDtsetName(const FlangeData& flange) {
    return names_.put(getBoltKeyName(flange) + "_N-DT", NameKind::Dtset);
}

const std::string& BoltNames::getNutMtsetName(const FlangeData& flange) {
    return names_.put(getBoltKeyName(flange) + "_N-MT", NameKind::Dtset);
}
