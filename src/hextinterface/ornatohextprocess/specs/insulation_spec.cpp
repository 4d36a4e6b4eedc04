#include "hextinterface/ornatohextprocess/specs/insulation_spec.h"

#include "hextinterface/manager/name_manager.h"
#include "hextinterface/ornatohextprocess/specs/created.h"
#include "hextinterface/ornatohextprocess/specs/file.h"
#include "platform/left_out.h"

#include <set>

namespace {

class InsulSpecWriter {
public:
    InsulSpecWriter(const std::string& path, NameManager& names) : out_(path), names_(names) {}
    void write();

private:
    bool writeHead(const std::string& code);
    void writeRow(const std::string& key, const InsulationRecord& record);

    SpecFile out_;
    NameManager& names_;
};

void InsulSpecWriter::write() {
    std::set<std::string> headed;
    for (const auto& [key, record] : names_.insulation.getInsulTable()) {
        const std::string code = key.substr(0, key.find('_'));
        if (headed.count(code) == 0) {
            if (!writeHead(code)) {
                reportLeftOut({HxDbObjectId(), key, "insulation row"}, "has no insulation code");
                continue;
            }
            createdIspecs().insert(code);
            out_.lines({"", "HEADING", "TYPE  NAME  TEMP  PBOR0  CATREF  DETAIL  MATXT  CMPREF  BLTREF"});
            headed.insert(code);
        }
        writeRow(key, record);
    }
    out_.close();
}

bool InsulSpecWriter::writeHead(const std::string& code) {
    out_.line("");
    const std::string name = names_.insulation.getInsulSpecName(code);
    if (name == "_") {
        return false;
    }
    if (!names_.markIfNotCreated(name)) {
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

}  // namespace

void writeInsulationSpecs(const std::string& path, NameManager& names) {
    InsulSpecWriter(path, names).write();
}
