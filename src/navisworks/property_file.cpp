#include "navisworks/property_file.h"

#include "navisworks/object_path.h"

namespace nv {

void PropertyFile::beginObject(const std::string& key) {
    const auto [entry, isNew] = keys_.try_emplace(key, 0);
    if (isNew) {
        json_.beginObject(key);
    } else {
        json_.beginObject(key + pathSeparator + std::to_string(++entry->second));
    }
}

bool PropertyFile::writeBeside(const std::string& scenePath) const {
    return json_.write(sideFilePath(scenePath));
}

}  // namespace nv
