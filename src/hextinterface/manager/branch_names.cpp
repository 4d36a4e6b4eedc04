// Names of pipes, branches and members, and which branch a component lies in.
#include "frame/easy_log.h"
#include "frame/exceptions.h"
#include "hextinterface/manager/name_state.h"

#include <algorithm>

using naming::BranchStop;
using naming::noName;
using naming::stemWith;

namespace naming {

const std::string* UniqueTexts::find(HxDbObjectId id) const {
    const auto at = numbers_.find(id);
    return at == numbers_.end() ? nullptr : &texts_[at->second];
}

const std::string& UniqueTexts::add(HxDbObjectId id, std::string text, std::string_view separator, int& number) {
    if (texts_.contains(text)) {
        (text += separator) += std::to_string(number++);
    }
    const std::uint32_t at = texts_.add(text).number;
    numbers_[id] = at;
    return texts_[at];
}

std::uint32_t MemberCounters::next(const std::string* branch, const std::string* gtype) {
    const std::uint64_t hash = reinterpret_cast<std::uintptr_t>(branch) * 31 + reinterpret_cast<std::uintptr_t>(gtype);
    std::uint32_t number =
        index_.find(hash, [&](std::uint32_t at) { return rows_[at].branch == branch && rows_[at].gtype == gtype; });
    if (number == FlatIndex::none) {
        number = static_cast<std::uint32_t>(rows_.size());
        rows_.push_back({branch, gtype, 0});
        index_.add(hash, number);
    }
    return ++rows_[number].count;
}

BranchStop readBranchStop(const HxDbTubeStop&) {
    return {};
}

bool meets(const BranchStop& a, const BranchStop& b) {
    constexpr double tolerance = 0.001;
    const bool haveBothEnds = (a.endTag == 1 && b.endTag == 2) || (a.endTag == 2 && b.endTag == 1);
    return haveBothEnds && a.number == b.number && a.text == b.text && a.position.distanceTo(b.position) <= tolerance &&
           a.direction.isParallelTo(b.direction);
}

}  // namespace naming

const std::string* NameManager::State::branchOf(const HxDbObject* object) const {
    const naming::ObjectFacts* known = facts.find(naming::idOf(object));
    return known != nullptr ? known->branch : nullptr;
}

void NameManager::State::setBranch(std::span<HxDbSmrtlnEntity* const> list, const std::string& branch) {
    for (const HxDbSmrtlnEntity* component : list) {
        factsOf(component).branch = &branch;
    }
    for (const HxDbSmrtlnEntity* end : {list.back(), list.front()}) {
        if (const HxDbTubeStop* stop = HxDbTubeStop::cast(end)) {
            branchStops.emplace_back(naming::readBranchStop(*stop), &branch);
        }
    }
}

const std::string& NameManager::getPipeName(const HxDbObject* pipeline) {
    if (pipeline == nullptr) {
        return noName;
    }
    const HxDbObjectId id = pipeline->objectId();
    const std::string* known = state_->pipeNames.find(id);
    return known != nullptr
               ? *known
               : state_->pipeNames.add(id, std::string(getBomValue(pipeline, "lineno")), "_", state_->sharedNumber);
}

const std::string& NameManager::createBranchName(std::span<HxDbSmrtlnEntity* const> components) {
    if (components.empty()) {
        hextlog::exportLog().writeText("不存在任何管件！");
        return noName;
    }
    for (const HxDbSmrtlnEntity* end : {components.front(), components.back()}) {
        if (const std::string* branch = state_->branchOf(end)) {
            return *branch;
        }
    }
    const HxDbObject* pipeline = openByAttribute<HxDbObject>(components.front(), "lineno");
    const std::string base = stemWith(getPipeName(pipeline), "-B");
    std::string name;
    do {
        name = base + std::to_string(state_->branchCounters.next(base));
    } while (isNameKnown(name));
    const std::string& branch = state_->put(name, NameKind::Branch);
    state_->setBranch(components, branch);
    return branch;
}

void NameManager::addToBranch(std::string_view branch, std::span<HxDbSmrtlnEntity* const> components) {
    const std::string* name = state_->m_nameCreatedFlagMap.name(branch);
    if (name == nullptr) {
        throw RunException(fillPlaceholder("%1% 命名不是来之命名类！", std::string(branch)));
    }
    if (components.empty() || state_->branchOf(components.front()) == name) {
        return;
    }
    if (components.size() >= 2 && state_->branchOf(components.back()) != nullptr) {
        return;
    }
    state_->setBranch(components, *name);
}

const std::string& NameManager::getBranchNameOf(const HxDbObject* object) const {
    if (const std::string* branch = state_->branchOf(object)) {
        return *branch;
    }
    throw ExportException(std::to_string(naming::idOf(object).toInt()) + "未找到分支");
}

const std::string* NameManager::matchTubeStop(const HxDbObject* object) const {
    const HxDbTubeStop* stop = HxDbTubeStop::cast(object);
    const BranchStop wanted = stop != nullptr ? naming::readBranchStop(*stop) : BranchStop();
    if (wanted.endTag == 0) {
        return nullptr;
    }
    for (const auto& [known, name] : state_->branchStops) {
        if (naming::meets(known, wanted)) {
            return name;
        }
    }
    return nullptr;
}

const std::string& NameManager::getMemberName(const HxDbObject* object) {
    const std::string& branch = getBranchNameOf(object);
    const std::string*& known = state_->factsOf(object).member;
    if (known == nullptr) {
        constexpr std::size_t maxBytes = 127;
        const std::string& gtype = getGtype(object);
        const std::uint32_t counter = state_->memberCounters.next(&branch, &gtype);
        std::string& name = state_->scratch;
        name.assign(gtype).append(" ").append(std::to_string(counter)).append(" of BRANCH /").append(branch);
        known = &state_->put(std::string_view(name).substr(0, maxBytes), NameKind::Member);
    }
    return *known;
}
