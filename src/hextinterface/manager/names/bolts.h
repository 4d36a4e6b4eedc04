// Names of bolts: bolt table and list, bolt sets, and for each flange and part a catalogue entry and a row.
#pragma once

#include "hextinterface/manager/register/letter_codes.h"
#include "hextinterface/manager/register/names.h"
#include "platform/objects.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

// A flange record as the bolt writers read it.
struct FlangeData {
    std::string spec;  // bolt specification text
    std::string code;  // flange standard
    std::string endtype;
    std::string rating;
    std::string unit;
    std::int32_t size = 0;
};

class BoltNames {
public:
    BoltNames(NameRegister& names, naming::CodeTables& codes) : names_(names), codes_(codes) {}

    // Of fixed elements.
    const std::string& getBltabName() const;
    const std::string& getBlistName() const;
    const std::string& getBoltCataName() const;
    const std::string& getBoltSectName() const;

    // `partType` is the type text of the bolt or nut as its writer holds it, `spec` the name of the bolt
    // specification without "BOLT_".
    const std::string& getBoltObjectName(const HxDbObject* object);
    const std::string& getBoltSpecName(std::string_view spec);
    const std::string& getBoltKeyName(const FlangeData& flange);
    const std::string& getBoltStype(const FlangeData& flange, std::string_view partType);  // not registered
    const std::string& getBoltShortName(const FlangeData& flange, std::string_view partType);
    const std::string& getBoltSpcoName(std::string_view spec, const FlangeData& flange, std::string_view partType);
    const std::string& getBoltItemName(std::string_view spec, const FlangeData& flange, std::string_view partType);
    const std::string& getBoltDtsetName(const FlangeData& flange);
    const std::string& getBoltMtsetName(const FlangeData& flange);
    const std::string& getNutDtsetName(const FlangeData& flange);
    const std::string& getNutMtsetName(const FlangeData& flange);

private:
    NameRegister& names_;
    naming::CodeTables& codes_;
    naming::TextTable partTexts_;      // what a bolt stype stands for
    std::vector<std::string> stypes_;  // by number of the text
};
