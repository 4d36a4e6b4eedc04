// What users say of files of other producers: sys/sources.json of the installation root.
//
//     {"sizes": [{"dn": 50, "inch": 2, "outer": 60.3, "wall": 3.91, "flangeOuter": 152, "flangeThickness": 19.1,
//                 "boltCircle": 120.7, "bolts": 4, "bolt": 16}],
//      "types": ["VALVE|VB##|VALVE|BALL|Normal|valve"],
//      "insulation": {"HC50": {"thickness": 50, "material": "rock wool", "code": "HC"}}}
//
// All members are optional. Sizes and types of the file come before those that are built in.
#pragma once

#include "sources/standards/part_types.h"
#include "sources/standards/sizes.h"

#include <map>
#include <string>
#include <string_view>

namespace plant::standards {

struct InsulationType {
    double thickness = 0;  // millimetres
    std::string material;
    std::string code;
};

struct Settings {
    SizeTable sizes;
    PartTypes types;
    std::map<std::string, InsulationType, std::less<>> insulation;  // by the name of the insulation specification

    // Takes over the text of a settings file, UTF-8; false with the place and the reason, and then what came before the
    // fault may have been taken.
    bool take(std::string_view json, std::string& error);
};

}  // namespace plant::standards
