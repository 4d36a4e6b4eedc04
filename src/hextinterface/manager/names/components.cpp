#include "hextinterface/manager/names/components.h"

#include "frame/exceptions.h"
#include "hextinterface/manager/register/cleaned_texts.h"
#include "hextinterface/manager/register/type_names.h"
#include "platform/attribute_cache.h"
#include "platform/hxcom.h"
#include "platform/model_tests.h"
#include "platform/smrtln.h"
#include "tolmar/text.h"

using naming::ComponentEntry;
using naming::stemWith;

namespace {

using Other = NameRegister::OtherKind;
using Slot = const std::string* ComponentEntry::*;

const std::string balloonStype = "INST";
const std::string supportSpec = "SUP_LIST";

template <typename T>
bool isA(const HxDbObject* object) {
    return T::cast(object) != nullptr;
}

// A name that is the component name, cut, with a suffix.
struct DerivedForm {
    Slot slot;
    std::string_view suffix;
    NameKind kind;
};
constexpr DerivedForm scomForm{&ComponentEntry::scom, "-SC", NameKind::Scom};
constexpr DerivedForm gmsetForm{&ComponentEntry::gmset, "-GM", NameKind::Gmset};
constexpr DerivedForm ptsetForm{&ComponentEntry::ptset, "-PT", NameKind::Ptset};
constexpr DerivedForm dtsetForm{&ComponentEntry::dtset, "-DT", NameKind::Dtset};
constexpr DerivedForm mtsetForm{&ComponentEntry::mtset, "-MT", NameKind::Mtset};

// Balloons and welds have component names of their own, the others take theirs from the key.
bool isNamedByKey(const HxDbObject* object) {
    return !isA<HxDbBalloon>(object) && !isA<HxDbTubeWeld>(object);
}

// Equal keys have equal specification names.
bool hasSpecOfKey(const HxDbObject* object) {
    return isNamedByKey(object) && !isA<HxDbNozzleModel>(object) && !isA<HxDbSupportModel>(object);
}

std::string balloonName(naming::CodeTables& codes, const HxDbBalloon& balloon) {
    std::vector<HxDbObject*> connected;
    balloon.getAllConnObject(connected);
    if (connected.empty()) {
        hxcad::hextPrintf("Error:<%lld>仪表泡未连接对象", static_cast<long long>(balloon.objectId().toInt()));
        throw ExportException("仪表泡未连接对象");
    }
    std::string name(naming::namePrefix);
    codes.size.append(name, getBomValue(connected.front(), "size1"));
    return name;
}

std::string weldName(naming::CodeTables& codes, const HxDbObject* weld) {
    std::string name(naming::namePrefix);
    codes.size.append(name, getBomValue(weld, "size"));
    return (name += '_') += getBomValue(weld, "stype");
}

// A result that is made once for all components of an entry; without entry it is made anew.
template <typename Make>
const std::string& once(ComponentEntry* entry, Slot slot, Make make) {
    if (entry != nullptr && entry->*slot != nullptr) {
        return *(entry->*slot);
    }
    const std::string& made = make();
    if (entry != nullptr && !made.empty()) {
        entry->*slot = &made;
    }
    return made;
}

std::string withoutStandard(const HxDbObject* object) {
    if (!smrtln::isGaskVirtual(object)) {
        if (isA<HxDbNozzleModel>(object)) {
            return "NOZZLE";
        }
        if (smrtln::isValve(object)) {
            return "VALVE";
        }
    }
    return "__";
}

}  // namespace

naming::ComponentEntry& ComponentNames::entryOf(const HxDbObject* object) {
    ComponentEntry*& entry = known_[naming::idOf(object)].entry;
    if (entry == nullptr) {
        entry = &table_.find(object, codes_);
    }
    return *entry;
}

// The names of one object that are made of its component name.
class ComponentNames::Derived {
public:
    Derived(ComponentNames& names, const HxDbObject* object)
        : names_(names), object_(object), entry_(isNamedByKey(object) ? &names.entryOf(object) : nullptr) {}

    const std::string& get(const DerivedForm& form) {
        return once(entry_, form.slot,
                    [&]() -> const std::string& { return names_.names_.put(spelling(form), form.kind); });
    }
    const std::string& find(const DerivedForm& form) {
        return once(entry_, form.slot, [&]() -> const std::string& {
            return names_.names_.query(spelling(form), form.kind, Other::Absent);
        });
    }

private:
    std::string spelling(const DerivedForm& form) { return stemWith(names_.getComponentName(object_), form.suffix); }

    ComponentNames& names_;
    const HxDbObject* object_;
    ComponentEntry* entry_;
};

const std::string& ComponentNames::getCataName(const HxDbObject* object) {
    const std::string_view standard = object != nullptr ? tolmar::textOrEmpty(object->getStandard()) : "";
    std::string name = "CATA_ORNA_";
    if (standard.empty()) {
        name += withoutStandard(object);
    } else {
        name += codes_.standard.code(standard);
    }
    return names_.put(name, NameKind::Cata);
}

