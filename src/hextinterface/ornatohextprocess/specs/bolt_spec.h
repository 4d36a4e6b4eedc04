// BoltSpec.txt: the specifications of bolts, each with a row for every bolt and nut that a flange asks for; and
// BoltSpcoUdaSet.txt, the user attributes of the rows.
#pragma once

#include "platform/objects.h"

#include <string>
#include <vector>

class NameManager;

// Opens, writes and closes both files. A bolt set without bolt, nut or flange record is told to the run report.
// ExportException "文件 %1% 打开失败！".
void writeBoltSpecs(const std::string& specPath, const std::string& udaPath, NameManager& names,
                    const std::vector<HxDbBoltNutModel*>& boltSets);
