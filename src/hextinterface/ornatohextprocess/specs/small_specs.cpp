#include "hextinterface/ornatohextprocess/specs/small_specs.h"

#include "frame/easy_log.h"
#include "frame/exceptions.h"
#include "frame/progress_slot.h"
#include "hextinterface/hextbasemethod/limited_text.h"
#include "hextinterface/hextbasemethod/text_faults.h"
#include "hextinterface/ornatohextprocess/specs/generator.h"
#include "platform/attribute_cache.h"
#include "tolmar/code_page.h"
#include "tolmar/run_report.h"

namespace {

constexpr std::string_view noReference = "  =0";

long long idNumber(const HxDbObject* object) {
    return object->objectId().toInt();
}

// Heads of supports and attachments.
void writePipingHead(SpecFile& out, NameManager& names, const std::string& name) {
    out.line("");
    if (!markIfNew(names, name)) {
        out.line("OLD SPECIFICATION /", name);
        return;
    }
    out.line("NEW SPECIFICATION /", name);
    out.lines(plainSpecLines);
    out.lines({"BSPEC =0", "", "TEXT 'PIPING'"});
}

constexpr std::string_view supportColumns = "TYPE  NAME  PBOR0  STYP  CATREF  DETAIL  MATXT  CMPREF  BLTREF";

}  // namespace

// ---------------------------------------------------------------------------------------------------------- nozzles

void NozzleSpecWriter::write(const std::vector<HxDbNozzleModel*>& nozzles) {
    for (const HxDbObject* object : nozzles) {
        if (!object->isKindOf(HxDbNozzleModel::desc())) {
            throw ExportException("参数中含有非管嘴元件！");
        }
    }
    const Groups groups = groupBySpec(nozzles);
    if (!groups.empty()) {
        writeWeldWorld(out_, names_, names_.getWeldSpecName(1), {"PURPOSE EQUI", "DESC 'Equipment'"});
    }
    InnerBars bars(1);
    std::size_t count = 0;
    for (const auto& [spec, list] : groups) {
        writeHead(list.front());
        writeHeadingLines(out_, "TYPE  NAME  PBOR0  CATREF  DETAIL  MATXT  CMPREF  BLTREF", "-  -  0.00");
        for (const HxDbNozzleModel* nozzle : list) {
            writeRow(nozzle);
        }
        progressSlot()->setBar(percentage(++count, groups.size()), 1);
    }
}

NozzleSpecWriter::Groups NozzleSpecWriter::groupBySpec(const std::vector<HxDbNozzleModel*>& nozzles) {
    Groups groups;
    std::set<std::string> met;
    for (const HxDbNozzleModel* nozzle : nozzles) {
        if (getBomValue(nozzle, "size1").find('*') != std::string_view::npos) {
            tolmar::runReport().passedOver(idNumber(nozzle), "", "nozzle row", "its size is no plain number");
        } else if (met.insert(names_.getSpcoName(nozzle)).second) {
            groups[names_.getSpecName(nozzle)].push_back(nozzle);
        }
    }
    return groups;
}

void NozzleSpecWriter::writeHead(const HxDbNozzleModel* nozzle) {
    out_.line("");
    const std::string name = names_.getSpecName(nozzle);
    if (!markIfNew(names_, name)) {
        return;
    }
    const std::string_view rating = getBomValue(nozzle, "rating");
    reportName(nozzle->objectId(), name);
    reportPlainText(nozzle->objectId(), "rating", rating);
    out_.line("NEW SPECIFICATION /", name);
    out_.line("PURPOSE NOZZLE");
    out_.line("DESC '#", rating.empty() ? "0.0" : rating, "'");
    out_.lines(plainSpecLines);
    out_.lines({"BSPEC =0", ""});
}

