/* Many vertices and indices by one call, and shapes that come again: a shape that was streamed once stands in further
 * places without being streamed anew. What comes out is what single calls of nwcreate.h would give. */
#pragma once

#include "nwcreate/nwcreate.h"

#ifdef __cplusplus
#include <cstddef>
extern "C" {
#else
#include <stddef.h>
#endif

/* So many LiNwcGeometryStreamIndexedVertex, three doubles each, and LiNwcGeometryStreamTriangleIndex. */
LI_NWC_API LiNwcStatus LiNwcGeometryStreamIndexedVertices(LiNwcGeometryStream stream, const double* vertices,
                                                          size_t count);
LI_NWC_API LiNwcStatus LiNwcGeometryStreamTriangleIndices(LiNwcGeometryStream stream, const uint32_t* indices,
                                                          size_t count);

typedef struct LiNwcShapeTag* LiNwcShape;

/* A reference on the shape of a geometry whose streams are closed. Null, and nothing is told, when that shape is not a
 * single piece (triangles, a line strip or a circle): it has to be streamed each time. Dead once its scene is gone,
 * given back by LiNwcShapeDestroy all the same. */
LI_NWC_API LiNwcShape LiNwcGeometryShape(LiNwcGeometry geometry);
LI_NWC_API LiNwcStatus LiNwcShapeDestroy(LiNwcShape shape);

/* Adds a node with the shape, moved by (x, y, z) from where it was streamed, and the material (null: none) to the
 * group: a geometry that is created, streamed, painted, added and given back at once. LI_NWC_BAD_ORDER when the scene
 * of the shape is gone, LI_NWC_BAD_VALUE when the group is of another scene or the place is none. */
LI_NWC_API LiNwcStatus LiNwcGroupAddShape(LiNwcGroup group, LiNwcShape shape, LiNwcMaterial material, double x,
                                          double y, double z);

#ifdef __cplusplus
}
#endif
