#include "hextinterface/ornatohextprocess/pipes/pipe_writer.h"

#include "frame/exceptions.h"
#include "frame/progress_slot.h"
#include "hextinterface/hextbasemethod/macro_text.h"
#include "hextinterface/hextbasemethod/object_tests.h"
#include "hextinterface/hextbasemethod/text_faults.h"
#include "hextinterface/manager/name_manager.h"
#include "hextinterface/manager/uda_writer.h"
#include "hextinterface/ornatohextprocess/specs/created.h"
#include "platform/attribute_cache.h"
#include "platform/hxcom.h"
#include "platform/left_out.h"
#include "platform/model_tests.h"
#include "platform/smrtln.h"
#include "scripts/options.h"
#include "tolmar/color.h"
#include "tolmar/text.h"

#include <algorithm>
#include <cmath>
#include <span>

namespace {

using End = _HextBranchDesc::End;

constexpr int lastConnection = 19;

// Plain pipes, stops and nozzles have no line of their own.
bool hasLineOfItsOwn(const HxDbSmrtlnEntity* item) {
    return smrtln::isPipe(item) ? isFlangedPipe(item) : !isTubeStop(item) && !smrtln::isNozzle(item);
}

bool holdsNoComponent(const ComponentList& items) {
    return std::all_of(items.begin(), items.end(), [](const HxDbSmrtlnEntity* item) {
        return isWeld(item) || isTubeStop(item) || smrtln::isNozzle(item);
    });
}

std::string reasonOf(const ExportException& failure, const ComponentList& items) {
    return *failure.what() != '\0'   ? failure.what()
           : holdsNoComponent(items) ? "holds nothing but welds, stops and nozzles"
                                     : "an end has no plain size";
}

int colourOf(const HxDbObject* manager) {
    const HextNameNode* node = HextNameNode::cast(manager);
    return node != nullptr ? node->getColorIdx() : 0;
}

std::string valueOr(const HxDbObject* object, const char* key, std::string_view word, const char* meaning) {
    const std::string_view value = getBomValue(object, key);
    return std::string(value == word ? std::string_view(meaning) : value);
}

const HxDbSmrtlnEntity* firstItemOf(const PipelineBranches& pipeline, const ObjectSet& skipSet) {
    for (HxDbSmrtlnEntity* item : pipeline.front()) {
        if (!smrtln::isNozzle(item) && !isWeld(item) && skipSet.count(item) == 0) {
            return item;
        }
    }
    return nullptr;
}

// Ventilation and cable work, which goes out with the structures, and nothing beside it that would have a line.
bool standsElsewhere(std::span<const ComponentList> branches, const ObjectSet& skipSet) {
    bool found = false;
    for (const ComponentList& branch : branches) {
        for (HxDbSmrtlnEntity* item : branch) {
            const bool skipped = skipSet.count(item) != 0;
            if (!skipped && !isWeld(item) && !isTubeStop(item)) {
                return false;
            }
            found = found || skipped;
        }
    }
    return found;
}

// Cuts a nozzle off one end of a list that runs towards that end; false when nothing of a branch is left.
bool trimEnd(ComponentList& items) {
    if (items.empty() || (items.size() == 1 && isTubeStop(items.back()))) {
        return false;
    }
    const std::size_t looked = items.size() - (isTubeStop(items.back()) ? 2 : 1);
    if (smrtln::isNozzle(items[looked])) {
        items.erase(items.begin() + static_cast<std::ptrdiff_t>(looked));
    }
    return !items.empty();
}

bool trim(ComponentList& items) {
    std::reverse(items.begin(), items.end());
    const bool headLeft = trimEnd(items);
    std::reverse(items.begin(), items.end());
    return headLeft && trimEnd(items);
}

const HxDbSmrtlnEntity* neighbourBeside(const HxDbSmrtlnEntity* item, const HxDbSmrtlnEntity* known) {
    for (int number = 0; number <= lastConnection; ++number) {
        const HxDbSmrtlnEntity* neighbour = item->getConnSmrtln(number, 0);
        if (neighbour != nullptr && neighbour != known) {
            return neighbour;
        }
    }
    return nullptr;
}

const HxDbSmrtlnEntity* neighbourByFlow(const HxDbSmrtlnEntity* item, int flow) {
    for (int number = 0; number <= lastConnection; ++number) {
        const HxDbSmrtlnPoint* point = item->getPointOfNo(number);
        if (point != nullptr && point->getFlow() == flow) {
            return item->getConnSmrtln(number, 0);
        }
    }
    return nullptr;
}

std::string endConnection(const HxDbSmrtlnEntity* item, const HxDbSmrtlnEntity* next, int flow) {
    const HxDbSmrtlnEntity* neighbour = next != nullptr ? neighbourBeside(item, next) : neighbourByFlow(item, flow);
    return neighbour != nullptr ? firstEndType(neighbour) : "NONE";
}

// The item that stands for an end, and the one whose size is read.
struct EndItems {
    const HxDbSmrtlnEntity* item = nullptr;
    const HxDbSmrtlnEntity* bore = nullptr;
};

template <typename Iterator>
EndItems endItems(Iterator from, Iterator to) {
    EndItems end;
    for (; from != to && end.bore == nullptr; ++from) {
        if (isWeld(*from) || isTubeStop(*from)) {
            continue;
        }
        end.item = end.item != nullptr ? end.item : *from;
        end.bore = hasPlainSize(*from) ? *from : nullptr;
    }
    return end;
}

EndItems endItemsOf(const ComponentList& items, End end) {
    if (items.size() < 2) {
        return {items.front(), items.front()};
    }
    const EndItems found =
        end == End::Head ? endItems(items.begin(), items.end()) : endItems(items.rbegin(), items.rend());
    if (found.item == nullptr) {
        throw ExportException("");
    }
    return {found.item, found.bore != nullptr ? found.bore : found.item};
}

HxGeVector3D endDirection(const CompView& view, bool atHead) {
    if (!isWeld(view.entity)) {
        return view.comp->getDirection(view.entity, atHead);
    }
    return weldAxes(view.entity, WeldRule::BranchEnd).x;
}

std::string boreAt(const HxDbSmrtlnEntity* item, int port) {
    return tolmar::textOrEmpty(smrtln::getSize(HxDbTubeModel::cast(item), port));
}

}  // namespace