void NozzleSpecWriter::writeRow(const HxDbNozzleModel* nozzle) {
    if (!markIfNew(names_, names_.getSpcoName(nozzle))) {
        return;
    }
    const std::string shortName = names_.getSpcoShortName(nozzle);
    markIfNew(names_, shortName);
    out_.line(names_.getGtype(nozzle), "  */", shortName, "  ", getBomValue(nozzle, "size"), "  /",
              names_.getScomName(nozzle), "  =0  /", names_.getMtsetName(nozzle), "  =0  =0");
    hextlog::exportLog().write("%lld create nozzle spec %s %s", idNumber(nozzle), shortName.c_str(),
                               names_.getComponentName(nozzle).c_str());
}

// ------------------------------------------------------------------------------------------------------- insulation

void InsulSpecWriter::write() {
    std::set<std::string> headed;
    for (const auto& [key, record] : names_.getInsulTable()) {
        const std::string code = key.substr(0, key.find('_'));
        if (headed.count(code) == 0) {
            if (!writeHead(code)) {
                tolmar::runReport().passedOver(0, key, "insulation row", "has no insulation code");
                continue;
            }
            createdIspecs().insert(code);
            out_.lines({"", "HEADING", "TYPE  NAME  TEMP  PBOR0  CATREF  DETAIL  MATXT  CMPREF  BLTREF"});
            headed.insert(code);
        }
        writeRow(key, record);
    }
}

bool InsulSpecWriter::writeHead(const std::string& code) {
    out_.line("");
    const std::string name = names_.getInsulSpecName(code);
    if (name == "_") {
        return false;
    }
    if (!markIfNew(names_, name)) {
        out_.line("OLD SPECIFICATION /", name);
        return true;
    }
    out_.line("NEW SPECIFICATION /", name);
    out_.lines({"MATREF =0", "FLUREF =0", "RATING 0.000", "LINETYPE NULL", "BSPEC =0", "", "TEXT 'INSUL'", ""});
    return true;
}

void InsulSpecWriter::writeRow(const std::string& key, const InsulationRecord& r) {
    out_.line("INSU  */", key, "-SP  ", r.minTemperature, ",", r.maxTemperature, "  ", r.minSize, ",", r.maxSize,
              "  /INS_", key, "-SC  =0  /INS_", key, "-MT  =0  =0");
}

// --------------------------------------------------------------------------------------------- supports, attachments

SpecFile openSpecMacro(const std::string& folder, const char* fileName, const NameManager& names) {
    const std::string base = folder + names.getDbTitle(ExportDb::Spec);
    {
        SpecFile list(base + "Execute.mac.tpl", tolmar::FileMode::TextAppend);
        list.line("$m [path]\\", fileName);
    }
    return SpecFile(base + fileName);
}

SupportSpecWriter::SupportSpecWriter(const std::string& folder, NameManager& names)
    : out_(openSpecMacro(folder, "SupportSpec.pmlmac", names)), names_(names) {}

void SupportSpecWriter::write(const std::vector<HxDbSupportModel*>& supports) {
    writePipingHead(out_, names_, names_.getSpecName(supports.front()));
    writeHeadingLines(out_, supportColumns, "-  -  -  =");
    for (const HxDbSupportModel* support : supports) {
        writeRow(support);
    }
}

void SupportSpecWriter::writeRow(const HxDbSupportModel* support) {
    std::vector<HxDbObject*> connected;
    support->getAllConnObject(connected);
    if (connected.empty()) {
        tolmar::runReport().passedOver(idNumber(support), "", "support row", "is connected to nothing");
        return;
    }
    if (!markIfNew(names_, names_.getSpcoName(support))) {
        return;
    }
    const std::string shortName = names_.getSpcoShortName(support);
    markIfNew(names_, shortName);
    out_.line("PCLA  */", shortName, "  ", getBomValue(connected.front(), "size1"), "  TEXT 'SUPPORT'  /",
              names_.getScomName(support), "  /", names_.getDtsetName(support), noReference, noReference, noReference);
}

AttachSpecWriter::AttachSpecWriter(const std::string& folder, NameManager& names)
    : out_(openSpecMacro(folder, "AttachSpec.pmlmac", names)), names_(names) {}

