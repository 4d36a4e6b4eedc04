#include "hextinterface/ornatohextprocess/design/site_zone.h"

#include "frame/exceptions.h"
#include "hextinterface/hextbasemethod/macro_text.h"
#include "hextinterface/hextbasemethod/object_tests.h"
#include "hextinterface/manager/name_manager.h"
#include "platform/hxcom.h"
#include "platform/left_out.h"
#include "platform/tree_walker.h"
#include "tolmar/file.h"
#include "tolmar/text.h"

#include <unordered_set>

namespace {

constexpr const char* siteZonePath = "\\temp\\hext\\sitezone.txt";

enum class NameRule { Report, Refuse };

std::vector<HxDbObject*> zonesOf(const HxDbTreeNode* site) {
    std::vector<HxDbObject*> zones;
    NodeSet met;
    for (const HxDbTreeNode* son = site->getSon(); son != nullptr && met.insert(son).second; son = son->getBrother()) {
        if (HxDbObject* zone = objectOf(*son)) {
            zones.push_back(zone);
        } else {
            reportLeftOut({son->getTreeNodeValue(), "", "zone"}, "cannot be opened");
        }
    }
    return zones;
}

void testLength(const char* kind, const std::string& name, NameRule rule) {
    if (name.size() <= maxNameLength) {
        return;
    }
    hxcad::hextPrintf("Error:create %s name<%s> too long", kind, name.c_str());
    if (rule == NameRule::Refuse) {
        throw ExportException("命名错误");
    }
}

void appendSiteLine(std::string& out, const std::string& site) {
    out.append("!!ORNACommonCreateSite('").append(site).append("')\n");
}

void appendZoneLine(std::string& out, const std::string& site, const std::string& zone) {
    out.append("!!ORNACommonCreateZone('").append(site).append("','").append(zone).append("','Piping')\n");
}

void writeSites(tolmar::OutputFile& file, const SiteZoneMap& sites, NameManager& names, NameRule rule) {
    std::string line;
    for (const auto& [site, zones] : sites) {
        line.clear();
        const std::string siteName = names.owners.getSiteName(site);
        testLength("site", siteName, rule);
        appendSiteLine(line, siteName);
        file.write(line);
        for (const HxDbObject* zone : zones) {
            line.clear();
            const std::string zoneName = names.owners.getZoneName(zone);
            testLength("zone", zoneName, rule);
            appendZoneLine(line, siteName, zoneName);
            file.write(line);
        }
    }
}

// The lines of a grid's head. %1% stands for the zone's name, # for the grid's number.
constexpr std::string_view gridHead[] = {
    "OLD /%1%",
    "",
    "",
    "NEW STRU /ORGridSys#",
    "OLD /ORGridSys#",
    "ORI Y is N and Z is U  ",
    "POS E 0mm N 0mm U 0mm",
    "NEW FRMW /ORGrid#",
    "OLD /ORGrid#",
    "DESC 'ORNAGrid'",
    "FUNC 'SYSTEM'",
    "PURP GRID",
    "NEW SBFR /ORGrid#/1",
    "OLD /ORGrid#/1",
    "FUNC 'LEVEL'",
    "PURP GRID",
};

void appendGridHead(std::string& out, const std::string& zone, const std::string& number) {
    for (const std::string_view line : gridHead) {
        for (const char c : line.substr(0, line.find("%1%"))) {
            c == '#' ? out.append(number) : out.append(1, c);
        }
        if (line.find("%1%") != std::string_view::npos) {
            out += zone;
        }
        out += '\n';
    }
}

using KeyPoints = std::vector<std::pair<short, HxGePoint3D>>;

void appendAxisLine(std::string& out, const std::string& name, const KeyPoints& points) {
    out.append("NEW SCTN ").append(name).append("\nOLD ").append(name).append("\nPOSS ");
    appendPosition(out, points[0].second);
    out += "\nPOSE ";
    appendPosition(out, points[1].second);
    out += '\n';
}

void appendAxisLines(std::string& out, const ObjectList& objects, const std::string& number) {
    KeyPoints points;
    for (std::size_t k = 0; k < objects.size(); ++k) {
        const HxDbAxissLine* axis = HxDbAxissLine::cast(objects[k]);
        if (axis == nullptr) {
            reportLeftOut({objects[k], "", "grid object"}, "is no axis line");
            continue;
        }
        axis->getKeyPoints(points);
        if (points.size() < 2) {
            reportLeftOut({axis, tolmar::textOrEmpty(axis->getNo()), "axis line"}, "has fewer than two key points");
            continue;
        }
        appendAxisLine(out, "/ORGrid" + number + "/1/AL" + std::to_string(k), points);
    }
}

}  // namespace

SiteZoneMap collectSites(HxDbTreeNode* treeRoot) {
    SiteZoneMap sites;
    for (TreeWalker walker(treeRoot); !walker.done(); walker.next()) {
        HxDbTreeNode* node = walker.current();
        HxDbObject* object = objectOf(*node);
        if (object != nullptr && object->isKindOf(HextSite::desc())) {
            walker.skipChildren();
            sites.emplace(object, zonesOf(node));
        }
    }
    return sites;
}

void writeSiteZoneFile(NameManager& names) {
    tolmar::OutputFile file(HextSystem::getFullHextName(siteZonePath), tolmar::FileMode::Text);
    writeSites(file, collectSites(hxcom::getDataManTreeRoot()), names, NameRule::Report);
    std::vector<HxDbObject*> others;
    hxcom::getTreeRootOfOther(others);
    for (HxDbObject* other : others) {
        writeSites(file, collectSites(HxDbTreeNode::cast(other)), names, NameRule::Refuse);
    }
    file.close();
}

void writeGridFile(std::string_view path, const ObjectMap& grids, NameManager& names) {
    tolmar::OutputFile file(path, tolmar::FileMode::Text);
    if (!file.isOpen()) {
        return;
    }
    std::string text;
    int gridNo = 0;
    for (const auto& [container, objects] : grids) {
        text.clear();
        const std::string number = std::to_string(gridNo++);
        appendGridHead(text, names.owners.getZoneNameOf(container, names.owners.getDbZoneName(ExportDb::EquipStru)),
                       number);
        appendAxisLines(text, objects, number);
        text += "\n\n\n";
        file.write(text);
    }
    file.close();
}