bool isExportable(const HxDbSmrtlnEntity* item) {
    return hasPlainSize(item) && hasLineOfItsOwn(item);
}

std::size_t nextExportable(const ComponentList& items, std::size_t from) {
    while (from < items.size() && !isExportable(items[from])) {
        ++from;
    }
    return from;
}

std::string branchHeadConnection(const ComponentList& items) {
    return endConnection(items.front(), items.size() > 1 ? items[1] : nullptr, 1);
}

std::string branchTailConnection(const ComponentList& items) {
    return endConnection(items.back(), items.size() > 1 ? items[items.size() - 2] : nullptr, 2);
}

PipeWriter::PipeWriter(ExportContext& context, std::string_view path, const IdMarks& componentIds)
    : context_(context), componentIds_(componentIds), out_(path, tolmar::FileMode::Text),
      withWelds_(optionOn(options::outWeld)) {}

void PipeWriter::flush() {
    out_.write(text_);
    text_.clear();
}

void PipeWriter::run(const BranchTree& branches, const ObjectSet& skipSet) {
    InnerBars bars(2);
    for (std::size_t i = 0; i < branches.size(); ++i) {
        writePipeline(branches[i], skipSet);
        progressSlot()->setBar(percentage(i, branches.size()), 1);
    }
}

void PipeWriter::writePipeline(const PipelineBranches& pipeline, const ObjectSet& skipSet) {
    const HxDbSmrtlnEntity* item = firstItemOf(pipeline, skipSet);
    if (item == nullptr && standsElsewhere(pipeline, skipSet)) {
        return;
    }
    if (item == nullptr) {
        const HxDbObject* first = pipeline.front().empty() ? nullptr : pipeline.front().front();
        return reportLeftOut({first, "", "pipe"}, "its first branch has no item of its own");
    }
    const HxDbObject* owner = openByAttribute<HxDbObject>(item, "lineno");
    if (owner == nullptr) {
        return reportLeftOut({item, "", "pipe"}, "the pipeline of its first item cannot be opened");
    }
    const std::string shownName = tolmar::textOrEmpty(owner->getDisplayName());
    try {
        const std::string name = writePipe(owner, item);
        if (name != shownName) {
            reportLeftOut({owner, shownName, "pipe name"},
                          "its element is named \"" + name + "\", which its branches do not ask for");
        }
    } catch (const ExportException& failure) {
        flush();
        return reportLeftOut({owner, shownName, "pipe"}, failure.what());
    }
    text_.append("OLD /").append(shownName).append("\n");
    flush();
    for (const ComponentList& branch : pipeline) {
        if (!branch.empty()) {
            context_.names.branches.createBranchName(branch);
        }
    }
    for (std::size_t j = 0; j < pipeline.size(); ++j) {
        tryBranch(pipeline[j], skipSet);
        progressSlot()->setBar(percentage(j, pipeline.size()), 2);
    }
}

