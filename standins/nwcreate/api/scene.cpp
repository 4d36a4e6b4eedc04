// Scenes and views.
#include "nwcreate/writing/node_json.h"
#include "nwcreate/writing/node_tree.h"
#include "nwcreate/writing/scene_writer.h"
#include "tolmar/code_page.h"
#include "tolmar/paths.h"
#include "tolmar/system.h"

#include <algorithm>
#include <filesystem>

using namespace nwcreate;

namespace {

constexpr std::uint64_t largestFile = 0xFFFFFFFF;

std::string temporaryFolder() {
    std::error_code error;
    const std::filesystem::path folder = std::filesystem::temp_directory_path(error);
    return error ? std::string("/tmp") : folder.string();
}

bool isColor(const Vec3& color) {
    return std::all_of(color.begin(), color.end(), [](double part) { return part >= 0.0 && part <= 1.0; });
}

bool takeColor(const double* from, Vec3& color) {
    if (from == nullptr) {
        return false;
    }
    std::copy_n(from, 3, color.begin());
    return isColor(color);
}

LiNwcStatus setView(const char* call, LiNwcScene scene, LiNwcView view, std::optional<View> SceneSettings::*which) {
    return withRecord(call, &Library::scenes, scene, [&](Library& lib, auto& slot) -> LiNwcStatus {
        const auto* found = lib.views.find(view);
        if (found == nullptr) {
            return badHandle(call);
        }
        slot.record.store->settings.*which = found->record.view;
        return LI_NWC_OK;
    });
}

LiNwcStatus setVector(const char* call, LiNwcView view, Vec3 View::*which, const Vec3& value) {
    return withRecord(call, &Library::views, view, [&](Library&, auto& slot) -> LiNwcStatus {
        if (!arePlaces(value)) {
            return badValue(call, "no place");
        }
        slot.record.view.*which = value;
        return LI_NWC_OK;
    });
}

LiNwcStatus write(const char* call, LiNwcScene scene, const char16_t* title, const char16_t* path) {
    return withRecord(call, &Library::scenes, scene, [&](Library& lib, auto& slot) -> LiNwcStatus {
        const std::string codePagePath = tolmar::fromWide(textOf(path));
        return writeScene(lib, *slot.record.store, textOf(title), codePagePath) ? LI_NWC_OK : LI_NWC_NOT_WRITTEN;
    });
}

}  // namespace

LiNwcScene LiNwcSceneCreate(void) {
    return guardedHandle<LiNwcScene>(__func__, [](Library& lib) {
        const bool isAside = lib.spoolFolder.empty() || tolmar::dryRun();
        const std::uint64_t limit = lib.fileLimit == 0 ? largestFile : std::min(lib.fileLimit, largestFile);
        auto& slot = lib.scenes.create();
        slot.record.store = std::make_unique<SceneStore>(isAside ? temporaryFolder() : lib.spoolFolder, limit);
        lib.current = slot.record.store.get();
        return give(lib, lib.scenes, slot);
    });
}

LiNwcStatus LiNwcSceneDestroy(LiNwcScene scene) {
    return withRecord(__func__, &Library::scenes, scene, [](Library& lib, auto& slot) {
        const SceneStore* store = slot.record.store.get();
        leaveScene(lib, *store);
        lib.current = lib.current == store ? nullptr : lib.current;
        lib.scenes.release(slot);
        lib.scenes.recycle(slot);
        return LI_NWC_OK;
    });
}

LiNwcStatus LiNwcSceneSetLinearUnits(LiNwcScene scene, int units) {
    return withRecord("LiNwcSceneSetLinearUnits", &Library::scenes, scene, [units](Library&, auto&) -> LiNwcStatus {
        constexpr int millimetres = 2;
        return units == millimetres ? LI_NWC_OK : badValue("LiNwcSceneSetLinearUnits", "only millimetres are known");
    });
}

LiNwcStatus LiNwcSceneAddNode(LiNwcScene scene, LiNwcNode node) {
    const char* const call = __func__;
    return withRecord(call, &Library::scenes, scene, [&](Library& lib, auto& slot) -> LiNwcStatus {
        NodeSlot* child = lib.nodes.find(node);
        if (child == nullptr) {
            return badHandle(call);
        }
        if (child->record.isAttached() || child->record.store != slot.record.store.get()) {
            return badValue(call, "the node has a place already, or another scene");
        }
        addRoot(*slot.record.store, *child);
        return LI_NWC_OK;
    });
}

LiNwcStatus LiNwcSceneAddGridSystem(LiNwcScene scene, LiNwcGridSystem system) {
    const char* const call = __func__;
    return withRecord(call, &Library::scenes, scene, [&](Library& lib, auto& slot) -> LiNwcStatus {
        const auto* found = lib.gridSystems.find(system);
        if (found == nullptr) {
            return badHandle(call);
        }
        SceneStore& store = *slot.record.store;
        store.roots.push_back({addGridNodes(store, found->record.system), true});
        return LI_NWC_OK;
    });
}

LiNwcStatus LiNwcSceneSetCurrentView(LiNwcScene scene, LiNwcView view) {
    return setView(__func__, scene, view, &SceneSettings::currentView);
}

LiNwcStatus LiNwcSceneSetHomeView(LiNwcScene scene, LiNwcView view) {
    return setView(__func__, scene, view, &SceneSettings::homeView);
}

LiNwcStatus LiNwcSceneSetHorizonBackground(LiNwcScene scene, const double* color1, const double* color2,
                                           const double* color3, const double* color4) {
    const char* const call = __func__;
    return withRecord(call, &Library::scenes, scene, [&](Library&, auto& slot) -> LiNwcStatus {
        std::array<Vec3, 4> colors;
        if (!takeColor(color1, colors[0]) || !takeColor(color2, colors[1]) || !takeColor(color3, colors[2]) ||
            !takeColor(color4, colors[3])) {
            return badValue(call, "no colour");
        }
        slot.record.store->settings.background = colors;
        return LI_NWC_OK;
    });
}

LiNwcStatus LiNwcSceneSetGlobalAmbient(LiNwcScene scene, double r, double g, double b) {
    const char* const call = __func__;
    return withRecord(call, &Library::scenes, scene, [&](Library&, auto& slot) -> LiNwcStatus {
        if (!isColor({r, g, b})) {
            return badValue(call, "no colour");
        }
        slot.record.store->settings.ambient = Vec3{r, g, b};
        return LI_NWC_OK;
    });
}

LiNwcStatus LiNwcSceneWriteCacheEx(LiNwcScene scene, const char16_t* title, const char16_t* path, void*, void*) {
    return write(__func__, scene, title, path);
}

LiNwcStatus LiNwcSceneWriteEx(LiNwcScene scene, const char16_t* path, void*, void*) {
    return write(__func__, scene, nullptr, path);
}

LiNwcView LiNwcViewCreate(void) {
    return guardedHandle<LiNwcView>(__func__, [](Library& lib) { return give(lib, lib.views, lib.views.create()); });
}

LiNwcStatus LiNwcViewSetWorldUpVector(LiNwcView view, double x, double y, double z) {
    return setVector(__func__, view, &View::worldUp, {x, y, z});
}

LiNwcStatus LiNwcViewSetPosition(LiNwcView view, double x, double y, double z) {
    return setVector(__func__, view, &View::position, {x, y, z});
}

LiNwcStatus LiNwcViewPointAt(LiNwcView view, double x, double y, double z) {
    return setVector(__func__, view, &View::target, {x, y, z});
}

LiNwcStatus LiNwcSavedViewDestroy(LiNwcView view) {
    return destroyPlain(__func__, &Library::views, view);
}
