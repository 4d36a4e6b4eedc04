#include "eem/content.h"

#include "eem/color.h"
#include "exportbase/object_properties.h"
#include "exportbase/smart_object.h"
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

const TreeLevel worldLevel{HextWorld::desc(), 3, ""};
const TreeLevel siteLevel{HextSite::desc(), 2, "ORNA_SITE"};
const TreeLevel zoneLevel{HextZone::desc(), 1, "ORNA_ZONE"};
const TreeLevel modelLevels[] = {worldLevel, siteLevel, zoneLevel, {HextZoneDirectory::desc(), 1, "ORNA_ZONEDIR"}};
const TreeLevel paperLevels[] = {
    worldLevel, {HextItem::desc(), 2, "ORNA_ITEM"}, {HextUnit::desc(), 2, "ORNA_UNIT"}, siteLevel, zoneLevel};

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

// An object without a colour of its own takes `color` when it is a component of a pipe.
ObjectColor colorOf(const HxDbSmrtlnEntity& object, int color) {
    const bool isComponent = object.isKindOf(HxDbTubeModelSpec::desc());
    const bool isPipe = object.isKindOf(HxDbPipeSpec::desc());
    const bool isFitting = isComponent && !isPipe && !smrtln::isValve(&object);
    const int own = object.getColorIdx();
    const std::int64_t index = own == 0 && isComponent ? color : own;
    return {index + (isFitting ? inverseCode : 0), isPipe};
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
    const std::int64_t id = object.objectId().toInt();
    if (!asksNames_ && !asksProperties_) {
        side_.addObject(id, plainMembers(object));
        return;
    }
    side_.beginObject(id);
    writeMembers(side_, object, name);
    side_.endObject();
}

// Without a script they depend on the class alone.
const std::string& Output::plainMembers(const HxDbObject& object) {
    const auto at = std::find_if(plain_.begin(), plain_.end(),
                                 [&object](const PlainMembers& known) { return known.type == object.isA(); });
    if (at != plain_.end()) {
        return at->text;
    }
    JsonSideFile side(2);
    writeMembers(side, object, namelessName);
    return plain_.emplace_back(PlainMembers{object.isA(), side.members()}).text;
}

void Output::writeMembers(JsonSideFile& side, const HxDbObject& object, std::string_view name) {
    side.beginObject("attr");
    if (asksProperties_) {
        getObjectProperties(object.objectId(), properties_);
    }
    for (const KVParams& property : properties_) {
        value_.clear();
        appendKvText(value_, property);
        side.addText(propertyKey(&object, property.key), value_);
    }
    side.endObject();
    side.addText("cls", object.isA()->name());
    side.addText("name", name);
}

// ------------------------------------------------------------------------------------------------------- the model

std::span<const TreeLevel> ModelContent::levels() const {
    return modelLevels;
}

bool ModelContent::startManager(const HxDbObject& manager) {
    return !manager.isKindOf(HextAxiss::desc());
}

bool ModelContent::isWanted(const HxDbObject& object) const {
    return isShapeObject(object) || object.isKindOf(HextManager::desc());
}

// Managers stand in zones, directories and other managers, objects below managers.
bool ModelContent::isPlace(const HxDbObject& object, const HxDbObject* parent) const {
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
    writeBlock(object, colorOf(object, color), name);
    output_.addMember(object, name);
}

// Welds and stops are no losses.
void ModelContent::passOver(const HxDbObject& object) const {
    smartObject(&object);
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

bool PaperContent::isWanted(const HxDbObject& object) const {
    return object.isKindOf(HextPIDPaperManager::desc());
}

bool PaperContent::isPlace(const HxDbObject&, const HxDbObject* parent) const {
    return parent != nullptr && parent->isKindOf(HextZone::desc());
}

}  // namespace eem
