#include "hextinterface/manager/names/branches.h"

#include "frame/easy_log.h"
#include "frame/exceptions.h"
#include "hextinterface/manager/names/owners.h"
#include "hextinterface/manager/register/cleaned_texts.h"
#include "hextinterface/manager/register/type_names.h"
#include "platform/attribute_cache.h"

using naming::BranchStop;
using naming::noName;
using naming::stemWith;

namespace naming {

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

const std::string* BranchNames::branchOf(const HxDbObject* object) const {
    const Known* known = known_.find(naming::idOf(object));
    return known != nullptr ? known->branch : nullptr;
}

void BranchNames::setBranch(std::span<HxDbSmrtlnEntity* const> list, const std::string& branch) {
    for (const HxDbSmrtlnEntity* component : list) {
        known_[component->objectId()].branch = &branch;
    }
    for (const HxDbSmrtlnEntity* end : {list.back(), list.front()}) {
        if (const HxDbTubeStop* stop = HxDbTubeStop::cast(end)) {
            stops_.emplace_back(naming::readBranchStop(*stop), &branch);
        }
    }
}

const std::string& BranchNames::createBranchName(std::span<HxDbSmrtlnEntity* const> components) {
    if (components.empty()) {
        hextlog::exportLog().writeText("不存在任何管件！");
        return noName;
    }
    for (const HxDbSmrtlnEntity* end : {components.front(), components.back()}) {
        if (const std::string* branch = branchOf(end)) {
            return *branch;
        }
    }
    const HxDbObject* pipeline = openByAttribute<HxDbObject>(components.front(), "lineno");
    const std::string base = stemWith(owners_.getPipeName(pipeline), "-B");
    std::string name;
    do {
        name = base + std::to_string(branchCounters_.next(base));
    } while (names_.isNameKnown(name));
    const std::string& branch = names_.put(name, NameKind::Branch);
    setBranch(components, branch);
    return branch;
}

void BranchNames::addToBranch(std::string_view branch, std::span<HxDbSmrtlnEntity* const> components) {
    const std::string* name = names_.text(branch);
    if (name == nullptr) {
        throw RunException(fillPlaceholder("%1% 命名不是来之命名类！", std::string(branch)));
    }
    if (components.empty() || branchOf(components.front()) == name) {
        return;
    }
    if (components.size() >= 2 && branchOf(components.back()) != nullptr) {
        return;
    }
    setBranch(components, *name);
}

const std::string& BranchNames::getBranchNameOf(const HxDbObject* object) const {
    if (const std::string* branch = branchOf(object)) {
        return *branch;
    }
    throw ExportException(std::to_string(naming::idOf(object).toInt()) + "未找到分支");
}

const std::string* BranchNames::matchTubeStop(const HxDbObject* object) const {
    const HxDbTubeStop* stop = HxDbTubeStop::cast(object);
    const BranchStop wanted = stop != nullptr ? naming::readBranchStop(*stop) : BranchStop();
    if (wanted.endTag == 0) {
        return nullptr;
    }
    for (const auto& [known, name] : stops_) {
        if (naming::meets(known, wanted)) {
            return name;
        }
    }
    return nullptr;
}

const std::string& BranchNames::getMemberName(const HxDbObject* object) {
    const std::string& branch = getBranchNameOf(object);
    const std::string*& known = known_[naming::idOf(object)].member;
    if (known == nullptr) {
        constexpr std::size_t maxBytes = 127;
        const std::string& gtype = types_.getGtype(object);
        const std::uint32_t counter = memberCounters_.next(&branch, &gtype);
        std::string& name = scratch_;
        name.assign(gtype).append(" ").append(std::to_string(counter)).append(" of BRANCH /").append(branch);
        known = &names_.put(std::string_view(name).substr(0, maxBytes), NameKind::Member);
    }
    return *known;
}
