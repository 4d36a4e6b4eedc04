// Texts by object id, no two of which are equal when they are given.
#pragma once

#include "hextinterface/manager/register/numbered_texts.h"
#include "platform/ids.h"

#include <string>
#include <string_view>
#include <unordered_map>

namespace naming {

class UniqueTexts {
public:
    // Null when the id has none.
    const std::string* find(HxDbObjectId id) const;
    // Stores the text; one that some id has already gets `separator` and the number behind it, which counts up.
    const std::string& add(HxDbObjectId id, std::string text, std::string_view separator, int& number);

private:
    TextTable texts_;
    std::unordered_map<HxDbObjectId, std::uint32_t> numbers_;
};

}  // namespace naming
