#include "hextinterface/manager/name_table.h"

#include "frame/exceptions.h"

namespace naming {

const std::string noName;

namespace {

[[noreturn]] void clash(std::string_view name) {
    throw ExportException(fillPlaceholder("%1% 存在命名冲突！", std::string(name)));
}

}  // namespace

std::uint32_t NameTable::add(std::string_view name, NameKind kind) {
    const auto [number, isNew] = names_.add(name);
    if (isNew) {
        entries_.push_back({kind});
    }
    return number;
}

const std::string& NameTable::put(std::string_view name, NameKind kind) {
    const std::uint32_t number = add(name, kind);
    if (entries_[number].kind != kind) {
        clash(name);
    }
    return names_[number];
}

const std::string& NameTable::query(std::string_view name, NameKind kind, OtherKind other) const {
    const std::uint32_t number = names_.find(name);
    if (number == TextTable::none) {
        return noName;
    }
    if (entries_[number].kind == kind) {
        return names_[number];
    }
    if (other == OtherKind::Clash) {
        clash(name);
    }
    return noName;
}

const std::string* NameTable::name(std::string_view name) const {
    const std::uint32_t number = names_.find(name);
    return number == TextTable::none ? nullptr : &names_[number];
}

const NameEntry* NameTable::find(std::string_view name) const {
    const std::uint32_t number = names_.find(name);
    return number == TextTable::none ? nullptr : &entries_[number];
}

NameEntry* NameTable::find(std::string_view name) {
    const std::uint32_t number = names_.find(name);
    return number == TextTable::none ? nullptr : &entries_[number];
}

}  // namespace naming
