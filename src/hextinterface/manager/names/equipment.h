// Which final name each equipment has got in equip.txt, so that its nozzles can name it. The file's writer binds them.
#pragma once

#include "platform/ids.h"

#include <map>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>

class EquipmentNames {
public:
    // Binding an object anew frees what it was bound to. ExportException "设备命名冲突" when the object, or another of
    // the same base name, has this final name already.
    void registerEquipName(HxDbObjectId objectId, std::string_view baseName, std::string_view finalName);
    // The final name, or the empty text.
    const std::string& getBoundEquipNo(HxDbObjectId objectId) const;
    // Whether some object is bound under the base name.
    bool hasEquipName(std::string_view baseName) const;

private:
    struct Names {
        std::string base, full;
    };
    void count(const Names& names, int by);

    std::unordered_map<HxDbObjectId, Names> bound_;
    // How many objects have a base name, and how many a base name with a final name.
    std::map<std::string, int, std::less<>> bases_;
    std::map<std::pair<std::string, std::string>, int> pairs_;
};
