#include "obmsdk/obm_types.h"

#include <array>

const char* obmStatusText(int status) {
    static constexpr std::array<const char*, 11> texts = {
        "",
        "the package is not open",
        "the open mode is not supported",
        "the folder does not exist or cannot be written to",
        "a file could not be written whole",
        "a mesh has a coordinate that is not finite or a facet without its vertex",
        "an id is missing or taken",
        "an instance names a geometry that no mesh has",
        "an instance names a material that is not there",
        "a scene is beyond what its format can hold",
        "the call asks for something that is not supported",
    };
    return status >= 0 && static_cast<std::size_t>(status) < texts.size() ? texts[static_cast<std::size_t>(status)]
                                                                          : "unknown status";
}
