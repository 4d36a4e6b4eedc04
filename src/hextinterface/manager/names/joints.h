// Names of weld specifications and of the connection table: how elements are joined.
#pragma once

#include "hextinterface/manager/register/names.h"

#include <string>
#include <string_view>

class JointNames {
public:
    explicit JointNames(NameRegister& names) : names_(names) {}

    // 0 components, 1 nozzles, 2 supports; anything else reads as 0.
    const std::string& getWeldSpecName(int which) const;
    const std::string& getConnTableName() const;
    // The pair in byte order of the end types.
    const std::string& getCocoName(std::string_view end1, std::string_view end2);
    // An end type as a name: the text unchanged, not registered.
    std::string keepName(std::string_view text) const { return std::string(text); }

private:
    NameRegister& names_;
};
