#include "hextinterface/ornatohextprocess/pipes/component_desc.h"

#include "frame/exceptions.h"
#include "hextinterface/hextbasemethod/macro_text.h"
#include "hextinterface/hextbasemethod/object_tests.h"
#include "hextinterface/manager/name_manager.h"
#include "hextinterface/ornatohextprocess/specs/created.h"
#include "platform/attribute_cache.h"
#include "platform/hxcom.h"
#include "platform/model_tests.h"
#include "platform/smrtln.h"

#include <algorithm>
#include <iterator>

namespace {

double degreesBetween(const HxGeVector3D& a, const HxGeVector3D& b) {
    return a.angleTo(b) / tlGePi * 180.0;
}

// Welds stand in no table of specifications, so one without a row has no reference and is written all the same.
std::string_view referenceOf(const HxDbSmrtlnEntity* object, NameManager& names) {
    if (!isWeld(object)) {
        return requireSpco(object, names);
    }
    const std::string& name = names.components.findSpcoName(object);
    return createdSpcos().contains(name) ? std::string_view(name) : "unset";
}

// Every pipe of the run needs a row, the last one's counts.
TubeRun readTubeRun(const BranchSource& source, std::size_t from) {
    TubeRun run{from, from, from, {}};
    for (; run.to < source.items.size(); ++run.to) {
        const HxDbSmrtlnEntity* item = source.items[run.to];
        if (isWeld(item)) {
            continue;
        }
        if (!smrtln::isPipe(item)) {
            break;
        }
        run.lstube = requireSpco(item, source.context.names);
        run.pipesEnd = run.to + 1;
    }
    return run;
}

// What the pipeline of an item tells; mostly the same one as that of the item before.
const LineFacts& lineOf(const BranchSource& source, const HxDbSmrtlnEntity* entity) {
    LineFacts& line = source.line;
    const std::string_view number = getBomValue(entity, "lineno");
    if (number != line.number) {
        const HxDbObject* pipeline = openAs<HxDbObject>(idOf(number));
        line.number = number;
        line.insulated = pipeline != nullptr && isInsulated(pipeline);
        line.hasCode = !getBomValue(pipeline, "insulcode").empty();
    }
    return line;
}

constexpr std::string_view turnedTypes[] = {"VALV", "FILT", "TRAP", "INST"};

}  // namespace

std::map<std::string, HxDbObjectId>& customNames() {
    static std::map<std::string, HxDbObjectId> names;
    return names;
}

bool& eqnoName() {
    static bool flag = false;
    return flag;
}

const std::string& requireSpco(const HxDbSmrtlnEntity* object, NameManager& names) {
    const std::string& name = names.components.findSpcoName(object);
    if (name.empty() || !createdSpcos().contains(name)) {
        hxcad::hextPrintf("Error:%lld<对象未创建等级>", idNumber(object));
        throw ExportException("对象未创建等级");
    }
    return name;
}

// ---------------------------------------------------------------------------------------------------------- filling

void _HextComponentDesc::fillCommon(const BranchSource& source, std::size_t index) {
    entity = source.items[index];
    view = makeView(entity, &source.lookup);
    position = positionText(view.comp->getOrigin(entity));
    takePorts();
    takeTube(source, index);
    takeName(source);
    setUdaValues(entity);
}

void _HextComponentDesc::takePorts() {
    arrive = view.comp->mapPointNo(view.comp->arrivePoint);
    leave = view.comp->mapPointNo(view.comp->leavePoint);
    if (arrive == noPort || leave == noPort) {
        throw ExportException("请检查元件端部连接关系,port:" + std::to_string(arrive) +
                              ",id:" + std::to_string(idNumber(entity)));
    }
}

// The last pipe of the run of pipes and welds behind the component decides.
void _HextComponentDesc::takeTube(const BranchSource& source, std::size_t index) {
    const std::size_t behind = index + 1;
    TubeRun& run = source.tubes;
    if (behind < run.from || behind >= run.to) {
        run = readTubeRun(source, behind);
    }
    if (behind < run.pipesEnd) {
        lstube = run.lstube;
    }
}

void _HextComponentDesc::takeName(const BranchSource& source) {
    NameManager& names = source.context.names;
    name = names.branches.getMemberName(entity);
    names.markIfNotCreated(name);
    if (eqnoName()) {
        takeCustomName();
    }
}

void _HextComponentDesc::takeCustomName() {
    const std::string first(getBomValue(entity, "eqno"));
    const std::string second(getBomValue(entity, "eqno1"));
    if (first.empty() && second.empty()) {
        return;
    }
    const std::string custom = first.empty() || second.empty() ? first + second : first + "-" + second;
    const auto [at, isNew] = customNames().try_emplace(custom, entity->objectId());
    if (!isNew && at->second != entity->objectId()) {
        hxcad::hextPrintf("Error:%lld<自定义名称[%s]已存在于对象%lld> ", idNumber(entity), custom.c_str(),
                          static_cast<long long>(at->second.toInt()));
        throw ExportException("<自定义名称已存在>");
    }
    isCustomName = true;
    name = at->first;
}

void _HextComponentDesc::setUdaValues(const HxDbSmrtlnEntity* object) {
    const struct {
        std::string_view& field;
        std::string_view key;
    } values[] = {{userItem, "item"}, {userType, "itype"}, {compName, "name"}, {tag, "tag"}, {material, "material"}};
    for (const auto& [field, key] : values) {
        field = getBomValue(object, key);
    }
}

