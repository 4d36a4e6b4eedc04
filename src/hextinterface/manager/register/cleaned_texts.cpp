#include "hextinterface/manager/register/cleaned_texts.h"

namespace naming {

HxDbObjectId idOf(const HxDbObject* object) {
    return object != nullptr ? object->objectId() : HxDbObjectId();
}

std::string stemWith(std::string_view stem, std::string_view suffix, std::size_t length) {
    std::string name(stem.substr(0, length));
    return name += suffix;
}

std::string_view withoutPrefix(std::string_view name) {
    return name.substr(namePrefix.size());
}

void removeBlanks(std::string& text) {
    std::erase(text, ' ');
}

}  // namespace naming

void cleanName(std::string& text) {
    constexpr std::string_view replaced = " \t\n\v\f\r~`*^()+='\",./\\|?";
    for (char& c : text) {
        if (replaced.find(c) != std::string_view::npos) {
            c = '_';
        }
    }
}
