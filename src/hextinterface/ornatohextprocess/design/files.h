// The macro files of equipment, structures and supports.
#pragma once

#include "hextinterface/ornatohextprocess/design/records.h"
#include "tolmar/file.h"

#include <string>
#include <string_view>
#include <vector>

enum class ElementKind { Equipment, Structure, Support };

// Each writes one file at a path in the code page, records as they come; a file that cannot be opened is left out. The
// writers give the elements their final names. ExportException "命名错误" for a name too long and "设备命名冲突" for
// equipment of one final name end the file where it stands.

// Equipment, and behind all of it the nozzles.
class EquipFile {
public:
    EquipFile(std::string_view path, const ExportContext& context);
    void writeEquips(std::vector<EquipRecord>& equips);
    void writeNozzles(const std::vector<EquipRecord>& nozzles);
    // Ends the file; one that is not closed is not whole.
    bool close() { return file_.close(); }

private:
    std::string finalName(const std::string& base);

    tolmar::OutputFile file_;
    ExportContext context_;
    bool withSuffix_;
    int suffix_ = 0;  // of the last name; counts over the whole file and not by name
    std::string text_;
};

// Structures or supports, whose names are numbered through the file.
class NumberedFile {
public:
    NumberedFile(std::string_view path, ElementKind kind, UdaWriter& udas);
    void write(std::vector<EquipRecord>& records);
    // A line of its own at the end.
    void writeEnd(std::string_view line) { file_.write(line); }
    bool close() { return file_.close(); }

private:
    tolmar::OutputFile file_;
    ElementKind kind_;
    UdaWriter& udas_;
    int number_ = 0;
    std::string text_;
};

// One element: its head, its attributes, its solids. Appends to `out`.
void writeHead(std::string& out, const EquipRecord& record, UdaWriter& udas, ElementKind kind);
// The first solid, the solids that cut it, the other solids. Nothing without a first solid.
void writeGroup(std::string& out, const PrimGroup& group);