void _HextComponentDesc::fillWith(const BranchSource& source, std::size_t index, bool byReference) {
    fillCommon(source, index);
    spref = referenceOf(entity, source.context.names);
    const HxDbTubeModelSpec* model = byReference ? HxDbTubeModelSpec::cast(entity) : nullptr;
    orientation = model != nullptr ? axesWithReference(view, model->getRefVec()) : axesOf(view);
    takeDirections();
    axisPure = view.comp->isAxis;
}

// A weld whose ends coincide runs along the axis that its orientation has.
void _HextComponentDesc::takeDirections() {
    directions = view.comp->getDirections(entity, true);
    if (isWeld(entity) && directions.front().isZeroLength()) {
        directions.fill(view.axes.x.normal());
    }
}

void _HextComponentDesc::fill(const BranchSource& source, std::size_t index) {
    fillWith(source, index, false);
}

void _HextAngleCompDesc::fill(const BranchSource& source, std::size_t index) {
    fillWith(source, index, false);
    angle = degreesBetween(component::between(entity, 1, 0), component::between(entity, 0, 3));
}

void _HextHeightCompDesc::fill(const BranchSource& source, std::size_t index) {
    fillWith(source, index, false);
    height = component::between(entity, 1, 2).length();
}

void _HextValveInstDesc::fill(const BranchSource& source, std::size_t index) {
    fillWith(source, index, getBomValue(source.items[index], "smrtln") == "Normal");
}

void _HextTeeDesc::fill(const BranchSource& source, std::size_t index) {
    if (item == "TESO") {
        return fillFromNeighbours(source, index);
    }
    fillWith(source, index, false);
    if (item == "COMPLatera" || item == "COMPY") {
        angle = degreesBetween(component::between(entity, 0, 2), component::between(entity, 0, 3));
    }
}

void _HextTeeDesc::fillFromNeighbours(const BranchSource& source, std::size_t index) {
    fillCommon(source, index);
    const auto [a, b] = getConnectionAxes(entity, source.componentIds);
    orientation = axesText(a, b);
    angle = degreesBetween(a, b);
    takeDirections();
}

void _HextComponentDesc::setAxes(const HxGeVector3D& x, const HxGeVector3D& y) {
    orientation = axesTextChecked(nullptr, nullptr, x, y);
}

// ------------------------------------------------------------------------------------------------------------ lines

void _HextComponentDesc::appendPlace(std::string& out) const {
    appendRef(out, name);
    out += ',';
    appendValue(out, position);
    out += ',';
    appendValue(out, orientation);
    out += ',';
}

void _HextComponentDesc::appendPorts(std::string& out) const {
    out.append(flagText) += ',';
    appendRef(out, spref);
    out += ',';
    appendInt(out, arrive);
    out += ',';
    appendInt(out, leave);
    out += ',';
    appendRef(out, lstube);
    out += ',';
}

void _HextComponentDesc::write(std::string& out, bool) const {
    testNameLength(name, "comp");
    out += "!!ORNAPipeCreateComponent(";
    appendValue(out, type);
    out += isCustomName ? ",TRUE," : ",FALSE,";
    appendPlace(out);
    appendPorts(out);
    appendValue(out, size);
    out += ")\n";
}

void _HextComponentDesc::writeWithNumber(std::string& out, const char* function, const char* kind,
                                         double number) const {
    testNameLength(name, kind);
    out.append(function) += '(';
    appendValue(out, type);
    out += ',';
    appendPlace(out);
    appendPorts(out);
    appendShort(out, number);
    out += ")\n";
}

void _HextAngleCompDesc::write(std::string& out, bool) const {
    writeWithNumber(out, "!!ORNAPipeCreateAngleComp", "angleComp", angle);
}

void _HextTeeDesc::write(std::string& out, bool) const {
    writeWithNumber(out, "!!ORNAPipeCreateAngleComp", "angleComp", angle);
}

void _HextHeightCompDesc::write(std::string& out, bool) const {
    writeWithNumber(out, "!!ORNAPipeCreateHeightComp", "heightComp", height);
}

// ---------------------------------------------------------------------------------------------------------- factory

std::unique_ptr<_HextComponentDesc> makeComponentDesc(const HxDbSmrtlnEntity* entity, NameManager& names) {
    const std::string& type = names.types.getGtype(entity);
    if (type == "ELBO" || smrtln::isBend(entity)) {
        return std::make_unique<_HextAngleCompDesc>(type);
    }
    if (type == "FTUB") {
        return std::make_unique<_HextHeightCompDesc>(type);
    }
    if (type == "TEE") {
        return std::make_unique<_HextTeeDesc>(type, std::string(getBomValue(entity, "item")));
    }
    if (std::find(std::begin(turnedTypes), std::end(turnedTypes), type) != std::end(turnedTypes)) {
        return std::make_unique<_HextValveInstDesc>(type);
    }
    return std::make_unique<_HextComponentDesc>(isWeld(entity) ? "WELD" : type);
}

std::unique_ptr<_HextComponentDesc> makeComponent(const BranchSource& source, std::size_t index) {
    const HxDbSmrtlnEntity* entity = source.items[index];
    auto component = makeComponentDesc(entity, source.context.names);
    component->fill(source, index);
    const LineFacts& line = lineOf(source, entity);
    if (line.insulated && !line.hasCode) {
        insulationCode(nullptr, entity);
    }
    return component;
}
