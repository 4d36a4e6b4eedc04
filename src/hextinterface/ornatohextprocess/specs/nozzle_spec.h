// nozzleSpec.txt: the specifications of nozzles, one for each type, size and rating, with a row for each component.
#pragma once

#include "platform/objects.h"

#include <string>
#include <vector>

class NameManager;

// Opens, writes and closes the file. Nozzles of one row name share the row; one whose size has no bore is told to the
// run report. ExportException "参数中含有非管嘴元件！" when an object is no nozzle, before any line, and
// "文件 %1% 打开失败！".
void writeNozzleSpecs(const std::string& path, NameManager& names, const std::vector<HxDbNozzleModel*>& nozzles);
