// Reads the tables of specifications of a folder of macro files, and what they refer to, by column.
#pragma once

#include <map>
#include <string>
#include <vector>

struct SpecRow {
    std::string place;                         // "file:line"
    std::string name;                          // of the specification, a slash, and its own
    std::map<std::string, std::string> cells;  // by the column's heading
    std::size_t block = 0;                     // rows under one heading share it
};

class SpecTables {
public:
    // Files by name with their bytes. `findings` tells of rows that do not fit their heading, stand twice, or refer to
    // a component, detail text, material text or bolt that the catalogue does not create, and of values that stand
    // under no row or belong to no attribute.
    explicit SpecTables(const std::map<std::string, std::string>& files);

    std::vector<SpecRow> rows;
    std::vector<std::string> findings;

private:
    void readCatalogue(const std::string& text);
    void readTable(const std::string& file, const std::string& text);
    void readValues(const std::string& file, const std::string& text);
    void addRow(const std::string& specification, SpecRow row, const std::vector<std::string>& columns,
                const std::string& line);
    void requireOf(const SpecRow& row, const char* column);

    std::map<std::string, std::string> kinds_;       // elements of the catalogue with the column that may name them
    std::map<std::string, std::string> rowPlaces_;   // rows by name
    std::map<std::string, std::string> attributes_;  // user attributes
    std::size_t blocks_ = 0;
};
