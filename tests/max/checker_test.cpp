// The program's checker takes what MAXOUT writes and finds what is wrong with changed files.
#include "support.h"

#include "tessaro/check/max/rules.h"

namespace {

class MaxChecker : public MaxTest {
protected:
    MaxChecker() {
        load(R"({"id":2,"class":"HextPipeline","in":1,"name":"L\"'"},
            {"id":3,"class":"HxDbPipeSpec","in":2,"primitives":[)" +
             std::string(boxPrimitive) + R"(]},{"id":4,"class":"HxDbTubeWeld","in":2},
            {"id":5,"class":"HxDbNozzleModel","in":2,"no":"<\"'>"})");
        scriptWith("function isObjChangeMesh(id) return id == 3 end\nfunction getPartNum() return 2 end\n"
                   "function changeObj4Spline() return {{1, 2, 3}, {4, 5, 6}} end");
        ui.inputs = {"PC", "S'T"};
        maxout();
        geometryBytes = root.read("out/P.orna");
        propertyBytes = root.read("out/P.xml");
    }
    // Replaces the first `from` behind `behind`.
    static std::string changed(std::string text, const std::string& from, const std::string& to,
                               const std::string& behind = {}) {
        const std::size_t at = text.find(from, behind.empty() ? 0 : text.find(behind));
        EXPECT_NE(at, std::string::npos) << from;
        return text.replace(at, from.size(), to);
    }
    static bool finds(const readers::Findings& findings, const std::string& text) {
        for (const readers::Finding& finding : findings) {
            if (readers::sentence(finding).find(text) != std::string::npos) {
                return true;
            }
        }
        return false;
    }

    std::string geometryBytes;
    std::string propertyBytes;
};

using check::maxGeometry;
using check::maxPair;
using check::maxProperties;

TEST_F(MaxChecker, TakesWhatIsWritten) {
    EXPECT_TRUE(maxGeometry(geometryBytes).empty());
    EXPECT_TRUE(maxProperties(propertyBytes).empty());
    EXPECT_TRUE(maxPair(geometryBytes, propertyBytes).empty());
}

TEST_F(MaxChecker, FindsWhatIsWrongWithAGeometryFile) {
    const auto bad = [&](const std::string& from, const std::string& to, const std::string& finding,
                         const std::string& behind = {}) {
        EXPECT_TRUE(finds(maxGeometry(changed(geometryBytes, from, to, behind)), finding)) << finding;
    };
    bad("pointNum=\"8\"", "pointNum=\"9\"", "point 8 is missing");
    bad("pointNum=\"8\"", "pointNum=\"7\"", "face 0 is missing");
    bad("faceNum=\"12\"", "faceNum=\"13\"", "face 12 is missing at a group's end");
    bad("faceNum=\"12\"", "faceNum=\"11\"", "more than the group's counts say");
    bad("faceNum=\"12\"", "faceNum=\"x\"", "its counts are no numbers");
    bad("pointX=\"0\"", "pointX=\"8\"", "line 14: pointX is the number of no point", "<face");
    bad("pointX=\"", "pointX=\"nan", "a coordinate is no number");
    bad("colorR=\"", "colorR=\"9", "colorR is no number from 0 to 255");
    bad("interp", "knot", "its type does not follow from partNum");
    bad("partNum=\"2\"", "partNum=\"0\"", "its counts are no numbers");
    bad("id=\"3\"", "id=\"2\"", "its id is no number above those before it");
    bad("meshGroup", "mashGroup", "line");
    bad("utf-8", "gbk", "line 1: does not begin with");
    EXPECT_FALSE(maxGeometry(geometryBytes.substr(0, geometryBytes.size() / 2)).empty()) << "cut off";
    EXPECT_FALSE(maxGeometry("").empty());
    std::string deep = geometryBytes.substr(0, geometryBytes.find('\n') + 1);
    for (int i = 0; i < 1'000'000; ++i) {
        deep += "<object a='>'>";
    }
    EXPECT_TRUE(finds(maxGeometry(deep), "nested deeper"));
    std::string many = "<?xml version='1.0' encoding='utf-8' ?>\n<object id='1' Name='W'>";
    for (int i = 0; i < 1000; ++i) {
        many += "<object/>";
    }
    EXPECT_EQ(maxGeometry(many + "</object>").size(), 101U) << "a hundred faults and the word that there are more";
}

TEST_F(MaxChecker, FindsWhatIsWrongWithAPropertyFile) {
    EXPECT_TRUE(finds(maxProperties(changed(propertyBytes, "ORNA", "ORMA")), "one propertyGroup"));
    EXPECT_TRUE(finds(maxProperties(changed(propertyBytes, "unit_no", "unit")), "site_no and unit_no"));
    EXPECT_TRUE(finds(maxProperties(propertyBytes + "<object/>"), "not one root element"));
}

TEST_F(MaxChecker, FindsFilesThatDoNotBelongTogether) {
    EXPECT_TRUE(finds(maxPair(geometryBytes, changed(propertyBytes, "id=\"3\"", "id=\"33\"")),
                      "object 3 is not in the property file"));
    EXPECT_TRUE(
        finds(maxPair(geometryBytes, changed(propertyBytes, "-Pipe_3", "-Pump_3")), "object 3 has another name"));
    EXPECT_TRUE(finds(maxPair(geometryBytes, changed(propertyBytes, "id=\"2\"", "id=\"7\"")), "stands under another"));
}

TEST_F(MaxChecker, NoCutFileLooksWholeAndNoByteEndsTheProgram) {
    for (const std::string& bytes : {geometryBytes, propertyBytes}) {
        const auto check = bytes == geometryBytes ? maxGeometry : maxProperties;
        for (std::size_t size = 0; size <= bytes.rfind('>'); ++size) {
            EXPECT_FALSE(check(bytes.substr(0, size)).empty()) << size;
        }
        for (std::size_t at = 0; at < bytes.size(); ++at) {
            for (const char c : {'<', '>', '"', '&', '/', '\0', '9'}) {
                std::string text = bytes;
                text[at] = c;
                maxGeometry(text);
                maxProperties(text);
                maxPair(text, propertyBytes);
                maxPair(geometryBytes, text);
            }
        }
    }
}

}  // namespace