std::string PipeWriter::writePipe(const HxDbObject* pipeline, const HxDbSmrtlnEntity* firstItem) {
    NameManager& names = context_.names;
    _HextPipeDesc pipe;
    pipe.name = names.owners.getPipeName(pipeline);
    pipe.func = "CLRPIPE" + std::to_string(colourOf(pipeline));
    if (isInsulated(pipeline)) {
        pipe.ispec = names.insulation.getInsulSpecName(insulationCode(pipeline, firstItem));
    }
    pipe.temp = valueOr(pipeline, "destemp", "常温", "25");
    pipe.press = valueOr(pipeline, "despress", "常压", "0.1");
    pipe.pspec = getBomValue(firstItem, "specname");
    pipe.zone = names.owners.getZoneNameOf(pipeline, "");
    pipe.write(text_, false);
    if (pipe.zone.empty()) {
        reportLeftOut({pipeline, pipe.name, "zone"}, "the pipe stands in none");
    }
    return pipe.name;
}

void PipeWriter::tryBranch(const ComponentList& items, const ObjectSet& skipSet) {
    try {
        writePipeBranch(items, skipSet);
    } catch (const ExportException& failure) {
        if (!standsElsewhere({&items, 1}, skipSet)) {
            reportLeftOut({items.front(), "", "branch"}, reasonOf(failure, items));
        }
    }
    flush();
}

void PipeWriter::writePipeBranch(ComponentList items, const ObjectSet& skipSet) {
    if (items.empty()) {
        return;
    }
    const HxDbObject* firstItem = items.front();
    const auto branch = makeBranch(items);
    if (branch == nullptr) {
        return reportLeftOut({firstItem, "", "branch"}, "holds nothing but stops and nozzles");
    }
    const BranchItems lookup(items);
    fillBranch(*branch, items, lookup);
    const BranchSource source{items, lookup, context_, componentIds_};
    const BranchEntries entries = prepareEntries(*branch, source, skipSet, withWelds_);
    branch->write(text_, branch->exists);
    if (branch->ispec != "unset" && !branch->ispec.empty() && createdIspecs().count(branch->ispec) == 0) {
        reportLeftOut({firstItem, branch->name, "branch insulation"},
                      "there is no specification \"" + branch->ispec + "\"");
    }
    for (const BranchEntry& entry : entries) {
        writeEntry(entry);
    }
    text_ += "END\n";
    reportSizes(items, skipSet);
}

// The lines that a branch lacks, because the size of their component is no plain number.
void PipeWriter::reportSizes(const ComponentList& items, const ObjectSet& skipSet) const {
    for (HxDbSmrtlnEntity* item : items) {
        const bool isAsked = (withWelds_ || !isWeld(item)) && skipSet.count(item) == 0;
        if (!hasPlainSize(item) && hasLineOfItsOwn(item) && isAsked) {
            reportLeftOut({item, "", "component"}, "its size is no plain number");
        }
    }
}

std::unique_ptr<_HextBranchDesc> PipeWriter::makeBranch(ComponentList& items) {
    if (!trim(items)) {
        return nullptr;
    }
    BranchChoice choice = chooseBranch(items);
    const bool exists = !context_.names.markIfNotCreated(choice.name);
    auto branch = std::make_unique<_HextBranchDesc>(exists);
    branch->name = std::move(choice.name);
    branch->endKind = choice.endKind;
    branch->linkName = std::move(choice.linkName);
    return branch;
}

