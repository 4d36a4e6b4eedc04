// References in balance, and what happens to callers that do not keep them.
#include "fixture.h"

namespace {

using HandlesTest = SceneTest;

TEST_F(HandlesTest, EveryReferenceThatIsGivenBackLeavesNothing) {
    const LiNwcGroup group = LiNwcGroupCreate();
    EXPECT_EQ(LiNwcNodeCreateRef(group), group);
    const LiNwcAttribute attribute = properties({{u"a", u"b"}});
    EXPECT_EQ(LiNwcAttributeCreateRef(attribute), attribute);
    EXPECT_EQ(LiNwcInspectLive(LI_NWC_NODE), 2U);
    EXPECT_EQ(LiNwcInspectLive(LI_NWC_ATTRIBUTE), 2U);
    EXPECT_EQ(LiNwcInspectLive(LI_NWC_DATA), 0U);
    LiNwcNodeAddAttribute(group, attribute);
    LiNwcAttributeDestroy(attribute);
    LiNwcAttributeDestroy(attribute);
    addToScene(group);
    // One reference is left, so the group can still be named.
    EXPECT_EQ(LiNwcNodeSetName(group, u"late"), LI_NWC_OK);
    EXPECT_EQ(LiNwcGroupDestroy(group), LI_NWC_OK);
    EXPECT_EQ(nodeOf(writeAndRead(), "late").extras,
              utf8(uR"({"attributes":[{"class":{"user":"Orna属性","internal":"OrnaProperty"},)"
                   uR"("properties":[{"key":"a","value":"b"}]}]})"));
    LiNwcSceneDestroy(scene);
    EXPECT_EQ(LiNwcApiTerminate(), LI_NWC_OK);
    const LiNwcBalance balance = LiNwcInspectBalance();
    EXPECT_EQ(balance.given, 6U);
    EXPECT_EQ(balance.returned, 6U);
    EXPECT_EQ(balance.left, 0U);
    EXPECT_EQ(balance.misused, 0U);
    EXPECT_TRUE(told.empty());
}

TEST_F(HandlesTest, ADeadHandleIsToldAndNeverFollowedEvenWhenItsPlaceIsTakenAgain) {
    const LiNwcGroup first = LiNwcGroupCreate();
    EXPECT_EQ(LiNwcGroupDestroy(first), LI_NWC_OK);
    EXPECT_EQ(LiNwcGroupDestroy(first), LI_NWC_BAD_HANDLE);
    const LiNwcGroup second = LiNwcGroupCreate();
    LiNwcNodeSetName(second, u"second");
    EXPECT_EQ(LiNwcNodeDestroy(first), LI_NWC_BAD_HANDLE);
    EXPECT_EQ(LiNwcNodeSetName(first, u"first"), LI_NWC_BAD_HANDLE);
    EXPECT_EQ(LiNwcGroupAddNode(second, first), LI_NWC_BAD_HANDLE);
    addToScene(second);
    EXPECT_EQ(treeOf(writeAndRead()), "second");
    ASSERT_EQ(told.size(), 4U);
    EXPECT_EQ(told[0], std::make_pair(int{LI_NWC_ERROR},
                                      std::string("LiNwcGroupDestroy: the handle is dead or of another kind")));
    EXPECT_EQ(LiNwcInspectBalance().misused, 4U);
}

TEST_F(HandlesTest, HandlesOfAnotherKindAndNullAreRefused) {
    const LiNwcData data = LiNwcDataCreate();
    const LiNwcGeometry shape = tetrahedron({0, 0, 0});
    const LiNwcMaterial material = LiNwcMaterialCreate();
    EXPECT_EQ(LiNwcNodeSetName(reinterpret_cast<LiNwcNode>(data), u""), LI_NWC_BAD_HANDLE);
    EXPECT_EQ(LiNwcNodeSetName(nullptr, u""), LI_NWC_BAD_HANDLE);
    EXPECT_EQ(LiNwcNodeSetName(reinterpret_cast<LiNwcNode>(&told), u""), LI_NWC_BAD_HANDLE);
    EXPECT_EQ(LiNwcGroupAddNode(shape, LiNwcGroupCreate()), LI_NWC_BAD_HANDLE);
    EXPECT_EQ(LiNwcGeometryOpenStream(LiNwcGroupCreate()), nullptr);
    EXPECT_EQ(LiNwcPropertyAttributeAddProperty(material, u"k", u"", data), LI_NWC_BAD_HANDLE);
    EXPECT_EQ(LiNwcMaterialSetTransparency(properties({}), 0.5), LI_NWC_BAD_HANDLE);
    EXPECT_EQ(LiNwcNodeCreateRef(nullptr), nullptr);
    EXPECT_EQ(LiNwcInspectBalance().misused, 8U);
}

TEST_F(HandlesTest, WhatIsStillOutAtTheEndIsCountedAndDeadAfterwards) {
    const LiNwcGroup group = LiNwcGroupCreate();
    const LiNwcGeometry shape = LiNwcGeometryCreate();
    LiNwcGeometryOpenStream(shape);
    LiNwcNodeDestroy(shape);
    LiNwcSceneDestroy(scene);
    EXPECT_EQ(LiNwcApiTerminate(), LI_NWC_OK);
    ASSERT_EQ(told.size(), 1U);
    EXPECT_EQ(told[0],
              std::make_pair(int{LI_NWC_WARNING}, std::string("LiNwcApiTerminate: 2 references were not given back")));
    EXPECT_EQ(LiNwcInspectBalance().left, 2U);
    EXPECT_EQ(LiNwcGroupDestroy(group), LI_NWC_BAD_ORDER);
    open();
    EXPECT_EQ(LiNwcGroupDestroy(group), LI_NWC_BAD_HANDLE);
}

TEST_F(HandlesTest, CallsAtTheWrongTimeAreRefused) {
    EXPECT_EQ(LiNwcApiInitialise(), LI_NWC_BAD_ORDER);
    const LiNwcGeometry shape = LiNwcGeometryCreate();
    const LiNwcGeometryStream stream = LiNwcGeometryOpenStream(shape);
    EXPECT_EQ(LiNwcGeometryOpenStream(shape), nullptr);
    EXPECT_EQ(LiNwcGeometryStreamIndexedVertex(stream, 0, 0, 0), LI_NWC_BAD_ORDER);
    EXPECT_EQ(LiNwcGeometryStreamEnd(stream), LI_NWC_BAD_ORDER);
    EXPECT_EQ(LiNwcGeometryStreamPopTransform(stream), LI_NWC_BAD_ORDER);
    EXPECT_EQ(LiNwcGeometryStreamBegin(stream, 0), LI_NWC_OK);
    EXPECT_EQ(LiNwcGeometryStreamBegin(stream, 0), LI_NWC_BAD_ORDER);
    EXPECT_EQ(LiNwcGeometryStreamAddText(stream, u"x"), LI_NWC_BAD_ORDER);
    EXPECT_EQ(LiNwcGeometryStreamColor(stream, 1, 0, 0, 0), LI_NWC_BAD_ORDER);
    EXPECT_EQ(LiNwcGeometryCloseStream(shape, stream), LI_NWC_BAD_ORDER);
    EXPECT_EQ(LiNwcGeometryStreamBegin(stream, 0), LI_NWC_BAD_HANDLE);
    // A scene may go before its nodes; they are nodes of nothing then.
    const LiNwcGroup group = LiNwcGroupCreate();
    LiNwcSceneAddNode(scene, group);
    LiNwcGroupAddNode(group, shape);
    LiNwcSceneDestroy(scene);
    EXPECT_EQ(LiNwcGeometryOpenStream(shape), nullptr);
    EXPECT_EQ(LiNwcGroupAddNode(group, shape), LI_NWC_BAD_VALUE);
    EXPECT_EQ(LiNwcGroupDestroy(group), LI_NWC_OK);
    EXPECT_EQ(LiNwcNodeDestroy(shape), LI_NWC_OK);
    EXPECT_EQ(LiNwcGroupCreate(), nullptr);
    EXPECT_EQ(LiNwcInspectBalance().left, 0U);
}

}  // namespace
