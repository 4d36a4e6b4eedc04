// The controls of the scope dialog by number: the module makes them (frame/export_dialog), the host finds them on a
// form to answer for a user who is not there.
#pragma once

#include <algorithm>
#include <iterator>
#include <string_view>

namespace scopedialog {

inline constexpr int treeId = 12581;

// The check boxes, and the keys of the option file for which they stand.
struct Option {
    std::string_view key;
    int id;
};
inline constexpr Option options[] = {
    {"outWeld", 12584}, {"nvExpandBranch", 12585}, {"orAxiss", 12586}, {"clearCache", 12587}};

// Null for a key without a check box.
constexpr const Option* optionOf(std::string_view key) {
    const auto* found =
        std::find_if(std::begin(options), std::end(options), [key](const Option& option) { return option.key == key; });
    return found != std::end(options) ? found : nullptr;
}

}  // namespace scopedialog
