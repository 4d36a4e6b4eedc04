// The library's state: one for the process, between LiNwcApiInitialise and LiNwcApiTerminate.
#pragma once

#include "nwcreate/inspect.h"
#include "nwcreate/shapes.h"
#include "nwcreate/store/attribute_classes.h"
#include "nwcreate/store/records.h"

#include <exception>
#include <string>
#include <string_view>

namespace nwcreate {

struct Library {
    bool isReady = false;
    LiNwcErrorHandler handler = nullptr;
    std::string spoolFolder;  // UTF-8; empty: the system's
    std::uint64_t fileLimit = 0;
    std::uint64_t given = 0;
    std::uint64_t left = 0;
    std::uint64_t misused = 0;
    SceneStore* current = nullptr;  // of the scene made last
    AttributeClasses classes;

    HandleTable<SceneRecord, LiNwcScene> scenes{LI_NWC_SCENE};
    HandleTable<NodeRecord, LiNwcNode> nodes{LI_NWC_NODE};
    HandleTable<AttributeRecord, LiNwcAttribute> attributes{LI_NWC_ATTRIBUTE};
    HandleTable<DataRecord, LiNwcData> data{LI_NWC_DATA};
    HandleTable<StreamRecord, LiNwcGeometryStream> streams{LI_NWC_STREAM};
    HandleTable<StyleRecord, LiNwcTextStyle> styles{LI_NWC_TEXT_STYLE};
    HandleTable<ViewRecord, LiNwcView> views{LI_NWC_VIEW};
    HandleTable<GridSystemRecord, LiNwcGridSystem> gridSystems{LI_NWC_GRID_SYSTEM};
    HandleTable<GridLineRecord, LiNwcGridLine> gridLines{LI_NWC_GRID_LINE};
    HandleTable<GridLevelRecord, LiNwcGridLevel> gridLevels{LI_NWC_GRID_LEVEL};
    HandleTable<ShapeRecord, LiNwcShape> shapes{LI_NWC_SHAPE};

    // Calls with each table in the order of LiNwcHandleKind.
    template <typename Visit>
    void forEachTable(Visit&& visit) {
        visit(scenes);
        visit(nodes);
        visit(attributes);
        visit(data);
        visit(streams);
        visit(styles);
        visit(views);
        visit(gridSystems);
        visit(gridLines);
        visit(gridLevels);
        visit(shapes);
    }
    std::uint64_t live();
    // Empties all tables.
    void reset();
};

extern Library theLibrary;
inline Library& library() {
    return theLibrary;
}

// Tell the error handler and give the status back. `call` is the name of the function that the caller called.
LiNwcStatus badHandle(const char* call);
LiNwcStatus badOrder(const char* call, std::string_view why);
LiNwcStatus badValue(const char* call, std::string_view why);
LiNwcStatus outOfMemory(const char* call, const char* why);

inline std::u16string_view textOf(const char16_t* text) {
    return text == nullptr ? std::u16string_view() : std::u16string_view(text);
}
// The inside of a JSON string.
std::string escapedText(const char16_t* text);

// The wrapper of every call: the library must be ready, and no exception leaves.
template <typename Body>
LiNwcStatus guarded(const char* call, Body&& body) noexcept {
    try {
        return library().isReady ? body(library()) : badOrder(call, "the library is not initialised");
    } catch (const std::exception& error) {
        return outOfMemory(call, error.what());
    }
}

// The same for a call that gives a handle; null when it cannot.
template <typename Handle, typename Body>
Handle guardedHandle(const char* call, Body&& body) noexcept {
    Handle result = nullptr;
    guarded(call, [&](Library& lib) {
        result = body(lib);
        return LI_NWC_OK;
    });
    return result;
}

// With the record of a handle.
template <typename Table, typename Handle, typename Body>
LiNwcStatus withRecord(const char* call, Table Library::*table, Handle handle, Body&& body) noexcept {
    return guarded(call, [&](Library& lib) -> LiNwcStatus {
        auto* slot = (lib.*table).find(handle);
        return slot == nullptr ? badHandle(call) : body(lib, *slot);
    });
}

// Counts the reference that goes out.
template <typename Table, typename Slot>
auto give(Library& lib, Table& table, Slot& slot) {
    ++lib.given;
    return table.handle(slot);
}

// One more reference on the same handle.
template <typename Table, typename Handle>
Handle referenceTo(const char* call, Table Library::*table, Handle handle) noexcept {
    Handle result = nullptr;
    withRecord(call, table, handle, [&](Library& lib, auto& slot) {
        (lib.*table).addReference(slot);
        result = give(lib, lib.*table, slot);
        return LI_NWC_OK;
    });
    return result;
}

// Gives back a reference on a record that nothing else holds.
template <typename Table, typename Handle>
LiNwcStatus destroyPlain(const char* call, Table Library::*table, Handle handle) noexcept {
    return withRecord(call, table, handle, [&](Library& lib, auto& slot) {
        if ((lib.*table).release(slot)) {
            (lib.*table).recycle(slot);
        }
        return LI_NWC_OK;
    });
}

}  // namespace nwcreate
