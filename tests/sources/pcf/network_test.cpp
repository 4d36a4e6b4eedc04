// Parts of the samples as a network: what meets what, where pipes are parted, how the flow runs.
#include "sources/pcf/network.h"

#include "sources/pcf/text.h"
#include "support/files.h"

#include <filesystem>
#include <gtest/gtest.h>

namespace {

using namespace plant;
using namespace plant::pcf;

// A file with its network; both stay where they are.
struct Built {
    explicit Built(const std::string& text) {
        File& file = files.emplace_back();
        file.name = "line.pcf";
        file.stem = "line";
        file.text = decode(text).utf8;
        file.records = readRecords(file.text);
        Interpreter(file, settings, report).run();
        network.build();
    }
    static std::string sample(const char* name) {
        return fileBytes(std::filesystem::path(TESSARO_SOURCE_DIR) / "tests/sources/pcf/samples" / name);
    }
    // Items along each chain of a pipeline, such as "GASK FLANGE WELD PIPE".
    std::vector<std::string> items(std::size_t pipeline = 0) const {
        std::vector<std::string> all;
        for (const Chain& chain : network.chains()[pipeline]) {
            std::string& text = all.emplace_back();
            for (const Step& step : chain) {
                text += (text.empty() ? "" : " ") + network.knots()[step.part].part.type->item;
            }
        }
        return all;
    }
    const Knot& knot(const std::string& item, std::size_t which = 0) const {
        for (const Knot& one : network.knots()) {
            if (one.part.type->item == item && which-- == 0) {
                return one;
            }
        }
        throw std::runtime_error("no " + item);
    }
    std::uint64_t told(std::string_view code) const {
        for (const SourceFinding& finding : report.findings()) {
            if (finding.code == code) {
                return finding.count;
            }
        }
        return 0;
    }

