#include "nwcreate/store/library.h"
#include "tolmar/code_page.h"
#include "tolmar/paths.h"

using namespace nwcreate;

uint64_t LiNwcInspectLive(LiNwcHandleKind kind) {
    std::uint64_t live = 0;
    int at = 0;
    library().forEachTable([&](auto& table) { live += at++ == static_cast<int>(kind) ? table.live() : 0; });
    return live;
}

LiNwcBalance LiNwcInspectBalance(void) {
    Library& lib = library();
    const std::uint64_t left = lib.isReady ? lib.live() : lib.left;
    return {lib.given, lib.given - left, left, lib.misused};
}

LiNwcSceneCounts LiNwcInspectScene(LiNwcScene scene) {
    LiNwcSceneCounts counts = {};
    withRecord(__func__, &Library::scenes, scene, [&](Library&, auto& slot) {
        const SceneStore& store = *slot.record.store;
        counts = {store.nodeCount(),     store.meshCount(),          store.shapes.shapeCount(),
                  store.materialCount(), store.shapes.bufferCount(), store.shapes.totalSize()};
        return LI_NWC_OK;
    });
    return counts;
}

LiNwcStatus LiNwcApiSetSpoolFolder(const char16_t* folder) {
    return guarded(__func__, [folder](Library& lib) {
        const std::string codePage = tolmar::fromWide(textOf(folder));
        lib.spoolFolder = codePage.empty() ? std::string() : tolmar::resolvePath(codePage).string();
        return LI_NWC_OK;
    });
}

LiNwcStatus LiNwcApiSetFileLimit(uint64_t bytes) {
    return guarded(__func__, [bytes](Library& lib) {
        lib.fileLimit = bytes;
        return LI_NWC_OK;
    });
}
