#include "hextinterface/manager/register/type_names.h"

#include "frame/easy_log.h"
#include "frame/exceptions.h"
#include "hextinterface/manager/register/cleaned_texts.h"
#include "hextinterface/manager/register/names.h"
#include "platform/attribute_cache.h"
#include "platform/hxcom.h"
#include "platform/model_tests.h"
#include "platform/smrtln.h"

using naming::TypeFields;

namespace {

// Classes whose types do not come from the tables.
struct FixedTypes {
    const HxRxClass* objectClass;
    const char* skey;
    const char* gtype;  // null: by the tables
};
const FixedTypes fixedTypes[] = {
    {&HxDbTubeWeld::classRecord, "WW", "WELD"},
    {&HxDbBalloon::classRecord, "IDPL", "INST"},
    {&HxDbTubeStop::classRecord, "-121", nullptr},
    {&HxDbNozzleModel::classRecord, "-31", "NOZZLE"},
};

const FixedTypes* fixedTypesOf(const HxDbObject* object) {
    for (const FixedTypes& types : fixedTypes) {
        if (object != nullptr && object->isKindOf(types.objectClass)) {
            return &types;
        }
    }
    return nullptr;
}

TypeFields readTypeFields(const HxDbObject* object) {
    static constexpr std::string_view keys[] = {"item", "itype", "end1", "end2", "end3", "end4"};
    static BomFields reader(keys);
    TypeFields fields;
    reader.read(object, fields);
    if (fields[0].empty() && fields[1].empty()) {
        hxcad::hextPrintf("Error:%lld<无法获取对象属性>", static_cast<long long>(naming::idOf(object).toInt()));
        throw ExportException("无法获取对象属性");
    }
    return fields;
}

// One line a lookup; the file only ever grows.
void logLostGtype(const TypeFields& fields) {
    hextlog::EasyLog log(HextSystem::getFullHextName("\\temp\\hext\\gtype_lost.log"), false);
    log.writeText(naming::joined(fields, ',') + "\n");
}

std::string findGtype(naming::TypeMapping& mapping, const HxDbObject* object) {
    const FixedTypes* fixed = fixedTypesOf(object);
    if (fixed != nullptr && fixed->gtype != nullptr) {
        return fixed->gtype;
    }
    if (smrtln::isBend(object)) {
        return "BEND";
    }
    const TypeFields fields = readTypeFields(object);
    std::string gtype = mapping.gtypeOf(fields);
    if (gtype.empty()) {
        logLostGtype(fields);
    }
    return gtype;
}

}  // namespace

void TypeNames::loadSkeyTable() {
    mapping_.loadSkeys();
    known_.clear();
}

void TypeNames::loadTypeTable() {
    mapping_.loadGtypes();
    known_.clear();
}

void TypeNames::reportLostMappings() const {
    for (const auto* lost : {&mapping_.lostGtypes(), &mapping_.lostSkeys()}) {
        for (const std::string& line : *lost) {
            hxcad::hextPrintf("%s\n", line.c_str());
        }
    }
}

std::string TypeNames::getSkey(const HxDbObject* object) {
    const FixedTypes* fixed = fixedTypesOf(object);
    return fixed != nullptr ? fixed->skey : mapping_.skeyOf(readTypeFields(object));
}

// A GType that is missing is sought anew, since each look-up leaves its line in the logs.
const std::string& TypeNames::getGtype(const HxDbObject* object) {
    const std::string*& known = known_[naming::idOf(object)].gtype;
    if (known == nullptr) {
        const std::string gtype = findGtype(mapping_, object);
        if (gtype.empty()) {
            return naming::noName;
        }
        known = &gtypes_[gtypes_.add(gtype).number];
    }
    return *known;
}
