#include "hextinterface/ornatohextprocess/specs/nozzle_spec.h"

#include "frame/easy_log.h"
#include "frame/exceptions.h"
#include "frame/progress_slot.h"
#include "hextinterface/hextbasemethod/object_tests.h"
#include "hextinterface/hextbasemethod/text_faults.h"
#include "hextinterface/manager/name_manager.h"
#include "hextinterface/ornatohextprocess/specs/file.h"
#include "platform/attribute_cache.h"
#include "platform/left_out.h"

#include <map>
#include <set>

namespace {

class NozzleSpecWriter {
public:
    NozzleSpecWriter(const std::string& path, NameManager& names) : out_(path), names_(names) {}
    void write(const std::vector<HxDbNozzleModel*>& nozzles);

private:
    using Groups = std::map<std::string, std::vector<const HxDbNozzleModel*>>;
    Groups groupBySpec(const std::vector<HxDbNozzleModel*>& nozzles);
    void writeHead(const HxDbNozzleModel* nozzle);
    void writeRow(const HxDbNozzleModel* nozzle);

    SpecFile out_;
    NameManager& names_;
};

void NozzleSpecWriter::write(const std::vector<HxDbNozzleModel*>& nozzles) {
    for (const HxDbObject* object : nozzles) {
        if (!object->isKindOf(HxDbNozzleModel::desc())) {
            throw ExportException("参数中含有非管嘴元件！");
        }
    }
    const Groups groups = groupBySpec(nozzles);
    if (!groups.empty()) {
        writeWeldWorld(out_, names_, names_.joints.getWeldSpecName(1), {"PURPOSE EQUI", "DESC 'Equipment'"});
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
    out_.close();
}

NozzleSpecWriter::Groups NozzleSpecWriter::groupBySpec(const std::vector<HxDbNozzleModel*>& nozzles) {
    Groups groups;
    std::set<std::string> met;
    for (const HxDbNozzleModel* nozzle : nozzles) {
        if (!hasPlainSize(nozzle)) {
            reportLeftOut({nozzle, "", "nozzle row"}, "its size is no plain number");
        } else if (met.insert(names_.components.getSpcoName(nozzle)).second) {
            groups[names_.components.getSpecName(nozzle)].push_back(nozzle);
        }
    }
    return groups;
}

void NozzleSpecWriter::writeHead(const HxDbNozzleModel* nozzle) {
    out_.line("");
    const std::string name = names_.components.getSpecName(nozzle);
    if (!names_.markIfNotCreated(name)) {
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
    if (!names_.markIfNotCreated(names_.components.getSpcoName(nozzle))) {
        return;
    }
    const std::string shortName = names_.components.getSpcoShortName(nozzle);
    names_.markIfNotCreated(shortName);
    out_.line(names_.types.getGtype(nozzle), "  */", shortName, "  ", getBomValue(nozzle, "size"), "  /",
              names_.components.getScomName(nozzle), "  =0  /", names_.components.getMtsetName(nozzle), "  =0  =0");
    hextlog::exportLog().write("%lld create nozzle spec %s %s", idNumber(nozzle), shortName.c_str(),
                               names_.components.getComponentName(nozzle).c_str());
}

}  // namespace

void writeNozzleSpecs(const std::string& path, NameManager& names, const std::vector<HxDbNozzleModel*>& nozzles) {
    NozzleSpecWriter(path, names).write(nozzles);
}
