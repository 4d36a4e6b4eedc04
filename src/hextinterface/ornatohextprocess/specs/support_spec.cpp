#include "hextinterface/ornatohextprocess/specs/support_spec.h"

#include "hextinterface/manager/name_manager.h"
#include "hextinterface/ornatohextprocess/specs/support_macro.h"
#include "platform/attribute_cache.h"
#include "platform/left_out.h"

namespace {

class SupportSpecWriter {
public:
    SupportSpecWriter(const std::string& folder, NameManager& names);
    void write(const std::vector<HxDbSupportModel*>& supports);

private:
    void writeRow(const HxDbSupportModel* support);

    SpecFile out_;
    NameManager& names_;
};

SupportSpecWriter::SupportSpecWriter(const std::string& folder, NameManager& names)
    : out_(openSpecMacro(folder, "SupportSpec.pmlmac", names)), names_(names) {}

void SupportSpecWriter::write(const std::vector<HxDbSupportModel*>& supports) {
    writePipingHead(out_, names_, names_.components.getSpecName(supports.front()));
    writeHeadingLines(out_, supportColumns, "-  -  -  =");
    for (const HxDbSupportModel* support : supports) {
        writeRow(support);
    }
    out_.close();
}

void SupportSpecWriter::writeRow(const HxDbSupportModel* support) {
    std::vector<HxDbObject*> connected;
    support->getAllConnObject(connected);
    if (connected.empty()) {
        reportLeftOut({support, "", "support row"}, "is connected to nothing");
        return;
    }
    if (!names_.markIfNotCreated(names_.components.getSpcoName(support))) {
        return;
    }
    const std::string shortName = names_.components.getSpcoShortName(support);
    names_.markIfNotCreated(shortName);
    out_.line("PCLA  */", shortName, "  ", getBomValue(connected.front(), "size1"), "  TEXT 'SUPPORT'  /",
              names_.components.getScomName(support), "  /", names_.components.getDtsetName(support), noReference,
              noReference, noReference);
}

}  // namespace

void writeSupportSpec(const std::string& folder, NameManager& names, const std::vector<HxDbSupportModel*>& supports) {
    SupportSpecWriter(folder, names).write(supports);
}
