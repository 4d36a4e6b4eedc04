// Grid systems, lines and levels.
#include "nwcreate/store/library.h"

#include <algorithm>

using namespace nwcreate;

namespace {

bool takePlace(const double* from, Vec3& place) {
    if (from == nullptr) {
        return false;
    }
    std::copy_n(from, 3, place.begin());
    return arePlaces(place);
}

}  // namespace

LiNwcGridSystem LiNwcGridSystemCreate(const char16_t* name, const double* origin, const double* xAxis,
                                      const double* yAxis) {
    const char* const call = __func__;
    return guardedHandle<LiNwcGridSystem>(call, [&](Library& lib) -> LiNwcGridSystem {
        GridSystem system;
        system.name = escapedText(name);
        if (!takePlace(origin, system.origin) || !takePlace(xAxis, system.xAxis) || !takePlace(yAxis, system.yAxis)) {
            badValue(call, "no place or axes");
            return nullptr;
        }
        auto& slot = lib.gridSystems.create();
        slot.record.system = std::move(system);
        return give(lib, lib.gridSystems, slot);
    });
}

LiNwcGridSystem LiNwcGridSystemCreateRef(LiNwcGridSystem system) {
    return referenceTo(__func__, &Library::gridSystems, system);
}

LiNwcStatus LiNwcGridSystemDestroy(LiNwcGridSystem system) {
    return destroyPlain(__func__, &Library::gridSystems, system);
}

LiNwcGridLine LiNwcGridLineCreate(const char16_t* name) {
    return guardedHandle<LiNwcGridLine>(__func__, [name](Library& lib) {
        auto& slot = lib.gridLines.create();
        slot.record.line.name = escapedText(name);
        return give(lib, lib.gridLines, slot);
    });
}

LiNwcStatus LiNwcGridLineAddLinearSegment(LiNwcGridLine line, const double* start, const double* end) {
    const char* const call = __func__;
    return withRecord(call, &Library::gridLines, line, [&](Library&, auto& slot) -> LiNwcStatus {
        Vec3 from;
        Vec3 to;
        if (!takePlace(start, from) || !takePlace(end, to)) {
            return badValue(call, "a segment without a place");
        }
        std::vector<double>& segments = slot.record.line.segments;
        segments.insert(segments.end(), from.begin(), from.end());
        segments.insert(segments.end(), to.begin(), to.end());
        return LI_NWC_OK;
    });
}

LiNwcStatus LiNwcGridSystemAddGridLine(LiNwcGridSystem system, LiNwcGridLine line) {
    const char* const call = __func__;
    return withRecord(call, &Library::gridSystems, system, [&](Library& lib, auto& slot) -> LiNwcStatus {
        const auto* found = lib.gridLines.find(line);
        if (found == nullptr) {
            return badHandle(call);
        }
        slot.record.system.lines.push_back(found->record.line);
        return LI_NWC_OK;
    });
}

LiNwcStatus LiNwcGridLineDestroy(LiNwcGridLine line) {
    return destroyPlain(__func__, &Library::gridLines, line);
}

LiNwcGridLevel LiNwcGridLevelCreate(const char16_t* name, double height) {
    const char* const call = __func__;
    return guardedHandle<LiNwcGridLevel>(call, [&](Library& lib) -> LiNwcGridLevel {
        if (!isPlace(height)) {
            badValue(call, "no height");
            return nullptr;
        }
        auto& slot = lib.gridLevels.create();
        slot.record.level = {escapedText(name), height};
        return give(lib, lib.gridLevels, slot);
    });
}

LiNwcStatus LiNwcGridSystemAddGridLevel(LiNwcGridSystem system, LiNwcGridLevel level) {
    const char* const call = __func__;
    return withRecord(call, &Library::gridSystems, system, [&](Library& lib, auto& slot) -> LiNwcStatus {
        const auto* found = lib.gridLevels.find(level);
        if (found == nullptr) {
            return badHandle(call);
        }
        slot.record.system.levels.push_back(found->record.level);
        return LI_NWC_OK;
    });
}

LiNwcStatus LiNwcGridLevelDestroy(LiNwcGridLevel level) {
    return destroyPlain(__func__, &Library::gridLevels, level);
}
