/* The two calls that come by the million, for inlining in C++; nwcreate.h includes this. The functions themselves stand
 * in the library, and what the short way does not cover, every mistake included, goes to them. */
#pragma once

/* Where the open section takes its next vertex and index. The library keeps it; callers leave it alone. A pointer
 * equals its end when there is no room, while no section is open and, for vertices, under a transform. */
struct LiNwcOpenSection {
    LiNwcGeometryStream stream;
    double* vertex;
    double* vertexEnd; /* a whole number of vertices further on */
    uint32_t* index;
    uint32_t* indexEnd;
};
extern "C" LI_NWC_API LiNwcOpenSection LiNwcCurrentSection;

/* Puts a vertex or index where it belongs; false when this is not the way for it. */
inline bool liNwcPutVertex(LiNwcGeometryStream stream, double x, double y, double z) {
    LiNwcOpenSection& open = LiNwcCurrentSection;
    double* const to = open.vertex;
    if (stream != open.stream || to == open.vertexEnd) {
        return false;
    }
    open.vertex = to + 3;
    to[0] = x;
    to[1] = y;
    to[2] = z;
    return true;
}

inline bool liNwcPutIndex(LiNwcGeometryStream stream, int index) {
    LiNwcOpenSection& open = LiNwcCurrentSection;
    uint32_t* const to = open.index;
    if (stream != open.stream || to == open.indexEnd) {
        return false;
    }
    open.index = to + 1;
    *to = static_cast<uint32_t>(index);
    return true;
}

/* The library, which defines the functions, sets this. */
#ifndef LI_NWC_NO_INLINE
#define LI_NWC_INLINE extern "C" inline __attribute__((gnu_inline, always_inline))

extern "C" LI_NWC_API LiNwcStatus liNwcIndexedVertexCall(LiNwcGeometryStream stream, double x, double y,
                                                         double z) __asm__("LiNwcGeometryStreamIndexedVertex");
extern "C" LI_NWC_API LiNwcStatus liNwcTriangleIndexCall(LiNwcGeometryStream stream,
                                                         int index) __asm__("LiNwcGeometryStreamTriangleIndex");

LI_NWC_INLINE LiNwcStatus LiNwcGeometryStreamIndexedVertex(LiNwcGeometryStream stream, double x, double y, double z) {
    return liNwcPutVertex(stream, x, y, z) ? LI_NWC_OK : liNwcIndexedVertexCall(stream, x, y, z);
}

LI_NWC_INLINE LiNwcStatus LiNwcGeometryStreamTriangleIndex(LiNwcGeometryStream stream, int index) {
    return liNwcPutIndex(stream, index) ? LI_NWC_OK : liNwcTriangleIndexCall(stream, index);
}

#undef LI_NWC_INLINE
#endif
