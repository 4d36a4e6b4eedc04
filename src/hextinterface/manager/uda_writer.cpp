#include "hextinterface/manager/uda_writer.h"

#include "frame/exceptions.h"
#include "hextinterface/hextbasemethod/limited_text.h"
#include "hextinterface/hextbasemethod/macro_text.h"
#include "hextinterface/manager/name_manager.h"

#include <algorithm>
#include <utility>

namespace {

struct Definition {
    const char* name;
    const char* description;  // null: the name itself
    const char* elements;
};

constexpr const char* componentElements = "BEND CAP CLOS COUP CROS DUCT ELBO FBLI FILT FLAN FTUB GASK INST LJSE OLET "
                                          "PCOM REDU SHU TEE TRAP UNIO VALV VENT VFWA VTWA WELD";

constexpr Definition definitions[] = {
    {"SupStandName", "Stand Name", "HANGE"},
    {"SupMainClass", "Main Class", "HANGE"},
    {"SupSubClass", "Sub Class", "HANGE"},
    {"SupType", "Support Type", "HANGE"},
    {"SupTypeDesc", "Type Description", "HANGE"},
    {"SupShape", "Support Shape", "HANGE"},
    {"SupConsNo", "Construct No", "HANGE"},
    {"SupMaterial", "Material", "HANGE"},
    {"SupUseScope", "Use Scope", "HANGE"},
    {"SupNotes", "Notes", "HANGE"},
    {"UserItem", nullptr, componentElements},
    {"UserType", nullptr, componentElements},
    {"CompName", nullptr, componentElements},
    {"Tag", nullptr, componentElements},
    {"Material", nullptr, componentElements},
    {"StockNo", nullptr, componentElements},
    {"Rating", nullptr, "SPCO"},
    {"Sch", nullptr, "SPCO"},
    {"Field", nullptr, "SPCO"},
    {"Standard", nullptr, "SPCO"},
    {"StdSerial", nullptr, "SPCO"},
    {"ManuCode", nullptr, "SPCO"},
    {"ManuSerial", nullptr, "SPCO"},
    {"CompNotes", nullptr, "SPCO"},
    {"ESpecNo", nullptr, "EQUI"},
    {"EStyle", nullptr, "EQUI"},
    {"EName", nullptr, "EQUI"},
    {"EAttr", nullptr, "EQUI"},
    {"ENotes", nullptr, "EQUI"},
    {"NozzleNo", nullptr, "NOZZ"},
    {"NozzleName", nullptr, "NOZZ"},
};

constexpr std::string_view groupName = "ORNA_UGRO";
constexpr int unitsOfUda = maxTextUnits;

tolmar::OutputFile openedFile(std::string_view path) {
    tolmar::OutputFile file(path, tolmar::FileMode::Text);
    if (!file.isOpen()) {
        throw ExportException(fillPlaceholder("文件 %1% 打开失败！", std::string(path)));
    }
    return file;
}

void appendQuoted(std::string& out, std::string_view text) {
    out += '\'';
    appendEscaped(out, text);
    out += '\'';
}

std::string quoted(std::string_view text) {
    std::string result;
    appendQuoted(result, text);
    return result;
}

}  // namespace

UdaWriter::UdaWriter(std::string_view path, NameManager& names) : UdaWriter(openedFile(path), names) {}

UdaWriter::UdaWriter(tolmar::OutputFile file, NameManager& names) : file_(std::move(file)), names_(names) {
    fillDefinitions();
    writeDictionary();
}

void UdaWriter::fillDefinitions() {
    for (const auto& [name, description, elements] : definitions) {
        definitions_.push_back({name, elements, description != nullptr ? description : name});
    }
    std::sort(definitions_.begin(), definitions_.end(),
              [](const UdaDef& a, const UdaDef& b) { return a.name < b.name; });
    for (const UdaDef& def : definitions_) {
        definitionNames_.add(def.name);
    }
}

void UdaWriter::writeDictionary() {
    file_.write("Lexicon\n");
    if (!names_.isNameCreated(groupName)) {
        file_.write("NEW UWRL /ORNA_UWRL\n"
                    "    NEW UGRO /ORNA_UGRO\n"
                    "    END\n"
                    "END\n");
        names_.markNameCreated(groupName);
    }
    file_.write("OLD /ORNA_UGRO\n");
    for (const UdaDef& def : definitions_) {
        define(def, def.name);
    }
}

void UdaWriter::define(const UdaDef& def, const std::string& name) {
    if (names_.isNameKnown(name)) {
        return;
    }
    names_.addUdaName(name);
    names_.markNameCreated(name);
    std::string text = "NEW UDA /" + name + " UTYPE TEXT\n    UDNA " + quoted(name) + "\n    ULEN ";
    appendInt(text, unitsOfUda);
    text += "\n    ABLEN ";
    appendInt(text, static_cast<std::int64_t>(name.size()));
    text += "\n    RPTX '" + def.description + "'\n    ELE ADD " + def.elements + "\n    COMPILE\nEND\n";
    file_.write(text);
}

const UdaDef& UdaWriter::definition(std::string_view name) const {
    const std::uint32_t number = definitionNames_.find(name);
    if (number == naming::TextTable::none) {
        throw ExportException("未知的UDA名称！" + std::string(name));
    }
    return definitions_[number];
}

void UdaWriter::writeUda(std::string& out, std::string_view name, std::string_view value) const {
    if (value.empty()) {
        return;
    }
    definition(name);
    ((out += ':') += name) += ' ';
    appendQuoted(out, value);
    out += " \n";
}

// Writes pieces of one list, each into an attribute of its own.
class UdaWriter::ListPieces {
public:
    ListPieces(UdaWriter& writer, std::string& out, const UdaDef& def) : writer_(writer), out_(out), def_(def) {}

    void write(std::string_view piece) {
        std::string name = def_.name;
        if (number_ != 0) {
            appendInt(name, number_);
        }
        ++number_;
        writer_.define(def_, name);
        ((((out_ += ':') += name) += ' ') += piece) += '\n';
    }
    void write(const std::vector<std::string>& pieces) {
        for (const std::string& piece : pieces) {
            write(piece);
        }
    }
    // One piece, however long.
    void writePending(std::string& pending) {
        if (!pending.empty()) {
            write(quoted(pending));
            pending.clear();
        }
    }

private:
    UdaWriter& writer_;
    std::string& out_;
    const UdaDef& def_;
    int number_ = 0;
};

void UdaWriter::writeUdaList(std::string& out, std::string_view name, std::span<const std::string> values) {
    if (values.empty()) {
        return;
    }
    ListPieces list(*this, out, definition(name));
    std::string pending;
    for (std::size_t i = 0; i < values.size(); ++i) {
        const bool isLast = i + 1 == values.size();
        std::string candidate = pending.empty() ? values[i] : pending + ";" + values[i];
        const std::vector<std::string> joined = limitedPieces(candidate);
        if (joined.size() == 1) {
            pending = std::move(candidate);
            if (isLast) {
                list.write(joined);
            }
            continue;
        }
        list.writePending(pending);
        const std::vector<std::string> alone = limitedPieces(values[i]);
        if (!isLast && alone.size() == 1) {
            pending = values[i];
        } else {
            list.write(alone);
        }
    }
}
