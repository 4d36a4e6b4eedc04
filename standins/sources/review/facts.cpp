#include "sources/review/facts.h"

#include "sources/attributes/lines.h"
#include "sources/text_decoder.h"

#include <algorithm>
#include <iterator>
#include <string>
#include <tsl/robin_map.h>

namespace plant::review {

namespace {

struct KeyRow {
    std::string_view name;
    Key key;
};
constexpr KeyRow keyRows[] = {
    {"POS", Key::Position},
    {"POSITION", Key::Position},
    {"ORI", Key::Orientation},
    {"ORIENTATION", Key::Orientation},
    {"APOS", Key::ArrivePosition},
    {"APOSITION", Key::ArrivePosition},
    {"LPOS", Key::LeavePosition},
    {"LPOSITION", Key::LeavePosition},
    {"ABORE", Key::ArriveBore},
    {"ABOR", Key::ArriveBore},
    {"LBORE", Key::LeaveBore},
    {"LBOR", Key::LeaveBore},
    {"ARRI", Key::Arrive},
    {"ARRIVE", Key::Arrive},
    {"LEAV", Key::Leave},
    {"LEAVE", Key::Leave},
    {"HPOS", Key::HeadPosition},
    {"TPOS", Key::TailPosition},
    {"HDIR", Key::HeadDirection},
    {"TDIR", Key::TailDirection},
    {"HBOR", Key::HeadBore},
    {"HBORE", Key::HeadBore},
    {"TBOR", Key::TailBore},
    {"TBORE", Key::TailBore},
    {"HCON", Key::HeadConnection},
    {"TCON", Key::TailConnection},
    {"HREF", Key::HeadReference},
    {"TREF", Key::TailReference},
    {"CREF", Key::BranchReference},
    {"SPRE", Key::SpecificationPart},
    {"SPREF", Key::SpecificationPart},
    {"LSTU", Key::LeaveTube},
    {"LSTUBE", Key::LeaveTube},
    {"HSTU", Key::HeadTube},
    {"HSTUBE", Key::HeadTube},
    {"PSPE", Key::PipeSpecification},
    {"PSPEC", Key::PipeSpecification},
    {"ISPE", Key::InsulationSpecification},
    {"ISPEC", Key::InsulationSpecification},
    {"INSU", Key::Insulation},
    {"BORE", Key::Bore},
    {"TEMP", Key::Temperature},
    {"TEMPERATURE", Key::Temperature},
    {"PRES", Key::Pressure},
    {"PRESSURE", Key::Pressure},
    {"DESC", Key::Description},
    {"DESCRIPTION", Key::Description},
    {"DTXR", Key::DetailText},
    {"MTXX", Key::MaterialText},
    {"ANGL", Key::Angle},
    {"ANGLE", Key::Angle},
    {"RADI", Key::Radius},
    {"RADIUS", Key::Radius},
    {"HEIG", Key::Height},
    {"HEIGHT", Key::Height},
    {"ITEM", Key::Item},
    {"ITYPE", Key::ItemType},
};
constexpr std::size_t longestKey = 11;

using Table = tsl::robin_map<std::string_view, Key>;

const Table& keyTable() {
    static const Table table = [] {
        Table made;
        for (const KeyRow& row : keyRows) {
            made.emplace(row.name, row.key);
        }
        return made;
    }();
    return table;
}

}  // namespace

Facts readFacts(const attributes::Index& index, const attributes::Block& block) {
    Facts facts;
    char capitals[longestKey];
    attributes::eachAttribute(index, block, [&](std::string_view key, std::string_view value, std::uint32_t) {
        if (key.size() > longestKey) {
            return;
        }
        std::transform(key.begin(), key.end(), capitals,
                       [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; });
        const auto row = keyTable().find(std::string_view(capitals, key.size()));
        if (row != keyTable().end() && !facts.has(row->second)) {
            facts.set(row->second, trimmed(attributes::unquoted(value)));
        }
    });
    return facts;
}

bool saysNothing(std::string_view text) {
    constexpr std::string_view nothing[] = {"", "UNSET", "NULREF", "=0/0", "=0", "NULL"};
    return std::any_of(std::begin(nothing), std::end(nothing),
                       [&](std::string_view word) { return equalIgnoringCase(text, word); });
}

std::string_view withoutStroke(std::string_view name) {
    return name.starts_with('/') ? name.substr(1) : name;
}

std::string_view specificationName(std::string_view text) {
    if (saysNothing(text) || text.starts_with('=')) {
        return {};
    }
    const std::size_t owner = text.rfind(" /");
    const std::string_view name = withoutStroke(owner != std::string_view::npos ? text.substr(owner + 1) : text);
    return name.substr(0, name.find('/'));
}

}  // namespace plant::review
