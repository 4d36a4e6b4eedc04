// SpecAttachSpec.pmlmac: the specification of the points where supports hang on components.
#pragma once

#include "platform/objects.h"

#include <string>
#include <vector>

class NameManager;

// `folder` ends with its separator. `connected`: what the supports are attached to; the first object of a row name
// stands for all. ExportException "文件 %1% 打开失败！".
void writeAttachmentSpec(const std::string& folder, NameManager& names,
                         const std::vector<const HxDbSmrtlnEntity*>& connected);
