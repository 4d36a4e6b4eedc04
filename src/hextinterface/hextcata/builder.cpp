#include "hextinterface/hextcata/builder.h"

#include "exportbase/left_out_shapes.h"
#include "frame/exceptions.h"
#include "hextinterface/hextbasemethod/object_tests.h"
#include "hextinterface/hextbasemethod/text_faults.h"
#include "hextinterface/hextcata/bolt_catalogue.h"
#include "hextinterface/hextcata/geometry.h"
#include "hextinterface/hextcata/lines.h"
#include "hextinterface/hextcata/nozzle_list.h"
#include "hextinterface/hextcata/solids.h"
#include "hextinterface/manager/name_manager.h"
#include "platform/attribute_cache.h"
#include "platform/hxcom.h"
#include "platform/left_out.h"
#include "platform/model_tests.h"
#include "platform/primaries.h"
#include "platform/smrtln.h"
#include "tolmar/text.h"

namespace {

using tolmar::textOrEmpty;

constexpr std::string_view attachKind = "ATTACH";
constexpr std::string_view componentLinkKind = "PCLA";
constexpr double weldLength = 0;
constexpr const char* noItem = "has no item";
constexpr const char* noType = "has no GType";

// Solids of the object itself, not its obstruction volume. Content of the host CAD is among them, for the report: it
// has no translator.
std::vector<const HextPrimary*> ownSolids(const HxDbObject& object, const PrimaryList& shape) {
    std::vector<const HextPrimary*> kept;
    LeftOutPrimitives leftOut;
    for (const HextPrimary* primitive : shape) {
        const HextPrimary3D* solid = HextPrimary3D::cast(primitive);
        if (solid == nullptr) {
            leftOut.add(*primitive, "it is no solid");
        } else if (!isObstruction(*solid)) {
            kept.push_back(primitive);
        }
    }
    leftOut.report(object);
    return kept;
}

void reportTexts(const CataItem& item) {
    const HxDbObjectId id = item.object->objectId();
    reportPlainText(id, "stan", item.standard);
    reportPlainText(id, "description", item.description);
    for (const std::string* text : {&item.material, &item.rtext, &item.stext, &item.ttext}) {
        reportLimitedText(id, text == &item.material ? "material" : "detail text", *text);
    }
}

// A balloon's first point takes the size of what it is connected to.
void connectBalloon(CataItem& item) {
    const HxDbSmrtlnEntity* neighbour = item.object->getConnSmrtln(1, 1);
    if (neighbour == nullptr || item.points.size() < 2) {
        return;
    }
    Bores sizes{};
    readSizes(neighbour, sizes);
    item.points[1].bore = sizeOfEnd(sizes, neighbour->getConnNoOfSmrtln(item.object, 0));
    item.points[1].con = "OPEN";
}

// What a support hangs on; null when that is nothing, or no smart object.
const HxDbSmrtlnEntity* attachedTo(const HxDbSupportModel* support) {
    std::vector<HxDbObject*> connections;
    support->getAllConnObject(connections);
    return connections.empty() ? nullptr : HxDbSmrtlnEntity::cast(connections.front());
}

std::string nameOf(const HxDbSupportModel* support) {
    const HxDbSupportItem* item = support->getSupItem();
    std::string name;
    if (item != nullptr) {
        name.append(textOrEmpty(item->getStan())).append(textOrEmpty(item->getType()));
    }
    return name += textOrEmpty(support->getSupNo());
}

// The catalogue of the fixed bend: an empty geometry set, and two points whose bore is the first design parameter.
constexpr std::string_view fixedBend[] = {
    "call !!ORNACataCreateCata('/CATA_FIX_BEND')",
    "call !!ORNACataCreateSec('/CATA_FIX_BEND', '/SEC_FIX_BEND')",
    "call !!ORNACataCreateCate('/SEC_FIX_BEND', '/CATE_FIX_BEND', '')",
    "call !!ORNACataCreateGmse('/CATE_FIX_BEND', '/FIX_BEND-GM')",
    "call !!ORNACataCreatePtse('/CATE_FIX_BEND', '/FIX_BEND-PT')",
    "call !!ORNACataCreateSdte('/CATE_FIX_BEND', '/FIX_BEND-DT', '', '', '', ' ')",
    "call !!ORNACataCreateSmte('/CATE_FIX_BEND', '/FIX_BEND-MT', 'D1222')",
    "call !!ORNACataCreateScom('/CATE_FIX_BEND', '/FIX_BEND-SC', 'BEND', 'BEND ', '/FIX_BEND-PT', '/FIX_BEND-GM')",
    "OLD /FIX_BEND-GM",
    "call !!ORNACataPtaxi('/FIX_BEND-PT', '1', 'BW', '(DESP[1])', '(0)', 'z')",
    "call !!ORNACataPtaxi('/FIX_BEND-PT', '2', 'BW', '(DESP[1])', '(0)', '-z')",
    "OLD /CATE_FIX_BEND",
    "NEW DTSE /BEND_PT_PARAM",
    "OLD /BEND_PT_PARAM",
    "NEW DATA /BEND_PT_BORE",
    "OLD /BEND_PT_BORE",
    "Dkey PB",
    "Ptype BORE",
    "Pproperty DESP[1]",
    "Dproperty 50",
    "Purpose DESP",
    "Number 1",
    "Dtitle 'BORE'",
    "Punits 'mm'",
};

constexpr std::string_view insulationCatalogue = "CATA_INSU_ORNA";
constexpr std::string_view insulationSection = "SECT_INSU_ORNA";

}  // namespace

