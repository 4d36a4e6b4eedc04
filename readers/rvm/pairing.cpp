#include "readers/rvm/pairing.h"

#include <algorithm>

namespace readers::rvm {

namespace {

constexpr std::size_t zoneLevel = 2;
constexpr std::size_t managerLevel = 3;

class Walk {
public:
    Walk(const RvmContent& rvm, const AttributeContent& text, Pairing& pairing)
        : rvm_(rvm), text_(text), pairing_(pairing) {}

    void run() {
        pairing_.elementOf.assign(rvm_.groups.size(), none);
        if (rvm_.tops.size() > 1) {
            note(0, "the RVM file has more than one root");
        }
        if (rvm_.tops.empty() || text_.elements.empty()) {
            if (rvm_.tops.empty() != text_.elements.empty()) {
                note(0, "one of the files has no tree");
            }
            return;
        }
        matchNames(0, rvm_.tops.front());
        open_.emplace_back(0, rvm_.tops.front());
        while (!open_.empty()) {
            const auto [element, group] = open_.back();
            open_.pop_back();
            pairChildren(element, group);
        }
    }

private:
    // A group whose children are objects, and how many of them have their elements.
    struct Slot {
        std::uint32_t group;
        std::size_t taken = 0;
    };

    void note(std::uint32_t element, const std::string& text) {
        const std::size_t line = element < text_.elements.size() ? text_.elements[element].line : 0;
        readers::note(pairing_.mismatches, atLine(line), text);
    }
    const Element& element(std::uint32_t index) const { return text_.elements[index]; }
    const Group& group(std::uint32_t index) const { return rvm_.groups[index]; }

    void pair(std::uint32_t e, std::uint32_t g) {
        if (pairing_.elementOf[g] == none) {
            pairing_.elementOf[g] = e;
        }
    }
    void matchNames(std::uint32_t e, std::uint32_t g) {
        pair(e, g);
        if (element(e).name != group(g).name) {
            note(e,
                 "element \"" + element(e).name + "\" stands where the RVM file has group \"" + rvm_.pathOf(g) + "\"");
        }
    }

    bool isExpanded(const Group& manager) const {
        std::size_t index = 0;
        return !manager.children.empty() &&
               std::all_of(manager.children.begin(), manager.children.end(), [&](std::uint32_t child) {
                   return group(child).name.starts_with("Branch:" + std::to_string(index++));
               });
    }

    std::vector<Slot> slotsOf(std::uint32_t parent) const {
        std::vector<Slot> slots;
        for (const std::uint32_t child : group(parent).children) {
            if (!isExpanded(group(child))) {
                slots.push_back({child});
                continue;
            }
            for (const std::uint32_t branch : group(child).children) {
                slots.push_back({branch});
            }
        }
        return slots;
    }

    bool isSpent(const Slot& slot) const { return slot.taken >= group(slot.group).children.size(); }

    void pairChildren(std::uint32_t parent, std::uint32_t parentGroup) {
        std::vector<Slot> slots = slotsOf(parentGroup);
        std::size_t at = 0;
        for (const std::uint32_t child : element(parent).children) {
            const bool found =
                element(child).level <= zoneLevel ? pairInner(child, slots, at) : pairManager(child, slots, at);
            if (!found) {
                note(child,
                     "element \"" + element(child).name + "\" has no group in \"" + rvm_.pathOf(parentGroup) + "\"");
                return;
            }
        }
        for (; at < slots.size(); ++at) {
            if (!isSpent(slots[at])) {
                note(parent, "group \"" + rvm_.pathOf(slots[at].group) + "\" has no element for all its objects");
            }
        }
    }

    // Sites and zones have one element each.
    bool pairInner(std::uint32_t child, std::vector<Slot>& slots, std::size_t& at) {
        while (at < slots.size() && isSpent(slots[at]) && group(slots[at].group).name != element(child).name) {
            ++at;
        }
        if (at >= slots.size() || group(slots[at].group).name != element(child).name) {
            return false;
        }
        pair(child, slots[at].group);
        open_.emplace_back(child, slots[at].group);
        ++at;
        return true;
    }

    bool pairManager(std::uint32_t child, std::vector<Slot>& slots, std::size_t& at) {
        const std::string& name = element(child).name;
        if (element(child).children.empty()) {
            const bool isRepeat = at > 0 && group(slots[at - 1].group).name == name;
            while (at < slots.size() && isSpent(slots[at]) && group(slots[at].group).name != name) {
                ++at;
            }
            const bool isHere = at < slots.size() && group(slots[at].group).name == name;
            if (isHere) {
                pair(child, slots[at].group);
                at += isSpent(slots[at]) ? 1 : 0;
            }
            return isHere || isRepeat;
        }
        while (at < slots.size() && isSpent(slots[at])) {
            ++at;
        }
        if (at >= slots.size() || group(slots[at].group).name != name) {
            return false;
        }
        pair(child, slots[at].group);
        return pairObjects(child, slots[at]);
    }

    bool pairObjects(std::uint32_t manager, Slot& slot) {
        for (const std::uint32_t object : element(manager).children) {
            if (element(object).level != managerLevel + 1 || isSpent(slot)) {
                return false;
            }
            const std::uint32_t objectGroup = group(slot.group).children[slot.taken++];
            matchNames(object, objectGroup);
        }
        return true;
    }

    const RvmContent& rvm_;
    const AttributeContent& text_;
    Pairing& pairing_;
    std::vector<std::pair<std::uint32_t, std::uint32_t>> open_;
};

}  // namespace

Pairing pairFiles(const RvmContent& rvm, const AttributeContent& text) {
    Pairing pairing;
    Walk(rvm, text, pairing).run();
    return pairing;
}

}  // namespace readers::rvm
