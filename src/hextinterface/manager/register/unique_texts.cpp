#include "hextinterface/manager/register/unique_texts.h"

namespace naming {

const std::string* UniqueTexts::find(HxDbObjectId id) const {
    const auto at = numbers_.find(id);
    return at == numbers_.end() ? nullptr : &texts_[at->second];
}

const std::string& UniqueTexts::add(HxDbObjectId id, std::string text, std::string_view separator, int& number) {
    if (texts_.contains(text)) {
        (text += separator) += std::to_string(number++);
    }
    const std::uint32_t at = texts_.add(text).number;
    numbers_[id] = at;
    return texts_[at];
}

}  // namespace naming
