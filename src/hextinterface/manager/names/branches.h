// Names of branches and of their members, and which branch a component lies in.
#pragma once

#include "hextinterface/manager/register/names.h"
#include "platform/geometry.h"
#include "platform/id_pages.h"
#include "platform/objects.h"

#include <tsl/robin_map.h>

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

class OwnerNames;
class TypeNames;

namespace naming {

// What is known of a stop at the end of a branch. The platform does not tell any of it, so records stay as they are
// made, and an end tag other than 1 and 2 meets nothing.
struct BranchStop {
    int number = 0;
    int endTag = 0;
    std::string text;
    HxGePoint3D position;
    HxGeVector3D direction;
};
BranchStop readBranchStop(const HxDbTubeStop& stop);
bool meets(const BranchStop& a, const BranchStop& b);

// Members of a branch by GType, counted from 1. Texts are told apart by their place, of which each has one.
class MemberCounters {
public:
    std::uint32_t next(const std::string* branch, const std::string* gtype) { return ++counts_[{branch, gtype}]; }

private:
    using Key = std::pair<const std::string*, const std::string*>;
    struct Hash {
        std::size_t operator()(const Key& key) const {
            const std::hash<const void*> hash;
            return hash(key.first) * 31 + hash(key.second);
        }
    };
    tsl::robin_map<Key, std::uint32_t, Hash> counts_;
};

}  // namespace naming

class BranchNames {
public:
    // All must outlive the names.
    BranchNames(NameRegister& names, TypeNames& types, OwnerNames& owners)
        : names_(names), types_(types), owners_(owners) {}

    // Names the branch of the components, which stand in connection order, or gives the one that an end has already.
    // Empty for an empty list, with a line in the export log.
    const std::string& createBranchName(std::span<HxDbSmrtlnEntity* const> components);
    // Moves the components to a known branch, unless the first lies in it or the last in any. RunException for a
    // branch that is not known.
    void addToBranch(std::string_view branch, std::span<HxDbSmrtlnEntity* const> components);
    // ExportException for an object without branch.
    const std::string& getBranchNameOf(const HxDbObject* object) const;
    // The branch of an earlier stop that meets this one; null when there is none.
    const std::string* matchTubeStop(const HxDbObject* stop) const;
    // ExportException for an object without branch.
    const std::string& getMemberName(const HxDbObject* object);

private:
    void setBranch(std::span<HxDbSmrtlnEntity* const> list, const std::string& branch);
    // Null when the object lies in none.
    const std::string* branchOf(const HxDbObject* object) const;

    struct Known {
        const std::string* branch = nullptr;
        const std::string* member = nullptr;  // null where it has not been asked for
    };
    NameRegister& names_;
    TypeNames& types_;
    OwnerNames& owners_;
    IdPages<Known> known_;
    std::vector<std::pair<naming::BranchStop, const std::string*>> stops_;
    naming::TextCounters branchCounters_;
    naming::MemberCounters memberCounters_;
    std::string scratch_;  // a name in the making, of an operation that calls no other
};
