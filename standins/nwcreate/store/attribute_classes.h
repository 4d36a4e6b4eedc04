// The classes of attributes: few, and named anew for each attribute.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace nwcreate {

class AttributeClasses {
public:
    AttributeClasses() { clear(); }
    // The number of the class of these names, a new one for names that come first. Asking for the same names again and
    // again, as callers do, costs a comparison.
    std::uint32_t numberOf(std::u16string_view userName, std::u16string_view internalName);
    // {"user":"...","internal":"..."}
    const std::string& json(std::uint32_t number) const { return json_[number]; }
    // Leaves the class without names, which is number 0.
    void clear();

private:
    using Names = std::pair<std::u16string, std::u16string>;

    std::map<Names, std::uint32_t> numbers_;
    std::vector<std::string> json_;
    Names last_;
    std::uint32_t lastNumber_ = 0;
};

}  // namespace nwcreate
