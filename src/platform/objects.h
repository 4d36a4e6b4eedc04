// Stored objects of the plant platform: tree nodes, managers, connected ("smart") objects, specifications, bolts.
//
// All objects belong to the platform and live as long as the model is loaded; exports keep plain pointers for the
// length of a command and never free them. A pointer result is null when there is nothing, a text result is null when
// the object has no such text. Texts are 8-bit in the system's code page, zero-terminated, and live with the model.
// Coordinates are world millimetres.
#pragma once

#include "platform/geometry.h"
#include "platform/ids.h"
#include "platform/kvparams.h"
#include "tolmar/rx.h"

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

using HxRxObject = TlRxObject;
using HxRxClass = TlRxClass;

// What the model keeps for one object; known to the platform alone.
namespace plant {
struct ObjectData;
struct DatabaseData;
}  // namespace plant

class HxDbDataBase;
class HextBolt;
class HextNut;
class HxDbFlan2BoltNut;
class HxDbTubeSpecification;
class HxDbSupportItem;

namespace HxDb {
// Open modes are passed as numbers and make no difference here: 2 while walking the tree, 3 when following an id.
using OpenMode = int;
}  // namespace HxDb

namespace Hext {
using ErrorStatus = int;
inline constexpr ErrorStatus eOk = 0;
}  // namespace Hext

namespace Plant {
// Direction of flow at a connection: 1 and 2 are the two directions through a point, 0 is none.
using Flow = int;
}  // namespace Plant

class HxDbObject : public HxRxObject {
    TLRX_CLASS(HxDbObject)
public:
    HxDbObjectId objectId() const;
    HxDbDataBase* database() const;
    // Called with 1 before a change of a smart object.
    void openForWrite(int flag);
    // The manager or object that owns this one; invalid when there is none.
    HxDbObjectId getOwnerId() const;
    const char* getDisplayName() const;
    // The objects that belong to this manager, in order.
    std::vector<HxDbObjectId> getMemberIds() const;
    // The standard that the component is made to; null or empty when there is none.
    const char* getStandard() const;

    const plant::ObjectData& data() const { return *data_; }

protected:
    HxDbObject(const HxRxClass& runtimeClass, plant::ObjectData& data) : HxRxObject(runtimeClass), data_(&data) {}

    plant::ObjectData* data_;
};

// Every class below holds nothing of its own: an object is its run-time class and its data.
#define PLANT_OBJECT(Class, Base)                                                                                      \
    TLRX_CLASS(Class)                                                                                                  \
public:                                                                                                                \
    explicit Class(plant::ObjectData& data) : Base(Class::classRecord, data) {}                                        \
                                                                                                                       \
protected:                                                                                                             \
    Class(const HxRxClass& runtimeClass, plant::ObjectData& d) : Base(runtimeClass, d) {}                              \
                                                                                                                       \
public:

// A database of the platform. Owned by the model.
class HxDbDataBase {
public:
    explicit HxDbDataBase(plant::DatabaseData& data) : data_(&data) {}
    const char* dbName() const;
    const plant::DatabaseData& data() const { return *data_; }

private:
    plant::DatabaseData* data_;
};

// ---------------------------------------------------------------------------------------------------------- the tree

// Node of the manager tree. A node is an object of its own, with an id other than that of the object it stands for.
class HxDbTreeNode : public HxDbObject {
    PLANT_OBJECT(HxDbTreeNode, HxDbObject)
    HxDbTreeNode* getSon() const;
    HxDbTreeNode* getBrother() const;
    HxDbTreeNode* getParent() const;
    const char* getName() const;
    HxDbObjectId getTreeNodeValue() const;
};

// ---------------------------------------------------------------------------------------------------------- managers

