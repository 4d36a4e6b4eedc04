// The driver of the macro export: a strict sequence of stages, each of which finds the files and names of the stages
// before it.
#include "frame/easy_log.h"
#include "frame/exceptions.h"
#include "frame/progress_slot.h"
#include "hextinterface/hext_commands.h"
#include "hextinterface/hextcata/hextcata.h"
#include "hextinterface/manager/manager.h"
#include "hextinterface/model_extraction.h"
#include "hextinterface/ornatohextprocess/ornatohextprocess.h"
#include "platform/hxcom.h"
#include "platform/left_out.h"
#include "scripts/project_config.h"
#include "tolmar/host_ui.h"
#include "tolmar/paths.h"
#include "tolmar/run_report.h"
#include "tolmar/system.h"

#include <chrono>
#include <optional>

namespace {

using tolmar::RunOutcome;
using tolmar::runReport;

constexpr const char* workingFolder = "\\temp\\hext";
constexpr const char* logPath = "\\temp\\hextout.log";
constexpr const char* packagePath = "\\bin\\v80-win32\\HextPackage.exe";

// The files of an earlier run that a new run deletes, in this order. Colour files and gtype_lost.log stay.
constexpr const char* staleFiles[] = {
    "\\temp\\hext\\uda.txt",
    "\\temp\\hext\\sup.txt",
    "\\temp\\hext\\equip.txt",
    "\\temp\\hext\\struct.txt",
    "\\temp\\hext\\pipe.txt",
    "temp/hext/BoltSpcoUdaSet.txt",
    "temp/hext/BoltSpec.txt",
    "temp/hext/cata.txt",
    "temp/hext/conntable.txt",
    "temp/hext/nozzlespec.txt",
    "temp/hext/PipeCompSpecGenerator.txt",
    "temp/hext/pipespcoudaset.txt",
    "temp/hext/SpecCreate.txt",
    "temp/hext/Sitezone.txt",
    "temp/hext/TempSpecGenerator.txt",
    "temp/hext/axisline.txt",
    // Tables that only a switch asks for; the list of them grows by appending.
    "temp/hext/SpecSupportSpec.pmlmac",
    "temp/hext/SpecAttachSpec.pmlmac",
    "temp/hext/SpecExecute.mac.tpl",
};

std::string fullPath(const char* relative) {
    return HextSystem::getFullHextName(relative);
}

// Prints a label and the seconds since the last mark.
class StageClock {
public:
    void line(const char* label) {
        const auto now = Clock::now();
        hxcad::hextPrintf("\n%s", label);
        hxcad::hextPrintf("\n%lfs", std::chrono::duration<double>(now - mark_).count());
        mark_ = now;
    }

private:
    using Clock = std::chrono::steady_clock;
    Clock::time_point mark_ = Clock::now();
};

// How a run ends when nothing is thrown: whole, with nothing selected, or with components that have no GType.
enum class RunEnd { Whole, NothingSelected, TypesMissing };

// The objects of one run, destroyed in reverse order on every way out.
class HextRun {
public:
    RunEnd run() {
        if (!classifyModel(scope_, specialSet())) {
            return RunEnd::NothingSelected;
        }
        for (const HxDbObject* stray : scope_.strays) {
            reportLeftOut(stray, "object", "stands under no manager");
        }
        makeBranches();
        startNaming();
        if (!branches_.empty() && !(writeComponentCatalogue() && writeSupportCatalogue())) {
            names_->types.reportLostMappings();
            closeOpenFiles();
            return RunEnd::TypesMissing;
        }
        writeNozzleCatalogue();
        writeSpecifications();
        writeDesign();
        writeSiteZoneFile(*names_);
        writePipes();
        finish();
        return RunEnd::Whole;
    }

private:
    void progress(int value) { progressSlot()->setBar(value, 0); }

    void makeBranches() {
        branches_ = extractBranches(scope_.pipelines);
        if (!checkSharedComponents(branches_, componentIds_)) {
            throw RunException("多个分支存在相同管件");
        }
    }

