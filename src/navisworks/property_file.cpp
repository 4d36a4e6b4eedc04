#include "navisworks/property_file.h"

#include "navisworks/object_path.h"

#include <charconv>

namespace nv {

void PropertyFile::beginObject(std::string_view path, std::string_view name) {
    key_.assign(path).append(name);
    if (const auto entry = keys_.find(std::string_view(key_)); entry == keys_.end()) {
        keys_.emplace(key_, 0);
    } else {
        constexpr std::size_t mostDigits = 10;
        char digits[mostDigits];
        key_.append(1, pathSeparator).append(digits, std::to_chars(digits, digits + mostDigits, ++entry->second).ptr);
    }
    json_.beginObject(key_);
}

bool PropertyFile::writeBeside(const std::string& scenePath) const {
    return json_.write(sideFilePath(scenePath));
}

}  // namespace nv
