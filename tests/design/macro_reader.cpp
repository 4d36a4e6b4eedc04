#include "macro_reader.h"

#include <cmath>
#include <sstream>
#include <stdexcept>

namespace macro {
namespace {

using Words = std::vector<std::string>;

// What the macro library takes behind owner, sign, position and orientation.
const std::map<std::string, Words> signatures = {
    {"Box", {"xlen", "ylen", "zlen"}},
    {"Cyli", {"dia", "height"}},
    {"Cone", {"dTop", "dBottom", "height"}},
    {"Snou", {"dTop", "dBottom", "xoff", "yoff", "height"}},
    {"Dish", {"dia", "height", "radius"}},
    {"Ctor", {"rIn", "rOut", "angle"}},
    {"Rtor", {"rIn", "rOut", "height", "angle"}},
    {"Pyra", {"xtop", "xbottom", "ytop", "ybottom", "height", "xoff", "yoff"}},
    {"Slcy", {"dia", "height", "xtshear", "ytshear", "xbshear", "ybshear"}},
    {"Extru", {"height"}},
    {"Revo", {"angle"}},
};

[[noreturn]] void fail(const std::string& what) {
    throw std::runtime_error(what);
}

Words split(const std::string& text, const std::string& separator) {
    Words words;
    std::size_t from = 0;
    for (std::size_t to; (to = text.find(separator, from)) != std::string::npos; from = to + separator.size()) {
        words.push_back(text.substr(from, to - from));
    }
    words.push_back(text.substr(from));
    return words;
}

HxGeVector3D wordAxis(const std::string& word) {
    static const std::map<std::string, HxGeVector3D> axes = {{"E", {1, 0, 0}},  {"W", {-1, 0, 0}}, {"N", {0, 1, 0}},
                                                             {"S", {0, -1, 0}}, {"U", {0, 0, 1}},  {"D", {0, 0, -1}}};
    const auto found = axes.find(word);
    return found != axes.end() ? found->second : (fail("no axis: " + word), HxGeVector3D());
}

HxGePoint3D readPosition(const std::string& text) {
    const Words words = split(text, " ");
    HxGePoint3D at;
    for (std::size_t i = 0; i + 1 < words.size(); i += 2) {
        at += wordAxis(words[i]) * std::stod(words[i + 1]);
    }
    return at;
}

std::string unquoted(const std::string& text) {
    if (text.size() < 2 || text.front() != '\'' || text.back() != '\'') {
        fail("no quoted text: " + text);
    }
    std::string plain;
    for (std::size_t i = 1; i + 1 < text.size(); ++i) {
        plain += text[i];
        i += text[i] == '\'' ? 1 : 0;
    }
    return plain;
}

class Reader {
public:
    std::vector<Element> read(const std::string& text) {
        elements_.emplace_back();
        std::istringstream lines(text);
        for (std::string line; std::getline(lines, line);) {
            if (!line.empty() && line.back() == '\r') {
                line.pop_back();
            }
            readLine(line);
        }
        if (elements_.front().solids.empty()) {
            elements_.erase(elements_.begin());
        }
        return std::move(elements_);
    }

private:
    static bool takes(std::string& line, const std::string& start) {
        const bool fits = line.rfind(start, 0) == 0;
        line.erase(0, fits ? start.size() : 0);
        return fits;
    }

    void readLine(std::string line) {
        const std::string whole = line;
        if (line.empty() || line == "savework") {
            return;
        }
        if (takes(line, "var !pos POSITION ")) {
            variables_["!pos"] = line;
        } else if (takes(line, "OLD /")) {
            elements_.back().old = line;
        } else if (takes(line, "FUNC ")) {
            elements_.back().func = unquoted(line);
        } else if (takes(line, "call ")) {
            call(line, "");
        } else if (line[0] == ':') {
            elements_.back().udas.push_back(line);
        } else if (const std::size_t equals = line.find(" = "); line[0] == '!' && equals != std::string::npos) {
            assign(line.substr(0, equals), line.substr(equals + 3));
        } else {
            fail("unexpected line: " + whole);
        }
    }

