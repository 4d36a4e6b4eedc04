#include "hextinterface/hextcata/bolt_catalogue.h"

#include "hextinterface/hextcata/item.h"
#include "hextinterface/hextcata/lines.h"
#include "platform/attribute_cache.h"
#include "platform/left_out.h"
#include "platform/model_tests.h"
#include "tolmar/text.h"

#include <algorithm>
#include <iterator>

namespace {

using tolmar::textOrEmpty;

BoltData partData(const HextStanParts* part) {
    BoltData data;
    data.name = textOrEmpty(part->getCname());
    data.size = textOrEmpty(part->getSpec());
    data.code = textOrEmpty(part->getStan());
    data.mater = textOrEmpty(part->getMaterial());
    data.unit = std::to_string(part->getUnit());
    return data;
}

std::string numbered(std::int32_t value) {
    return "_" + std::to_string(value);
}
std::string numbered(double value) {
    return numbered(cutToInteger(value));
}

// The variables of a template, by their two names.
struct Variable {
    std::string_view chinese;
    std::string_view name;
    std::string (*value)(const BoltData&);
};
constexpr Variable variables[] = {
    {"全称", "name", [](const BoltData& d) { return d.name; }},
    {"代码", "item", [](const BoltData& d) { return d.item; }},
    {"规格", "size", [](const BoltData& d) { return d.size; }},
    {"标准", "code", [](const BoltData& d) { return d.code; }},
    {"材料", "mater", [](const BoltData& d) { return d.mater; }},
    {"重量", "weight", [](const BoltData& d) { return numbered(d.weight); }},
    {"价格", "price", [](const BoltData& d) { return numbered(d.price); }},
    {"统计序号", "sortNo", [](const BoltData& d) { return numbered(d.sortNo); }},
    {"个数", "setsOf", [](const BoltData& d) { return numbered(d.setsOf); }},
    {"备注", "notes", [](const BoltData& d) { return d.notes; }},
    {"单位制", "unit", [](const BoltData& d) { return d.unit; }},
    {"类型", "type", [](const BoltData& d) { return d.type; }},
};

std::string variableValue(std::string_view name, const BoltData& part) {
    for (const Variable& variable : variables) {
        if (name == variable.chinese || name == variable.name) {
            return variable.value(part);
        }
    }
    return {};
}

}  // namespace

bool readBoltData(const HxDbBoltNutModel* boltSet, BoltData& bolt, BoltData& nut) {
    const HextBolt* boltPart = boltSet != nullptr ? boltSet->getBolt() : nullptr;
    const HextNut* nutPart = boltSet != nullptr ? boltSet->getNut() : nullptr;
    const HxDbFlan2BoltNut* flange = boltSet != nullptr ? boltSet->getFlanIdx() : nullptr;
    if (boltPart == nullptr || nutPart == nullptr || flange == nullptr) {
        return false;
    }
    bolt = partData(boltPart);
    bolt.item = textOrEmpty(boltPart->getStandard());
    bolt.weight = boltPart->getBoltWeight();
    bolt.price = boltPart->getBoltPrice();
    bolt.sortNo = boltPart->getBoltSortno();
    bolt.setsOf = flange->getBoltNum();
    bolt.notes = textOrEmpty(boltPart->getBoltNote());
    bolt.type = textOrEmpty(boltPart->getType());
    nut = partData(nutPart);
    nut.item = "NUT";
    nut.weight = nutPart->getNutWeight();
    nut.price = nutPart->getNutPrice();
    nut.sortNo = nutPart->getNutSortno();
    nut.setsOf = flange->getNutNum();
    nut.notes = textOrEmpty(nutPart->getNutNote());
    return true;
}

FlangeData readFlangeData(const HxDbFlan2BoltNut* record) {
    FlangeData flange;
    flange.code = textOrEmpty(record->getFlanStd());
    flange.endtype = textOrEmpty(record->getFlanEndType());
    flange.rating = textOrEmpty(record->getFlanRating());
    flange.size = integerOf(textOrEmpty(record->getFlanSize()));
    return flange;
}

std::string boltSpecOf(const HxDbFlan2BoltNut* record) {
    const HextBolt* bolt = record->getBolt();
    return textOrEmpty(bolt != nullptr ? bolt->getBoltSpec() : nullptr);
}

int boltDiameter(const BoltData&) {
    return 2;
}

std::string expandTemplate(std::string_view text, const BoltData& part) {
    std::string result;
    while (!text.empty()) {
        const std::size_t open = text.find('<');
        result += text.substr(0, open);
        const std::size_t shut = open == std::string_view::npos ? open : text.find('>', open);
        if (shut == std::string_view::npos) {
            break;
        }
        result += variableValue(text.substr(open + 1, shut - open - 1), part);
        text.remove_prefix(shut + 1);
    }
    return result;
}

