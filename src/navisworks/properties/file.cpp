#include "navisworks/properties/file.h"

#include "navisworks/properties/object_path.h"

#include <charconv>

namespace nv {

void PropertyFile::beginObject(std::string_view path, std::string_view name) {
    key_.assign(path).append(name);
    // Objects without a name of their own share the key of the one before.
    const bool isSame = last_ != nullptr && last_->first == key_;
    const auto [entry, isNew] = isSame ? std::pair(last_, false) : place();
    last_ = entry;
    if (!isNew) {
        constexpr std::size_t mostDigits = 10;
        char digits[mostDigits];
        key_.append(1, pathSeparator).append(digits, std::to_chars(digits, digits + mostDigits, ++entry->second).ptr);
    }
    json_.beginObject(key_);
}

std::pair<PropertyFile::Entry*, bool> PropertyFile::place() {
    const auto [entry, isNew] = keys_.try_emplace(key_, 0);
    return {&*entry, isNew};
}

bool PropertyFile::writeBeside(const std::string& scenePath) const {
    return json_.write(sideFilePath(scenePath));
}

}  // namespace nv
