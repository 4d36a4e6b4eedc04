#include "hextinterface/ornatohextprocess/specs/pipe_spec.h"

#include "frame/exceptions.h"
#include "hextinterface/hextbasemethod/object_tests.h"
#include "hextinterface/hextbasemethod/text_faults.h"
#include "hextinterface/manager/name_manager.h"
#include "hextinterface/manager/uda_writer.h"
#include "hextinterface/ornatohextprocess/specs/created.h"
#include "platform/attribute_cache.h"
#include "platform/hxcom.h"
#include "platform/left_out.h"
#include "platform/model_tests.h"
#include "platform/smrtln.h"

#include <algorithm>
#include <functional>

namespace {

constexpr std::string_view columns =
    "TYPE  NAME  PBOR0  PBOR1  PBOR2  PBOR3  STYP  SHOP  CATREF  DETAIL  MATXT  CMPREF  BLTREF";
constexpr std::size_t boreColumnCount = 4;

constexpr std::string_view fixedBendSpec[] = {
    "NEW SPECIFICATION /BEND_FIX",
    "MATREF =0",
    "FLUREF =0",
    "LINETYPE NULL",
    "BSPEC =0",
    "TEXT 'PIPING'",
    "HEADING",
    columns,
    "DEFAULTS",
    "- ---- -= =",
    "BEND */BEND_FIX-SP  50  0  0  0  BEND  FALSE /FIX_BEND-SC /FIX_BEND-DT /FIX_BEND-MT =0 =0",
};

// The user attributes of a row and where their values come from; an empty key is an empty value.
struct RowUda {
    const char* name;
    std::string_view key;
};
constexpr RowUda rowUdas[] = {
    {"Rating", "rating"}, {"Sch", "sch"},     {"Standard", "stan"},  {"StdSerial", "serial"},
    {"ManuCode", ""},     {"ManuSerial", ""}, {"CompNotes", "note"},
};

bool isTeeItem(std::string_view item) {
    return item == "TESO" || item == "OLET" || item == "BOSS";
}

[[noreturn]] void refuseObject(const HxDbObject* object, const std::string& text) {
    hxcad::hextPrintf("Error:%lld<%s>", idNumber(object), text.c_str());
    throw ExportException(text);
}

void require(const std::string& name, const HxDbObject* object, const char* text) {
    if (name.empty()) {
        refuseObject(object, text);
    }
}

bool hasSpecRow(const HxDbSmrtlnEntity* object, const ObjectSet& skipSet) {
    return !object->isKindOf(HxDbNozzleModel::desc()) && !isTubeStop(object) && !isWeld(object) &&
           skipSet.count(const_cast<HxDbSmrtlnEntity*>(object)) == 0;
}

int sizeOfSpecification(const HxDbSmrtlnEntity* object, int end) {
    const HxDbTubeSpecification* specification = openByAttribute<HxDbTubeSpecification>(object, "specid");
    const char* size = specification != nullptr ? specification->getSize(end) : nullptr;
    return size != nullptr ? integerOf(size) : 0;
}

}  // namespace

int sizeAt(const HxDbSmrtlnEntity* object, int end) {
    if (!isWeld(object)) {
        return sizeOfSpecification(object, end);
    }
    const HxDbSmrtlnEntity* neighbour = object->getConnSmrtln(end, 0);
    return neighbour != nullptr ? sizeOfSpecification(neighbour, neighbour->getConnNoOfSmrtln(object, 0)) : 0;
}

int columnCount(const HxDbSmrtlnEntity* object) {
    const std::string_view family = getBomValue(object, "smrtln");
    if (object->isKindOf(HxDbBalloon::desc())) {
        return 1;
    }
    if (isTeeItem(getBomValue(object, "item"))) {
        return 3;
    }
    if (smrtln::isGaskVirtual(object)) {
        return 2;
    }
    if (family == "Pipe") {
        return 1;
    }
    if (family == "Weld" || family == "Normal" || family == "Ecc" || smrtln::isValve(object)) {
        return 2;
    }
    if (family == "Arc") {
        return sizeAt(object, 1) != sizeAt(object, 2) ? 2 : 1;
    }
    return family == "Cross" ? 4 : 3;
}

