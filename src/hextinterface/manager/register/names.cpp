#include "hextinterface/manager/register/names.h"

#include "frame/exceptions.h"

#include <utility>

using naming::TextTable;

namespace naming {
const std::string noName;
}  // namespace naming

namespace {

[[noreturn]] void clash(std::string_view name) {
    throw ExportException(fillPlaceholder("%1% 存在命名冲突！", std::string(name)));
}

}  // namespace

void NameRegister::markNameCreated(std::string_view name) {
    if (!markIfNotCreated(name)) {
        throw RunException(fillPlaceholder("%1% 命名已被创建！", std::string(name)));
    }
}

bool NameRegister::markIfNotCreated(std::string_view name) {
    const std::uint32_t number = names_.find(name);
    if (number == TextTable::none) {
        throw RunException(fillPlaceholder("%1% 命名不是来之命名类！", std::string(name)));
    }
    return !std::exchange(entries_[number].created, true);
}

bool NameRegister::isNameCreated(std::string_view name) const {
    const NameEntry* entry = find(name);
    return entry != nullptr && entry->created;
}

void NameRegister::addUdaName(std::string_view name) {
    if (isNameKnown(name)) {
        throw ExportException(fillPlaceholder("%1% 命名已存在！", std::string(name)));
    }
    put(name, NameKind::Uda);
}

const NameEntry* NameRegister::find(std::string_view name) const {
    const std::uint32_t number = names_.find(name);
    return number == TextTable::none ? nullptr : &entries_[number];
}

std::uint32_t NameRegister::add(std::string_view name, NameKind kind) {
    const auto [number, isNew] = names_.add(name);
    if (isNew) {
        entries_.push_back({kind});
    }
    return number;
}

const std::string& NameRegister::put(std::string_view name, NameKind kind) {
    const std::uint32_t number = add(name, kind);
    if (entries_[number].kind != kind) {
        clash(name);
    }
    return names_[number];
}

const std::string& NameRegister::query(std::string_view name, NameKind kind, OtherKind other) const {
    const std::uint32_t number = names_.find(name);
    if (number == TextTable::none) {
        return naming::noName;
    }
    if (entries_[number].kind == kind) {
        return names_[number];
    }
    if (other == OtherKind::Clash) {
        clash(name);
    }
    return naming::noName;
}

const std::string* NameRegister::text(std::string_view name) const {
    const std::uint32_t number = names_.find(name);
    return number == TextTable::none ? nullptr : &names_[number];
}
