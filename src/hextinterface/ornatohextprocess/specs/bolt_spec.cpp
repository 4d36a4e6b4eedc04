#include "hextinterface/ornatohextprocess/specs/bolt_spec.h"

#include "hextinterface/hextbasemethod/limited_text.h"
#include "hextinterface/hextcata/bolt_catalogue.h"
#include "hextinterface/manager/name_manager.h"
#include "hextinterface/ornatohextprocess/specs/file.h"
#include "platform/left_out.h"
#include "tolmar/code_page.h"
#include "tolmar/text.h"

#include <map>
#include <set>
#include <utility>

namespace {

class BoltSpecWriter {
public:
    BoltSpecWriter(const std::string& specPath, const std::string& udaPath, NameManager& names)
        : specOut_(specPath), udaOut_(udaPath), names_(names) {}
    void write(const std::vector<HxDbBoltNutModel*>& boltSets);

private:
    using Entry = std::pair<FlangeData, BoltData>;
    void collect(const HxDbBoltNutModel* boltSet);
    void add(const FlangeData& flange, const BoltData& part);
    void writeRow(const FlangeData& flange, const BoltData& part);

    SpecFile specOut_;
    SpecFile udaOut_;
    NameManager& names_;
    std::map<std::string, std::vector<Entry>> groups_;
    std::set<std::string> met_;
};

void BoltSpecWriter::write(const std::vector<HxDbBoltNutModel*>& boltSets) {
    for (const HxDbBoltNutModel* boltSet : boltSets) {
        collect(boltSet);
    }
    for (const auto& [name, entries] : groups_) {
        std::string head = "\n";
        if (names_.markIfNotCreated(name)) {
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
    udaOut_.close();
    specOut_.close();
}

void BoltSpecWriter::collect(const HxDbBoltNutModel* boltSet) {
    BoltData bolt;
    BoltData nut;
    if (!readBoltData(boltSet, bolt, nut)) {
        reportLeftOut({boltSet, "", "bolt row"}, "has no bolt, nut or flange record");
        return;
    }
    const HxDbFlan2BoltNut* record = boltSet->getFlanIdx();
    FlangeData flange = readFlangeData(record);
    flange.unit = tolmar::textOrEmpty(record->getFlanUnit());
    flange.spec = boltSpecOf(record);
    add(flange, bolt);
    add(flange, nut);
}

void BoltSpecWriter::add(const FlangeData& flange, const BoltData& part) {
    const std::string name = names_.bolts.getBoltSpcoName(flange.spec, flange, part.type);
    if (!names_.isNameCreated(name) && met_.insert(name).second) {
        groups_[names_.bolts.getBoltSpecName(flange.spec)].emplace_back(flange, part);
    }
}

void BoltSpecWriter::writeRow(const FlangeData& flange, const BoltData& part) {
    const std::string name = names_.bolts.getBoltSpcoName(flange.spec, flange, part.type);
    names_.markNameCreated(name);
    const std::string shortName = names_.bolts.getBoltShortName(flange, part.type);
    names_.markIfNotCreated(shortName);
    const bool nut = part.item == "NUT";
    const std::string dtset = nut ? names_.bolts.getNutDtsetName(flange) : names_.bolts.getBoltDtsetName(flange);
    const std::string mtset = nut ? names_.bolts.getNutMtsetName(flange) : names_.bolts.getBoltMtsetName(flange);
    const std::string reference = nut ? "  =0" : "  /" + names_.bolts.getBoltItemName(flange.spec, flange, part.type);
    specOut_.line("BOLT  */", shortName, "  ", boltDiameter(part), "  ", names_.bolts.getBoltStype(flange, part.type),
                  "  =0  /", dtset, "  /", mtset, "  =0", reference);
    udaOut_.line("OLD /", name);
    udaOut_.line(":Standard ", limitedText(flange.code));
}

}  // namespace

void writeBoltSpecs(const std::string& specPath, const std::string& udaPath, NameManager& names,
                    const std::vector<HxDbBoltNutModel*>& boltSets) {
    BoltSpecWriter(specPath, udaPath, names).write(boltSets);
}