CataBuilder::CataBuilder(std::string_view folder, NameManager& names)
    : names_(names), texts_(ConfigTexts::detailTexts()), boltTexts_(ConfigTexts::boltTexts()),
      withBoltRows_(configBoltSpec()) {
    stream_.openCataFile(folder);
}

CataBuilder::CataBuilder(CataStream stream, NameManager& names)
    : stream_(std::move(stream)), names_(names), texts_(ConfigTexts::detailTexts()),
      boltTexts_(ConfigTexts::boltTexts()), withBoltRows_(configBoltSpec()) {}

void CataBuilder::requireOpen() const {
    if (!stream_.isOpen()) {
        throw ExportException("cata.txt文件打开失败！");
    }
}

void CataBuilder::writeFixedBend() {
    for (const std::string_view line : fixedBend) {
        stream_.line(line);
    }
}

// --------------------------------------------------------------------------------------------------------- branches

const char* CataBuilder::reasonAgainst(const HxDbSmrtlnEntity* object) {
    if (getBomValue(object, "item").empty()) {
        return noItem;
    }
    return names_.types.getGtype(object).empty() ? noType : nullptr;
}

bool CataBuilder::writeBranch(const ComponentList& objects, const ObjectSet& skipSet) {
    ComponentList kept;
    kept.reserve(objects.size());
    bool whole = true;
    for (HxDbSmrtlnEntity* object : objects) {
        if (isTubeStop(object) || skipSet.count(object) != 0) {
            continue;
        }
        if (const char* why = reasonAgainst(object)) {
            reportLeftOut(object, "catalogue entry", why);
            whole = whole && why != noType;
        } else {
            kept.push_back(object);
        }
    }
    if (!whole) {
        return false;
    }
    for (HxDbSmrtlnEntity* object : kept) {
        try {
            writeObject(object);
        } catch (const ExportException& failure) {
            hxcad::hextPrintf("\nID:%lld <%s>", idNumber(object), failure.what());
            reportLeftOut(object, "catalogue entry", failure.what());
        }
    }
    return true;
}

// A component that is known costs its name, a look-up and its insulation.
bool CataBuilder::startEntry(const HxDbSmrtlnEntity* object, const std::string& scomName) {
    const bool first = names_.markIfNotCreated(scomName);
    if (smrtln::isPipe(object) && getBomValue(object, "minsul") != "0") {
        names_.insulation.registerInsulation(object);
    }
    return first;
}

void CataBuilder::writeObject(HxDbSmrtlnEntity* object) {
    if (getBomValue(object, "minsul") != "0" && !smrtln::isNozzle(object)) {
        insulated_.push_back(object);
    }
    const std::string& scomName = names_.components.getScomName(object);
    if (!startEntry(object, scomName)) {
        return;
    }
    CataItem item;
    item.scomName = scomName;
    if (!writeComponentEntry(item, object)) {
        return;
    }
    if (object->isKindOf(HxDbBalloon::desc())) {
        connectBalloon(item);
    }
    if (!item.hasGeometry || item.points.empty()) {
        return;
    }
    for (const CataPoint& point : writeShape(item, isBranchItem(getBomValue(object, "item")) ? "X DDANGLE Y" : "")) {
        testDistance(point);
    }
    writeBolts(object);
}

bool CataBuilder::writeComponentEntry(CataItem& item, const HxDbSmrtlnEntity* object) {
    requireOpen();
    fillItem(item, object, names_, texts_);
    fillPoints(item, item.object);
    if (!writeEntry(item, item.item)) {
        reportLeftOut(item.object, "catalogue entry", noType);
        return false;
    }
    if (isWeld(item.object)) {
        item.hasGeometry = false;
        writeWeld(item);
    }
    return true;
}

