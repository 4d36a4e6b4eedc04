#include "hextinterface/ornatohextprocess/design_files.h"

#include "frame/exceptions.h"
#include "hextinterface/manager/manager.h"
#include "hextinterface/ornatohextprocess/nozzle_macro.h"
#include "platform/hxcom.h"
#include "scripts/project_config.h"
#include "tolmar/file.h"
#include "tolmar/run_report.h"

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
    udas.writeUda(out, "ESpecNo", record.specNo);
    udas.writeUda(out, "EStyle", record.style);
    udas.writeUda(out, "EName", record.equipName);
    udas.writeUdaList(out, "EAttr", record.attrs);
    udas.writeUda(out, "ENotes", record.notes);
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

// Running suffixes of equipment names. The number counts over the whole file and not by name.
class NameSuffix {
public:
    explicit NameSuffix(const NameManager& names) : names_(names), on_(configEquipPostName()) {}

    std::string finalName(const std::string& base) {
        if (!on_) {
            return base;
        }
        number_ = names_.hasEquipName(base) ? number_ + 1 : 1;
        return numbered(base, number_);
    }

private:
    const NameManager& names_;
    bool on_;
    int number_ = 0;
};

void writeEquips(tolmar::OutputFile& file, DesignMacroSet& set) {
    NameManager& names = set.context.names;
    NameSuffix suffix(names);
    std::string text;
    for (EquipRecord& record : set.equips) {
        const std::string base = record.name;
        record.name = suffix.finalName(base);
        text.clear();
        writeHead(text, record, set.context.udas, ElementKind::Equipment);
        text += '\n';
        file.write(text);
        names.registerEquipName(record.objectId, base, record.name);
    }
}

void writeNozzle(std::string& out, const _PNozzle& nozzle, HxDbObjectId id) {
    try {
        nozzle.write(out);
    } catch (const ExportException& failure) {
        hxcad::hextPrintf("\nNID:%lld EID:%lld <%s>", static_cast<long long>(nozzle.equipmentId.toInt()),
                          static_cast<long long>(id.toInt()), failure.what());
        tolmar::runReport().passedOver(id.toInt(), nozzle.name, "nozzle", failure.what());
    }
}

void writeNozzles(tolmar::OutputFile& file, const std::vector<EquipRecord>& nozzles) {
    nozzleNames().clear();
    std::string text;
    for (const EquipRecord& record : nozzles) {
        text.clear();
        for (const PrimGroup& group : record.groups) {
            for (const PrimPtr& prim : group._posPrimitive) {
                writeNozzle(text, static_cast<const _PNozzle&>(*prim), record.objectId);
            }
        }
        text += '\n';
        file.write(text);
    }
}

// Elements whose names are numbered through the file.
void writeNumbered(tolmar::OutputFile& file, std::vector<EquipRecord>& records, UdaWriter& udas, ElementKind kind) {
    std::string text;
    int number = 0;
    for (EquipRecord& record : records) {
        record.name = numbered(record.name, ++number);
        text.clear();
        writeHead(text, record, udas, kind);
        text += '\n';
        file.write(text);
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

void writeEquipFile(DesignMacroSet& set, std::string_view path) {
    tolmar::OutputFile file(path, tolmar::FileMode::Text);
    if (file.isOpen()) {
        writeEquips(file, set);
        writeNozzles(file, set.nozzles);
    }
}

void writeStructFile(DesignMacroSet& set, std::string_view path) {
    tolmar::OutputFile file(path, tolmar::FileMode::Text);
    if (file.isOpen()) {
        writeNumbered(file, set.structs, set.context.udas, ElementKind::Structure);
    }
}

void writeSupportFile(DesignMacroSet& set, std::string_view path) {
    tolmar::OutputFile file(path, tolmar::FileMode::Text);
    if (file.isOpen()) {
        writeNumbered(file, set.supports, set.context.udas, ElementKind::Support);
        file.write("savework\n");
    }
}