    void startNaming() {
        names_.emplace();
        names_->types.loadSkeyTable();
        names_->types.loadTypeTable();
        udas_.emplace(fullPath("\\temp\\hext\\uda.txt"), *names_);
        context_.emplace(ExportContext{*names_, *udas_});
        catalogue_.emplace(fullPath(workingFolder), *names_);
        progress(10);
    }

    bool writeComponentCatalogue() {
        clock_.line("Prepare:");
        bool whole = true;
        {
            InnerBars bars(2);
            progressSlot()->setText("创建元件库......");
            catalogue_->writeFixedBend();
            for (std::size_t i = 0; i < branches_.size(); ++i) {
                for (std::size_t j = 0; j < branches_[i].size(); ++j) {
                    whole = catalogue_->writeBranch(branches_[i][j], specialSet()) && whole;
                    progressSlot()->setBar(percentage(j, branches_[i].size()), 2);
                }
                progressSlot()->setBar(percentage(i, branches_.size()), 1);
            }
            if (!whole) {
                return false;
            }
        }
        catalogue_->writeInsulationCatalogue();
        progress(30);
        clock_.line("创建元件库:");
        return true;
    }

    bool writeSupportCatalogue() {
        collectSupports();
        const bool withRows = configSupportSpec();
        for (const HxDbSupportModel* support : supports_) {
            catalogue_->writeAttachment(support);
            if (withRows) {
                catalogue_->writeSupport(support);
            }
        }
        progress(40);
        clock_.line("创建支架库:");
        return true;
    }

    // The members of the selected supports that do not stand in another support.
    void collectSupports() {
        for (const HxDbObject* manager : scope_.supports) {
            for (const HxDbObjectId id : manager->getMemberIds()) {
                HxDbSupportModel* member = openAs<HxDbSupportModel>(id);
                if (member == nullptr) {
                    reportLeftOut({id, "", "attachment"}, "is no support model");
                } else if (openAs<HxDbSupportModel>(member->getOwnerId()) == nullptr) {
                    supports_.push_back(member);
                }
            }
        }
    }

    void writeNozzleCatalogue() {
        progressSlot()->setText("创建管嘴库......");
        nozzlesWithSpec().clear();
        catalogue_->writeNozzles(collectNozzles(scope_.equipment));
        progress(50);
        clock_.line("创建管嘴库:");
        progressSlot()->setText("生成等级......");
    }

    void writeSpecifications() {
        SpecGenerator specs(fullPath(workingFolder), *context_, branches_);
        specs.writeSpecHead();
        if (configBoltSpec()) {
            specs.writeBoltSpecs(catalogue_->boltedObjects());
        }
        specs.writePipeSpecs(specialSet());
        specs.writeNozzleSpecs(nozzlesWithSpec());
        if (configSupportSpec()) {
            specs.writeSupportSpecs(supports_);
            specs.writeAttachSpecs(supports_);
        }
        specs.writeInsulSpecs(catalogue_->insulatedObjects());
        progress(60);
        clock_.line("创建管子管嘴等级:");
        progressSlot()->setText("导出设备结构支架......");
    }

    void writeDesign() {
        writeEquipment();
        writeStructures();
        writeSupportsAndGrids();
        progress(80);
        clock_.line("导出设备结构支架:");
        progressSlot()->setText("创建管线模型......");
    }

    // Records are large, so those of a manager are written, and gone, before the next one's are gathered.
    void writeEquipment() {
        EquipFile file(fullPath("\\temp\\hext\\equip.txt"), *context_);
        DesignMacroSet design(*context_);
        design.whenManagerGathered = [&] {
            file.writeEquips(design.equips);
            design.equips.clear();
        };
        design::gatherEquipment(scope_.equipment, design);
        file.writeNozzles(design.nozzles);
        file.close();
    }

