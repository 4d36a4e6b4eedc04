#include "hextinterface/ornatohextprocess/specs/generator.h"

#include "frame/exceptions.h"
#include "frame/progress_slot.h"
#include "hextinterface/manager/name_manager.h"
#include "hextinterface/ornatohextprocess/specs/attachment_spec.h"
#include "hextinterface/ornatohextprocess/specs/bolt_spec.h"
#include "hextinterface/ornatohextprocess/specs/conn_table.h"
#include "hextinterface/ornatohextprocess/specs/insulation_spec.h"
#include "hextinterface/ornatohextprocess/specs/nozzle_spec.h"
#include "hextinterface/ornatohextprocess/specs/pipe_spec.h"
#include "hextinterface/ornatohextprocess/specs/support_spec.h"
#include "platform/left_out.h"
#include "tolmar/file.h"

// Text to a file that does not open is lost here; the run report tells.
void SpecGenerator::writeSpecHead() {
    tolmar::OutputFile out(file("SpecCreate.txt"), tolmar::FileMode::Text);
    NameManager& names = context_.names;
    const std::string& weld = names.joints.getWeldSpecName(0);
    std::string text = "OLD /*\nParagon\nOLD /*\n";
    if (names.markIfNotCreated(weld)) {
        text.append("NEW SPWL /").append(weld).append("\nOLD /").append(weld).append("\nNEW SPEC /*LIMBOSPEC\n");
    } else {
        text.append("OLD /").append(weld).append("\n");
    }
    out.write(text.append("Specon\n"));
    out.close();
}

void SpecGenerator::writePipeSpecs(const ObjectSet& skipSet) {
    PipeSpecWriter specs(file("PipeCompSpecGenerator.txt"), file("PipeSpcoUdaSet.txt"), context_);
    ConnTableWriter connections(file("ConnTable.txt"), context_.names);
    InnerBars bars(2);
    specs.writeFixedBendSpec();
    for (std::size_t i = 0; i < branches_.size(); ++i) {
        writePipelineSpecs(i, branches_[i], specs, connections, skipSet);
    }
    connections.close();
    specs.close();
}

void SpecGenerator::writePipelineSpecs(std::size_t index, const PipelineBranches& pipeline, PipeSpecWriter& specs,
                                       ConnTableWriter& connections, const ObjectSet& skipSet) {
    for (std::size_t j = 0; j < pipeline.size(); ++j) {
        if (pipeline[j].empty()) {
            continue;
        }
        try {
            specs.writeBranchSpecs(pipeline[j], skipSet);
            connections.writeBranchConnections(pipeline[j]);
        } catch (const ExportException& failure) {
            reportLeftOut(pipeline[j].front(), "branch specification", failure.what());
            continue;
        }
        progressSlot()->setBar(percentage(j, pipeline.size()), 2);
    }
    progressSlot()->setBar(percentage(index, branches_.size()), 1);
}

void SpecGenerator::writeNozzleSpecs(const std::vector<HxDbNozzleModel*>& nozzles) {
    if (!nozzles.empty()) {
        ::writeNozzleSpecs(file("nozzleSpec.txt"), context_.names, nozzles);
    }
}

void SpecGenerator::writeInsulSpecs(const std::vector<HxDbSmrtlnEntity*>& objects) {
    if (!objects.empty()) {
        writeInsulationSpecs(file("TempSpecGenerator.txt"), context_.names);
    }
}

void SpecGenerator::writeSupportSpecs(const std::vector<HxDbSupportModel*>& supports) {
    if (!supports.empty()) {
        writeSupportSpec(folder_ + "\\", context_.names, supports);
    }
}

void SpecGenerator::writeAttachSpecs(const std::vector<HxDbSupportModel*>& supports) {
    std::vector<const HxDbSmrtlnEntity*> connected;
    std::vector<HxDbObject*> objects;
    for (const HxDbSupportModel* support : supports) {
        support->getAllConnObject(objects);
        if (const HxDbSmrtlnEntity* first = objects.empty() ? nullptr : HxDbSmrtlnEntity::cast(objects.front())) {
            connected.push_back(first);
        } else {
            reportLeftOut({support, "", "attachment row"}, "is connected to nothing");
        }
    }
    if (!connected.empty()) {
        writeAttachmentSpec(folder_ + "\\", context_.names, connected);
    }
}

void SpecGenerator::writeBoltSpecs(const std::vector<HxDbBoltNutModel*>& boltSets) {
    if (!boltSets.empty()) {
        ::writeBoltSpecs(file("BoltSpec.txt"), file("BoltSpcoUdaSet.txt"), context_.names, boltSets);
    }
}
