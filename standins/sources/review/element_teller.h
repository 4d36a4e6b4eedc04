// The tree of a review model as world, sites, zones, managers and objects. The plant has these four levels above its
// objects; a level that a file lacks is put in, deeper groups of managers are flattened.
#pragma once

#include "sources/review/attribute_teller.h"
#include "sources/review/branch_teller.h"
#include "sources/review/file.h"
#include "sources/review/nozzle_teller.h"
#include "sources/review/piping.h"
#include "sources/review/shape_teller.h"
#include "sources/review/specifications.h"

#include <string>
#include <vector>

namespace plant::review {

class ElementTeller {
public:
    ElementTeller(File& file, Tree& tree, const Piping& piping, ModelBuilder& builder);

    // `siteName` names a site that is put in.
    void tell(ObjectId world, const std::string& siteName);

private:
    enum class Level : std::uint8_t { World, Site, Zone };
    // Where the next element goes. A zone that is put in serves all managers of its site.
    struct Place {
        Level level = Level::World;
        ObjectId id = 0;
        std::string name;
        ObjectId impliedZone = 0;
    };

    void tellNode(std::uint32_t number, Place& place);
    Role roleOf(const Node& node, const Place& place) const;
    void tellSons(std::uint32_t number, Place& place);
    void tellWorldNode(std::uint32_t number, Place& place);
    void tellContainer(std::uint32_t number, Role role, Place& place);
    void tellLoose(std::uint32_t number, Place& place);
    Place& siteOf(Place& place);
    ObjectId zoneOf(Place& place);
    ObjectId tellImplied(std::string_view className, ObjectId parent, const std::string& name);

    void tellManager(std::uint32_t number, Place& place);
    const TypeRow& managerRow(const Node& node) const;
    void tellManagerObject(std::uint32_t number, const TypeRow& row, ObjectId zone);
    void tellEquipmentFacts(const Node& node);
    void tellPipelineFacts(const Node& node, const Facts& facts);
    void tellBranches(std::uint32_t number);
    std::string runName(std::uint32_t branch, std::size_t at);
    Line lineOf(std::uint32_t number, const TypeRow& row);
    void tellContents(std::uint32_t number, const TypeRow& row);
    void collectOwn(std::uint32_t number, bool isDirect, bool isPipeline);
    bool isOwn(const Node& node, bool isDirect) const;
    bool hasBody(std::uint32_t group) const;
    void tellBody(std::uint32_t number, const TypeRow& row);
    void tellObject(std::uint32_t number, const TypeRow& row, std::uint32_t manager);
    void tellObjectFacts(std::uint32_t number, const TypeRow& row, std::string_view className);
    void tellFolded(std::uint32_t number);

    Facts factsOf(const Node& node) const;
    std::string nameOf(const Node& node);
    bool hasClass(const Node& node) const;
    void take(const Node& node);

    File& file_;
    Tree& tree_;
    const Piping& piping_;
    ModelBuilder& builder_;
    ShapeTeller shapes_;
    AttributeTeller attributes_;
    Specifications specifications_;
    BranchTeller branches_;
    NozzleTeller nozzles_;
    Place implied_;  // the site that is put in
    std::string siteName_;
    TextDecoder texts_;
    std::vector<bool> isOwnGroup_;
    std::vector<std::uint32_t> objects_;  // of the manager in hand, in order
    std::vector<std::uint32_t> branchNodes_;
    std::vector<std::string> runNames_;
};

}  // namespace plant::review