    void writeStructures() {
        NumberedFile file(fullPath("\\temp\\hext\\struct.txt"), ElementKind::Structure, *udas_);
        DesignMacroSet design(*context_);
        design.whenManagerGathered = [&] {
            file.write(design.structs);
            design.structs.clear();
        };
        design::gatherStructures(scope_.containers, design);
        file.close();
    }

    // The grids go into their own file before the last line of the supports.
    void writeSupportsAndGrids() {
        NumberedFile file(fullPath("\\temp\\hext\\sup.txt"), ElementKind::Support, *udas_);
        DesignMacroSet design(*context_);
        design.whenManagerGathered = [&] {
            file.write(design.supports);
            design.supports.clear();
        };
        design::gatherSupports(scope_.supports, design);
        writeGridFile(fullPath("\\temp\\hext\\axisline.txt"), scope_.grids, *names_);
        file.writeEnd("savework\n");
        file.close();
    }

    void writePipes() {
        if (branches_.empty()) {
            return;
        }
        try {
            eqnoName() = configEqnoName();
            customNames().clear();
        } catch (const std::exception& failure) {
            // The flag keeps its value: the file has changed since the mapping tables were read from it.
            runReport().ended(RunOutcome::Failed, projectConfigPath() + ": " + failure.what());
        }
        PipeWriter pipes(*context_, fullPath("\\temp\\hext\\pipe.txt"), componentIds_);
        pipes.run(branches_, specialSet());
        pipes.close();
    }

    void finish() {
        progress(100);
        clock_.line("创建管线模型:");
        writeColourFiles();
        closeOpenFiles();
    }

    // Those that grow from stage to stage. Of a run without all types they hold what could be written.
    void closeOpenFiles() {
        catalogue_->close();
        udas_->close();
    }

    StageClock clock_;
    ModelScope scope_;
    BranchTree branches_;
    IdMarks componentIds_;
    std::vector<HxDbSupportModel*> supports_;
    std::optional<NameManager> names_;
    std::optional<UdaWriter> udas_;
    std::optional<ExportContext> context_;
    std::optional<CataBuilder> catalogue_;
};

void deleteStaleFiles() {
    for (const char* file : staleFiles) {
        tolmar::deleteFile(fullPath(file));
    }
}

// The packaging program gets its own folder as working directory; it finds the macro files by their fixed names.
void startPackaging() {
    const std::string program = fullPath(packagePath);
    tolmar::setCurrentDirectory(tolmar::folderOf(program));
    tolmar::startProgram(program);
}

void runStages() {
    RunEnd end = RunEnd::Whole;
    {
        HextRun run;
        end = run.run();
        progressSlot()->close();
    }
    if (end == RunEnd::NothingSelected) {
        runReport().ended(RunOutcome::Cancelled, "nothing was selected");
    } else if (end == RunEnd::TypesMissing) {
        runReport().ended(RunOutcome::Failed, "components without GType: see the lines above and gtype_lost.log");
    } else {
        startPackaging();
    }
}

// `place` goes before the text where a user reads what failed by itself.
void showFailure(const char* text, const std::string& place = {}) {
    tolmar::messageBox(text);
    hxcad::hextPrintf("%s", text);
    runReport().ended(RunOutcome::Failed, place.empty() ? text : place + ": " + text);
}

}  // namespace

void hextout() {
    // The packaging program of an earlier run may still be reading the files that this one replaces.
    tolmar::waitForStartedPrograms();
    hextlog::exportLog().setTarget(fullPath(logPath).c_str(), false);
    deleteStaleFiles();
    ProgressScope progress;
    specialSet().clear();
    try {
        runStages();
    } catch (const ProgressCancelException&) {
        runReport().ended(RunOutcome::Cancelled);
    } catch (const ProjectConfigFault& fault) {
        showFailure(fault.what(), projectConfigPath());
    } catch (const std::exception& failure) {
        showFailure(failure.what());
    }
}