// A branch with a stop takes over the name of the branch that holds the matching stop.
BranchChoice PipeWriter::chooseBranch(const ComponentList& items) {
    NameManager& names = context_.names;
    const bool headStop = isTubeStop(items.front());
    const bool tailStop = isTubeStop(items.back());
    const std::string* atHead = headStop ? names.branches.matchTubeStop(items.front()) : nullptr;
    const std::string* atTail = tailStop ? names.branches.matchTubeStop(items.back()) : nullptr;
    BranchChoice choice;
    choice.endKind = headStop && tailStop ? 2 : headStop ? 0 : tailStop ? 1 : -1;
    choice.linkName = headStop && atTail != nullptr ? *atTail : "";
    const std::string* met = atHead != nullptr ? atHead : atTail;
    if (met != nullptr) {
        names.branches.addToBranch(*met, items);
    }
    choice.name = met != nullptr ? *met : names.branches.createBranchName(items);
    return choice;
}

void PipeWriter::fillBranch(_HextBranchDesc& branch, const ComponentList& items, const BranchItems& lookup) {
    const HxDbObject* pipeline = openByAttribute<HxDbObject>(items.front(), "lineno");
    if (pipeline != nullptr && isInsulated(pipeline)) {
        const std::string_view temperature = getBomValue(pipeline, "destemp");
        branch.temp = temperature.empty() ? "0" : temperature;
        branch.ispec = context_.names.insulation.getInsulSpecName(getBomValue(pipeline, "insulcode"));
    }
    const short colour = items.front()->getColorIdx();
    branch.colour = context_.names.owners.getColourName(TlCmColor::byIndex(colour == 0 ? 1 : colour));
    const HxDbSmrtlnEntity* headItem = endItemsOf(items, End::Head).item;
    if (smrtln::isPipe(headItem)) {
        branch.lstube = requireSpco(headItem, context_.names);
    }
    fillEnd(branch, End::Head, items, lookup);
    fillEnd(branch, End::Tail, items, lookup);
}

void PipeWriter::fillEnd(_HextBranchDesc& branch, End end, const ComponentList& items, const BranchItems& lookup) {
    const bool head = end == End::Head;
    const EndItems found = endItemsOf(items, end);
    const CompView view = makeView(found.item, &lookup);
    branch.setPoint(end, head ? view.comp->getArrivePoint(found.item) : view.comp->getLeavePoint(found.item));
    const HxGeVector3D direction = endDirection(view, head);
    if (!std::isfinite(direction.length())) {
        throw ExportException("无效方向");
    }
    branch.setDirection(end, direction);
    branch.setBore(end, boreAt(found.bore, head ? view.comp->arrivePoint : view.comp->leavePoint));
    const HxDbSmrtlnEntity* outermost = head ? items.front() : items.back();
    std::string& connection = head ? branch.headConnection : branch.tailConnection;
    connection = smrtln::isNozzle(outermost) ? firstEndType(outermost)
                 : head                      ? branchHeadConnection(items)
                                             : branchTailConnection(items);
}

void PipeWriter::writeEntry(const BranchEntry& entry) {
    if (entry.kind == BranchEntry::WeldPair) {
        writeWeldPair(entry.first.get(), entry.second.get());
    } else {
        writeCompLine(entry.first.get());
    }
}

void PipeWriter::writeCompLine(const _HextComponentDesc* component) {
    if (component == nullptr) {
        return;
    }
    if (component->orientation.empty()) {
        return reportLeftOut({component->entity, component->name, "component"}, "has no orientation");
    }
    component->write(text_, false);
    const struct {
        const char* name;
        std::string_view value;
    } udas[] = {{"UserItem", component->userItem}, {"UserType", component->userType}, {"CompName", component->compName},
                {"Tag", component->tag},           {"Material", component->material}, {"StockNo", component->stockNo}};
    const HxDbObjectId id = component->entity != nullptr ? component->entity->objectId() : HxDbObjectId();
    for (const auto& [name, value] : udas) {
        reportEscapedText(id, name, value);
        context_.udas.writeUda(text_, name, value);
    }
    text_ += "END\n";
}

// Of two adjacent welds the one along the world axes gives way to the other.
void PipeWriter::writeWeldPair(_HextComponentDesc* first, _HextComponentDesc* second) {
    if (first == nullptr || first->orientation.empty()) {
        return reportLeftOut({first != nullptr ? first->entity : nullptr, "", "weld pair"}, "has no orientation");
    }
    if (!first->axisPure) {
        second->orientation = first->orientation;
    } else if (!second->axisPure) {
        first->orientation = second->orientation;
    }
    writeCompLine(first);
    writeCompLine(second);
}
