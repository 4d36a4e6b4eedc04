// The macro files of sites, zones and grids.
#pragma once

#include "hextinterface/hextbasemethod/object_lists.h"

#include <map>
#include <string_view>
#include <vector>

class NameManager;

// Every site below a node with its zones, in id order of the sites and tree order of the zones.
using SiteZoneMap = std::map<HxDbObject*, std::vector<HxDbObject*>, ByObjectId>;
SiteZoneMap collectSites(HxDbTreeNode* treeRoot);

// Writes sitezone.txt into the working folder. A name too long is reported; below a further root it also throws
// ExportException "命名错误".
void writeSiteZoneFile(NameManager& names);

// Writes the grids to `path` (code page); does nothing but report when the file cannot be opened. Zone names come from
// `names`.
void writeGridFile(std::string_view path, const ObjectMap& grids, NameManager& names);
