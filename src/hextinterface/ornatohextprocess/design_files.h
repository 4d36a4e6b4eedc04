// The macro files of equipment, structures and supports.
#pragma once

#include "hextinterface/ornatohextprocess/design_records.h"

#include <string_view>

// Each writes one file at a path in the code page; a file that cannot be opened is left out. The writers give the
// elements their final names. ExportException "命名错误" for a name too long and "设备命名冲突" for equipment of one
// final name end the file where it stands.
void writeEquipFile(DesignMacroSet& set, std::string_view path);
void writeStructFile(DesignMacroSet& set, std::string_view path);
void writeSupportFile(DesignMacroSet& set, std::string_view path);

enum class ElementKind { Equipment, Structure, Support };

// One element: its head, its attributes, its solids. Appends to `out`.
void writeHead(std::string& out, const EquipRecord& record, UdaWriter& udas, ElementKind kind);
// The first solid, the solids that cut it, the other solids. Nothing without a first solid.
void writeGroup(std::string& out, const PrimGroup& group);