std::vector<int> columnOrder(const HxDbSmrtlnEntity* object) {
    if (object->isKindOf(HxDbBalloon::desc())) {
        return {1};
    }
    if (isTeeItem(getBomValue(object, "item"))) {
        return {0, 1, 2};
    }
    if (smrtln::isGaskVirtual(object)) {
        return {0, 1};
    }
    std::vector<int> order{0, getBomValue(object, "smrtln") == "Arc" ? 2 : 1, 2, 3};
    order.resize(static_cast<std::size_t>(columnCount(object)));
    return order;
}

PipeSpecWriter::PipeSpecWriter(const std::string& specPath, const std::string& udaPath, ExportContext& context)
    : specOut_(specPath), udaOut_(udaPath), context_(context), names_(context.names) {
    createdSpcos().clear();
}

void PipeSpecWriter::writeFixedBendSpec() {
    for (const std::string_view line : fixedBendSpec) {
        specOut_.line(line);
    }
}

// By specification, and in it by GType. Equal names are one text, so that most compare by their place.
bool PipeSpecWriter::Member::operator<(const Member& other) const {
    if (spec != other.spec && *spec != *other.spec) {
        return *spec < *other.spec;
    }
    return gtype != other.gtype && *gtype < *other.gtype;
}

void PipeSpecWriter::writeBranchSpecs(const ComponentList& objects, const ObjectSet& skipSet) {
    members_.clear();
    for (const HxDbSmrtlnEntity* object : objects) {
        if (hasSpecRow(object, skipSet)) {
            members_.push_back({&names_.components.getSpecName(object), &names_.types.getGtype(object), object});
        }
    }
    std::stable_sort(members_.begin(), members_.end());
    const std::string* spec = nullptr;
    for (auto first = members_.begin(); first != members_.end();) {
        if (spec == nullptr || *spec != *first->spec) {
            spec = first->spec;
            writeHead(first->object);
        }
        const auto last = std::find_if(first, members_.end(), [first](const Member& m) { return *first < m; });
        writeTypeRows({first, last});
        first = last;
    }
}

void PipeSpecWriter::writeHead(const HxDbSmrtlnEntity* object) {
    specOut_.line("");
    const std::string& bolts = names_.bolts.getBoltSpecName(getBomValue(object, "specname"));
    const bool hasBolts = names_.isNameCreated(bolts);
    const std::string& name = names_.components.getSpecName(object);
    require(name, object, "等级名称为空");
    const bool isNew = names_.markIfNotCreated(name);
    if (isNew) {
        reportName(object->objectId(), name);
        reportPlainText(object->objectId(), "specification", name);
        specOut_.line("NEW SPECIFICATION /", name);
        specOut_.lines(plainSpecLines);
    } else {
        specOut_.line("OLD SPECIFICATION /", name);
    }
    if (hasBolts) {
        specOut_.line("BSPEC /", bolts);
        specOut_.line("BLTMETHOD 'NEW'");
    } else if (isNew) {
        specOut_.line("BSPEC =0");
    }
    if (isNew) {
        specOut_.lines({"", "TEXT 'PIPING'"});
    }
}

void PipeSpecWriter::writeHeading() {
    writeHeadingLines(specOut_, columns, "-  -  -  -  -  -  =  =");
}

// The first of equal components stands for all; olets and bosses come last.
void PipeSpecWriter::takeDistinctRows(std::span<const Member> members) {
    rows_.clear();
    for (const Member& member : members) {
        rows_.push_back({&names_.components.getSpcoName(member.object), rows_.size(), member.object});
    }
    // Equal rows have one name, which stands at one place; the order of places shows nowhere.
    std::sort(rows_.begin(), rows_.end(), [](const Row& a, const Row& b) {
        return a.name != b.name ? std::less<>()(a.name, b.name) : a.number < b.number;
    });
    const auto end =
        std::unique(rows_.begin(), rows_.end(), [](const Row& a, const Row& b) { return a.name == b.name; });
    rows_.erase(end, rows_.end());
    std::sort(rows_.begin(), rows_.end(), [](const Row& a, const Row& b) { return a.number < b.number; });
    std::stable_partition(rows_.begin(), rows_.end(),
                          [](const Row& row) { return !isBranchItem(getBomValue(row.object, "item")); });
}

