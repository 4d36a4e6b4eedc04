// The specifications: tables that name the catalogue component which a design element of a type and bore takes. The
// design macros point at their rows, so a row must exist for every component that goes out.
#pragma once

#include "hextinterface/hextbasemethod/object_lists.h"
#include "hextinterface/manager/context.h"

#include <string>
#include <vector>

class SpecGenerator {
public:
    // The folder has no separator at its end. Context and branches must outlive the generator.
    SpecGenerator(std::string folder, ExportContext& context, const BranchTree& branches)
        : folder_(std::move(folder)), context_(context), branches_(branches) {}

    // Each operation writes its files and closes them. ExportException "文件 %1% 打开失败！" for a file that cannot be
    // opened; operations with a list do nothing for an empty one.
    void writeSpecHead();
    // Pipe components, and with them the connection table.
    void writePipeSpecs(const ObjectSet& skipSet);
    // ExportException "参数中含有非管嘴元件！" when an object is no nozzle.
    void writeNozzleSpecs(const std::vector<HxDbNozzleModel*>& nozzles);
    // The list decides whether there is a table; its rows come from the name manager's insulation table.
    void writeInsulSpecs(const std::vector<HxDbSmrtlnEntity*>& objects);
    void writeSupportSpecs(const std::vector<HxDbSupportModel*>& supports);
    void writeAttachSpecs(const std::vector<HxDbSupportModel*>& supports);
    // Has to run before the pipe component specifications, which refer to it.
    void writeBoltSpecs(const std::vector<HxDbBoltNutModel*>& boltSets);

private:
    std::string file(const char* name) const { return folder_ + "\\" + name; }
    void writePipelineSpecs(std::size_t index, const PipelineBranches& pipeline, class PipeSpecWriter& specs,
                            class ConnTableWriter& connections, const ObjectSet& skipSet);

    std::string folder_;
    ExportContext& context_;
    const BranchTree& branches_;
};
