// The JSON file beside a scene: a member for each object, with its properties.
#pragma once

#include "exportbase/json_side_file.h"

#include <string>
#include <string_view>
#include <unordered_map>

namespace nv {

class PropertyFile {
public:
    // Opens the member of an object. From the second use of a key on, the member's key is the key, a grave accent and
    // the number of earlier uses.
    void beginObject(const std::string& key);
    void addText(std::string_view key, std::string_view value) { json_.addText(key, value); }
    void endObject() { json_.endObject(); }
    // Writes the file beside the scene. False when it could not be written whole, which the run report knows.
    bool writeBeside(const std::string& scenePath) const;
    // Forgets which keys were used; the members stay.
    void forgetKeys() { keys_.clear(); }

private:
    std::unordered_map<std::string, unsigned> keys_;
    JsonSideFile json_;
};

}  // namespace nv
