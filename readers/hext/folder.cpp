#include "readers/hext/folder.h"

#include "readers/mapped_file.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <sstream>

namespace readers::hext {

namespace {

constexpr std::string_view nothing = "unset";

// In the order in which the target runs them.
constexpr const char* runOrder[] = {
    "uda.txt",
    "cata.txt",
    "SpecCreate.txt",
    "BoltSpec.txt",
    "BoltSpcoUdaSet.txt",
    "PipeCompSpecGenerator.txt",
    "PipeSpcoUdaSet.txt",
    "nozzleSpec.txt",
    "SpecSupportSpec.pmlmac",
    "SpecAttachSpec.pmlmac",
    "TempSpecGenerator.txt",
    "ConnTable.txt",
    "sitezone.txt",
    "equip.txt",
    "struct.txt",
    "axisline.txt",
    "sup.txt",
    "pipe.txt",
};

// Catalogue calls by where their element's name stands; the names before it are its parents.
struct CatalogueCall {
    std::string_view function;
    std::size_t element;
};
constexpr CatalogueCall catalogueCalls[] = {
    {"CreateCata", 0}, {"CreateSec", 1},  {"CreateCate", 1}, {"CreateGmse", 1},     {"CreatePtse", 1},
    {"CreateSmte", 1}, {"CreateSdte", 1}, {"CreateScom", 1}, {"CreatePipeScom", 1}, {"CreateInsuScom", 1},
    {"Blta", 0},       {"Blist", 0},      {"Btse", 1},       {"Sbol", 1},
};

bool beginsWith(std::string_view text, std::string_view start) {
    return text.substr(0, start.size()) == start;
}

std::string_view withoutIndent(std::string_view text) {
    return text.substr(std::min(text.find_first_not_of(' '), text.size()));
}

std::string_view trimmed(std::string_view text) {
    const std::string_view rest = withoutIndent(text);
    return rest.substr(0, rest.find_last_not_of(' ') + 1);
}

// Lines whose name stands to the end, without quotes.
bool isNameLine(std::string_view line) {
    constexpr std::string_view starts[] = {"OLD ", "NEW ", "BSPEC /", "HREF /", "TREF /"};
    return std::any_of(std::begin(starts), std::end(starts),
                       [line](std::string_view start) { return beginsWith(line, start); });
}

std::string_view withoutSlash(std::string_view name) {
    return beginsWith(name, "/") ? name.substr(1) : name;
}

// The arguments between the outer brackets, split at commas outside quotes; quotes are taken off, and a doubled one in
// quotes stands for itself.
std::vector<std::string> argumentsOf(std::string_view call) {
    std::vector<std::string> arguments(1);
    char quote = 0;
    const std::string_view text = call.substr(call.find('(') + 1);
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (quote != 0) {
            const bool isDoubled = c == quote && i + 1 < text.size() && text[i + 1] == quote;
            if (c != quote || isDoubled) {
                arguments.back() += c;
            }
            i += isDoubled ? 1 : 0;
            quote = c == quote && !isDoubled ? 0 : quote;
        } else if (c == '\'' || c == '|') {
            quote = c;
        } else if (c == ',') {
            arguments.emplace_back();
        } else if (c != ')' && c != ' ') {
            arguments.back() += c;
        }
    }
    return arguments;
}

std::vector<std::string> wordsOf(std::string_view line) {
    std::istringstream stream{std::string(line)};
    return {std::istream_iterator<std::string>(stream), {}};
}

// One run through the files of a folder.
class FolderReader {
public:
    FolderReader(const MentionVisitor& visit, Findings& findings) : visit_(visit), findings_(findings) {}

    void readFile(const std::filesystem::path& folder, const char* name);

private:
    using Arguments = std::vector<std::string>;

    void readLine(std::string_view line);
    void readMacro(std::string_view line);
    void readCatalogueCall(std::string_view function, const Arguments& arguments);
    void readPipeCall(std::string_view function, const Arguments& arguments);
    void readDesignCall(std::string_view function, const Arguments& arguments);
    void readNew(std::string_view rest);
    void readOld(std::string_view rest);
    void readRow(std::string_view line);
    void readAssignment(std::string_view line);
    void testQuotes(std::string_view line);

