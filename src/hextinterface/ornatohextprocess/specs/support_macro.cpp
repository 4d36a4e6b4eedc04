#include "hextinterface/ornatohextprocess/specs/support_macro.h"

#include "hextinterface/manager/name_manager.h"

SpecFile openSpecMacro(const std::string& folder, const char* fileName, const NameManager& names) {
    const std::string base = folder + names.owners.getDbTitle(ExportDb::Spec);
    {
        SpecFile list(base + "Execute.mac.tpl", tolmar::FileMode::TextAppend);
        list.line("$m [path]\\", fileName);
        list.close();
    }
    return SpecFile(base + fileName);
}

void writePipingHead(SpecFile& out, NameManager& names, const std::string& name) {
    out.line("");
    if (!names.markIfNotCreated(name)) {
        out.line("OLD SPECIFICATION /", name);
        return;
    }
    out.line("NEW SPECIFICATION /", name);
    out.lines(plainSpecLines);
    out.lines({"BSPEC =0", "", "TEXT 'PIPING'"});
}