void BoltCatalogue::write(const HxDbBoltNutModel* boltSet, const HxDbSmrtlnEntity* object, CataStream& out) {
    writeRoots(out);
    references_.clear();
    writeSet(boltSet, object, out);
    if (references_.empty()) {
        return;
    }
    std::string joined;
    for (const std::string& reference : references_) {
        joined.append(reference).append(" ");
    }
    out.line("call !!ORNACataScomBoltArray('", Ref{names_.components.getScomName(object)}, "','", joined, "')");
}

void BoltCatalogue::writeRoots(CataStream& out) {
    const std::string& table = names_.bolts.getBltabName();
    if (names_.markIfNotCreated(table)) {
        out.line("call !!ORNACataBlta('", Ref{table}, "')");
    }
    const std::string& list = names_.bolts.getBlistName();
    if (names_.markIfNotCreated(list)) {
        enterElement(out, table);
        out.line("call !!ORNACataBlist('", Ref{list}, "')");
    }
    const std::string& cata = names_.bolts.getBoltCataName();
    if (names_.markIfNotCreated(cata)) {
        writeCatalogue(out, cata);
    }
    const std::string& section = names_.bolts.getBoltSectName();
    if (names_.markIfNotCreated(section)) {
        writeSection(out, cata, section);
    }
}

void BoltCatalogue::writeSet(const HxDbBoltNutModel* boltSet, const HxDbSmrtlnEntity* object, CataStream& out) {
    const std::string set = names_.bolts.getBoltObjectName(object);
    if (!names_.markIfNotCreated(set)) {
        return;
    }
    references_.push_back(cataRef(set));
    out.line("call !!ORNACataBtse('", Ref{names_.components.getComponentName(object)}, "','", Ref{set}, "')");
    BoltData bolt;
    BoltData nut;
    if (!readBoltData(boltSet, bolt, nut)) {
        reportLeftOut({object, set, "bolt set"}, "has no bolt, nut or flange record");
        return;
    }
    FlangeData flange = readFlangeData(boltSet->getFlanIdx());
    flange.spec = bolt.size;
    writePoints(out, set, flange, bolt);
    writeCategoryOf(out, flange, bolt, nut);
    writeItem(out, flange, bolt, nut);
    if (withRows_) {
        flange.spec = boltSpecOf(boltSet->getFlanIdx());
        writeCategoryOf(out, flange, bolt, nut);
        writeItem(out, flange, bolt, nut);
    }
}

void BoltCatalogue::writePoints(CataStream& out, const std::string& set, const FlangeData& flange,
                                const BoltData& bolt) {
    enterElement(out, set);
    const std::string stype = names_.bolts.getBoltStype(flange, bolt.type);
    for (int number = 1; number <= bolt.setsOf; ++number) {
        out.line("call !!ORNACataBltp('", number, "','", static_cast<double>(boltDiameter(bolt)), "','", stype, "')");
    }
}

void BoltCatalogue::writeCategoryOf(CataStream& out, const FlangeData& flange, const BoltData& bolt,
                                    const BoltData& nut) {
    const std::string category = names_.bolts.getBoltKeyName(flange);
    if (names_.markIfNotCreated(category)) {
        writeCategory(out, names_.bolts.getBoltSectName(), category, bolt.code);
    }
    writeTexts(out, "BOLT", bolt, category, names_.bolts.getBoltDtsetName(flange));
    if (const std::string mtset = names_.bolts.getBoltMtsetName(flange); names_.markIfNotCreated(mtset)) {
        writeMaterialText(out, category, mtset, bolt.mater);
    }
    writeTexts(out, "NUT", nut, category, names_.bolts.getNutDtsetName(flange));
    if (const std::string mtset = names_.bolts.getNutMtsetName(flange); names_.markIfNotCreated(mtset)) {
        writeMaterialText(out, category, mtset, nut.mater);
    }
}

void BoltCatalogue::writeTexts(CataStream& out, const char* kind, const BoltData& part, const std::string& category,
                               const std::string& dtset) {
    if (!names_.markIfNotCreated(dtset)) {
        return;
    }
    const auto text = [&](const char* key) { return expandTemplate(templates_.find(std::string(kind) + key), part); };
    writeDetailText(out, category, dtset, {text("RTEXT"), text("STEXT"), text("TTEXT"), " "});
}

void BoltCatalogue::writeItem(CataStream& out, const FlangeData& flange, const BoltData& bolt, const BoltData& nut) {
    const std::string item = names_.bolts.getBoltItemName(flange.spec, flange, bolt.type);
    if (!names_.markIfNotCreated(item)) {
        return;
    }
    enterElement(out, names_.bolts.getBlistName());
    std::string reference = cataRef(item);
    std::replace(reference.begin(), reference.end(), ' ', '_');
    std::string nuts = names_.bolts.getBoltStype(flange, nut.type);
    if (!equalNoCase(bolt.item, "BOLT")) {
        nuts += " " + nuts;
    }
    out.line("call !!ORNACataSbol('", Ref{names_.bolts.getBlistName()}, "','", reference, "','",
             static_cast<double>(boltDiameter(bolt)), "','", 0.0, "','", static_cast<double>(bolt.setsOf), "','", nuts,
             "')");
}
