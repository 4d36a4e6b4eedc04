// The project configuration of the macro export, "temp/hext/config.json" under the installation root. Every function
// reads the file anew. One that goes on without a readable file tells the run report that the run failed.
#pragma once

#include "scripts/json_value.h"

#include <functional>
#include <map>
#include <stdexcept>
#include <string>
#include <string_view>

// The file's full path, in the code page.
std::string projectConfigPath();
// What loading throws: its text is "parse fail".
class ProjectConfigFault final : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};
// Loads the file. Throws a ProjectConfigFault when it cannot be read or parsed.
JsonValue loadProjectConfig();

// Component names come from "eqno": the number 1 and nothing else. Throws "parse fail".
bool configEqnoName();
// Final equipment names get a running suffix: the number 1 and nothing else, and on when there is no readable file.
bool configEquipPostName();
// The stages that write support and attachment specifications, and bolt specifications: the number 1 and nothing else,
// off when there is no readable file.
bool configSupportSpec();
bool configBoltSpec();

// Texts that replace the empty ones of the catalogue. Loaded once and asked often; an unreadable file and members that
// are no text read as missing.
class ConfigTexts {
public:
    // Member "detailText": an object of texts. Keys such as "ELBOWRTEXT", "RTEXT", "TEEDESC", "DESC".
    static ConfigTexts detailTexts();
    // Member "boltText": an object with the members "BOLT" and "NUT", each an object with the texts "RTEXT", "STEXT"
    // and "TTEXT". Ask by the kind and the key joined, such as "BOLTRTEXT".
    static ConfigTexts boltTexts();

    // The text, letter case aside; empty when there is none. Lives with this object.
    std::string_view find(std::string_view key) const;
    bool empty() const { return texts_.empty(); }

private:
    void addMembers(JsonValue& object, std::string_view prefix);

    std::map<std::string, std::string, std::less<>> texts_;  // by key in upper case
};
