// TempSpecGenerator.txt: the specifications of insulation, one for each code, with a row for each thickness.
#pragma once

#include <string>

class NameManager;

// Opens, writes and closes the file. The rows come from the insulation table of the names, with the temperatures and
// sizes that each was met with; the names of the specifications join createdIspecs(). ExportException
// "文件 %1% 打开失败！".
void writeInsulationSpecs(const std::string& path, NameManager& names);
