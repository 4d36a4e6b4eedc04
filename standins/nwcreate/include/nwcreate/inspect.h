/* What the calls of nwcreate.h do not tell, for tests and for the program around them: references that are out, where
 * temporary files stand, how large a file may become. */
#pragma once

#include "nwcreate/nwcreate.h"

#ifdef __cplusplus
extern "C" {
#endif

typedef enum LiNwcHandleKind {
    LI_NWC_SCENE,
    LI_NWC_NODE,
    LI_NWC_ATTRIBUTE,
    LI_NWC_DATA,
    LI_NWC_STREAM,
    LI_NWC_TEXT_STYLE,
    LI_NWC_VIEW,
    LI_NWC_GRID_SYSTEM,
    LI_NWC_GRID_LINE,
    LI_NWC_GRID_LEVEL,
    LI_NWC_SHAPE, /* shapes.h */
    LI_NWC_HANDLE_KINDS
} LiNwcHandleKind;

/* References of this kind that callers hold at this moment. */
LI_NWC_API uint64_t LiNwcInspectLive(LiNwcHandleKind kind);

typedef struct LiNwcBalance {
    uint64_t given;    /* references given out, of all kinds */
    uint64_t returned; /* references given back in time */
    uint64_t left;     /* references still out when the library was terminated */
    uint64_t misused;  /* calls with a dead, null or wrong handle, double destroys among them */
} LiNwcBalance;

/* Since the last LiNwcApiInitialise; after LiNwcApiTerminate how it ended. */
LI_NWC_API LiNwcBalance LiNwcInspectBalance(void);

typedef struct LiNwcSceneCounts {
    uint64_t nodes;     /* settled nodes */
    uint64_t meshes;    /* shapes with their materials, equal ones once */
    uint64_t shapes;    /* pieces of vertices and indices, equal ones once */
    uint64_t materials; /* equal ones once */
    uint64_t buffers;   /* the one in the scene file and further buffer files */
    uint64_t bytes;     /* of vertices and indices on disk */
} LiNwcSceneCounts;
LI_NWC_API LiNwcSceneCounts LiNwcInspectScene(LiNwcScene scene);

/* Folder of the temporary files of scenes that are created from now on (null or empty: the system's folder for such
 * files). Best the folder that the scene will be written to. The files have no name: nothing is left behind, however
 * the run ends. A folder that cannot be written to shows as LI_NWC_NOT_WRITTEN when the scene is
 * written, unless the scene is small enough never to need it. Holds until
 * the library is terminated. */
LI_NWC_API LiNwcStatus LiNwcApiSetSpoolFolder(const char16_t* folder);

/* No file of a scene that is created from now on becomes larger, 0 (the default): 4 GiB less one byte, the most that a
 * binary glTF can say. Three quarters of it is room for vertices and indices; what passes that goes to further files
 * beside the scene (plant.nwc, plant.1.bin, plant.2.bin ...). One shape is never split, so a larger one makes a larger
 * buffer file. Holds until the library is terminated. */
LI_NWC_API LiNwcStatus LiNwcApiSetFileLimit(uint64_t bytes);

#ifdef __cplusplus
}
#endif
