#include "hextinterface/manager/names/component_key.h"

#include "platform/attribute_cache.h"
#include "platform/model_tests.h"

#include <algorithm>
#include <iterator>

namespace naming {

namespace {

// What is read of every object, in one pass.
enum Field { specname, item, itype, rating, sch, thick, size1, end1 = size1 + 4, radius = end1 + 4, angle, fieldCount };
constexpr std::string_view fieldKeys[] = {"specname", "item",  "itype", "rating", "sch",  "thick", "size1",  "size2",
                                          "size3",    "size4", "end1",  "end2",   "end3", "end4",  "radius", "angle"};
static_assert(std::size(fieldKeys) == fieldCount);
using Fields = std::array<std::string_view, fieldCount>;

Fields readFields(const HxDbObject* object) {
    static BomFields reader(fieldKeys);
    Fields fields;
    reader.read(object, fields);
    return fields;
}

void takeCommon(const Fields& fields, AttrSet& set) {
    set.specname = fields[specname];
    set.item = fields[item];
    set.itype = fields[itype];
    set.rating = fields[rating];
    set.sch = fields[sch];
    set.thick = fields[thick];
    std::copy_n(fields.begin() + size1, set.sizes.size(), set.sizes.begin());
}

void readNozzle(const HxDbObject* object, AttrSet& set) {
    set.ends[0] = getBomValue(object, "end");
    for (const std::string_view part :
         {getBomValue(object, "skey"), getBomValue(object, "eqno"), getBomValue(object, "nozno"), set.specname,
          set.item, set.itype, set.ends[0], set.rating, set.sizes[0], set.sizes[1], set.sizes[2], set.sizes[3]}) {
        set.nozzleKey += part;
        set.nozzleKey += '_';
    }
}

void readComponent(const HxDbObject* object, const Fields& fields, AttrSet& set) {
    std::copy_n(fields.begin() + end1, set.ends.size(), set.ends.begin());
    if (isBendLikeItem(object)) {
        set.radius = fields[radius];
        set.angle = fields[angle];
    } else {
        set.isHose = smrtln::isHose(object);
    }
}

template <std::size_t n>
void fill(char (&field)[n], std::string_view code) {
    std::memcpy(field, code.data(), n);
}

template <std::size_t n>
void fillUnlessEmpty(char (&field)[n], CodeTable& table, std::string_view value) {
    if (!value.empty()) {
        fill(field, table.code(value));
    }
}

void fillEndsAndSizes(ComponentKey& key, const AttrSet& set, std::size_t count, CodeTables& codes) {
    for (std::size_t i = 0; i < count; ++i) {
        if (!set.ends[i].empty()) {
            key.ends[i] = codes.end.code(set.ends[i]).front();
        }
    }
    for (std::size_t i = 0; i < count; ++i) {
        std::memcpy(key.sizes + 2 * i, codes.size.code(set.sizes[i]).data(), 2);
    }
}

std::size_t countedEnds(const AttrSet& set, bool isWeld) {
    if (isWeld) {
        return 1;
    }
    return set.radius.empty() ? ComponentKey::maxEnds : 2;
}

std::size_t spelledEnds(const ComponentKey& key) {
    if (key.isHose()) {
        return 1;
    }
    return key.hasRadius() ? 2 : ComponentKey::maxEnds;
}

}  // namespace

AttrSet readAttrSet(const HxDbObject* object) {
    AttrSet set;
    const Fields fields = readFields(object);
    takeCommon(fields, set);
    if (HxDbNozzleModel::cast(object) != nullptr) {
        readNozzle(object, set);
    } else {
        readComponent(object, fields, set);
    }
    return set;
}

std::uint64_t ComponentKey::hash() const {
    std::uint64_t words[4];
    std::memcpy(words, this, sizeof words);
    std::uint64_t mixed = 0;
    for (const std::uint64_t word : words) {
        mixed = (mixed ^ word) * 0xFF51AFD7ED558CCDULL;
        mixed ^= mixed >> 32;
    }
    return mixed;
}

ComponentKey makeKey(const AttrSet& set, bool isWeld, CodeTables& codes) {
    ComponentKey key;
    if (!set.nozzleKey.empty()) {
        fill(key.nozzle, codes.nozzle.code(set.nozzleKey));
        return key;
    }
    fillUnlessEmpty(key.spec, codes.spec, set.specname);
    fillUnlessEmpty(key.item, codes.item, set.item);
    fillUnlessEmpty(key.itype, codes.itype, set.itype);
    fillEndsAndSizes(key, set, countedEnds(set, isWeld), codes);
    fillUnlessEmpty(key.rating, codes.rating, set.rating);
    fillUnlessEmpty(key.sch, codes.sch, set.sch);
    fillUnlessEmpty(key.thick, codes.thick, set.thick);
    if (set.isHose) {
        fill(key.hose, "__");
    }
    fillUnlessEmpty(key.radius, codes.radius, set.radius);
    fillUnlessEmpty(key.angle, codes.angle, set.angle);
    return key;
}

// ORNA_<spec><item><itype>_<ends>_<sizes>_<rating><sch><thick>[_<hose> or _<radius><angle>]R
std::string composeName(const ComponentKey& key) {
    std::string name = "ORNA_";
    const auto add = [&name](const auto& field) { name += ComponentKey::text(field); };
    if (key.isNozzle()) {
        add(key.nozzle);
        return name;
    }
    const std::size_t count = spelledEnds(key);
    add(key.spec);
    add(key.item);
    add(key.itype);
    (name += '_').append(key.ends, count);
    (name += '_').append(key.sizes, 2 * count);
    name += '_';
    add(key.rating);
    add(key.sch);
    add(key.thick);
    if (key.isHose()) {
        name += '_';
        add(key.hose);
    } else if (key.hasRadius() || key.hasAngle()) {
        name += '_';
        add(key.radius);
        add(key.angle);
    }
    return name += 'R';
}

ComponentEntry& ComponentTable::find(const HxDbObject* object, CodeTables& codes) {
    const ComponentKey key = makeKey(readAttrSet(object), HxDbTubeWeld::cast(object) != nullptr, codes);
    const auto [known, isNew] = index_.try_emplace(key, nullptr);
    if (isNew) {
        ComponentEntry& entry = entries_.emplace_back();
        entry.key = key;
        known.value() = &entry;
    }
    return *known->second;
}

}  // namespace naming
