// SpecSupportSpec.pmlmac: the specification of supports, one row for each kind of support.
#pragma once

#include "platform/objects.h"

#include <string>
#include <vector>

class NameManager;

// `folder` ends with its separator. There has to be a support. One that is connected to nothing has no size and no row,
// and is told to the run report. ExportException "文件 %1% 打开失败！".
void writeSupportSpec(const std::string& folder, NameManager& names, const std::vector<HxDbSupportModel*>& supports);
