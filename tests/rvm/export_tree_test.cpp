#include "rvm/export_tree.h"

#include "exportbase/manager_contents.h"
#include "platform/hxcom.h"
#include "support/test_support.h"

namespace {

using namespace rvm;
using Entry = ExportDataDlg::NodeSelection::Entry;

HxDbTreeNode* nodeOf(std::int64_t object) {
    std::vector<HxDbTreeNode*> open{hxcom::getDataManTreeRoot()};
    std::vector<HxDbObject*> others;
    hxcom::getTreeRootOfOther(others);
    for (HxDbObject* other : others) {
        open.push_back(HxDbTreeNode::cast(other));
    }
    while (!open.empty()) {
        HxDbTreeNode* node = open.back();
        open.pop_back();
        if (node == nullptr) {
            continue;
        }
        if (node->getTreeNodeValue().toInt() == object) {
            return node;
        }
        open.push_back(node->getBrother());
        open.push_back(node->getSon());
    }
    throw std::runtime_error("no such node");
}

// "level:id(children)" of a node; an absent object is 0.
std::string print(const RvmNode* node) {
    if (node == nullptr) {
        return "none";
    }
    std::string text = std::to_string(node->level) + ":" +
                       std::to_string(node->object != nullptr ? node->object->objectId().toInt() : 0);
    for (const RvmNode* child : node->children) {
        text += (child == node->children.front() ? "(" : " ") + print(child);
    }
    return node->children.empty() ? text : text + ")";
}

class Tree : public testing::Test {
protected:
    // Builds from a data tree's root with some objects unchecked.
    std::string build(const std::string& objects, const std::vector<std::int64_t>& unchecked = {},
                      std::int64_t from = 1) {
        model.reset();
        model = std::make_unique<TestModel>(TestModel::withObjects(objects));
        std::vector<Entry> entries;
        for (const std::int64_t id : unchecked) {
            entries.emplace_back(nodeOf(id)->objectId(), false);
        }
        selection.assign(entries);
        tree = std::make_unique<RvmTree>(selection);
        return print(tree->buildTree(nodeOf(from)));
    }
    TestRoot root;
    std::unique_ptr<TestModel> model;
    ExportDataDlg::NodeSelection selection;
    std::unique_ptr<RvmTree> tree;
};

std::string object(int id, const char* type, int in) {
    return R"({"id":)" + std::to_string(id) + R"(,"class":")" + type + R"(","in":)" + std::to_string(in) +
           R"(,"name":"n"})";
}

template <typename... Objects>
std::string objects(const Objects&... rest) {
    std::string text;
    ((text += (text.empty() ? "" : ",") + std::string(rest)), ...);
    return text;
}

TEST_F(Tree, HoldsSitesZonesAndManagersInTreeOrder) {
    EXPECT_EQ(build(objects(object(2, "HextSite", 1), object(3, "HextZone", 2), object(4, "HextPipeline", 3),
                            object(5, "HxDbPipeSpec", 4), object(6, "HextEquipe", 3), object(7, "HextStdFloor", 2),
                            object(8, "HextSite", 1))),
              "0:1(1:2(2:3(3:4 3:6) 2:7) 1:8)");
    EXPECT_EQ(tree->count(1), 2U);
    EXPECT_EQ(tree->count(2), 2U);
    EXPECT_EQ(tree->count(3), 2U);
    EXPECT_EQ(passedOverIds(), "") << "what stands below a manager is its content";
}

TEST_F(Tree, PassesOverWhatIsUnchecked) {
    const std::string plant = objects(object(2, "HextSite", 1), object(3, "HextZone", 2), object(4, "HextPipeline", 3),
                                      object(5, "HextPipeline", 3), object(6, "HextSite", 1), object(7, "HextZone", 6));
    EXPECT_EQ(build(plant, {4, 6}), "0:1(1:2(2:3(3:5)))");
    EXPECT_EQ(build(plant, {2}), "0:1(1:6(2:7))");
    EXPECT_EQ(build(plant, {1}), "none");
    EXPECT_EQ(passedOverIds(), "");
}

TEST_F(Tree, ManagersBelowADirectoryHangUnderItsZone) {
    EXPECT_EQ(build(objects(object(2, "HextSite", 1), object(3, "HextZone", 2), object(4, "HextZoneDirectory", 3),
                            object(5, "HextPipeline", 4), object(6, "HextZoneDirectory", 4),
                            object(7, "HextPipeline", 6), object(8, "HextEquipe", 3))),
              "0:1(1:2(2:3(3:5 3:7 3:8)))");
}

// Else the objects beside it would be managers of their own and go out twice.
TEST_F(Tree, WhatStandsBelowAManagerIsItsContent) {
    for (const char* type : {"HextZoneDirectory", "HextZone", "HextSite", "HextEquipe"}) {
        EXPECT_EQ(build(objects(object(2, "HextSite", 1), object(3, "HextZone", 2), object(4, "HextPipeline", 3),
                                object(5, type, 4), object(6, "HextPipeline", 5), object(7, "HxDbPipeSpec", 4))),
                  "0:1(1:2(2:3(3:4)))")
            << type;
    }
    EXPECT_EQ(passedOverIds(), "");
}

TEST_F(Tree, ManagersStandAtTheirDepthAlone) {
    EXPECT_EQ(build(objects(object(2, "HextSite", 1), object(3, "HextZone", 2), object(4, "HextPipeline", 2),
                            object(5, "HextUnit", 3), object(6, "HextPipeline", 5))),
              "0:1(1:2(2:3(3:5)))");
    EXPECT_EQ(passedOverIds(), "4 ");
}

TEST_F(Tree, ARowEndsAtAMisplacedHead) {
    EXPECT_EQ(build(objects(object(2, "HextItem", 1), object(3, "HextSite", 1), object(4, "HextZone", 3))), "0:1");
    EXPECT_EQ(passedOverIds(), "2 3 ") << "all that is lost is told";
    tolmar::runReport().clear();
    EXPECT_EQ(build(objects(object(2, "HextSite", 1), object(3, "HextItem", 1), object(4, "HextSite", 1))),
              "0:1(1:2 1:4)");
    EXPECT_EQ(passedOverIds(), "3 ");
    EXPECT_EQ(build(objects(object(2, "HextItem", 1), object(3, "HextSite", 1), object(4, "HextItem", 1)), {2}),
              "0:1(1:3)")
        << "an unchecked head ends no row";
}

TEST_F(Tree, MissingAncestorsAreMadeUpFromTheParents) {
    const std::string plant =
        objects(object(2, "HextSite", 1), object(3, "HextZone", 2), object(4, "HextPipeline", 3),
                object(5, "HextZone", 2), object(6, "HextZoneDirectory", 5), object(7, "HextPipeline", 6));
    EXPECT_EQ(build(plant, {}, 2), "0:1(1:2(2:3(3:4) 2:5(3:7)))");
    EXPECT_EQ(build(plant, {}, 3), "0:1(1:2(2:3(3:4)))");
    EXPECT_EQ(build(plant, {}, 4), "0:1(1:2(2:3(3:4)))");
    EXPECT_EQ(build(plant, {}, 6), "0:1(1:2(2:5(3:7)))");
}

TEST_F(Tree, ALoopEnds) {
    const std::string plant = objects(object(2, "HextSite", 1), object(3, "HextZone", 2),
                                      object(4, "HextZoneDirectory", 3), object(5, "HextPipeline", 4));
    build(plant);
    plant::relinkSon(model->model(), *nodeOf(4), nodeOf(3));
    EXPECT_EQ(print(RvmTree(selection).buildTree(nodeOf(1))), "0:1(1:2(2:3))");
    EXPECT_EQ(passedOverIds(), "3 ");
    for (const std::vector<std::int64_t>& unchecked : {std::vector<std::int64_t>{}, {5}, {6}}) {
        build(plant + "," + object(6, "HextPipeline", 3), unchecked);
        plant::relinkBrother(model->model(), *nodeOf(6), nodeOf(4));
        plant::relinkBrother(model->model(), *nodeOf(5), nodeOf(5));
        const bool has5 = unchecked != std::vector<std::int64_t>{5};
        const bool has6 = unchecked != std::vector<std::int64_t>{6};
        EXPECT_EQ(print(RvmTree(selection).buildTree(nodeOf(1))), std::string("0:1(1:2(2:3(") + (has5 ? "3:5" : "") +
                                                                      (has5 && has6 ? " " : "") + (has6 ? "3:6" : "") +
                                                                      ")))");
    }
    // A row without a place is listed once round.
    build(object(2, "HextItem", 1) + "," + object(3, "HextItem", 1));
    plant::relinkBrother(model->model(), *nodeOf(3), nodeOf(2));
    EXPECT_EQ(print(RvmTree(selection).buildTree(nodeOf(1))), "0:1");
}

TEST_F(Tree, DirectoriesMayStandInDirectories) {
    std::string plant = object(2, "HextSite", 1) + "," + object(3, "HextZone", 2);
    constexpr int deepest = 199;  // as deep as a model may be
    for (int id = 4; id < deepest; ++id) {
        plant += "," + object(id, "HextZoneDirectory", id - 1);
    }
    plant += "," + object(deepest, "HextEquipe", deepest - 1);
    EXPECT_EQ(build(plant), "0:1(1:2(2:3(3:" + std::to_string(deepest) + ")))");
}

// --------------------------------------------------------------------------------------------------------- contents

std::string contents(std::int64_t manager, const std::vector<std::int64_t>& unchecked = {}) {
    const auto isSelected = [&](const HxDbTreeNode* node) {
        return std::find(unchecked.begin(), unchecked.end(), node->getTreeNodeValue().toInt()) == unchecked.end();
    };
    HxDbTreeNode* node = nodeOf(manager);
    std::string text;
    for (const ContentPart& part : managerContents(openAs<HxDbObject>(HxDbObjectId(manager)), node, isSelected)) {
        text += std::to_string(part.id.toInt()) + ":";
        for (const HxDbObject* member : part.objects) {
            text += " " + std::to_string(member->objectId().toInt());
        }
        text += "; ";
    }
    return text;
}

TEST_F(Tree, AManagerWithoutManagersBelowIsOnePart) {
    build(objects(object(2, "HextSite", 1), object(3, "HextZone", 2), object(4, "HextEquipe", 3),
                  object(5, "HxDbEquipment", 4), object(6, "HxDbNozzleModel", 5), object(7, "HxDbEquipment", 4)));
    EXPECT_EQ(contents(4), "4: 5 6 7; ");
    EXPECT_EQ(contents(4, {5}), "4: 5 6 7; ") << "objects are not chosen one by one";
}

TEST_F(Tree, ManagersBelowAManagerArePartsOfTheirOwn) {
    for (const char* type : {"HextEquipe", "HextStruct", "HextSupport"}) {
        tolmar::runReport().clear();
        build(objects(object(2, "HextSite", 1), object(3, "HextZone", 2), object(4, type, 3),
                      object(5, "HxDbEquipment", 4), object(6, type, 4), object(7, "HxDbEquipment", 6),
                      object(8, type, 6), object(9, "HxDbEquipment", 8), object(10, "HxDbEquipment", 6),
                      object(11, type, 4), object(12, "HxDbEquipment", 11)));
        const bool hasOwn = std::string(type) == "HextEquipe";
        EXPECT_EQ(contents(4), std::string(hasOwn ? "4: 5; " : "4:; ") + "6: 7 10; 8: 9; 11: 12; ") << type;
        EXPECT_EQ(passedOverIds(), hasOwn ? "" : "5 ");
        EXPECT_EQ(contents(4, {6}), std::string(hasOwn ? "4: 5; " : "4:; ") + "8: 9; 11: 12; ");
    }
}

}  // namespace
