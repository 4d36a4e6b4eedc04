// Class records of the entities, bases first.
#include "tolmar/entity.h"

TLRX_DEFINE_ROOT(TlDbEntity);
TLRX_DEFINE(TlDbCurve, TlDbEntity);
TLRX_DEFINE(TlDbLine, TlDbCurve);
TLRX_DEFINE(TlDbCircle, TlDbCurve);
TLRX_DEFINE(TlDbArc, TlDbCurve);
TLRX_DEFINE(TlDbPolyline, TlDbCurve);
TLRX_DEFINE(TlDbText, TlDbEntity);
TLRX_DEFINE(TlDbHatch, TlDbEntity);
TLRX_DEFINE(TlDbPoint, TlDbEntity);
TLRX_DEFINE(TlDb3dSolid, TlDbEntity);
TLRX_DEFINE(TlDbSurface, TlDbEntity);
TLRX_DEFINE(TlDbBlockReference, TlDbEntity);
TLRX_DEFINE(TlDbSubDMesh, TlDbEntity);
TLRX_DEFINE(ORNACadPrimary3D, TlDbEntity);
TLRX_DEFINE(TlDbPolyFaceMesh, TlDbEntity);
TLRX_DEFINE(HextPolygonMeshView, TlDbEntity);
