// Branches: parts in order, tubes between them, points, connections, specifications.
#include "sources/rvm/rvm_writer.h"
#include "sources/rvm/told_review.h"

namespace {

struct Element {
    std::string name;
    std::string attributes;  // lines
};

// A pipe /P in a zone with one branch /P/B1 of these parts; no part has a group.
std::string pipeText(const std::string& branch, const std::vector<Element>& parts, const std::string& more = {}) {
    std::string text =
        "NEW /Z\nTYPE:=ZONE\nNEW /P\nTYPE:=PIPE\nPSPE:= /A1B\nTEMP:= 120degC\nNEW /P/B1\nTYPE:=BRAN\n" + branch;
    for (const Element& part : parts) {
        text += "NEW " + part.name + "\n" + part.attributes + "END\n";
    }
    return text + "END\nEND\n" + more + "END\n";
}

std::string emptyPipe() {
    return RvmWriter().group("/Z").group("/P").group("/P/B1").endGroup().endGroup().endGroup().finish();
}

const std::string branchFacts = "HPOS:= E 0 N 0 U 0\nTPOS:= E 2000 N 1000 U 0\nHBOR:= 50mm\nTBOR:= 50mm\n"
                                "HSTU:= /A1B/TUBE50\n";
const Element flange = {"/FL-1", "TYPE:=FLAN\nPOS:= E 500\nAPOS:= E 500\nLPOS:= E 560\nABORE:= 50\nLBORE:= 50\n"
                                 "SPRE:= /A1B/FLANGE50\nLSTU:= /A1B/TUBE50\n"};
const Element valve = {"/V-1", "TYPE:=VALV\nPOS:= E 650\nAPOS:= E 560\nLPOS:= E 740\nABORE:= 50\nLBORE:= 50\n"
                               "DTXR:= Ball valve\nSPRE:= /A1B/VALVE50\nORI:= Y is N and Z is U\n"};
const Element elbow = {"ELBOW 1 of BRANCH /P/B1",
                       "TYPE:=ELBO\nPOS:= E 2000\nAPOS:= E 1924\nLPOS:= E 2000 N 76\nABORE:= 50\nLBORE:= 50\n"
                       "ANGL:= 90deg\nRADI:= 75mm\nSPRE:= /A1B/ELBOW50\nLSTU:= /A1B/TUBE50\n"};

const ToldObject& partOf(const ToldReview& told, std::size_t at) {
    return *told.builder.find(told.builder.named("P").branches.at(0).at(at));
}

// "class item from > to" of each item of the first branch.
std::string chain(const ToldReview& told) {
    std::string text;
    const std::vector<plant::ObjectId>& items = told.builder.named("P").branches.at(0);
    for (std::size_t i = 0; i < items.size(); ++i) {
        const ToldObject& item = *told.builder.find(items[i]);
        text += item.attribute("item");
        for (const ToldPoint& point : item.points) {
            if (point.flow == 1 || point.flow == 2) {
                text += (point.flow == 1 ? " " : ">") + std::to_string(point.no);
                text +=
                    "(" + std::to_string(std::lround(point.at.x)) + "," + std::to_string(std::lround(point.at.y)) + ")";
            }
        }
        text += "\n";
    }
    return text;
}

void expectChained(const ToldReview& told) {
    const std::vector<plant::ObjectId>& items = told.builder.named("P").branches.at(0);
    for (std::size_t i = 0; i < items.size(); ++i) {
        for (const ToldPoint& point : told.builder.find(items[i])->points) {
            if (point.flow == 1 && i > 0) {
                EXPECT_EQ(point.to, std::vector<plant::ObjectId>{items[i - 1]}) << i;
            }
            if (point.flow == 2 && i + 1 < items.size() && point.no != 3) {
                EXPECT_EQ(point.to, std::vector<plant::ObjectId>{items[i + 1]}) << i;
            }
        }
    }
}

}  // namespace

