#include "spec_tables.h"

#include <sstream>

namespace {

std::vector<std::string> linesOf(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) {
        if (!line.empty() && line.back() == '\r') {
            line.pop_back();
        }
        lines.push_back(line);
    }
    return lines;
}

// Words of a row; "TEXT" and the quoted word behind it are one.
std::vector<std::string> cellsOf(const std::string& line) {
    std::vector<std::string> cells;
    std::istringstream stream(line);
    for (std::string word; stream >> word;) {
        if (word.front() == '\'' && !cells.empty() && cells.back() == "TEXT") {
            cells.back() += " " + word;
        } else {
            cells.push_back(word);
        }
    }
    return cells;
}

// The second argument of a catalogue call, without its slash.
std::string elementOf(const std::string& line) {
    std::istringstream stream(line);
    std::string piece;
    for (int i = 0; i < 4 && std::getline(stream, piece, '\''); ++i) {
    }
    return piece.empty() ? piece : piece.substr(1);
}

constexpr const char* tables[] = {"BoltSpec.txt",          "PipeCompSpecGenerator.txt", "nozzleSpec.txt",
                                  "TempSpecGenerator.txt", "SpecSupportSpec.pmlmac",    "SpecAttachSpec.pmlmac"};
constexpr const char* valueFiles[] = {"BoltSpcoUdaSet.txt", "PipeSpcoUdaSet.txt"};

// Calls of the catalogue by the column that may name what they create.
constexpr std::pair<const char*, const char*> creators[] = {
    {"CreateScom('", "CATREF"}, {"CreatePipeScom('", "CATREF"}, {"CreateInsuScom('", "CATREF"},
    {"CreateSdte('", "DETAIL"}, {"CreateSmte('", "MATXT"},      {"Sbol('", "BLTREF"},
};

}  // namespace

SpecTables::SpecTables(const std::map<std::string, std::string>& files) {
    const auto textOf = [&](const char* name) {
        const auto at = files.find(name);
        return at != files.end() ? at->second : std::string();
    };
    for (const std::string& line : linesOf(textOf("uda.txt"))) {
        if (line.starts_with("NEW UDA /")) {
            attributes_[line.substr(9, line.find(' ', 9) - 9)] = line;
        }
    }
    readCatalogue(textOf("cata.txt"));
    for (const char* file : tables) {
        readTable(file, textOf(file));
    }
    for (const char* file : valueFiles) {
        readValues(file, textOf(file));
    }
}

void SpecTables::readCatalogue(const std::string& text) {
    for (const std::string& line : linesOf(text)) {
        for (const auto& [call, column] : creators) {
            if (line.find(call) != std::string::npos) {
                kinds_[elementOf(line)] = column;
            }
        }
    }
}

void SpecTables::readTable(const std::string& file, const std::string& text) {
    std::string specification;
    std::vector<std::string> columns;
    const std::vector<std::string> lines = linesOf(text);
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const std::size_t name = lines[i].find("SPECIFICATION /");
        if (name == 4) {
            specification = lines[i].substr(name + 15);
        } else if (lines[i] == "HEADING" && i + 1 < lines.size()) {
            columns = cellsOf(lines[++i]);
            ++blocks_;
        } else if (lines[i].find(" */") != std::string::npos) {
            addRow(specification, {file + ":" + std::to_string(i + 1), "", {}, blocks_}, columns, lines[i]);
        }
    }
}

void SpecTables::addRow(const std::string& specification, SpecRow row, const std::vector<std::string>& columns,
                        const std::string& line) {
    const std::vector<std::string> cells = cellsOf(line);
    if (cells.size() != columns.size()) {
        findings.push_back(row.place + ": " + std::to_string(cells.size()) + " cells under " +
                           std::to_string(columns.size()) + " columns");
        return;
    }
    for (std::size_t i = 0; i < cells.size(); ++i) {
        row.cells[columns[i]] = cells[i];
    }
    row.name = specification + row.cells["NAME"].substr(1);
    const auto [at, isNew] = rowPlaces_.try_emplace(row.name, row.place);
    if (!isNew) {
        findings.push_back(row.place + ": row " + row.name + " stands at " + at->second + " already");
    }
    for (const char* column : {"CATREF", "DETAIL", "MATXT", "BLTREF"}) {
        requireOf(row, column);
    }
    rows.push_back(std::move(row));
}

void SpecTables::requireOf(const SpecRow& row, const char* column) {
    const auto cell = row.cells.find(column);
    if (cell == row.cells.end() || cell->second == "=0") {
        return;
    }
    const auto at = kinds_.find(cell->second.substr(1));
    if (cell->second.front() != '/' || at == kinds_.end() || at->second != column) {
        findings.push_back(row.place + ": the catalogue has no " + column + " " + cell->second);
    }
}

void SpecTables::readValues(const std::string& file, const std::string& text) {
    const std::vector<std::string> lines = linesOf(text);
    bool underRow = false;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const std::string place = file + ":" + std::to_string(i + 1) + ": ";
        if (lines[i].starts_with("OLD /")) {
            underRow = rowPlaces_.count(lines[i].substr(5)) != 0;
            if (!underRow) {
                findings.push_back(place + "no row " + lines[i].substr(5));
            }
        } else if (!underRow || lines[i].front() != ':') {
            findings.push_back(place + "no value of a row");
        } else if (attributes_.count(lines[i].substr(1, lines[i].find(' ') - 1)) == 0) {
            findings.push_back(place + "no attribute of " + lines[i]);
        }
    }
}