// ------------------------------------------------------------------------------------------------------------- tree

bool CataBuilder::writeEntry(CataItem& item, std::string_view kind) {
    item.gtype = kind == componentLinkKind ? std::string(componentLinkKind) : names_.types.getGtype(item.object);
    if (item.gtype.empty()) {
        return false;
    }
    writeTree(item);
    findSkey(item, kind);
    item.gmseName = names_.components.getGmsetName(item.object);
    item.ptseName = names_.components.getPtsetName(item.object);
    item.sdteName = names_.components.getDtsetName(item.object);
    item.smteName = names_.components.getMtsetName(item.object);
    writeSets(item);
    writeComponentLine(item, kind);
    reportTexts(item);
    return true;
}

void CataBuilder::writeTree(CataItem& item) {
    item.categoryName = item.item == attachKind ? names_.attachments.getPointSetBaseName(item.object)
                                                : names_.components.getComponentName(item.object);
    if (!names_.markIfNotCreated(item.categoryName)) {
        return;
    }
    const std::string cata = names_.components.getCataName(item.object);
    const std::string section = names_.components.getSectionName(item.object);
    if (names_.markIfNotCreated(cata)) {
        writeCatalogue(stream_, cata);
    }
    if (names_.markIfNotCreated(section)) {
        writeSection(stream_, cata, section);
    }
    writeCategory(stream_, section, item.categoryName, item.standard);
}

void CataBuilder::findSkey(CataItem& item, std::string_view kind) {
    item.skey = " ";
    if (kind == componentLinkKind) {
        return;
    }
    try {
        const std::string skey = names_.types.getSkey(item.object);
        const bool beginsWithDigit = !skey.empty() && skey.front() >= '0' && skey.front() <= '9';
        item.skey = beginsWithDigit ? " " : skey;
    } catch (const ExportException&) {
        item.gtype = "unset";
    }
}

void CataBuilder::writeSets(CataItem& item) {
    if (names_.markIfNotCreated(item.gmseName)) {
        writeGeometrySet(stream_, item.categoryName, item.gmseName);
    }
    if (names_.markIfNotCreated(item.ptseName)) {
        writePointSet(stream_, item.categoryName, item.ptseName);
    }
    if (names_.markIfNotCreated(item.sdteName)) {
        writeDetailText(stream_, item.categoryName, item.sdteName, {item.rtext, item.stext, item.ttext, item.skey});
    }
    if (names_.markIfNotCreated(item.smteName)) {
        writeMaterialText(stream_, item.categoryName, item.smteName, item.material);
    }
}

void CataBuilder::writeComponentLine(const CataItem& item, std::string_view kind) {
    const bool straightPipe =
        !item.virtualGasket && kind != componentLinkKind && !item.hasGeometry && smrtln::isPipe(item.object);
    if (straightPipe) {
        writePipeComponent(stream_, {item.categoryName, item.scomName, item.description, item.ptseName, item.sizes[0],
                                     outerDiameterOf(item.object), item.ends[0]});
    } else {
        writeComponent(stream_,
                       {item.categoryName, item.scomName, item.gtype, item.description, item.ptseName, item.gmseName});
    }
}

// --------------------------------------------------------------------------------------------------------- geometry

void CataBuilder::writeWeld(CataItem& item) {
    if (!names_.isNameCreated(item.ptseName) || !names_.isNameCreated(item.gmseName)) {
        throw ExportException("不能写入几何信息！");
    }
    constexpr double half = weldLength / 2;
    constexpr const char* words[] = {"X", "-X", "X"};
    for (std::size_t i = 1; i < item.points.size(); ++i) {
        item.points[i].paxi = i < std::size(words) ? words[i] : item.points[i].paxi;
        item.points[i].dist = half;
        writePoint(stream_, item.ptseName, item.points[i]);
    }
    enterElement(stream_, item.gmseName);
    HEXT_CATA_SCYLE body;
    body.bottom = -half;
    body.top = weldLength - half;
    body.axis = "X";
    body.diameter = item.points.size() > 1 ? item.points[1].bore : 0;
    body.write(stream_, 2);
}

CataPoints CataBuilder::writeShape(const CataItem& item, std::string refText) {
    PrimaryList primitives;
    getPrimaries(item.object, primitives.list(), false, false);
    CataCompGeometry geometry;
    geometry.points = item.points;
    geometry.object = item.object;
    geometry.className = item.smrtlnType;
    geometry.refText = std::move(refText);
    geometry.primitives = ownSolids(*item.object, primitives);
    computeFrame(geometry);
    writeGeometry(geometry, stream_, item.gmseName, item.ptseName);
    return std::move(geometry.points);
}

