// Reads the objects of a model file, one by one in file order, and tells each to the builder.
#pragma once

#include "plant/building/memory_builder.h"
#include "sources/json/attribute_reader.h"
#include "sources/json/primitive_reader.h"
#include "sources/json/rows.h"

#include <vector>

namespace plant {

class ObjectReader {
public:
    ObjectReader(MemoryBuilder& builder, od::document& document, Unescaper& unescape)
        : builder_(&builder), unescape_(&unescape), attributes_(unescape), primitives_(builder, document, unescape) {}

    void read(od::value& value);
    AttributeReader& attributes() { return attributes_; }

private:
    // "id" and "class", which stand first.
    struct Identity {
        ObjectId id = 0;
        const ClassRow* type = nullptr;
    };
    void readIdentity(const MemberRow& row, od::value& value, Identity& identity);
    void readMember(const MemberRow& row, od::value& value);
    void readProperty(const MemberRow& row, od::value& value);
    void readRecords(const MemberRow& row, od::value& value);
    void readKind(od::value& value);

    const std::vector<ObjectId>& readIds(od::value& value);
    void readKeyPoint(od::value& value);
    void readInsulation(od::value& value);
    void readEnd(od::value& value);
    void readRun(od::value& value);
    void readPoint(od::value& value);
    void readConnections(od::value& value, PointFacts& point);

    MemoryBuilder* builder_;
    Unescaper* unescape_;
    AttributeReader attributes_;
    PrimitiveReader primitives_;
    const NameRows* pointNames_ = &rows::point();
    std::vector<ObjectId> ids_;  // of the list in hand
};

}  // namespace plant
