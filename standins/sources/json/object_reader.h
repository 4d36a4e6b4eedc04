// Reads the objects of a model file, one by one in file order.
#pragma once

#include "plant/model/class_table.h"
#include "sources/json/attribute_reader.h"
#include "sources/json/primitive_reader.h"

#include <bitset>
#include <vector>

namespace plant {

class ObjectReader {
public:
    ObjectReader(Model& model, od::document& document, TextKeeper& texts)
        : model_(&model), texts_(&texts), attributes_(model, texts), primitives_(model, document, texts) {}

    // Appends an object to the model. References to other objects but the parent stay ids.
    void read(od::value& value);
    AttributeReader& attributes() { return attributes_; }

private:
    void readMember(const MemberRow& row, od::value& value);
    void readProperty(const MemberRow& row, od::value& value);
    void readId(od::value& value);
    void readClass(od::value& value);
    void readParent(od::value& value);
    void readNodeId(od::value& value);
    void readAttributes(od::value& value);
    void readKind(od::value& value);

    Property& addProperty(const MemberRow& row, std::size_t count = 1);
    void readVector(const MemberRow& row, od::value& value);
    void readReferences(const MemberRow& row, od::value& value);
    ReferenceList readReferenceList(od::value& value);
    void readKeyPoints(const MemberRow& row, od::value& value);
    void readInsulation(const MemberRow& row, od::value& value);
    void readEnds(const MemberRow& row, od::value& value);
    TubeEnd readEnd(od::value& value);
    void readBranches(const MemberRow& row, od::value& value);
    void readRuns(const MemberRow& row, od::value& value);
    PipeRun readRun(od::value& value);

    void readPoints(od::value& value);
    HxDbSmrtlnPoint readPoint(od::value& value, std::size_t index);
    void readConnections(od::value& value, std::size_t point);
    void addConnection(od::value& id, std::size_t point, std::size_t element, bool inArray);

    Model* model_;
    TextKeeper* texts_;
    AttributeReader attributes_;
    PrimitiveReader primitives_;
    ObjectData* object_ = nullptr;
    const FamilyTable* family_ = nullptr;  // of the object in hand
    ObjectData* lastParent_ = nullptr;
    const Shape* pointShape_ = &shapes::point();
    std::vector<Property> properties_;
    std::vector<HxDbSmrtlnPoint> points_;
    std::vector<Connection> connections_;
    std::vector<Reference> references_;
    std::bitset<1 << 15> numbersInUse_;  // of points of the object in hand
};

}  // namespace plant
