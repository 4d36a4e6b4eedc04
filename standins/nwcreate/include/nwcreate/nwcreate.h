/* Scenes for viewers, the calls of the nwcreate library. The scene is written as binary glTF 2.0 (docs/scene.md).
 *
 * Order: LiNwcApiErrorInitialise, LiNwcApiInitialise, LiNwcApiSetErrorHandler, then everything else, at last
 * LiNwcApiTerminate. One thread at a time.
 *
 * Handles are opaque and never dereferenced by the caller. A ...Create call gives one reference, ...CreateRef one more
 * on the same handle, ...Destroy gives one back. Whatever takes a handle as an argument (AddNode, AddAttribute,
 * AddProperty, AddGridLine, SetCurrentView ...) keeps what it needs and takes no reference from the caller, who gives
 * every handle back himself, in any order. What is never added to something is dropped with its last reference.
 * A node is settled when its last reference is given back: from then on it costs no memory but its place in the tree.
 * A handle that is dead, null or of another kind is never followed: the call does nothing, tells the error handler
 * (kind 0) and gives LI_NWC_BAD_HANDLE or null.
 *
 * Nodes belong to the scene made last and stand in no other.
 *
 * Texts are UTF-16, ended by a zero; null reads as empty. They are copied. Lengths are in the scene's linear units,
 * axes are right-handed with Z up. Colour parts go from 0 to 1, in sRGB. Vectors are three doubles, matrices sixteen:
 * the images of X, Y, Z and the origin, each with its fourth part (0, 0, 0, 1).
 *
 * Calls without a handle to give return a LiNwcStatus; 0 is success. */
#pragma once