    standards::Settings settings;
    SourceReport report;
    Files files;
    Network network{files, report};
};

const std::string head = "UNITS-BORE MM\nPIPELINE-REFERENCE L\n";

TEST(PcfNetwork, FollowsEveryBranchOfALineInTheOrderOfTheFile) {
    const Built built(Built::sample("full.pcf"));
    const std::vector<std::string> expected = {"GASK FLANGE WELD PIPE WELD ELBOW WELD PIPE OLET PIPE WELD TEE WELD "
                                               "PIPE CRED PIPE FLANGE GASK VALVE GASK FLANGE "
                                               "FLOWMETER STRAINER COUPLING UNION SIGHT CAP",
                                               "PIPE ELBOW PIPE VALVE FLANGE", "PIPE VALVE PLUG"};
    EXPECT_EQ(built.items(), expected);
    EXPECT_EQ(built.told("pcf.gap"), 0U);
    EXPECT_TRUE(built.report.isBalanced());
    const Knot& tee = built.knot("TEE");
    const Knot& olet = built.knot("OLET");
    ASSERT_TRUE(tee.mates[2].isThere());
    ASSERT_TRUE(olet.mates[2].isThere());
    EXPECT_EQ(built.network.knots()[tee.mates[2].part].part.ends[0].size.dn, 80);
    EXPECT_NEAR(olet.part.centre->z, 3000 + 152 + 900, 1e-9);
    EXPECT_NEAR(olet.part.ends[0].at.distanceTo(*olet.part.centre), olet.part.ends[1].at.distanceTo(*olet.part.centre),
                1e-9);
}

TEST(PcfNetwork, BridgesPartsWithoutLengthOrPlaceAndTellsGaps) {
    const Built built(Built::sample("lengthless.pcf"));
    EXPECT_EQ(built.items(), std::vector<std::string>{"PIPE CRED PIPE GASK FLANGE PIPE VALVE PIPE"});
    EXPECT_EQ(built.told("pcf.no-length"), 3U);
    EXPECT_EQ(built.told("pcf.no-place"), 1U);
    EXPECT_EQ(built.told("pcf.gap"), 2U);
    EXPECT_EQ(built.told("pcf.bore-missing"), 1U);
    for (const char* item : {"CRED", "GASK", "VALVE"}) {
        EXPECT_GT(built.knot(item).part.length(), 1) << item;
    }
    const Part& reducer = built.knot("CRED").part;
    const Part& pipe = built.knot("PIPE").part;
    EXPECT_LT(pipe.ends[1].at.distanceTo(reducer.ends[0].at), 1e-9) << "the pipe gives what the reducer takes";
    EXPECT_EQ(built.knot("FLANGE").part.ends[1].size.dn, 80) << "a bore of 0 is that of the neighbour";
}

TEST(PcfNetwork, TurnsALengthlessReducerSoThatItsBoresFit) {
    const Built built(head + "PIPE\n END-POINT 0 0 0 50\n END-POINT 500 0 0 50\n"
                             "REDUCER-CONCENTRIC\n END-POINT 500 0 0 80\n END-POINT 500 0 0 50\n"
                             "PIPE\n END-POINT 500 0 0 80\n END-POINT 900 0 0 80\n");
    const Knot& reducer = built.knot("CRED");
    ASSERT_TRUE(reducer.mates[0].isThere() && reducer.mates[1].isThere());
    EXPECT_EQ(built.network.knots()[reducer.mates[0].part].part.ends[0].size.dn, 80);
    EXPECT_EQ(built.network.knots()[reducer.mates[1].part].part.ends[0].size.dn, 50);
}

TEST(PcfNetwork, PartsAPipeForEachFootOnIt) {
    std::string text = head + "PIPE\n END-POINT 0 0 0 100\n END-POINT 3000 0 0 100\n";
    for (const int x : {2000, 500, 1000}) {
        text +=
            "OLET\n CENTRE-POINT " + std::to_string(x) + " 0 0\n BRANCH1-POINT " + std::to_string(x) + " 0 120 25\n";
    }
    const Built built(text);
    EXPECT_EQ(built.items(), std::vector<std::string>{"PIPE OLET PIPE OLET PIPE OLET PIPE"});
    double total = 0;
    for (const Knot& knot : built.network.knots()) {
        total += knot.part.length();
    }
    EXPECT_NEAR(total, 3000, 1e-6);
    EXPECT_EQ(built.told("pcf.olet-without-run"), 0U);
}

TEST(PcfNetwork, RunsAsTheFileGoesWhicheverWayItsPartsPoint) {
    const Built built(head + "PIPE\n END-POINT 500 0 0 50\n END-POINT 0 0 0 50\n"
                             "VALVE\n END-POINT 700 0 0 50\n END-POINT 500 0 0 50\n SKEY VBFL\n"
                             "PIPE\n END-POINT 700 0 0 50\n END-POINT 1000 0 0 50\n");
    const Chain& chain = built.network.chains()[0].at(0);
    ASSERT_EQ(chain.size(), 3U);
    EXPECT_EQ(chain[0].from, 1) << "the first pipe is entered at its second end";
    EXPECT_EQ(chain[1].from, 1);
    EXPECT_EQ(chain[2].from, 0);
    EXPECT_EQ(built.network.knots()[chain[0].part].part.ends[1].at.x, 0);
}

TEST(PcfNetwork, KeepsEndsApartThatDoNotBelongTogether) {
    const Built crossing(head + "PIPE\n END-POINT 0 0 0 50\n END-POINT 500 0 0 50\n"
                                "PIPE\n END-POINT 500 0 0 50\n END-POINT 900 0 0 50\n"
                                "PIPE\n END-POINT 500 0 0 50\n END-POINT 500 400 0 50\n");
    EXPECT_EQ(crossing.told("pcf.ends-meet"), 1U);
    EXPECT_EQ(crossing.items(), (std::vector<std::string>{"PIPE PIPE", "PIPE"}));
    const Built ring(head + "PIPE\n END-POINT 0 0 0 50\n END-POINT 500 0 0 50\n"
                            "PIPE\n END-POINT 500 0 0 50\n END-POINT 500 500 0 50\n"
                            "PIPE\n END-POINT 500 500 0 50\n END-POINT 0 0 0 50\n");
    EXPECT_EQ(ring.items(), std::vector<std::string>{"PIPE PIPE PIPE"});
}

TEST(PcfParts, ReadsBoresInchesCommasTabsAndOneEndedCaps) {
    const Built built(Built::sample("inch.pcf"));
    EXPECT_EQ(built.knot("PIPE").part.ends[0].size.dn, 50);
    EXPECT_EQ(built.knot("CAP").part.ends[0].size.dn, 40);
    EXPECT_NEAR(built.knot("ELBOW").part.centre->x, 1576, 1e-9);
    EXPECT_GT(built.knot("CAP").part.length(), 5) << "the far end of a cap is found";
    const Built outer(head + "PIPE\n END-POINT 0 0 0 114.3\n END-POINT 500 0 0 168.2\n");
    EXPECT_EQ(outer.knot("PIPE").part.ends[0].size.dn, 100) << "outer diameters are known as such";
    EXPECT_EQ(outer.knot("PIPE").part.ends[1].size.dn, 150);
}

TEST(PcfParts, TellsWhatItCannotTakeWithItsLine) {
    const Built built(Built::sample("odd.pcf"));
    EXPECT_EQ(built.told("pcf.ends-missing"), 3U);
    EXPECT_EQ(built.told("pcf.record-unknown"), 1U);
    EXPECT_EQ(built.told("pcf.component-unknown"), 1U);
    EXPECT_EQ(built.told("pcf.point-unreadable"), 1U);
    EXPECT_EQ(built.told("pcf.olet-without-run"), 1U);
    EXPECT_TRUE(built.report.isBalanced());
    for (const SourceFinding& finding : built.report.findings()) {
        if (finding.code == "pcf.record-unknown") {
            EXPECT_EQ(finding.first.at(0).place, "line.pcf: line 18");
            EXPECT_NE(finding.first.at(0).text.find("WARP-DRIVE"), std::string::npos);
        }
    }
}

TEST(PcfParts, ReadsOtherEncodingsAndSeveralPipelines) {
    const Built windows(Built::sample("windows.pcf"));
    EXPECT_EQ(windows.files[0].pipelines.at(0).name, "R\xC3\x96HRE-\xC3\x98");
    EXPECT_EQ(windows.files[0].pipelines[0].record->valueOf("ATTRIBUTE1"), "Gr\xC3\xBCn \xE2\x82\xAC");
    const Built two(Built::sample("two.pcf"));
    ASSERT_EQ(two.files[0].pipelines.size(), 2U);
    EXPECT_EQ(two.items(0), std::vector<std::string>{"PIPE"});
    EXPECT_EQ(two.items(1), std::vector<std::string>{"PIPE OLET PIPE"});
    EXPECT_EQ(two.files[0].pipelines[1].header.at(0)->value, "B1");
}

// Any cut and any changed byte: a network or nothing, never a crash.
TEST(PcfParts, TakesDamagedFiles) {
    const std::string text = Built::sample("full.pcf");
    for (std::size_t size = 0; size < text.size(); size += 7) {
        const Built cut(text.substr(0, size));
        EXPECT_TRUE(cut.report.isBalanced()) << size;
    }
    for (std::size_t at = 0; at < text.size(); at += 11) {
        for (const char c : {'9', '-', '\n', '\xFF', ' '}) {
            std::string changed = text;
            changed[at] = c;
            const Built built(changed);
            EXPECT_TRUE(built.report.isBalanced()) << at << " " << c;
        }
    }
}

}  // namespace