class HextNameNode : public HxDbObject {
    PLANT_OBJECT(HextNameNode, HxDbObject)
    short getColorIdx() const;
};
class HextWorld : public HextNameNode {
    PLANT_OBJECT(HextWorld, HextNameNode)
};
class HextSite : public HextNameNode {
    PLANT_OBJECT(HextSite, HextNameNode)
};
class HextZone : public HextNameNode {
    PLANT_OBJECT(HextZone, HextNameNode)
};
class HextZoneDirectory : public HextNameNode {
    PLANT_OBJECT(HextZoneDirectory, HextNameNode)
};
class HextUnit : public HextNameNode {
    PLANT_OBJECT(HextUnit, HextNameNode)
};
class HextItem : public HextNameNode {
    PLANT_OBJECT(HextItem, HextNameNode)
};
// A standard floor stands at the level of a zone and counts as one.
class HextStdFloor : public HextZone {
    PLANT_OBJECT(HextStdFloor, HextZone)
};
// Managers hold smart objects; world, site, zone and directory only hold managers.
class HextManager : public HextNameNode {
    PLANT_OBJECT(HextManager, HextNameNode)
};
class HextPipeline : public HextManager {
    PLANT_OBJECT(HextPipeline, HextManager)
};
class HextStruct : public HextManager {
    PLANT_OBJECT(HextStruct, HextManager)
};
class HextEquipe : public HextManager {
    PLANT_OBJECT(HextEquipe, HextManager)
};
class HextSupport : public HextManager {
    PLANT_OBJECT(HextSupport, HextManager)
};
class HextAxiss : public HextManager {
    PLANT_OBJECT(HextAxiss, HextManager)
};
class HextPIDPaperManager : public HextManager {
    PLANT_OBJECT(HextPIDPaperManager, HextManager)
};

// ----------------------------------------------------------------------------------------------------- smart objects

class HxDbSmrtlnEntity;

// A numbered connection point. Owned by its object.
class HxDbSmrtlnPoint {
public:
    HxDbSmrtlnPoint(short number, Plant::Flow flow, const HxGePoint3D& at)
        : coord_(at), number_(number), flow_(static_cast<short>(flow)) {}
    const HxGePoint3D& getCoord() const { return coord_; }
    Plant::Flow getFlow() const { return flow_; }
    short number() const { return number_; }

private:
    HxGePoint3D coord_;
    short number_;
    short flow_;
};

class HxDbSmrtlnEntity : public HxDbObject {
    PLANT_OBJECT(HxDbSmrtlnEntity, HxDbObject)
    // Colour index 0..255; 0 means none of its own.
    short getColorIdx() const;
    void setColorIdx(short index);
    // The name of the object's kind in the platform's library, such as "wall_rect"; null when it has none.
    const char* getObjectName() const;

    // Everything connected to this object, in order of connection number, then of the model file. Appends nothing
    // twice; empties `out` first.
    void getAllConnObject(std::vector<HxDbObject*>& out) const;
    // The object at a connection number; the first one where several hang at one number.
    HxDbSmrtlnEntity* getConnSmrtln(int number, int mode = 0) const;
    // This object's connection number at which `other` hangs; 0 when it is not connected.
    int getConnNoOfSmrtln(const HxDbObject* other, int mode = 0) const;
    // Null when the object has no point of that number. Number 0 is the centre of a tee, cross or arc.
    const HxDbSmrtlnPoint* getPointOfNo(int number, int mode = 0) const;
    // The origin for a number without a point.
    HxGePoint3D getCoordOfNo(int number) const;
    Plant::Flow getFlow(int number) const;
    // All key points, in the model's order.
    void getKeyPoints(std::vector<std::pair<short, HxGePoint3D>>& out) const;
};

