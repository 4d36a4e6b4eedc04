#include "eem/content.h"

#include "eem/color.h"
#include "exportbase/left_out_shapes.h"
#include "exportbase/object_properties.h"
#include "platform/kvparams.h"
#include "platform/left_out.h"
#include "platform/smrtln.h"
#include "scripts/node_name.h"
#include "scripts/script_host.h"
#include "scripts/script_presence.h"

#include <algorithm>
#include <charconv>

namespace eem {

namespace {

constexpr char objectTag[] = "NA:";
constexpr char paperTag[] = "PNA:";
constexpr char idTag[] = "OBJID:";
constexpr char shapeTag[] = "GEO:";

constexpr TreeLevel modelLevels[] = {treelevels::world, treelevels::site, treelevels::zone, treelevels::directory};
constexpr TreeLevel paperLevels[] = {treelevels::world,
                                     {&HextItem::classRecord, 2, "ORNA_ITEM"},
                                     {&HextUnit::classRecord, 2, "ORNA_UNIT"},
                                     treelevels::site,
                                     treelevels::zone};

// More than the head of a block takes beside the name.
constexpr std::size_t headRoom = 64;

// A place behind the head, with room for a tag and an int; the caller says by endRoom where it ends.
template <std::size_t size>
char* writeBlockHead(EemFile& file, const char (&tag)[size], std::string_view name, const HxDbObject& object) {
    file.beginBlock();
    char* at = file.room(headRoom + name.size());
    at = putString(putTag(at, tag), name);
    return putInt64(putTag(at, idTag), object.objectId().toInt());
}

}  // namespace

bool isShapeObject(const HxDbObject& object) {
    return object.isKindOf(HxDbSmrtlnEntity::desc()) && !object.isKindOf(HxDbTubeWeld::desc()) &&
           !object.isKindOf(HxDbTubeStop::desc());
}

// A script that loads is asked even for functions that it has not: each such call says so on the command line.
Output::Output(EemFile& file, JsonSideFile& side) : file_(file), side_(side) {
    const bool isLoaded = getScriptHost(false) != nullptr;
    asksNames_ = isLoaded || scriptHasFunction("getNodeName");
    asksProperties_ = isLoaded || scriptHasFunction("getReference");
}

std::string_view Output::nameOf(const HxDbObject& object) {
    if (!asksNames_) {
        return namelessName;
    }
    name_ = nodeName(&object, true);
    return name_;
}

void Output::addMember(const HxDbObject& object, std::string_view name) {
    side_.beginObject(object.objectId().toInt());
    side_.beginObject("attr");
    if (asksProperties_) {
        addProperties(object);
    }
    side_.endObject();
    side_.addText("cls", object.isA()->name());
    side_.addText("name", name);
    side_.endObject();
}

void Output::addProperties(const HxDbObject& object) {
    getObjectProperties(object.objectId(), properties_);
    for (const KVParams& property : properties_) {
        value_.clear();
        appendKvText(value_, property);
        side_.addText(propertyKey(&object, property.key), value_);
    }
}

// ------------------------------------------------------------------------------------------------------- the model

std::span<const TreeLevel> ModelContent::levels() const {
    return modelLevels;
}

bool ModelContent::startManager(const HxDbObject& manager) {
    return !manager.isKindOf(HextAxiss::desc());
}

bool ModelContent::isLossWhenMissed(const HxDbObject& object) const {
    return isShapeObject(object) || object.isKindOf(HextManager::desc());
}

// Managers stand in zones, directories and other managers, objects below managers.
bool ModelContent::isReachedBelow(const HxDbObject* parent, const HxDbObject& object) const {
    if (parent == nullptr) {
        return false;
    }
    if (parent->isKindOf(HextManager::desc()) || parent->isKindOf(HxDbSmrtlnEntity::desc())) {
        return true;
    }
    return object.isKindOf(HextManager::desc()) &&
           (parent->isKindOf(HextZone::desc()) || parent->isKindOf(HextZoneDirectory::desc()));
}

bool ModelContent::takeShape(const HxDbSmrtlnEntity& object) {
    if (object.isKindOf(HxDbAcadSerialObject::desc())) {
        reportLeftOut(&object, "object", "host content has no place in an EEM file");
        return false;
    }
    const Hext::ErrorStatus status = viewPrimaries(&object, shape_, false, false);
    if (status != Hext::eOk) {
        reportLeftOut(&object, "object",
                      status == eNotWanted ? "bolts have no place in an EEM file" : "it has no shape");
    }
    return status == Hext::eOk;
}

void ModelContent::writeObject(const HxDbSmrtlnEntity& object, int color) {
    if (!takeShape(object)) {
        return;
    }
    const std::string_view name = output_.nameOf(object);
    writeBlock(object, objectColor(object, colorIndexOf(object, color)), name);
    output_.addMember(object, name);
}

// Welds and stops are no losses.
void ModelContent::passOver(const HxDbObject& object) const {
    reportNoSmartObject(&object);
}

void ModelContent::writeBlock(const HxDbSmrtlnEntity& object, const ObjectColor& color, std::string_view name) {
    EemFile& file = output_.file();
    const auto size = static_cast<std::int32_t>(shape_.size());
    file.endRoom(putTag(writeBlockHead(file, objectTag, name, object), shapeTag));
    const std::uint64_t countPlace = file.offset();
    file.writeInt(size);
    const std::int32_t count = encoder_.encodeList(shape_, color);
    if (count != size) {
        file.patchInt(countPlace, count);
        reportPrimitives(object);
    }
    file.endBlock();
}

void ModelContent::reportPrimitives(const HxDbSmrtlnEntity& object) const {
    for (const LeftOut& item : encoder_.leftOut()) {
        reportLeftOut(&object, "primitive", item.primitive->isA()->name() + std::string(": ") + item.why);
    }
}

// ------------------------------------------------------------------------------------------------------ the papers

std::span<const TreeLevel> PaperContent::levels() const {
    return paperLevels;
}

bool PaperContent::startManager(const HxDbObject& manager) {
    if (manager.isKindOf(HextPIDPaperManager::desc())) {
        const std::string_view name = output_.nameOf(manager);
        output_.file().endRoom(writeBlockHead(output_.file(), paperTag, name, manager));
        output_.file().endBlock();
        output_.addMember(manager, name);
    }
    return true;
}

bool PaperContent::isLossWhenMissed(const HxDbObject& object) const {
    return object.isKindOf(HextPIDPaperManager::desc());
}

bool PaperContent::isReachedBelow(const HxDbObject* parent, const HxDbObject&) const {
    return parent != nullptr && parent->isKindOf(HextZone::desc());
}

}  // namespace eem
