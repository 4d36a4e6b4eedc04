// Names of components and of their catalogue elements, and of the specification rows that point at them.
#include "frame/exceptions.h"
#include "hextinterface/manager/name_state.h"

using naming::ComponentEntry;
using naming::isA;
using naming::NameTable;
using naming::noName;
using naming::stemWith;

namespace {

using Other = NameTable::OtherKind;
using State = NameManager::State;
using Slot = const std::string* ComponentEntry::*;

const std::string balloonStype = "INST";
const std::string supportSpec = "SUP_LIST";

// A name that is the component name, cut, with a suffix.
struct Derived {
    Slot slot;
    std::string_view suffix;
    NameKind kind;
};
constexpr Derived scomForm{&ComponentEntry::scom, "-SC", NameKind::Scom};
constexpr Derived gmsetForm{&ComponentEntry::gmset, "-GM", NameKind::Gmset};
constexpr Derived ptsetForm{&ComponentEntry::ptset, "-PT", NameKind::Ptset};
constexpr Derived dtsetForm{&ComponentEntry::dtset, "-DT", NameKind::Dtset};
constexpr Derived mtsetForm{&ComponentEntry::mtset, "-MT", NameKind::Mtset};

// Balloons and welds have component names of their own, the others take theirs from the key.
bool isNamedByKey(const HxDbObject* object) {
    return !isA<HxDbBalloon>(object) && !isA<HxDbTubeWeld>(object);
}

// Equal keys have equal specification names.
bool hasSpecOfKey(const HxDbObject* object) {
    return isNamedByKey(object) && !isA<HxDbNozzleModel>(object) && !isA<HxDbSupportModel>(object);
}

std::string balloonName(State& state, const HxDbBalloon& balloon) {
    std::vector<HxDbObject*> connected;
    balloon.getAllConnObject(connected);
    if (connected.empty()) {
        hxcad::hextPrintf("Error:<%lld>仪表泡未连接对象", static_cast<long long>(balloon.objectId().toInt()));
        throw ExportException("仪表泡未连接对象");
    }
    std::string name(naming::namePrefix);
    state.codes.size.append(name, getBomValue(connected.front(), "size1"));
    return name;
}

std::string weldName(State& state, const HxDbObject* weld) {
    std::string name(naming::namePrefix);
    state.codes.size.append(name, getBomValue(weld, "size"));
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

class DerivedNames {
public:
    DerivedNames(NameManager& names, State& state, const HxDbObject* object)
        : names_(names), state_(state), object_(object),
          entry_(isNamedByKey(object) ? &state.entryOf(object) : nullptr) {}

    const std::string& get(const Derived& form) {
        return once(entry_, form.slot, [&]() -> const std::string& { return state_.put(spelling(form), form.kind); });
    }
    const std::string& find(const Derived& form) {
        return once(entry_, form.slot, [&]() -> const std::string& {
            return state_.m_nameCreatedFlagMap.query(spelling(form), form.kind, Other::Absent);
        });
    }

private:
    std::string spelling(const Derived& form) { return stemWith(names_.getComponentName(object_), form.suffix); }

    NameManager& names_;
    State& state_;
    const HxDbObject* object_;
    ComponentEntry* entry_;
};

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

const std::string& NameManager::getCataName(const HxDbObject* object) {
    const std::string_view standard = naming::textOf(object != nullptr ? object->getStandard() : nullptr);
    std::string name = "CATA_ORNA_";
    if (standard.empty()) {
        name += withoutStandard(object);
    } else {
        name += state_->codes.standard.code(standard);
    }
    return state_->put(name, NameKind::Cata);
}

const std::string& NameManager::getSectionName(const HxDbObject* object) {
    std::string name = "SEC_ORNA_";
    state_->codes.item.append(name, getBomValue(object, "item"));
    return state_->put(name, NameKind::Section);
}

const std::string& NameManager::getComponentName(const HxDbObject* object) {
    if (const HxDbBalloon* balloon = HxDbBalloon::cast(object)) {
        return state_->put(balloonName(*state_, *balloon), NameKind::Component);
    }
    if (isA<HxDbTubeWeld>(object)) {
        return state_->put(weldName(*state_, object), NameKind::Component);
    }
    ComponentEntry& entry = state_->entryOf(object);
    return once(&entry, &ComponentEntry::name, [&]() -> const std::string& {
        return state_->put(naming::composeName(entry.key), NameKind::Component);
    });
}

const std::string& NameManager::getScomName(const HxDbObject* object) {
    return DerivedNames(*this, *state_, object).get(scomForm);
}
const std::string& NameManager::getGmsetName(const HxDbObject* object) {
    return DerivedNames(*this, *state_, object).get(gmsetForm);
}
const std::string& NameManager::getPtsetName(const HxDbObject* object) {
    return DerivedNames(*this, *state_, object).get(ptsetForm);
}
const std::string& NameManager::getDtsetName(const HxDbObject* object) {
    return DerivedNames(*this, *state_, object).get(dtsetForm);
}
const std::string& NameManager::getMtsetName(const HxDbObject* object) {
    return DerivedNames(*this, *state_, object).get(mtsetForm);
}
const std::string& NameManager::findScomName(const HxDbObject* object) {
    return DerivedNames(*this, *state_, object).find(scomForm);
}
const std::string& NameManager::findDtsetName(const HxDbObject* object) {
    return DerivedNames(*this, *state_, object).find(dtsetForm);
}
const std::string& NameManager::findMtsetName(const HxDbObject* object) {
    return DerivedNames(*this, *state_, object).find(mtsetForm);
}

const std::string& NameManager::getSpecName(const HxDbObject* object) {
    if (isA<HxDbSupportModel>(object)) {
        return supportSpec;
    }
    ComponentEntry* entry = hasSpecOfKey(object) ? &state_->entryOf(object) : nullptr;
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
        return state_->m_nameCreatedFlagMap.putUnchecked(name, NameKind::Spec);
    });
}