TEST(ReviewPiping, TubesFillTheGapsAndPointsFollowTheFlow) {
    const ToldReview told(emptyPipe(), pipeText(branchFacts, {flange, valve, elbow}));
    EXPECT_EQ(told.refusal, "");
    EXPECT_EQ(chain(told), "PIPE 1(0,0)>2(500,0)\n"
                           "FLANGE 1(500,0)>2(560,0)\n"
                           "VALVE 1(560,0)>2(740,0)\n"
                           "PIPE 1(740,0)>2(1924,0)\n"
                           "ELBOW 1(1924,0)>3(2000,76)\n"
                           "PIPE 1(2000,76)>2(2000,1000)\n");
    const ToldObject& tube = partOf(told, 0);
    EXPECT_EQ(tube.className, "HxDbPipeSpec");
    EXPECT_EQ(tube.attribute("length"), "500");
    EXPECT_EQ(tube.attribute("specname"), "A1B");
    ASSERT_EQ(tube.primitives.size(), 1U);
    EXPECT_EQ(HextCylinder3D::cast(tube.primitives[0].get())->diameter, 50);
    expectChained(told);
}

TEST(ReviewPiping, PartsSayWhatTheyAreToTheExports) {
    const ToldReview told(emptyPipe(), pipeText(branchFacts, {flange, valve, elbow}));
    const ToldObject& first = partOf(told, 1);
    EXPECT_EQ(first.kind, plant::PartKind::Flange);
    EXPECT_EQ(first.attribute("end1"), "BW") << "its face turns to the valve";
    EXPECT_EQ(first.attribute("end2"), "FLRF");
    EXPECT_EQ(first.attribute("size1"), "50");
    EXPECT_EQ(first.attribute("tag"), "FL-1");
    EXPECT_EQ(first.attribute("lineno"), std::to_string(told.builder.named("P").id));
    EXPECT_EQ(first.attribute("SPRE"), "/A1B/FLANGE50") << "its own key stays";
    const ToldObject& second = partOf(told, 2);
    EXPECT_EQ(second.kind, plant::PartKind::Valve);
    EXPECT_EQ(second.attribute("itype"), "BALL");
    EXPECT_EQ(second.attribute("name"), "Ball valve");
    const ToldObject& bend = partOf(told, 4);
    EXPECT_EQ(bend.attribute("smrtln"), "Arc");
    EXPECT_EQ(bend.attribute("angle"), "90");
    EXPECT_EQ(bend.attribute("radius"), "1.5");
    EXPECT_EQ(bend.attribute("tag"), "(none)");
    ASSERT_NE(bend.point(0), nullptr);
    EXPECT_EQ(bend.point(0)->at.x, 2000);
    const ToldObject& specification = *told.builder.find(first.spec);
    EXPECT_EQ(specification.className, "HxDbTubeSpecification");
    EXPECT_EQ(specification.ends, (std::vector<std::pair<std::string, std::string>>{{"50", "BW"}, {"50", "FLRF"}}));
    EXPECT_EQ(first.attribute("specid"), std::to_string(first.spec));
    EXPECT_EQ(partOf(told, 0).spec, partOf(told, 3).spec) << "equal tubes share theirs";
    const ToldObject& pipe = told.builder.named("P");
    EXPECT_EQ(pipe.attribute("specname"), "A1B");
    EXPECT_EQ(pipe.attribute("insul"), "0");
    EXPECT_EQ(pipe.attribute("destemp"), "120");
    ASSERT_EQ(pipe.runs.size(), 1U);
    EXPECT_EQ(pipe.runs[0].name, "P/B1");
    EXPECT_EQ(pipe.runs[0].items, pipe.branches[0]);
    EXPECT_EQ(pipe.runs[0].attributes.at(0), (std::pair<std::string, std::string>("TYPE", "BRAN")));
}