    void tell(Mention what, std::string_view name, std::string_view type = {});
    void create(std::string_view name, std::string_view type);
    void require(std::string_view name) { tell(Mention::Referred, name); }
    // A reference of a macro argument: "/name", or "unset" for none.
    void requireReference(std::string_view argument);
    void requireRow(std::string_view argument);
    void find(const std::string& what) { note(findings_, place(), what); }
    std::string place() const { return file_ + ":" + std::to_string(line_); }
    std::string valueOf(std::string_view argument) const;

    const MentionVisitor& visit_;
    Findings& findings_;
    std::string file_;
    std::size_t line_ = 0;
    std::map<std::string, std::string, std::less<>> variables_;
    std::string specification_;
};

void FolderReader::readFile(const std::filesystem::path& folder, const char* name) {
    std::error_code error;
    if (!std::filesystem::exists(folder / name, error)) {
        return;
    }
    const MappedFile file(folder / name);
    if (!file.isGood()) {
        return note(findings_, name, file.fault());
    }
    file_ = name;
    line_ = 0;
    specification_.clear();
    for (std::string_view rest = file.bytes(); !rest.empty();) {
        ++line_;
        const std::size_t end = std::min(rest.find('\n'), rest.size());
        std::string_view line = rest.substr(0, end);
        rest.remove_prefix(std::min(end + 1, rest.size()));
        if (line.ends_with('\r')) {
            line.remove_suffix(1);
        }
        testQuotes(line);
        readLine(line);
    }
}

// Each kind of line is told by how it begins. Blanks at the end may belong to a name.
void FolderReader::readLine(std::string_view full) {
    const std::string_view line = withoutIndent(full);
    if (beginsWith(line, "NEW ")) {
        readNew(line.substr(4));
    } else if (beginsWith(line, "OLD ")) {
        readOld(line.substr(4));
    } else if (beginsWith(line, ":")) {
        tell(Mention::AttributeUsed, line.substr(1, line.find(' ') - 1));
    } else if (line.find("!!ORNA") != std::string_view::npos) {
        readMacro(line);
    } else if (beginsWith(line, "!")) {
        readAssignment(line);
    } else if (beginsWith(line, "BSPEC /") || beginsWith(line, "HREF /") || beginsWith(line, "TREF /")) {
        require(line.substr(line.find('/') + 1));
    } else if (!specification_.empty() && line.find(" */") != std::string_view::npos) {
        readRow(line);
    }
}

void FolderReader::testQuotes(std::string_view line) {
    if (!isNameLine(withoutIndent(line)) && line.find('|') == std::string_view::npos &&
        std::count(line.begin(), line.end(), '\'') % 2 != 0) {
        find("quotes do not balance");
    }
}

void FolderReader::tell(Mention what, std::string_view name, std::string_view type) {
    visit_({what, name, type, place()});
}

void FolderReader::create(std::string_view name, std::string_view type) {
    if (!name.empty() && name != "*LIMBOSPEC") {
        tell(Mention::Created, name, type);
    }
}

void FolderReader::requireReference(std::string_view argument) {
    if (argument != nothing) {
        require(withoutSlash(argument));
    }
}

void FolderReader::requireRow(std::string_view argument) {
    if (argument != nothing) {
        tell(Mention::RowReferred, withoutSlash(argument));
    }
}

void FolderReader::readNew(std::string_view rest) {
    const std::size_t slash = rest.find('/');
    if (slash == std::string_view::npos) {
        return;
    }
    const std::string_view type = trimmed(rest.substr(0, slash));
    const bool isAttribute = type == "UDA";
    const std::string_view name = rest.substr(slash + 1, isAttribute ? rest.find(' ', slash) - slash - 1 : rest.npos);
    create(name, type);
    if (isAttribute) {
        tell(Mention::AttributeDefined, name);
    } else if (type == "SPECIFICATION") {
        specification_ = name;
    }
}

void FolderReader::readOld(std::string_view rest) {
    const std::size_t slash = rest.find('/');
    const std::string_view name = slash == std::string_view::npos ? rest : rest.substr(slash + 1);
    tell(Mention::Entered, name);
    if (beginsWith(rest, "SPECIFICATION")) {
        specification_ = name;
    }
}

// TYPE  */NAME  ...: what begins with "/" refers to an element.
void FolderReader::readRow(std::string_view line) {
    const std::vector<std::string> words = wordsOf(line);
    for (const std::string& word : words) {
        if (beginsWith(word, "*/")) {
            tell(Mention::RowCreated, specification_ + word.substr(1));
        } else if (beginsWith(word, "/")) {
            require(std::string_view(word).substr(1));
        }
    }
}

void FolderReader::readAssignment(std::string_view line) {
    const std::size_t equals = line.find(" = ");
    if (equals == std::string_view::npos) {
        return;
    }
    const std::vector<std::string> value = argumentsOf("(" + std::string(line.substr(equals + 3)) + ")");
    variables_[std::string(line.substr(0, equals))] = value.front();
    if (beginsWith(line, "!catref")) {
        requireRow(value.front());
    }
}

std::string FolderReader::valueOf(std::string_view argument) const {
    const auto at = variables_.find(argument);
    return at != variables_.end() ? at->second : std::string(argument);
}

void FolderReader::readMacro(std::string_view line) {
    constexpr std::string_view mark = "!!ORNA";
    const std::size_t start = line.find(mark) + mark.size();
    const std::size_t bracket = line.find('(', start);
    if (bracket == std::string_view::npos) {
        return find("a macro call without arguments");
    }
    const std::string_view function = line.substr(start, bracket - start);
    const std::vector<std::string> arguments = argumentsOf(line.substr(bracket));
    if (beginsWith(function, "Cata")) {
        readCatalogueCall(function.substr(4), arguments);
    } else if (beginsWith(function, "Pipe")) {
        readPipeCall(function.substr(4), arguments);
    } else {
        readDesignCall(function, arguments);
    }
}

void FolderReader::readCatalogueCall(std::string_view function, const Arguments& arguments) {
    for (const CatalogueCall& call : catalogueCalls) {
        if (call.function != function || arguments.size() <= call.element) {
            continue;
        }
        for (std::size_t i = 0; i < call.element; ++i) {
            require(withoutSlash(arguments[i]));
        }
        create(withoutSlash(arguments[call.element]), function);
    }
    if (function == "CreateScom" && arguments.size() > 5) {
        require(withoutSlash(arguments[4]));
        require(withoutSlash(arguments[5]));
    } else if (function == "Ptaxi" || function == "Ptca" || function == "ScomBoltArray") {
        require(withoutSlash(arguments.front()));
    }
}

void FolderReader::readPipeCall(std::string_view function, const Arguments& a) {
    if (function == "CreatePipe" && a.size() == 5) {
        create(withoutSlash(a[0]), function);
        requireReference(a[3]);
        requireReference(a[4]);
    } else if (function == "CreateBranch" && a.size() == 5) {
        create(withoutSlash(a[0]), function);
        requireReference(a[3]);
    } else if (function == "SetBranchProp" && a.size() == 9) {
        requireRow(a[8]);
    } else if (function == "CreateComponent" && a.size() == 11) {
        if (a[1] == "TRUE") {
            create(withoutSlash(a[2]), function);
        }
        // Bends that the export inserts stand in a specification of their own.
        requireRow(a[6]);
        requireRow(a[9]);
    } else if ((function == "CreateAngleComp" || function == "CreateHeightComp") && a.size() == 10) {
        requireRow(a[5]);
        requireRow(a[8]);
    } else {
        find("the call " + std::string(function) + " has " + std::to_string(a.size()) + " arguments");
    }
}

void FolderReader::readDesignCall(std::string_view function, const Arguments& a) {
    if (function == "CommonCreateSite") {
        create(a[0], function);
    } else if (function == "CommonCreateZone") {
        require(a[0]);
        create(a.size() > 1 ? a[1] : "", function);
    } else if (function == "EquipCreateEquip" || function == "EquipCreateStruct" || function == "EquipCreateNozzle") {
        require(valueOf(a[0]));
        create(valueOf(a.size() > 1 ? a[1] : ""), function);
    } else if (beginsWith(function, "EquipCreate") && !beginsWith(a[0], "!")) {
        require(a[0]);
    }
}

}  // namespace

void readFolder(const std::filesystem::path& folder, const MentionVisitor& visit, Findings& findings) {
    FolderReader reader(visit, findings);
    for (const char* name : runOrder) {
        reader.readFile(folder, name);
    }
}

void readObjects(const std::filesystem::path& folder, ToUtf8 toUtf8, const ObjectVisitor& visit, Findings& findings) {
    const auto tell = [&](const NameMention& mention) {
        if (mention.what != Mention::Created) {
            return;
        }
        Object object;
        object.name = toUtf8 != nullptr ? toUtf8(mention.name) : std::string(mention.name);
        object.path = {object.name};
        object.className = mention.type;
        object.place = mention.place;
        visit(object);
    };
    readFolder(folder, tell, findings);
}

}  // namespace readers::hext
