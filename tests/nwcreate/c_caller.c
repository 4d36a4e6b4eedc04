/* The headers as C sees them; compiled, never run. */
#include "nwcreate/inspect.h"
#include "nwcreate/shapes.h"

static void tell(int kind, const char* text) {
    (void)kind;
    (void)text;
}

int writeEmptyScene(void) {
    LiNwcApiErrorInitialise();
    LiNwcApiInitialise();
    LiNwcApiSetErrorHandler(tell, 0);
    LiNwcScene scene = LiNwcSceneCreate();
    LiNwcGroup group = LiNwcGroupCreate();
    LiNwcNodeSetName(group, u"group");
    LiNwcSceneAddNode(scene, group);
    LiNwcNodeDestroy(group);
    LiNwcStatus status = LiNwcSceneWriteCacheEx(scene, u"title", u"scene.nwc", 0, 0);
    LiNwcSceneDestroy(scene);
    LiNwcApiTerminate();
    return status == LI_NWC_OK && LiNwcInspectBalance().left == 0 ? 0 : 1;
}