TEST(ReviewPiping, CylindersOfTheBranchGoToTheirTubes) {
    Frame along = at(0.25, 0, 0);
    along.x = {0, 0, 0.001};
    along.y = {0, 0.001, 0};
    along.z = {-0.001, 0, 0};
    Frame upward = at(2, 0.538, 0);
    upward.y = {0, 0, 0.001};
    upward.z = {0, 0.001, 0};
    RvmWriter writer;
    writer.group("/Z").group("/P").group("/P/B1", 7);
    writer.primitive(8, {30, 500}, along).primitive(8, {60, 500}, along, "INSU").primitive(9, {5});
    writer.group("TUBE 1 of BRANCH /P/B1").primitive(8, {30, 924}, upward).endGroup();
    const ToldReview told(writer.endGroup().endGroup().endGroup().finish(),
                          pipeText(branchFacts, {flange, valve, elbow}));
    EXPECT_EQ(told.refusal, "");
    ASSERT_EQ(partOf(told, 0).primitives.size(), 2U);
    EXPECT_EQ(HextCylinder3D::cast(partOf(told, 0).primitives[0].get())->diameter, 60);
    EXPECT_STREQ(HextPrimary3D::cast(partOf(told, 0).primitives[1].get())->getMaterial(), obstructionMaterial);
    EXPECT_EQ(partOf(told, 0).color, 7);
    ASSERT_EQ(partOf(told, 5).primitives.size(), 1U);
    EXPECT_EQ(HextCylinder3D::cast(partOf(told, 5).primitives[0].get())->diameter, 60);
    const ToldObject& rest = told.builder.named("P/B1");
    EXPECT_EQ(rest.primitives.size(), 1U) << "the sphere lies on no tube";
    EXPECT_EQ(told.findings(), "review.group-folded 1, piping.tube-by-bore 1");
}

TEST(ReviewPiping, BranchesHangAtTeesAndNozzles) {
    const Element tee = {"/T-1",
                         "TYPE:=TEE\nREF:= =1/7\nPOS:= E 1000\nAPOS:= E 950\nLPOS:= E 1050\nARRI:= 1\nLEAV:= 2\n"
                         "ABORE:= 50\nLBORE:= 50\nCREF:= =1/9\n"};
    const std::string other = "NEW /Q\nTYPE:=PIPE\nNEW /Q/B1\nTYPE:=BRAN\nREF:= =1/9\nHPOS:= E 1000 N 60\n"
                              "TPOS:= E 1000 N 600\nHBOR:= 50\nHREF:= =1/7\nTREF:= /E/N1\nEND\nEND\n"
                              "NEW /E\nTYPE:=EQUI\nNEW /E/N1\nTYPE:=NOZZ\nPOS:= E 1000 N 600\nBORE:= 50\nEND\nEND\n";
    const ToldReview told(emptyPipe(), pipeText(branchFacts, {tee}, other));
    EXPECT_EQ(told.refusal, "");
    const ToldObject& fitting = told.builder.named("T-1");
    const ToldObject& tube = *told.builder.find(told.builder.named("Q").branches.at(0).at(0));
    ASSERT_NE(fitting.point(3), nullptr);
    EXPECT_LT(fitting.point(3)->at.distanceTo({1000, 60, 0}), 1e-9);
    EXPECT_EQ(fitting.point(3)->to, std::vector<plant::ObjectId>{tube.id});
    EXPECT_EQ(tube.point(1)->to, std::vector<plant::ObjectId>{fitting.id});
    const ToldObject& nozzle = told.builder.named("E/N1");
    EXPECT_EQ(tube.point(2)->to, std::vector<plant::ObjectId>{nozzle.id});
    ASSERT_NE(nozzle.point(2), nullptr);
    EXPECT_EQ(nozzle.point(2)->to, std::vector<plant::ObjectId>{tube.id});
    EXPECT_EQ(nozzle.attribute("eqno"), "E");
    EXPECT_EQ(nozzle.attribute("size1"), "50");
    expectChained(told);
}

