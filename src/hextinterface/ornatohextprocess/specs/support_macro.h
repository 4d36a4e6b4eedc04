// What the specification tables of supports and of their attachments share: both are macros of the Spec database, named
// in one list, with the same head and columns.
#pragma once

#include "hextinterface/ornatohextprocess/specs/file.h"

#include <string>
#include <string_view>

// Opens <folder>Spec<file> after naming it in <folder>SpecExecute.mac.tpl, which grows by a line. The folder ends with
// its separator. ExportException "文件 %1% 打开失败！".
SpecFile openSpecMacro(const std::string& folder, const char* fileName, const NameManager& names);

// The specification's name and what it holds before its first heading.
void writePipingHead(SpecFile& out, NameManager& names, const std::string& name);

inline constexpr std::string_view supportColumns = "TYPE  NAME  PBOR0  STYP  CATREF  DETAIL  MATXT  CMPREF  BLTREF";
// An argument of a row that refers to nothing.
inline constexpr std::string_view noReference = "  =0";