const std::string& ComponentNames::getSectionName(const HxDbObject* object) {
    std::string name = "SEC_ORNA_";
    codes_.item.append(name, getBomValue(object, "item"));
    return names_.put(name, NameKind::Section);
}

const std::string& ComponentNames::getComponentName(const HxDbObject* object) {
    if (const HxDbBalloon* balloon = HxDbBalloon::cast(object)) {
        return names_.put(balloonName(codes_, *balloon), NameKind::Component);
    }
    if (isA<HxDbTubeWeld>(object)) {
        return names_.put(weldName(codes_, object), NameKind::Component);
    }
    ComponentEntry& entry = entryOf(object);
    return once(&entry, &ComponentEntry::name, [&]() -> const std::string& {
        return names_.put(naming::composeName(entry.key), NameKind::Component);
    });
}

const std::string& ComponentNames::getScomName(const HxDbObject* object) {
    return Derived(*this, object).get(scomForm);
}
const std::string& ComponentNames::getGmsetName(const HxDbObject* object) {
    return Derived(*this, object).get(gmsetForm);
}
const std::string& ComponentNames::getPtsetName(const HxDbObject* object) {
    return Derived(*this, object).get(ptsetForm);
}
const std::string& ComponentNames::getDtsetName(const HxDbObject* object) {
    return Derived(*this, object).get(dtsetForm);
}
const std::string& ComponentNames::getMtsetName(const HxDbObject* object) {
    return Derived(*this, object).get(mtsetForm);
}
const std::string& ComponentNames::findScomName(const HxDbObject* object) {
    return Derived(*this, object).find(scomForm);
}
const std::string& ComponentNames::findDtsetName(const HxDbObject* object) {
    return Derived(*this, object).find(dtsetForm);
}
const std::string& ComponentNames::findMtsetName(const HxDbObject* object) {
    return Derived(*this, object).find(mtsetForm);
}

const std::string& ComponentNames::getSpecName(const HxDbObject* object) {
    if (isA<HxDbSupportModel>(object)) {
        return supportSpec;
    }
    ComponentEntry* entry = hasSpecOfKey(object) ? &entryOf(object) : nullptr;
    return once(entry, &ComponentEntry::spec, [&]() -> const std::string& {
        std::string name;
        if (isA<HxDbNozzleModel>(object)) {
            name = getStype(object);
            (name += '_') += getBomValue(object, "size");
            (name += '_') += getBomValue(object, "rating");
        } else if (isA<HxDbBalloon>(object)) {
            name = "BALLOON";
        } else if (isA<HxDbTubeWeld>(object)) {
            name = getBomValue(object, "size");
            (name += '_') += getBomValue(object, "stype");
        } else {
            name = getBomValue(object, "specname");
        }
        return names_.putUnchecked(name, NameKind::Spec);
    });
}

const std::string& ComponentNames::getStype(const HxDbObject* object) {
    if (isA<HxDbBalloon>(object)) {
        return balloonStype;
    }
    return once(&entryOf(object), &ComponentEntry::stype, [&]() -> const std::string& {
        std::string stype = types_.getGtype(object);
        stype += naming::letters(gtypeCounters_.next(stype));
        return stypes_[stypes_.add(stype).number];
    });
}

const std::string& ComponentNames::getSpcoShortName(const HxDbObject* object) {
    const auto finish = [this](std::string_view text) -> const std::string& {
        return names_.put(stemWith(text, "-SP"), NameKind::Short);
    };
    if (isA<HxDbBalloon>(object)) {
        return finish(naming::withoutPrefix(getComponentName(object)));
    }
    return once(&entryOf(object), &ComponentEntry::shortName, [&]() -> const std::string& {
        std::string text(isA<HxDbTubeWeld>(object) ? "Weld" : getBomValue(object, "item"));
        const std::uint32_t counter = shortCounters_.next(text);
        (text += '_') += naming::letters(counter);
        return finish(text);
    });
}

const std::string& ComponentNames::getSpcoName(const HxDbObject* object) {
    ComponentEntry* entry = hasSpecOfKey(object) ? &entryOf(object) : nullptr;
    return once(entry, &ComponentEntry::spco, [&]() -> const std::string& {
        std::string name = getSpecName(object);
        (name += '/') += getSpcoShortName(object);
        return names_.put(name, NameKind::Spco);
    });
}

const std::string& ComponentNames::findSpcoName(const HxDbObject* object) {
    ComponentEntry* entry = hasSpecOfKey(object) ? &entryOf(object) : nullptr;
    return once(entry, &ComponentEntry::spco, [&]() -> const std::string& {
        std::string name = getSpecName(object);
        (name += '/') += getSpcoShortName(object);
        return names_.query(name, NameKind::Spco, Other::Clash);
    });
}
