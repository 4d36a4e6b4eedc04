#include "hextinterface/ornatohextprocess/design/files.h"

#include "frame/exceptions.h"
#include "hextinterface/hextbasemethod/text_faults.h"
#include "hextinterface/manager/manager.h"
#include "hextinterface/ornatohextprocess/design/nozzle_macro.h"
#include "platform/hxcom.h"
#include "platform/left_out.h"
#include "scripts/project_config.h"
#include "tolmar/file.h"

namespace {

// By ElementKind.
struct ElementForm {
    const char* function;
    const char* suffix;
    const char* tooLong;
};
constexpr ElementForm elementForms[] = {
    {"!!ORNAEquipCreateEquip", "", "Error:create equip name<%s> too long"},
    {"!!ORNAEquipCreateStruct", "_strcut", "Error:create struct name<%s> too long"},
    {"!!ORNAEquipCreateEquip", "_sup", "Error:create pipe name<%s> too long"},
};

void testName(const std::string& name, const ElementForm& form) {
    if (name.size() > maxNameLength) {
        hxcad::hextPrintf(form.tooLong, name.c_str());
        throw ExportException("命名错误");
    }
}

void appendHeadLines(std::string& out, const EquipRecord& record, const ElementForm& form) {
    out.append("!owner = '").append(escapeQuotes(record.owner)).append("'\n");
    out.append("!self = '").append(escapeQuotes(record.name)).append(form.suffix).append("'\n");
    out.append("var !pos POSITION ");
    appendPosition(out, record.frame.origin);
    out.append("\n!ori = '").append(orientationText(record.frame)).append("'\n");
    out.append("call ").append(form.function).append("(!owner, !self, !pos, !ori)\n");
    out.append("OLD /").append(record.name).append(form.suffix).append("\n");
    out.append("FUNC '").append(record.func).append("'\n");
}

void appendUserAttributes(std::string& out, const EquipRecord& record, UdaWriter& udas) {
    const auto write = [&](const char* name, const std::string& value) {
        reportEscapedText(record.objectId, name, value);
        udas.writeUda(out, name, value);
    };
    write("ESpecNo", record.specNo);
    write("EStyle", record.style);
    write("EName", record.equipName);
    udas.writeUdaList(out, "EAttr", record.attrs);
    write("ENotes", record.notes);
    out += '\n';
}

void appendSolid(std::string& out, const _PPrimBase& solid) {
    solid.write(out);
    out += '\n';
}

std::string numbered(const std::string& base, int number) {
    std::string name = base + '_';
    appendInt(name, number);
    return name;
}

void writeNozzle(std::string& out, const _PNozzle& nozzle, HxDbObjectId id) {
    try {
        nozzle.write(out);
    } catch (const ExportException& failure) {
        hxcad::hextPrintf("\nNID:%lld EID:%lld <%s>", static_cast<long long>(nozzle.equipmentId.toInt()),
                          static_cast<long long>(id.toInt()), failure.what());
        reportLeftOut({id, nozzle.name, "nozzle"}, failure.what());
    }
}

}  // namespace

void writeGroup(std::string& out, const PrimGroup& group) {
    if (group._posPrimitive.empty()) {
        return;
    }
    appendSolid(out, *group._posPrimitive.front());
    for (const PrimPtr& cut : group._negPrimitive) {
        cut->owner = solidVariable;
        appendSolid(out, *cut);
    }
    for (std::size_t i = 1; i < group._posPrimitive.size(); ++i) {
        appendSolid(out, *group._posPrimitive[i]);
    }
}

void writeHead(std::string& out, const EquipRecord& record, UdaWriter& udas, ElementKind kind) {
    const ElementForm& form = elementForms[static_cast<int>(kind)];
    testName(record.name, form);
    reportEscapedText(record.objectId, "name", record.name);
    appendHeadLines(out, record, form);
    appendUserAttributes(out, record, udas);
    const std::string owner = "'" + escapeQuotes(record.name) + form.suffix + "'";
    for (const PrimGroup& group : record.groups) {
        for (const PrimPtr& solid : group._posPrimitive) {
            solid->owner = owner;
        }
        writeGroup(out, group);
    }
    if (record.groups.empty()) {
        out += '\n';
    }
}

EquipFile::EquipFile(std::string_view path, const ExportContext& context)
    : file_(path, tolmar::FileMode::Text), context_(context), withSuffix_(configEquipPostName()) {}

std::string EquipFile::finalName(const std::string& base) {
    if (!withSuffix_) {
        return base;
    }
    suffix_ = context_.names.equipment.hasEquipName(base) ? suffix_ + 1 : 1;
    return numbered(base, suffix_);
}

void EquipFile::writeEquips(std::vector<EquipRecord>& equips) {
    if (!file_.isOpen()) {
        return;
    }
    for (EquipRecord& record : equips) {
        const std::string base = record.name;
        record.name = finalName(base);
        text_.clear();
        writeHead(text_, record, context_.udas, ElementKind::Equipment);
        text_ += '\n';
        file_.write(text_);
        context_.names.equipment.registerEquipName(record.objectId, base, record.name);
    }
}

void EquipFile::writeNozzles(const std::vector<EquipRecord>& nozzles) {
    if (!file_.isOpen()) {
        return;
    }
    nozzleNames().clear();
    for (const EquipRecord& record : nozzles) {
        text_.clear();
        for (const PrimGroup& group : record.groups) {
            for (const PrimPtr& prim : group._posPrimitive) {
                writeNozzle(text_, static_cast<const _PNozzle&>(*prim), record.objectId);
            }
        }
        text_ += '\n';
        file_.write(text_);
    }
}

NumberedFile::NumberedFile(std::string_view path, ElementKind kind, UdaWriter& udas)
    : file_(path, tolmar::FileMode::Text), kind_(kind), udas_(udas) {}

void NumberedFile::write(std::vector<EquipRecord>& records) {
    if (!file_.isOpen()) {
        return;
    }
    for (EquipRecord& record : records) {
        record.name = numbered(record.name, ++number_);
        text_.clear();
        writeHead(text_, record, udas_, kind_);
        text_ += '\n';
        file_.write(text_);
    }
}