    void assign(const std::string& variable, const std::string& value) {
        if (value.rfind("!!", 0) == 0) {
            call(value, variable);
        } else {
            variables_[variable] = value;
        }
    }

    void call(std::string text, const std::string& result) {
        if (!takes(text, "!!ORNAEquipCreate") || text.back() != ')') {
            fail("no call: " + text);
        }
        const std::size_t open = text.find('(');
        const std::string function = text.substr(0, open);
        const Words args = split(text.substr(open + 1, text.size() - open - 2), ", ");
        if (function == "Loop") {
            loop_ = args.at(0) == "!SolidPrtName" ? &lastSolid().loop : &lastSolid().cuts.at(lastCut()).loop;
        } else if (function == "Vertex") {
            loop_->push_back({readPosition(value(args.at(1))), std::stod(value(args.at(2)))});
        } else if (function == "Equip" || function == "Struct") {
            beginElement(function, args);
        } else if (function != "Nozzle") {
            addSolid(function, args, result);
        }
    }

    void beginElement(const std::string& function, const Words& args) {
        Element element;
        element.function = function;
        element.owner = unquoted(value(args.at(0)));
        element.self = unquoted(value(args.at(1)));
        element.frame = readFrame(value(args.at(2)), unquoted(value(args.at(3))));
        elements_.push_back(std::move(element));
    }

    void addSolid(const std::string& function, const Words& args, const std::string& result) {
        const Words& names = signatures.at(function);
        if (args.size() != names.size() + 4) {
            fail("arguments of " + function);
        }
        Solid solid;
        solid.function = function;
        solid.owner = args[0];
        solid.sign = value(args[1]) == "true";
        solid.frame = readFrame(value(args[2]), unquoted(value(args[3])));
        for (std::size_t i = 0; i < names.size(); ++i) {
            solid.numbers[names[i]] = std::stod(value(args[i + 4]));
        }
        if (solid.sign != (result == "!SolidPrtName")) {
            fail("the variable of " + function + " is " + result);
        }
        (solid.sign ? elements_.back().solids : lastSolid().cuts).push_back(std::move(solid));
    }

    const std::string& value(const std::string& variable) const { return variables_.at(variable); }
    Solid& lastSolid() { return elements_.back().solids.at(elements_.back().solids.size() - 1); }
    std::size_t lastCut() { return lastSolid().cuts.size() - 1; }

    std::vector<Element> elements_;
    std::map<std::string, std::string> variables_;
    std::vector<Vertex>* loop_ = nullptr;
};

}  // namespace

// "E 45 N 30 U": from E by 45 degrees towards N, from there by 30 towards U.
HxGeVector3D readDirection(const std::string& text) {
    const Words words = split(text, " ");
    HxGeVector3D direction = wordAxis(words.at(0));
    for (std::size_t i = 1; i + 1 < words.size(); i += 2) {
        const double angle = std::stod(words[i]) * tlGePi / 180;
        direction = direction * std::cos(angle) + wordAxis(words[i + 1]) * std::sin(angle);
    }
    return direction;
}

CoordFrame readFrame(const std::string& position, const std::string& orientation) {
    std::map<char, HxGeVector3D> axes;
    for (const std::string& clause : split(orientation, " AND ")) {
        const Words sides = split(clause, " is ");
        axes[sides.at(0).at(0)] = readDirection(sides.at(1));
    }
    if (axes.size() != 2) {
        fail("no orientation: " + orientation);
    }
    if (!axes.contains('X')) {
        axes['X'] = axes['Y'].crossProduct(axes['Z']);
    } else if (!axes.contains('Y')) {
        axes['Y'] = axes['Z'].crossProduct(axes['X']);
    } else {
        axes['Z'] = axes['X'].crossProduct(axes['Y']);
    }
    return CoordFrame(readPosition(position), axes['X'], axes['Y'], axes['Z']);
}

std::vector<Element> readElements(const std::string& text) {
    return Reader().read(text);
}

}  // namespace macro
