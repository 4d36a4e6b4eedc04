// pipe.txt: every pipeline as a pipe with its branches and their components, in the order of the branch tree.
#pragma once

#include "hextinterface/hextbasemethod/object_lists.h"
#include "hextinterface/manager/context.h"
#include "hextinterface/ornatohextprocess/pipes/component_desc.h"
#include "hextinterface/ornatohextprocess/pipes/pipe_desc.h"
#include "tolmar/file.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

// One line item of a branch while it is being prepared.
struct BranchEntry {
    enum Kind { WeldPair = 1, Component = 2, FixBend = 3 };
    std::unique_ptr<_HextComponentDesc> first;
    std::unique_ptr<_HextComponentDesc> second;  // of a pair of welds
    Kind kind = Component;
};
using BranchEntries = std::vector<BranchEntry>;

// Whether an item becomes a component line: no size with "*", no plain pipe, no stop, no nozzle.
bool isExportable(const HxDbSmrtlnEntity* item);
// The index of the first exportable item from `from` on; items.size() when there is none.
std::size_t nextExportable(const ComponentList& items, std::size_t from);

// The end type of what a branch connects to; "NONE" without a neighbour.
std::string branchHeadConnection(const ComponentList& items);
std::string branchTailConnection(const ComponentList& items);

// Axes of an inserted bend from its direction; both normalised.
Axes perpAxes(const HxGeVector3D& direction);

// The entries of a branch in the order of writing, with bends inserted wherever the step from one component to the next
// does not run straight along a world axis. May change the branch's head and tail direction.
BranchEntries prepareEntries(_HextBranchDesc& branch, const BranchSource& source, const ObjectSet& skipSet,
                             bool withWelds);

// The name of a branch and how its ends hang on others, see _HextBranchDesc.
struct BranchChoice {
    std::string name;
    std::string linkName;
    int endKind = -1;
};

class PipeWriter {
public:
    // Opens the file; one that cannot be opened loses what is written, and the run report tells.
    PipeWriter(ExportContext& context, std::string_view path, const IdMarks& componentIds);
    // Writes everything. A pipeline or branch that fails is left out and told to the run report.
    void run(const BranchTree& branches, const ObjectSet& skipSet);
    bool close() { return out_.close(); }

private:
    void writePipeline(const PipelineBranches& pipeline, const ObjectSet& skipSet);
    // Gives the name of the element.
    std::string writePipe(const HxDbObject* pipeline, const HxDbSmrtlnEntity* firstItem);
    void tryBranch(const ComponentList& items, const ObjectSet& skipSet);
    void writePipeBranch(ComponentList items, const ObjectSet& skipSet);
    void reportSizes(const ComponentList& items, const ObjectSet& skipSet) const;
    // Trims the list; null when it yields no branch.
    std::unique_ptr<_HextBranchDesc> makeBranch(ComponentList& items);
    // Which branch the items make, or go on with.
    BranchChoice chooseBranch(const ComponentList& items);
    void fillBranch(_HextBranchDesc& branch, const ComponentList& items, const BranchItems& lookup);
    void fillEnd(_HextBranchDesc& branch, _HextBranchDesc::End end, const ComponentList& items,
                 const BranchItems& lookup);
    void writeEntry(const BranchEntry& entry);
    void writeCompLine(const _HextComponentDesc* component);
    void writeWeldPair(_HextComponentDesc* first, _HextComponentDesc* second);
    void flush();

    ExportContext& context_;
    const IdMarks& componentIds_;
    tolmar::OutputFile out_;
    std::string text_;  // lines of the pipe or branch in hand
    bool withWelds_;
};
