#include "readers/hext/folder.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <sstream>

namespace {

constexpr std::size_t longestName = 51;
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

// Attributes that the target defines itself.
constexpr std::string_view ownAttributes[] = {"OpePress", "OpeTemp"};

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

}  // namespace

std::vector<std::string> HextFolder::check(const std::filesystem::path& folder) {
    HextFolder reader(folder);
    for (const std::string_view name : ownAttributes) {
        reader.attributes_.emplace(name);
    }
    for (const char* name : runOrder) {
        reader.readFile(name);
    }
    return reader.findings_;
}

void HextFolder::readFile(const char* name) {
    std::ifstream file(folder_ / name, std::ios::binary);
    std::string line;
    place_ = name;
    specification_.clear();
    for (line_ = 1; std::getline(file, line); ++line_) {
        if (!line.empty() && line.back() == '\r') {
            line.pop_back();
        }
        testQuotes(line);
        readLine(line);
    }
}

// Each kind of line is told by how it begins. Blanks at the end may belong to a name.
void HextFolder::readLine(std::string_view full) {
    const std::string_view line = withoutIndent(full);
    if (beginsWith(line, "NEW ")) {
        readNew(line.substr(4));
    } else if (beginsWith(line, "OLD ")) {
        readOld(line.substr(4));
    } else if (beginsWith(line, ":")) {
        readAttribute(line);
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

void HextFolder::testQuotes(std::string_view line) {
    if (!isNameLine(withoutIndent(line)) && line.find('|') == std::string_view::npos &&
        std::count(line.begin(), line.end(), '\'') % 2 != 0) {
        find("quotes do not balance");
    }
}

void HextFolder::find(const std::string& what) {
    findings_.push_back(place_ + ":" + std::to_string(line_) + ": " + what);
}

void HextFolder::create(std::string_view name) {
    if (name.empty() || name == "*LIMBOSPEC") {
        return;
    }
    if (name.size() > longestName) {
        find("the name " + std::string(name) + " has " + std::to_string(name.size()) + " bytes");
    }
    const auto [at, isNew] = created_.try_emplace(std::string(name), place_ + ":" + std::to_string(line_));
    if (!isNew) {
        find("the name " + std::string(name) + " was created at " + at->second + " already");
    }
}

void HextFolder::require(std::string_view name) {
    if (name != "*" && name != "Nulref" && created_.find(name) == created_.end()) {
        find("no element " + std::string(name) + " so far");
    }
}

void HextFolder::requireReference(std::string_view argument) {
    if (argument != nothing) {
        require(withoutSlash(argument));
    }
}

void HextFolder::requireRow(std::string_view argument) {
    const std::string_view name = withoutSlash(argument);
    if (argument != nothing && rows_.find(name) == rows_.end()) {
        find("no specification row " + std::string(name));
    }
}

void HextFolder::readNew(std::string_view rest) {
    const std::size_t slash = rest.find('/');
    if (slash == std::string_view::npos) {
        return;
    }
    const std::string_view type = trimmed(rest.substr(0, slash));
    const bool isAttribute = type == "UDA";
    const std::string_view name = rest.substr(slash + 1, isAttribute ? rest.find(' ', slash) - slash - 1 : rest.npos);
    create(name);
    if (isAttribute) {
        attributes_.emplace(name);
    } else if (type == "SPECIFICATION") {
        specification_ = name;
    }
}

void HextFolder::readOld(std::string_view rest) {
    const std::size_t slash = rest.find('/');
    const std::string_view name = slash == std::string_view::npos ? rest : rest.substr(slash + 1);
    if (rows_.find(name) == rows_.end()) {
        require(name);
    }
    if (beginsWith(rest, "SPECIFICATION")) {
        specification_ = name;
    }
}

// TYPE  */NAME  ...: what begins with "/" refers to an element.
void HextFolder::readRow(std::string_view line) {
    const std::vector<std::string> words = wordsOf(line);
    for (const std::string& word : words) {
        if (beginsWith(word, "*/")) {
            const std::string row = specification_ + word.substr(1);
            if (!rows_.insert(row).second) {
                find("the row " + row + " stands twice");
            }
            if (row.size() > longestName) {
                find("the row name " + row + " has " + std::to_string(row.size()) + " bytes");
            }
        } else if (beginsWith(word, "/")) {
            require(std::string_view(word).substr(1));
        }
    }
}

void HextFolder::readAttribute(std::string_view line) {
    const std::string_view name = line.substr(1, line.find(' ') - 1);
    if (attributes_.find(name) == attributes_.end()) {
        find("the attribute " + std::string(name) + " is not defined");
    }
}

void HextFolder::readAssignment(std::string_view line) {
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

std::string HextFolder::valueOf(std::string_view argument) const {
    const auto at = variables_.find(argument);
    return at != variables_.end() ? at->second : std::string(argument);
}

void HextFolder::readMacro(std::string_view line) {
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

void HextFolder::readCatalogueCall(std::string_view function, const std::vector<std::string>& arguments) {
    for (const CatalogueCall& call : catalogueCalls) {
        if (call.function != function || arguments.size() <= call.element) {
            continue;
        }
        for (std::size_t i = 0; i < call.element; ++i) {
            require(withoutSlash(arguments[i]));
        }
        create(withoutSlash(arguments[call.element]));
    }
    if (function == "CreateScom" && arguments.size() > 5) {
        require(withoutSlash(arguments[4]));
        require(withoutSlash(arguments[5]));
    } else if (function == "Ptaxi" || function == "Ptca" || function == "ScomBoltArray") {
        require(withoutSlash(arguments.front()));
    }
}

void HextFolder::readPipeCall(std::string_view function, const std::vector<std::string>& a) {
    if (function == "CreatePipe" && a.size() == 5) {
        create(withoutSlash(a[0]));
        requireReference(a[3]);
        requireReference(a[4]);
    } else if (function == "CreateBranch" && a.size() == 5) {
        create(withoutSlash(a[0]));
        requireReference(a[3]);
    } else if (function == "SetBranchProp" && a.size() == 9) {
        requireRow(a[8]);
    } else if (function == "CreateComponent" && a.size() == 11) {
        if (a[1] == "TRUE") {
            create(withoutSlash(a[2]));
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

void HextFolder::readDesignCall(std::string_view function, const std::vector<std::string>& a) {
    if (function == "CommonCreateSite") {
        create(a[0]);
    } else if (function == "CommonCreateZone") {
        require(a[0]);
        create(a.size() > 1 ? a[1] : "");
    } else if (function == "EquipCreateEquip" || function == "EquipCreateStruct" || function == "EquipCreateNozzle") {
        require(valueOf(a[0]));
        create(valueOf(a.size() > 1 ? a[1] : ""));
    } else if (beginsWith(function, "EquipCreate") && !beginsWith(a[0], "!")) {
        require(a[0]);
    }
}