void CataBuilder::writeBolts(const HxDbSmrtlnEntity* object) {
    HxDbBoltNutModel* bolts = smrtln::getAttachBoltNut(HxDbTubeModelSpec::cast(object));
    if (bolts == nullptr) {
        return;
    }
    bolted_.push_back(bolts);
    BoltCatalogue(names_, boltTexts_, withBoltRows_).write(bolts, object, stream_);
}

// ------------------------------------------------------------------------------- nozzles, attachments, insulation

void CataBuilder::writeNozzles(const std::vector<HxDbNozzleModel*>& nozzles) {
    for (HxDbNozzleModel* nozzle : nozzles) {
        try {
            if (writeNozzle(nozzle)) {
                nozzlesWithSpec().push_back(nozzle);
            }
        } catch (const ExportException& failure) {
            reportLeftOut(nozzle, "nozzle", failure.what());
        }
    }
}

bool CataBuilder::writeNozzle(const HxDbNozzleModel* nozzle) {
    CataItem item;
    item.scomName = names_.components.getScomName(nozzle);
    const bool first = startEntry(nozzle, item.scomName);
    if (first && !writeComponentEntry(item, nozzle)) {
        return false;
    }
    if (!hasPlainSize(nozzle)) {
        reportLeftOut(nozzle, "nozzle", "its size is no plain number");
        return false;
    }
    if (item.points.empty()) {
        reportLeftOut(nozzle, "nozzle", first ? "has no points" : "shares the entry of another nozzle");
        return false;
    }
    writeShape(item, {});
    return true;
}

void CataBuilder::writeAttachment(const HxDbSupportModel* support) {
    const HxDbSmrtlnEntity* connected = attachedTo(support);
    if (connected == nullptr) {
        return reportLeftOut(support, "attachment", "is connected to nothing");
    }
    const std::string scomName = names_.attachments.getPointSetScName(connected);
    if (!names_.markIfNotCreated(scomName)) {
        return;
    }
    const auto kind = smrtln::isPipe(connected) ? AttachmentKind::Pipe : AttachmentKind::Component;
    requireOpen();
    CataItem item;
    fillItem(item, connected, names_, texts_);
    item.hasGeometry = true;
    item.item = attachKind;
    item.scomName = scomName;
    item.rtext = nameOf(support);
    item.stext = item.rtext;
    item.ttext = item.rtext;
    if (!writeEntry(item, attachKind)) {
        return reportLeftOut(support, "attachment", "what it is attached to has no GType");
    }
    item.points =
        attachmentPoints(kind, outerDiameterOf(connected), names_.joints.keepName(getBomValue(connected, "end1")));
    if (!names_.isNameCreated(item.ptseName)) {
        throw ExportException("管子没有建立ptse！");
    }
    for (std::size_t i = 1; i < item.points.size(); ++i) {
        writePoint(stream_, item.ptseName, item.points[i]);
    }
    if (item.sdteName != "Nulref" && names_.markIfNotCreated(item.sdteName)) {
        writeDetailText(stream_, item.categoryName, item.sdteName, {item.rtext, item.stext, item.ttext, item.skey});
    }
}

void CataBuilder::writeSupport(const HxDbSupportModel* support) {
    CataItem item;
    item.scomName = names_.components.getScomName(support);
    if (names_.markIfNotCreated(item.scomName)) {
        requireOpen();
        fillItem(item, support, names_, texts_);
        writeEntry(item, componentLinkKind);
    }
    const HxDbSmrtlnEntity* connected = attachedTo(support);
    if (connected == nullptr || !names_.isNameCreated(names_.attachments.getPointSetBaseName(connected))) {
        return;
    }
    if (const std::string& text = names_.attachments.getPointSetDtName(connected); names_.markIfNotCreated(text)) {
        const std::string name = nameOf(support);
        writeDetailText(stream_, names_.attachments.getPointSetBaseName(connected), text, {name, name, name, " "});
    }
}

void CataBuilder::writeInsulationCatalogue() {
    writeCatalogue(stream_, insulationCatalogue);
    writeSection(stream_, insulationCatalogue, insulationSection);
    for (const auto& [key, record] : names_.insulation.getInsulTable()) {
        const std::string category = "CATE_" + key;
        const std::size_t mark = key.find('_');
        const double thickness = mark == std::string::npos ? 0 : numberOf(std::string_view(key).substr(mark + 1));
        writeCategory(stream_, insulationSection, category, "");
        writeMaterialText(stream_, category, "INS_" + key + "-MT", record.material);
        writeInsulationComponent(stream_, category, "INS_" + key + "-SC", thickness);
    }
}