const std::string& NameManager::getStype(const HxDbObject* object) {
    if (isA<HxDbBalloon>(object)) {
        return balloonStype;
    }
    return once(&state_->entryOf(object), &ComponentEntry::stype, [&]() -> const std::string& {
        std::string stype = getGtype(object);
        stype += naming::letters(state_->gtypeCounters.next(stype));
        return state_->stypes[state_->stypes.add(stype).number];
    });
}

const std::string& NameManager::getSpcoShortName(const HxDbObject* object) {
    const auto finish = [this](std::string_view text) -> const std::string& {
        return state_->put(stemWith(text, "-SP"), NameKind::Short);
    };
    if (isA<HxDbBalloon>(object)) {
        return finish(naming::withoutPrefix(getComponentName(object)));
    }
    return once(&state_->entryOf(object), &ComponentEntry::shortName, [&]() -> const std::string& {
        std::string text(isA<HxDbTubeWeld>(object) ? "Weld" : getBomValue(object, "item"));
        const std::uint32_t counter = state_->shortCounters.next(text);
        (text += '_') += naming::letters(counter);
        return finish(text);
    });
}

const std::string& NameManager::getSpcoName(const HxDbObject* object) {
    ComponentEntry* entry = hasSpecOfKey(object) ? &state_->entryOf(object) : nullptr;
    return once(entry, &ComponentEntry::spco, [&]() -> const std::string& {
        std::string name = getSpecName(object);
        (name += '/') += getSpcoShortName(object);
        return state_->put(name, NameKind::Spco);
    });
}

const std::string& NameManager::findSpcoName(const HxDbObject* object) {
    ComponentEntry* entry = hasSpecOfKey(object) ? &state_->entryOf(object) : nullptr;
    return once(entry, &ComponentEntry::spco, [&]() -> const std::string& {
        std::string name = getSpecName(object);
        (name += '/') += getSpcoShortName(object);
        return state_->m_nameCreatedFlagMap.query(name, NameKind::Spco, Other::Clash);
    });
}