// The general class of things in a pipe.
class HxDbTubeModel : public HxDbSmrtlnEntity {
    PLANT_OBJECT(HxDbTubeModel, HxDbSmrtlnEntity)
    // The text of the attribute "smrtln".
    std::string getSmrtlnType() const;
    // Numbers of the insertion point and of the reference point, and the insertion point itself.
    int getInsNo() const;
    int getRefNo() const;
    HxGePoint3D getInsPnt() const;
};
class HxDbTubeGeneral : public HxDbTubeModel {
    PLANT_OBJECT(HxDbTubeGeneral, HxDbTubeModel)
    HxGePoint3D getInspt() const;
    HxGeVector3D getInsvec() const;
    HxGeVector3D getRefvec() const;
};
class HxDbTubeWeld : public HxDbTubeGeneral {
    PLANT_OBJECT(HxDbTubeWeld, HxDbTubeGeneral)
};
class HxDbTubeStop : public HxDbTubeGeneral {
    PLANT_OBJECT(HxDbTubeStop, HxDbTubeGeneral)
};
class HxDbBalloon : public HxDbTubeGeneral {
    PLANT_OBJECT(HxDbBalloon, HxDbTubeGeneral)
    const char* getNo() const;
};
// Things in a pipe that carry a specification.
class HxDbTubeModelSpec : public HxDbTubeModel {
    PLANT_OBJECT(HxDbTubeModelSpec, HxDbTubeModel)
    const char* getSpecName() const;
    HxDbTubeSpecification* getSpec() const;
    HxGeVector3D getRefVec() const;
};
class HxDbPipeSpec : public HxDbTubeModelSpec {
    PLANT_OBJECT(HxDbPipeSpec, HxDbTubeModelSpec)
};
class HxDbNozzleModel : public HxDbTubeModelSpec {
    PLANT_OBJECT(HxDbNozzleModel, HxDbTubeModelSpec)
    const char* getNo() const;
};
class HxDbAssembly : public HxDbSmrtlnEntity {
    PLANT_OBJECT(HxDbAssembly, HxDbSmrtlnEntity)
    std::vector<HxDbObjectId> getSubs() const;
};
class HxDbSupportModel : public HxDbAssembly {
    PLANT_OBJECT(HxDbSupportModel, HxDbAssembly)
    HxDbSupportItem* getSupItem() const;
    const char* getSupNo() const;
};
class HxDbEquipment : public HxDbSmrtlnEntity {
    PLANT_OBJECT(HxDbEquipment, HxDbSmrtlnEntity)
};
class HxDbStruct : public HxDbSmrtlnEntity {
    PLANT_OBJECT(HxDbStruct, HxDbSmrtlnEntity)
};
class HxDbAxissLine : public HxDbSmrtlnEntity {
    PLANT_OBJECT(HxDbAxissLine, HxDbSmrtlnEntity)
    const char* getNo() const;
};
class HxDbXGModel : public HxDbSmrtlnEntity {
    PLANT_OBJECT(HxDbXGModel, HxDbSmrtlnEntity)
};
class HxDbNonTube : public HxDbSmrtlnEntity {
    PLANT_OBJECT(HxDbNonTube, HxDbSmrtlnEntity)
};
// The bolt set of a flanged joint.
class HxDbBoltNutModel : public HxDbSmrtlnEntity {
    PLANT_OBJECT(HxDbBoltNutModel, HxDbSmrtlnEntity)
    HextBolt* getBolt() const;
    HextNut* getNut() const;
    HxDbFlan2BoltNut* getFlanIdx() const;
};
// Objects that hold serialised host-CAD content.
class HxDbAcadSerialObject : public HxDbSmrtlnEntity {
    PLANT_OBJECT(HxDbAcadSerialObject, HxDbSmrtlnEntity)
};
class HextAcadEntitySer : public HxDbSmrtlnEntity {
    PLANT_OBJECT(HextAcadEntitySer, HxDbSmrtlnEntity)
};

// ---------------------------------------------------------------------------------------- specifications and bolts

class HxDbSpecification : public HxDbObject {
    PLANT_OBJECT(HxDbSpecification, HxDbObject)
};
class HxDbTubeSpecification : public HxDbSpecification {
    PLANT_OBJECT(HxDbTubeSpecification, HxDbSpecification)
    // Nominal size and end type at an end, numbered from 1; null when there is none.
    const char* getSize(int number) const;
    const char* getEndtype(int number) const;
};
class HxDbSupportItem : public HxDbSpecification {
    PLANT_OBJECT(HxDbSupportItem, HxDbSpecification)
    const char* getType() const;
    const char* getStan() const;
};
class HextStanParts : public HxDbObject {
    PLANT_OBJECT(HextStanParts, HxDbObject)
    const char* getCname() const;
    const char* getType() const;
    const char* getSpec() const;
    const char* getStan() const;
    const char* getMaterial() const;
    int getUnit() const;
};
class HextBolt : public HextStanParts {
    PLANT_OBJECT(HextBolt, HextStanParts)
    const char* getBoltSpec() const;
    const char* getBoltNote() const;
    double getBoltWeight() const;
    double getBoltPrice() const;
    int getBoltSortno() const;
};
class HextNut : public HextStanParts {
    PLANT_OBJECT(HextNut, HextStanParts)
    const char* getNutNote() const;
    double getNutWeight() const;
    double getNutPrice() const;
    int getNutSortno() const;
};
class HxDbFlan2BoltNut : public HxDbObject {
    PLANT_OBJECT(HxDbFlan2BoltNut, HxDbObject)
    int getBoltNum() const;
    int getNutNum() const;
    HextBolt* getBolt() const;
    const char* getFlanSize() const;
    const char* getFlanStd() const;
    const char* getFlanEndType() const;
    const char* getFlanRating() const;
    const char* getFlanUnit() const;
};

// Any object of a class that exports do not name.
class HxDbOther : public HxDbObject {
    PLANT_OBJECT(HxDbOther, HxDbObject)
};

#undef PLANT_OBJECT
