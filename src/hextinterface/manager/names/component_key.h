// What makes two components the same: their attributes, and the coded form of these that serves as the key of names.
#pragma once

#include "hextinterface/manager/register/letter_codes.h"
#include "platform/objects.h"

#include <tsl/robin_map.h>

#include <array>
#include <cstring>
#include <deque>
#include <string>
#include <string_view>
#include <vector>

namespace naming {

// The attributes of one component; views of the attribute cache.
struct AttrSet {
    std::string_view specname, item, itype, rating, sch, thick, radius, angle;
    std::array<std::string_view, 4> ends, sizes;
    std::string nozzleKey;  // nozzles only
    bool isHose = false;
};
AttrSet readAttrSet(const HxDbObject* object);

// Code letters, packed. All "A" where the attribute is empty or does not count.
struct ComponentKey {
    static constexpr std::size_t maxEnds = 4;

    char spec[2], item[2], itype[2];
    char ends[4];
    char sizes[8];  // two letters each
    char rating[1];
    char sch[2], thick[2], hose[2], radius[2], angle[2];
    char nozzle[3];

    ComponentKey() { std::memset(static_cast<void*>(this), 'A', sizeof *this); }
    bool operator==(const ComponentKey& other) const { return std::memcmp(this, &other, sizeof *this) == 0; }
    std::uint64_t hash() const;

    bool isNozzle() const { return text(nozzle) != "AAA"; }
    bool isHose() const { return text(hose) == "__"; }
    bool hasRadius() const { return text(radius) != "AA"; }
    bool hasAngle() const { return text(angle) != "AA"; }

    template <std::size_t n>
    static std::string_view text(const char (&field)[n]) {
        return {field, n};
    }
};
static_assert(sizeof(ComponentKey) == 32);

// `isWeld`: only the first end and size count.
ComponentKey makeKey(const AttrSet& attributes, bool isWeld, CodeTables& codes);
// The component name that a key spells.
std::string composeName(const ComponentKey& key);

// The names made so far for the components of one key; null where none is made yet.
struct ComponentEntry {
    ComponentKey key;
    const std::string* name = nullptr;
    const std::string* scom = nullptr;
    const std::string* gmset = nullptr;
    const std::string* ptset = nullptr;
    const std::string* dtset = nullptr;
    const std::string* mtset = nullptr;
    const std::string* stype = nullptr;
    const std::string* shortName = nullptr;
    const std::string* spec = nullptr;
    const std::string* spco = nullptr;
};

// Entries by key.
class ComponentTable {
public:
    // The entry stays valid as long as the table.
    ComponentEntry& find(const HxDbObject* object, CodeTables& codes);

private:
    struct Hash {
        std::size_t operator()(const ComponentKey& key) const { return key.hash(); }
    };
    tsl::robin_map<ComponentKey, ComponentEntry*, Hash> index_;
    std::deque<ComponentEntry> entries_;
};

}  // namespace naming
