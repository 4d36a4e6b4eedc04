// The JSON file beside a scene: a member for each object, with its properties.
#pragma once

#include "exportbase/json_side_file.h"

#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>

namespace nv {

class PropertyFile {
public:
    // Opens the member of an object, whose key is the path followed by the name. From the second use of a key on, the
    // member's key is the key, a grave accent and the number of earlier uses.
    void beginObject(std::string_view path, std::string_view name);
    void addText(std::string_view key, std::string_view value) { json_.addText(key, value); }
    void endObject() { json_.endObject(); }
    // Writes the file beside the scene. False when it could not be written whole, which the run report knows.
    bool writeBeside(const std::string& scenePath) const;
    // Forgets which keys were used; the members stay.
    void forgetKeys() {
        keys_.clear();
        last_ = nullptr;
    }

private:
    using Keys = std::unordered_map<std::string, unsigned>;
    using Entry = Keys::value_type;

    // The entry of the key in hand, and whether it is new.
    std::pair<Entry*, bool> place();

    Keys keys_;
    Entry* last_ = nullptr;
    std::string key_;
    JsonSideFile json_;
};

}  // namespace nv