#ifdef __cplusplus
#include <cstdint>
extern "C" {
#else
#include <stdint.h>
#include <uchar.h>
#endif

#define LI_NWC_API __attribute__((visibility("default")))

typedef int LiNwcStatus;
enum {
    LI_NWC_OK = 0,
    LI_NWC_BAD_HANDLE = 1,  /* told to the error handler, kind 0 */
    LI_NWC_BAD_ORDER = 2,   /* a call at the wrong time, such as a vertex outside Begin and End; told, kind 0 */
    LI_NWC_BAD_VALUE = 3,   /* not finite, out of range, a second parent; told, kind 1 */
    LI_NWC_NOT_WRITTEN = 4, /* the scene could not be written whole; told to the run report, not to the handler */
    LI_NWC_FAILED = 5       /* out of memory; told, kind 0 */
};

typedef struct LiNwcSceneTag* LiNwcScene;
typedef struct LiNwcNodeTag* LiNwcNode;
typedef LiNwcNode LiNwcGroup;    /* a node that has children */
typedef LiNwcNode LiNwcGeometry; /* a node that has a shape */
typedef struct LiNwcAttributeTag* LiNwcAttribute;
typedef LiNwcAttribute LiNwcMaterial;
typedef LiNwcAttribute LiNwcPropertyAttribute;
typedef struct LiNwcDataTag* LiNwcData;
typedef struct LiNwcStreamTag* LiNwcGeometryStream;
typedef struct LiNwcTextStyleTag* LiNwcTextStyle;
typedef struct LiNwcViewTag* LiNwcView;
typedef struct LiNwcGridSystemTag* LiNwcGridSystem;
typedef struct LiNwcGridLineTag* LiNwcGridLine;
typedef struct LiNwcGridLevelTag* LiNwcGridLevel;

/* ---- The library ---- */

/* Kind 0: an error, the caller's fault. Kind 1: a warning, something is left out. The text is ASCII and lives for the
 * length of the call. The handler must not throw. */
enum { LI_NWC_ERROR = 0, LI_NWC_WARNING = 1 };
typedef void (*LiNwcErrorHandler)(int kind, const char* text);

LI_NWC_API LiNwcStatus LiNwcApiErrorInitialise(void);
/* LI_NWC_BAD_ORDER when it is initialised already. */
LI_NWC_API LiNwcStatus LiNwcApiInitialise(void);
/* Null: nobody is told. Stays until the library is terminated. `reserved` is null. */
LI_NWC_API LiNwcStatus LiNwcApiSetErrorHandler(LiNwcErrorHandler handler, void* reserved);
/* Frees everything. References that are still out are told to the handler (kind 1, one message in all) and are dead
 * from then on; inspect.h tells their number. */
LI_NWC_API LiNwcStatus LiNwcApiTerminate(void);

/* ---- The scene ---- */

/* Geometry goes to temporary files from the start, so several scenes at once are possible, but never cheap. */
LI_NWC_API LiNwcScene LiNwcSceneCreate(void);
LI_NWC_API LiNwcStatus LiNwcSceneDestroy(LiNwcScene scene);
/* 2 (the default): millimetres. Nothing else is known: LI_NWC_BAD_VALUE. */
LI_NWC_API LiNwcStatus LiNwcSceneSetLinearUnits(LiNwcScene scene, int units);
/* The node keeps its children; it must have no parent. Call it at any time before writing. */
LI_NWC_API LiNwcStatus LiNwcSceneAddNode(LiNwcScene scene, LiNwcNode node);
LI_NWC_API LiNwcStatus LiNwcSceneAddGridSystem(LiNwcScene scene, LiNwcGridSystem system);
/* The view as it is now. */
LI_NWC_API LiNwcStatus LiNwcSceneSetCurrentView(LiNwcScene scene, LiNwcView view);
LI_NWC_API LiNwcStatus LiNwcSceneSetHomeView(LiNwcScene scene, LiNwcView view);
/* Four colours of three doubles: sky above, sky at the horizon, ground at the horizon, ground below. */
LI_NWC_API LiNwcStatus LiNwcSceneSetHorizonBackground(LiNwcScene scene, const double* color1, const double* color2,
                                                      const double* color3, const double* color4);
LI_NWC_API LiNwcStatus LiNwcSceneSetGlobalAmbient(LiNwcScene scene, double r, double g, double b);
/* Write the scene at `path`, over what was there; both forms are the same file but for the title. Every file is told to
 * the run report with its size. When not all can be written (LI_NWC_NOT_WRITTEN) no file of the scene is left behind
 * and the run report knows why. The scene may be written again. The last two arguments are null. */
LI_NWC_API LiNwcStatus LiNwcSceneWriteCacheEx(LiNwcScene scene, const char16_t* title, const char16_t* path,
                                              void* reserved1, void* reserved2);
LI_NWC_API LiNwcStatus LiNwcSceneWriteEx(LiNwcScene scene, const char16_t* path, void* reserved1, void* reserved2);

/* ---- Views ---- */

LI_NWC_API LiNwcView LiNwcViewCreate(void);
LI_NWC_API LiNwcStatus LiNwcViewSetWorldUpVector(LiNwcView view, double x, double y, double z);
LI_NWC_API LiNwcStatus LiNwcViewSetPosition(LiNwcView view, double x, double y, double z);
LI_NWC_API LiNwcStatus LiNwcViewPointAt(LiNwcView view, double x, double y, double z);
/* Gives back what LiNwcViewCreate gave. */
LI_NWC_API LiNwcStatus LiNwcSavedViewDestroy(LiNwcView view);

/* ---- Nodes ---- */

LI_NWC_API LiNwcGroup LiNwcGroupCreate(void);
/* The same as LiNwcNodeDestroy, for a group. */
LI_NWC_API LiNwcStatus LiNwcGroupDestroy(LiNwcGroup group);
/* Children keep the order in which they are added. A node has one parent: LI_NWC_BAD_VALUE when it has one already, or
 * when the group would come to stand below itself. Parent and child may get children, name, layer and attributes in any
 * order, also after this. */
LI_NWC_API LiNwcStatus LiNwcGroupAddNode(LiNwcGroup group, LiNwcNode node);
/* 1: the group is an object of its own (a layer); 0: it is not. */
LI_NWC_API LiNwcStatus LiNwcGroupSetLayer(LiNwcGroup group, int layer);
LI_NWC_API LiNwcStatus LiNwcNodeSetName(LiNwcNode node, const char16_t* name);
/* The attribute as it is when the node is settled or the scene is written. Any number of property attributes; of
 * several materials the last counts. */
LI_NWC_API LiNwcStatus LiNwcNodeAddAttribute(LiNwcNode node, LiNwcAttribute attribute);
LI_NWC_API LiNwcNode LiNwcNodeCreateRef(LiNwcNode node);
/* Any node: groups and geometries. */
LI_NWC_API LiNwcStatus LiNwcNodeDestroy(LiNwcNode node);

/* ---- Attributes: materials and properties ---- */

/* Grey, opaque. Equal materials are stored once. Freed by LiNwcAttributeDestroy. */
LI_NWC_API LiNwcMaterial LiNwcMaterialCreate(void);
LI_NWC_API LiNwcStatus LiNwcMaterialSetAmbientColor(LiNwcMaterial material, double r, double g, double b);
LI_NWC_API LiNwcStatus LiNwcMaterialSetDiffuseColor(LiNwcMaterial material, double r, double g, double b);
/* 0: opaque, 1: not to be seen. */
LI_NWC_API LiNwcStatus LiNwcMaterialSetTransparency(LiNwcMaterial material, double transparency);

LI_NWC_API LiNwcPropertyAttribute LiNwcPropertyAttributeCreate(void);
LI_NWC_API LiNwcStatus LiNwcAttributeSetClassName(LiNwcAttribute attribute, const char16_t* userName,
                                                  const char16_t* internalName);
/* Takes the data as it is now. Properties keep their order; keys may repeat. */
LI_NWC_API LiNwcStatus LiNwcPropertyAttributeAddProperty(LiNwcPropertyAttribute attribute, const char16_t* userName,
                                                         const char16_t* internalName, LiNwcData data);
LI_NWC_API LiNwcAttribute LiNwcAttributeCreateRef(LiNwcAttribute attribute);
/* Any attribute: materials and properties. */
LI_NWC_API LiNwcStatus LiNwcAttributeDestroy(LiNwcAttribute attribute);

/* A value, empty at first. */
LI_NWC_API LiNwcData LiNwcDataCreate(void);
LI_NWC_API LiNwcStatus LiNwcDataSetName(LiNwcData data, const char16_t* value, const char16_t* internalName);
LI_NWC_API LiNwcStatus LiNwcDataDestroy(LiNwcData data);

/* ---- Geometry ---- */

/* A shape. It belongs to the scene made last and holds nothing that lives longer than that scene. */
LI_NWC_API LiNwcGeometry LiNwcGeometryCreate(void);

/* One open stream a geometry at a time; a second one later adds to the shape. Null when one is open. The stream is no
 * reference on the geometry, which must live until the stream is closed. */
LI_NWC_API LiNwcGeometryStream LiNwcGeometryOpenStream(LiNwcGeometry geometry);
/* Ends the stream's life; what stands after the last End is dropped with LI_NWC_BAD_ORDER. The vertices are on their
 * way to disk afterwards. A stream that is never closed dies with its geometry and is told as left over. */
LI_NWC_API LiNwcStatus LiNwcGeometryCloseStream(LiNwcGeometry geometry, LiNwcGeometryStream stream);

/* Begin and End bracket one section: triangles (IndexedVertex, TriangleIndex), one line strip (LineStripVertex,
 * LineStripIndex), circles, text; a section may hold each kind. The flags are 0 or LI_NWC_HAS_COLOR. */
enum { LI_NWC_HAS_COLOR = 2 };
LI_NWC_API LiNwcStatus LiNwcGeometryStreamBegin(LiNwcGeometryStream stream, int flags);
/* LI_NWC_BAD_VALUE, and the section is left out whole, when a number in it is not finite, an index names no vertex, a
 * radius is not above 0, or the triangle indices are no multiple of three. A section without indices, circles and texts
 * adds nothing. */
LI_NWC_API LiNwcStatus LiNwcGeometryStreamEnd(LiNwcGeometryStream stream);
/* The two calls that come by the million check the handle and the order only; what is wrong with a number is said by
 * End. Indices count from 0 within the section. shapes.h has them for many at once. */
LI_NWC_API LiNwcStatus LiNwcGeometryStreamIndexedVertex(LiNwcGeometryStream stream, double x, double y, double z);
LI_NWC_API LiNwcStatus LiNwcGeometryStreamTriangleIndex(LiNwcGeometryStream stream, int index);
LI_NWC_API LiNwcStatus LiNwcGeometryStreamLineStripVertex(LiNwcGeometryStream stream, double x, double y, double z);
LI_NWC_API LiNwcStatus LiNwcGeometryStreamLineStripIndex(LiNwcGeometryStream stream, int index);
/* A full circle; `center` and `normal` are vectors, the normal is not zero. */
LI_NWC_API LiNwcStatus LiNwcGeometryStreamCircle(LiNwcGeometryStream stream, const double* center, const double* normal,
                                                 double radius);
/* The colour of the section, in a section with LI_NWC_HAS_COLOR; the last counts. `a` is the transparency: 0 is opaque.
 * A material on the node goes before it. */
LI_NWC_API LiNwcStatus LiNwcGeometryStreamColor(LiNwcGeometryStream stream, double r, double g, double b, double a);
/* A stack of matrices, at first empty; the topmost holds for what follows, with those below applied after it. Push puts
 * a unit matrix on it, Set replaces the topmost, Pop takes it off; Push and Pop may stand outside Begin and End. */
LI_NWC_API LiNwcStatus LiNwcGeometryStreamPushTransform(LiNwcGeometryStream stream);
LI_NWC_API LiNwcStatus LiNwcGeometryStreamSetTransform(LiNwcGeometryStream stream, const double* matrix);
LI_NWC_API LiNwcStatus LiNwcGeometryStreamPopTransform(LiNwcGeometryStream stream);
/* Text stands on the X axis from the origin of the transform, up along Y. It is kept as text and drawn as its frame. */
LI_NWC_API LiNwcStatus LiNwcGeometryStreamBeginText(LiNwcGeometryStream stream, LiNwcTextStyle style);
LI_NWC_API LiNwcStatus LiNwcGeometryStreamAddText(LiNwcGeometryStream stream, const char16_t* text);
LI_NWC_API LiNwcStatus LiNwcGeometryStreamEndText(LiNwcGeometryStream stream);

LI_NWC_API LiNwcTextStyle LiNwcTextStyleCreate(const char16_t* fontName);
LI_NWC_API LiNwcStatus LiNwcTextStyleSetFontHeight(LiNwcTextStyle style, double height);
LI_NWC_API LiNwcStatus LiNwcTextStyleDestroy(LiNwcTextStyle style);

/* ---- Grids ---- */

LI_NWC_API LiNwcGridSystem LiNwcGridSystemCreate(const char16_t* name, const double* origin, const double* xAxis,
                                                 const double* yAxis);
LI_NWC_API LiNwcGridSystem LiNwcGridSystemCreateRef(LiNwcGridSystem system);
LI_NWC_API LiNwcStatus LiNwcGridSystemDestroy(LiNwcGridSystem system);
/* Lines, levels and systems are taken as they are at the time of adding. Segments are in scene coordinates. */
LI_NWC_API LiNwcGridLine LiNwcGridLineCreate(const char16_t* name);
LI_NWC_API LiNwcStatus LiNwcGridLineAddLinearSegment(LiNwcGridLine line, const double* start, const double* end);
LI_NWC_API LiNwcStatus LiNwcGridSystemAddGridLine(LiNwcGridSystem system, LiNwcGridLine line);
LI_NWC_API LiNwcStatus LiNwcGridLineDestroy(LiNwcGridLine line);
LI_NWC_API LiNwcGridLevel LiNwcGridLevelCreate(const char16_t* name, double height);
LI_NWC_API LiNwcStatus LiNwcGridSystemAddGridLevel(LiNwcGridSystem system, LiNwcGridLevel level);
LI_NWC_API LiNwcStatus LiNwcGridLevelDestroy(LiNwcGridLevel level);

#ifdef __cplusplus
}
#endif