TEST(ReviewPiping, FlowAgainstTheNumbersAndPartsWithoutLength) {
    const Element reversed = {"/V-2", "TYPE:=VALV\nAPOS:= E 500\nLPOS:= E 700\nARRI:= 2\nLEAV:= 1\nABORE:= 50\n"};
    const Element weld = {"WELD 1 of BRANCH /P/B1",
                          "TYPE:=WELD\nPOS:= E 900\nAPOS:= E 900\nLPOS:= E 900\nABORE:= 50\n"};
    const Element olet = {"OLET 1 of BRANCH /P/B1",
                          "TYPE:=OLET\nPOS:= E 1200\nAPOS:= E 1200\nLPOS:= E 1200\nABORE:= 50\n"};
    const ToldReview told(emptyPipe(), pipeText("HPOS:= E 0\nTPOS:= E 1500\nHBOR:=50\n", {reversed, weld, olet}));
    EXPECT_EQ(chain(told), "PIPE 1(0,0)>2(500,0)\n"
                           "VALVE 2(500,0)>1(700,0)\n"
                           "PIPE 1(700,0)>2(900,0)\n"
                           "WELD 1(900,0)>2(900,0)\n"
                           "PIPE 1(900,0)>2(1200,0)\n"
                           "OLET 1(1200,0)>2(1200,0)>3(1200,1)\n"
                           "PIPE 1(1200,0)>2(1500,0)\n");
    EXPECT_EQ(partOf(told, 3).className, "HxDbTubeWeld");
    for (const std::size_t at : {3U, 5U}) {
        const HxGeVector3D along = partOf(told, at).point(2)->at - partOf(told, at).point(1)->at;
        EXPECT_GT(along.x, 0.01) << "its ends stand apart, so that it has a direction";
        EXPECT_LT(along.length(), 0.1);
    }
}

TEST(ReviewPiping, EccentricReducersHaveAPointOnEitherAxis) {
    const Element reducer = {"/R", "TYPE:=REDU\nAPOS:= E 500\nLPOS:= E 600 U 20\nABORE:= 80\nLBORE:= 50\n"};
    const Element straight = {"/R2", "TYPE:=REDU\nAPOS:= E 900 U 20\nLPOS:= E 1000 U 20\nABORE:= 50\nLBORE:= 40\n"};
    const ToldReview told(emptyPipe(), pipeText("HPOS:= E 0\nTPOS:= E 1500 U 20\nHBOR:=80\n", {reducer, straight}));
    const ToldObject& eccentric = told.builder.named("R");
    EXPECT_EQ(eccentric.attribute("item"), "ERED");
    EXPECT_EQ(eccentric.attribute("size1"), "80");
    EXPECT_EQ(eccentric.attribute("size2"), "50");
    ASSERT_NE(eccentric.point(4), nullptr);
    EXPECT_LT(eccentric.point(3)->at.distanceTo({550, 0, 0}), 1e-9);
    EXPECT_LT(eccentric.point(4)->at.distanceTo({550, 0, 20}), 1e-9);
    EXPECT_EQ(told.builder.named("R2").attribute("item"), "CRED");
}

TEST(ReviewPiping, WithoutPositionsPartsAreKnownByClassAlone) {
    RvmWriter writer;
    writer.group("/Z").group("/P").group("/P/B1").group("FLANGE 1 of BRANCH /P/B1").primitive(8, {50, 20}).endGroup();
    const ToldReview told(writer.endGroup().endGroup().endGroup().finish(),
                          pipeText("HREF:= Nulref\n", {{"FLANGE 1 of BRANCH /P/B1", "TYPE:=FLAN\n"}}));
    const ToldObject& pipe = told.builder.named("P");
    EXPECT_TRUE(pipe.branches.empty());
    ASSERT_EQ(pipe.runs.size(), 1U);
    const ToldObject& part = *told.builder.find(pipe.runs[0].items.at(0));
    EXPECT_EQ(part.attribute("item"), "FLANGE");
    EXPECT_EQ(part.primitives.size(), 1U);
    EXPECT_TRUE(part.points.empty());
}

TEST(ReviewPiping, NonsenseNumbersOfPointsAndReferencesHurtNothing) {
    const Element odd = {"/X", "TYPE:=TEE\nAPOS:= E 10\nLPOS:= E 20\nARRI:= 3\nLEAV:= 3\nABORE:= -5\nCREF:= /P/B1\n"};
    const Element cross = {"/Y", "TYPE:=CROS\nAPOS:= E 30\nLPOS:= E 40\nARRI:= 4\nLEAV:= 2\nCREF:= nowhere\n"};
    const ToldReview told(emptyPipe(), pipeText("HPOS:= E 0\nTPOS:= E 50\nHREF:= /X\nTREF:= /P/B1\n", {odd, cross}));
    EXPECT_EQ(told.refusal, "");
    EXPECT_EQ(told.builder.named("P").branches.at(0).size(), 5U);
}