void PipeSpecWriter::writeTypeRows(std::span<const Member> members) {
    takeDistinctRows(members);
    writeHeading();
    const std::vector<int> order = columnOrder(rows_.front().object);
    for (const Row& row : rows_) {
        tryRow(row.object, order);
    }
    writeUdas();
}

void PipeSpecWriter::tryRow(const HxDbSmrtlnEntity* object, const std::vector<int>& order) {
    try {
        writeRow(object, order);
    } catch (const ExportException& failure) {
        reportLeftOut({object, names_.components.getSpcoName(object), "row"}, failure.what());
    }
}

void PipeSpecWriter::writeRow(const HxDbSmrtlnEntity* object, const std::vector<int>& order) {
    const std::string& scom = names_.components.findScomName(object);
    require(scom, object, "未创建该对象的SCOM");
    const std::string& dtset = names_.components.findDtsetName(object);
    require(dtset, object, "未创建该对象的DTEXT");
    const std::string& mtset = names_.components.findMtsetName(object);
    require(mtset, object, "未创建该对象的MTEXT");
    const std::string& gtype = names_.types.getGtype(object);
    if (gtype.empty()) {
        throw RunException("GType空值");
    }
    const std::string& spco = names_.components.getSpcoName(object);
    if (names_.isNameCreated(spco)) {
        return;
    }
    const std::string bores = boreColumns(object, order);
    names_.markNameCreated(spco);
    if (spco.size() > maxNameLength && names_.components.getSpecName(object).size() <= maxNameLength) {
        reportName(object->objectId(), spco);
    }
    const std::string& shortName = names_.components.getSpcoShortName(object);
    names_.markIfNotCreated(shortName);
    specOut_.line(gtype, "  */", shortName, bores, "  ", names_.components.getStype(object), "  FALSE  /", scom, "  /",
                  dtset, "  /", mtset, "  =0  =0");
    createdSpcos().insert(spco);
}

std::string PipeSpecWriter::boreColumns(const HxDbSmrtlnEntity* object, const std::vector<int>& order) {
    if (object->isKindOf(HxDbBalloon::desc())) {
        return balloonColumns(object);
    }
    std::string text;
    for (std::size_t i = 0; i < boreColumnCount; ++i) {
        text += "  ";
        appendInt(text, i < order.size() ? sizeAt(object, order[i] + 1) : 0);
    }
    return text;
}

// A balloon has no size of its own; it borrows that of what it hangs on.
std::string PipeSpecWriter::balloonColumns(const HxDbSmrtlnEntity* balloon) {
    std::vector<HxDbObject*> connected;
    balloon->getAllConnObject(connected);
    if (connected.empty()) {
        throw ExportException("仪表泡未连接对象");
    }
    const HxDbSmrtlnEntity* neighbour = HxDbSmrtlnEntity::cast(connected.front());
    if (neighbour == nullptr) {
        return {};
    }
    const std::string size = std::to_string(sizeAt(neighbour, balloon->getConnNoOfSmrtln(neighbour, 0)));
    return "  " + size + "  0" + size + "  0" + size + "  0" + size;
}

void PipeSpecWriter::writeUdas() {
    udaLines_.clear();
    for (const Row& row : rows_) {
        udaLines_.append("OLD /").append(*row.name).append("\n");
        for (const RowUda& uda : rowUdas) {
            const std::string_view value = uda.key.empty() ? std::string_view() : getBomValue(row.object, uda.key);
            reportEscapedText(row.object->objectId(), uda.key, value);
            context_.udas.writeUda(udaLines_, uda.name, value);
        }
    }
    udaOut_.write(udaLines_);
}
