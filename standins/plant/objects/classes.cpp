// Class records of the platform, bases first.
#include "platform/objects.h"
#include "platform/primitives.h"

TLRX_DEFINE_ROOT(HxDbObject);
TLRX_DEFINE(HxDbTreeNode, HxDbObject);

TLRX_DEFINE(HextNameNode, HxDbObject);
TLRX_DEFINE(HextWorld, HextNameNode);
TLRX_DEFINE(HextSite, HextNameNode);
TLRX_DEFINE(HextZone, HextNameNode);
TLRX_DEFINE(HextZoneDirectory, HextNameNode);
TLRX_DEFINE(HextUnit, HextNameNode);
TLRX_DEFINE(HextItem, HextNameNode);
TLRX_DEFINE(HextStdFloor, HextZone);
TLRX_DEFINE(HextManager, HextNameNode);
TLRX_DEFINE(HextPipeline, HextManager);
TLRX_DEFINE(HextStruct, HextManager);
TLRX_DEFINE(HextEquipe, HextManager);
TLRX_DEFINE(HextSupport, HextManager);
TLRX_DEFINE(HextAxiss, HextManager);
TLRX_DEFINE(HextPIDPaperManager, HextManager);

TLRX_DEFINE(HxDbSmrtlnEntity, HxDbObject);
TLRX_DEFINE(HxDbTubeModel, HxDbSmrtlnEntity);
TLRX_DEFINE(HxDbTubeGeneral, HxDbTubeModel);
TLRX_DEFINE(HxDbTubeWeld, HxDbTubeGeneral);
TLRX_DEFINE(HxDbTubeStop, HxDbTubeGeneral);
TLRX_DEFINE(HxDbBalloon, HxDbTubeGeneral);
TLRX_DEFINE(HxDbTubeModelSpec, HxDbTubeModel);
TLRX_DEFINE(HxDbPipeSpec, HxDbTubeModelSpec);
TLRX_DEFINE(HxDbNozzleModel, HxDbTubeModelSpec);
TLRX_DEFINE(HxDbAssembly, HxDbSmrtlnEntity);
TLRX_DEFINE(HxDbSupportModel, HxDbAssembly);
TLRX_DEFINE(HxDbEquipment, HxDbSmrtlnEntity);
TLRX_DEFINE(HxDbStruct, HxDbSmrtlnEntity);
TLRX_DEFINE(HxDbAxissLine, HxDbSmrtlnEntity);
TLRX_DEFINE(HxDbXGModel, HxDbSmrtlnEntity);
TLRX_DEFINE(HxDbNonTube, HxDbSmrtlnEntity);
TLRX_DEFINE(HxDbBoltNutModel, HxDbSmrtlnEntity);
TLRX_DEFINE(HxDbAcadSerialObject, HxDbSmrtlnEntity);
TLRX_DEFINE(HextAcadEntitySer, HxDbSmrtlnEntity);

TLRX_DEFINE(HxDbSpecification, HxDbObject);
TLRX_DEFINE(HxDbTubeSpecification, HxDbSpecification);
TLRX_DEFINE(HxDbSupportItem, HxDbSpecification);
TLRX_DEFINE(HextStanParts, HxDbObject);
TLRX_DEFINE(HextBolt, HextStanParts);
TLRX_DEFINE(HextNut, HextStanParts);
TLRX_DEFINE(HxDbFlan2BoltNut, HxDbObject);
TLRX_DEFINE(HxDbOther, HxDbObject);

TLRX_DEFINE_ROOT(HextPrimary);
TLRX_DEFINE(HextPrimary3D, HextPrimary);
TLRX_DEFINE(HextBox3D, HextPrimary3D);
TLRX_DEFINE(HextCylinder3D, HextPrimary3D);
TLRX_DEFINE(HextScylinder3D, HextCylinder3D);
TLRX_DEFINE(HextConcone3D, HextPrimary3D);
TLRX_DEFINE(HextEcone3D, HextPrimary3D);
TLRX_DEFINE(HextSqucone3D, HextPrimary3D);
TLRX_DEFINE(HextWedge3D, HextPrimary3D);
TLRX_DEFINE(HextPrism3D, HextPrimary3D);
TLRX_DEFINE(HextOval3D, HextPrimary3D);
TLRX_DEFINE(HextSphere3D, HextPrimary3D);
TLRX_DEFINE(HextTorus3D, HextPrimary3D);
TLRX_DEFINE(HextSqutorus3D, HextPrimary3D);
TLRX_DEFINE(HextSaddle3D, HextPrimary3D);
TLRX_DEFINE(HextSqucir3D, HextPrimary3D);
TLRX_DEFINE(HextSpolygon, HextPrimary3D);
TLRX_DEFINE(HextRevolve, HextPrimary3D);
TLRX_DEFINE(HextPrimaryAcad, HextPrimary3D);
TLRX_DEFINE(HextPrimaryAcadEntity, HextPrimaryAcad);
TLRX_DEFINE(HextPrimaryAcadSolid3D, HextPrimaryAcad);
TLRX_DEFINE(HextAcadBlockReference, HextPrimary3D);
TLRX_DEFINE(HextPrimaryLine, HextPrimary);
TLRX_DEFINE(HextPrimaryText, HextPrimary);
