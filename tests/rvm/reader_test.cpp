// The checker itself: whole files pass, and every kind of damage is found.
#include "support.h"

#include "readers/utf8.h"
#include "support/test_support.h"

#include <functional>

namespace {

struct Sample {
    std::string rvmBytes;
    std::string text = "CADC_Attributes_File v1.0 , start: NEW , end: END , name_end: := , sep: &end&\r\n"
                       "NEW Header Information\r\n"
                       "\tSource:= Orna Data &end& Date:= 12 Sep 2020 &end& Time:= 17:48\r\n"
                       "\tProject:=p &end& MDB:=d &end& Element:=All\r\nEND\r\n"
                       "NEW W\r\nNEW S\r\na:=  1\r\n\tNEW Z\r\n\t\tNEW M\r\n\t\t\tNEW O\r\n\t\t\tEND\r\n\t\tEND\r\n"
                       "\tEND\r\nEND\r\n";

    Sample() {
        tolmar::OutputFile file = memoryFile(rvmBytes);
        rvm::RvmFile out(file);
        out.writeHeader("p", "d");
        for (const char* name : {"W", "S", "Z", "M", "O"}) {
            out.writeGroupBegin(name, 1);
        }
        const rvm::Matrix matrix = rvm::facetMatrix();
        out.writeGroupBegin("P1", 1);
        out.writePrimitiveHead({rvm::kindSphere, false, &matrix, {}, 4});
        out.writeFloat(1);
        for (int i = 0; i < 6; ++i) {
            out.writeGroupEnd();
        }
        out.writeEnd();
        out.flush();
        file.close();
    }
    std::string check() const {
        readers::Findings findings;
        const auto rvm = readers::rvm::readRvm(rvmBytes, findings);
        const auto attributes = readers::rvm::readAttributes(text, findings);
        if (findings.empty()) {
            check::rvmPair(rvm, attributes, findings);
        }
        return allFindings(findings);
    }
    void replace(const std::string& old, const std::string& with) {
        const std::size_t at = text.find(old);
        ASSERT_NE(at, std::string::npos);
        text.replace(at, old.size(), with);
    }
};

TEST(RvmReader, TakesAWholePair) {
    EXPECT_EQ(Sample().check(), "");
}

// The indent goes by the kind of element, not by how deep it stands.
TEST(RvmReader, TakesSitesAndZonesWithinOneAnother) {
    Sample sample;
    sample.replace("\tNEW Z\r\n", "\tNEW Z\r\n\tNEW Z2\r\n\tEND\r\nNEW S2\r\nEND\r\n");
    readers::Findings findings;
    const auto attributes = readers::rvm::readAttributes(sample.text, findings);
    EXPECT_EQ(allFindings(findings), "");
    EXPECT_EQ(attributes.elements.at(2).children.size(), 3U);
    sample.replace("\t\tNEW M", "\t\tNEW M\r\n\t\tNEW M\r\n\t\tEND");
    readers::rvm::readAttributes(sample.text, findings);
    EXPECT_EQ(findings.size(), 1U) << allFindings(findings);
}

TEST(RvmReader, FindsEveryTruncation) {
    const Sample whole;
    for (std::size_t size = 0; size < whole.rvmBytes.size(); ++size) {
        Sample cut;
        cut.rvmBytes.resize(size);
        EXPECT_NE(cut.check(), "") << size;
    }
    for (std::size_t size = 1; size < whole.text.size(); ++size) {
        Sample cut;
        cut.text.resize(size);
        EXPECT_NE(cut.check(), "") << size;
    }
}

// Bytes that mean nothing to the structure may change: texts of HEAD, names of project and database, a material, a
// translation, numbers of a primitive. All others are noticed.
TEST(RvmReader, FindsChangedBytesOfTheStructure) {
    const Sample whole;
    std::size_t unnoticed = 0;
    for (std::size_t at = 0; at < whole.rvmBytes.size(); ++at) {
        Sample changed;
        changed.rvmBytes[at] = static_cast<char>(changed.rvmBytes[at] ^ 0x40);
        unnoticed += changed.check().empty() ? 1 : 0;
    }
    constexpr std::size_t headTexts = 80 + 24 + 20 + 3;
    constexpr std::size_t names = 2 * 4;
    constexpr std::size_t groups = 6 * (12 + 4);
    constexpr std::size_t primitive = (12 + 6 + 1) * 4;
    EXPECT_LE(unnoticed, headTexts + names + groups + primitive + 8);
    EXPECT_GT(unnoticed, 0U);
}

TEST(RvmReader, FindsTreesThatDiffer) {
    const std::pair<const char*, const char*> changes[] = {{"NEW O\r", "NEW Q\r"},
                                                           {"NEW M\r", "NEW N\r"},
                                                           {"NEW Z\r", "NEW Y\r"},
                                                           {"NEW W\r", "NEW V\r"},
                                                           {"\t\t\tNEW O\r\n\t\t\tEND\r\n", ""},
                                                           {"\t\t\tNEW O", "\t\t\tNEW O\r\n\t\t\tEND\r\n\t\t\tNEW O"},
                                                           {"a:=  1", "a: 1"},
                                                           {"a:=", "\ta:="},
                                                           {"\tNEW Z", "NEW Z"},
                                                           {"a:=  1\r\n", "a:=  1\n"},
                                                           {"a:=  1", "a:=  \xFF"},
                                                           {"\tEND\r\nEND\r\n", "\tEND\r\n"},
                                                           {"Element:=All", "Element:=None"}};
    for (const auto& [old, with] : changes) {
        Sample sample;
        sample.replace(old, with);
        EXPECT_NE(sample.check(), "") << old << " -> " << with;
    }
}

TEST(RvmReader, FindsWhatAStrictReaderRefuses) {
    Sample strict;
    strict.replace("\tEND\r\nEND\r\n", "\tEND\r\nEND\r\nEND\r\n");
    readers::Findings findings;
    readers::rvm::RvmContent good = readers::rvm::readRvm(strict.rvmBytes, findings);
    const readers::rvm::AttributeContent text = readers::rvm::readAttributes(strict.text, findings);
    good.primitives.at(0).box = {-0.5F, -0.5F, -0.5F, 0.5F, 0.5F, 0.5F};
    check::rvmStrictForm(good, text, findings);
    EXPECT_EQ(allFindings(findings), "");
    // What is a point has a point for its box.
    readers::rvm::RvmContent points = good;
    points.primitives[0] = {.kind = 4, .box = {3, 0, 0, 3, 0, 0}, .parameters = {3}, .parameterCount = 3};
    points.primitives.push_back({.kind = 11, .box = {1, 1, 1, 1, 1, 1}, .triangles = 2, .extent = {1, 1, 1, 1, 1, 1}});
    check::rvmStrictForm(points, text, findings);
    EXPECT_EQ(allFindings(findings), "");
    using Rvm = readers::rvm::RvmContent;
    using Text = readers::rvm::AttributeContent;
    const std::function<void(Rvm&, Text&)> faults[] = {
        [](Rvm&, Text& t) { t.elements[0].isClosed = false; },
        [](Rvm& r, Text&) { r.primitives[0].parameters[0] = 0.5F; },  // the radius
        [](Rvm& r, Text&) { r.primitives[0].box = {}; },
        [](Rvm& r, Text&) {
            r.primitives[0] = {.kind = 4, .box = {3, 0, 0, 3, 0, 0}, .parameters = {3, 1, 1}, .parameterCount = 3};
        },
        [](Rvm& r, Text&) {
            r.primitives[0] = {.kind = 11, .box = {0, 0, 0, 1, 1, 0}, .triangles = 1, .extent = {0, 0, 0, 1, 2, 0}};
        },
        [](Rvm& r, Text&) { r.project = "\xB9"; },
        [](Rvm& r, Text&) {
            r.groups[2].children = {3, 3};
        },
        [](Rvm&, Text& t) {
            t.elements[2].children = {3, 3};
        },
        [](Rvm&, Text& t) { t.elements[1].attributes[0].second.clear(); },
        [](Rvm&, Text& t) { t.elements[1].attributes[0].second = "a&end&b"; },
        [](Rvm&, Text& t) { t.elements[1].attributes[0].first = "NEWS"; },
    };
    for (std::size_t i = 0; i < std::size(faults); ++i) {
        Rvm rvm = good;
        Text attributes = text;
        faults[i](rvm, attributes);
        check::rvmStrictForm(rvm, attributes, findings);
        EXPECT_EQ(findings.size(), 1U) << i << ": " << allFindings(findings);
        findings.clear();
    }
}

TEST(RvmReader, HostileFilesEndInFindings) {
    readers::Findings findings;
    std::string deep = Sample().rvmBytes.substr(0, 232);
    for (int i = 0; i < 100000; ++i) {
        deep += bytesOf("00000043 0000004E 00000054 00000042 00000000 00000001 00000002 00000000 00000000 00000000"
                        "00000000 00000001");
    }
    EXPECT_EQ(readers::rvm::readRvm(deep, findings).groups.size(), 100000U);
    EXPECT_LE(findings.size(), 101U);
    EXPECT_GT(findings.size(), 0U);
}

TEST(RvmReader, TellsUtf8FromOtherBytes) {
    for (const char* good : {"", "a", "\xC2\x80", "\xE6\xB3\xB5", "\xF0\x9F\x98\x80"}) {
        EXPECT_TRUE(readers::isUtf8(good));
    }
    for (const char* bad : {"\x80", "\xC0\x80", "\xC2", "\xE6\xB3", "\xE6\xB3z", "\xF5\x80\x80\x80", "\xFF"}) {
        EXPECT_FALSE(readers::isUtf8(bad));
    }
}

}  // namespace