void AttachSpecWriter::write(const std::vector<const HxDbSmrtlnEntity*>& connected) {
    std::set<std::string> met;
    writePipingHead(out_, names_, names_.getAttaSpecName());
    writeHeadingLines(out_, supportColumns, "-  -  -  ATTA");
    for (const HxDbSmrtlnEntity* object : connected) {
        if (met.insert(names_.getAttaSpcoName(object)).second) {
            writeRow(object);
        }
    }
}

void AttachSpecWriter::writeRow(const HxDbSmrtlnEntity* object) {
    if (!markIfNew(names_, names_.getAttaSpcoName(object))) {
        return;
    }
    const std::string shortName = names_.getAttaShortName(object);
    markIfNew(names_, shortName);
    out_.line("ATTA  */", shortName, "  ", getBomValue(object, "size1"), "  ", names_.getAttaStype(object), "  /",
              names_.getPointSetScName(object), "  /", names_.getPointSetDtName(object), noReference, noReference,
              noReference);
}

// ------------------------------------------------------------------------------------------------------------- bolts

void BoltSpecWriter::write(const std::vector<HxDbBoltNutModel*>& boltSets) {
    for (const HxDbBoltNutModel* boltSet : boltSets) {
        collect(boltSet);
    }
    for (const auto& [name, entries] : groups_) {
        std::string head = "\n";
        if (markIfNew(names_, name)) {
            head.append("NEW SPECIFICATION /").append(name);
            head += "\nMATREF =0\nFLUREF =0\nLINETYPE NULL\nBLTMETHOD 'NEW'\n\n";
        } else {
            head.append("OLD SPECIFICATION /").append(name).append("\n");
        }
        head += "\n";
        // Heads and headings go out as UTF-8, rows as they are.
        specOut_.write(tolmar::toUtf8(head));
        specOut_.write(tolmar::toUtf8("HEADING\nTYPE  NAME  BDIA  BTYP  CATREF  DETAIL  MATXT  CMPREF  BLTREF\n"
                                      "DEFAULTS\n-  -  -  STUD\n\n"));
        for (const auto& [flange, part] : entries) {
            writeRow(flange, part);
        }
    }
}

void BoltSpecWriter::collect(const HxDbBoltNutModel* boltSet) {
    BoltData bolt;
    BoltData nut;
    if (!readBoltData(boltSet, bolt, nut)) {
        tolmar::runReport().passedOver(boltSet->objectId().toInt(), "", "bolt row",
                                       "has no bolt, nut or flange record");
        return;
    }
    const auto text = [](const char* t) { return std::string(t != nullptr ? t : ""); };
    const HxDbFlan2BoltNut* record = boltSet->getFlanIdx();
    FlangeData flange = readFlangeData(record);
    flange.unit = text(record->getFlanUnit());
    flange.spec = boltSpecOf(record);
    add(flange, bolt);
    add(flange, nut);
}

void BoltSpecWriter::add(const FlangeData& flange, const BoltData& part) {
    const std::string name = names_.getBoltSpcoName(flange.spec, flange, part.type);
    if (!names_.isNameCreated(name) && met_.insert(name).second) {
        groups_[names_.getBoltSpecName(flange.spec)].emplace_back(flange, part);
    }
}

void BoltSpecWriter::writeRow(const FlangeData& flange, const BoltData& part) {
    const std::string name = names_.getBoltSpcoName(flange.spec, flange, part.type);
    names_.markNameCreated(name);
    const std::string shortName = names_.getBoltShortName(flange, part.type);
    markIfNew(names_, shortName);
    const bool nut = part.item == "NUT";
    const std::string dtset = nut ? names_.getNutDtsetName(flange) : names_.getBoltDtsetName(flange);
    const std::string mtset = nut ? names_.getNutMtsetName(flange) : names_.getBoltMtsetName(flange);
    const std::string reference = nut ? "  =0" : "  /" + names_.getBoltItemName(flange.spec, flange, part.type);
    specOut_.line("BOLT  */", shortName, "  ", boltDiameter(part), "  ", names_.getBoltStype(flange, part.type),
                  "  =0  /", dtset, "  /", mtset, noReference, reference);
    udaOut_.line("OLD /", name);
    udaOut_.line(":Standard ", limitedText(flange.code));
}
