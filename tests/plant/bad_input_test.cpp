// Files that are refused, and what is said of them.
#include "loaded_model.h"

#include <filesystem>
#include <fstream>
#include <unistd.h>

namespace {

struct BadFile {
    const char* name;
    std::string json;
    std::string message;  // behind the file's name
};

void PrintTo(const BadFile& bad, std::ostream* out) {
    *out << bad.name;
}

std::string object(const std::string& className, const std::string& members) {
    return fileWith(R"({"id":2,"class":")" + className + R"(")" + (members.empty() ? "" : ",") + members + "}");
}
std::string smart(const std::string& members) {
    return object("HxDbTubeModelSpec", members);
}
std::string primitive(const std::string& members) {
    return smart(R"("primitives":[)" + members + "]");
}
std::string attribute(const std::string& value) {
    return smart(R"("attrs":)" + value);
}

class BadInput : public testing::TestWithParam<BadFile> {};

TEST_P(BadInput, IsRefusedWithItsPlace) {
    const plant::LoadResult result = plant::loadModelText(GetParam().json, "m.json");
    EXPECT_FALSE(result);
    EXPECT_EQ(result.error, "m.json: " + GetParam().message);
}

const std::string head = R"({"format":"tessaro-plant","version":1,)";
const std::string database = R"("databases":[{"name":"MAIN"}])";

INSTANTIATE_TEST_SUITE_P(
    Top, BadInput,
    testing::Values(
        BadFile{"Empty", "", "the file is empty"}, BadFile{"Blank", " \n ", "the file is empty"},
        BadFile{"Number", "42", "an object expected"}, BadFile{"Array", "[]", "an object expected"},
        BadFile{"FormatMissing", R"({"version":1})", "version: \"format\" stands first"},
        BadFile{"NoMembers", "{}", "member \"format\" is missing"},
        BadFile{"OtherFormat", R"({"format":"other"})", R"(format: "tessaro-plant" expected, "other" found)"},
        BadFile{"OtherVersion", R"({"format":"tessaro-plant","version":2})", "version: version 1 expected, 2 found"},
        BadFile{"NoObjects", head + database + "}", "member \"objects\" is missing"},
        BadFile{"NoDatabases", head + R"("objects":[]})", "member \"databases\" is missing"},
        BadFile{"EmptyDatabases", head + R"("databases":[],"objects":[]})",
                "databases: at least one database expected"},
        BadFile{"UnknownMember", head + R"("extra":1,)" + database + R"(,"objects":[]})",
                "extra: no member of the file"},
        BadFile{"TwiceMember", head + R"("version":1})", "version: stands twice"},
        BadFile{"ObjectsTwice", head + database + R"(,"objects":[],"objects":[]})", "objects: stands twice"},
        BadFile{"ObjectsNoArray", head + database + R"(,"objects":{}})",
                "objects: an array of objects expected, an object found"},
        BadFile{"DatabaseTwice", head + R"("databases":[{"name":"A"},{"name":"A"}],"objects":[]})",
                "databases[1]: another database has this name"},
        BadFile{"TwoMain", head + R"("databases":[{"name":"A","main":true},{"name":"B","main":true}],"objects":[]})",
                "databases[1].main: another database is the main one already"},
        BadFile{"MainNoBool", head + R"("databases":[{"name":"A","main":1}],"objects":[]})",
                "databases[0].main: true or false expected, 1 found"},
        BadFile{"RootMissing", head + R"("databases":[{"name":"A","root":9}],"objects":[]})",
                "databases[0].root: no object 9"},
        BadFile{"RootTwice",
                head + R"("databases":[{"name":"A","root":1},{"name":"B","root":1}],"objects":[)" +
                    R"({"id":1,"class":"HextWorld"}]})",
                "databases[1].root: object 1 has a place in a tree already"},
        BadFile{"RootInTree",
                head + R"("databases":[{"name":"A","root":2}],"objects":[)" +
                    R"({"id":1,"class":"HextWorld"},{"id":2,"class":"HextSite","in":1}]})",
                "databases[0].root: object 2 has a place in a tree already"},
        BadFile{"Module", fileWith("", R"("project":{"module":50},)"),
                "project.module: 48, 65 or 73 expected, 50 found"},
        BadFile{"WeldColor", fileWith("", R"("project":{"weldColor":0},)"),
                "project.weldColor: a whole number from 1 to 255 expected, 0 found"},
        BadFile{"Manager", fileWith("", R"("project":{"currentManager":77},)"), "project.currentManager: no object 77"},
        BadFile{"ItemTwice", fileWith("", R"("project":{"designItems":{"a":"1","a":"2"}},)"),
                "project.designItems.a: stands twice"},
        BadFile{"LabelNoText", fileWith("", R"("attributeLabels":{"item":3},)"),
                "attributeLabels.item: a text expected, 3 found"}));

INSTANTIATE_TEST_SUITE_P(
    Objects, BadInput,
    testing::Values(
        BadFile{"NoObject", fileWith("17"), "objects[1]: an object expected, 17 found"},
        BadFile{"EmptyObject", fileWith("{}"), "objects[1]: member \"id\" is missing"},
        BadFile{"NoClass", fileWith(R"({"id":2})"), "objects[1]: member \"class\" is missing"},
        BadFile{"IdNotFirst", fileWith(R"({"name":"x","id":2,"class":"HextSite"})"),
                "objects[1].name: no member of an object before \"id\" and \"class\", which stand first"},
        BadFile{"IdTwice", fileWith(R"({"id":1,"class":"HextSite"})"), "objects[1].id: id 1 is that of objects[0]"},
        BadFile{"IdZero", fileWith(R"({"id":0,"class":"HextSite"})"),
                "objects[1].id: an object id from 1 to 9007199254740991 expected, 0 found"},
        BadFile{"IdTooLarge", fileWith(R"({"id":9007199254740992,"class":"HextSite"})"),
                "objects[1].id: an object id from 1 to 9007199254740991 expected, 9007199254740992 found"},
        BadFile{"IdFraction", fileWith(R"({"id":2.5,"class":"HextSite"})"),
                "objects[1].id: an object id from 1 to 9007199254740991 expected, 2.5 found"},
        BadFile{"UnknownClass", fileWith(R"({"id":2,"class":"HextSit"})"),
                R"(objects[1].class: the name of a class expected, "HextSit" found)"},
        BadFile{"MemberOfOtherClass", object("HextSite", R"("points":[])"),
                "objects[1].points: no member of an object of this class"},
        BadFile{"UnknownMember", smart(R"("colour":1)"), "objects[1].colour: no member of a smart object"},
        BadFile{"TwiceMember", smart(R"("name":"a","name":"b")"), "objects[1].name: stands twice"},
        BadFile{"InMissing", smart(R"("in":77)"), "objects[1].in: no object 77 before this one"},
        BadFile{"InItself", smart(R"("in":2)"), "objects[1].in: no object 2 before this one"},
        BadFile{"InLater", fileWith(R"({"id":2,"class":"HextSite","in":3},{"id":3,"class":"HextSite","in":2})"),
                "objects[1].in: no object 3 before this one"},
        BadFile{"Color", smart(R"("color":256)"), "objects[1].color: a whole number from 0 to 255 expected, 256 found"},
        BadFile{"Bolts", object("HxDbFlan2BoltNut", R"("boltNum":1001)"),
                "objects[1].boltNum: a whole number from 0 to 1000 expected, 1001 found"},
        BadFile{"Nuts", object("HxDbFlan2BoltNut", R"("boltNum":1000,"nutNum":-1)"),
                "objects[1].nutNum: a whole number from 0 to 1000 expected, -1 found"},
        BadFile{"Name", smart(R"("name":null)"), "objects[1].name: a text expected, null found"},
        BadFile{"ZeroInText", smart(R"("name":"a\u0000b")"), R"(objects[1].name: "a\u0000b" holds a zero character)"},
        BadFile{"LoneSurrogate", smart(R"("name":"\ud800")"),
                R"(objects[1].name: "\ud800" holds an escape that stands for nothing)"},
        BadFile{"BadEscape", smart(R"("name":"\q")"),
                R"(objects[1].name: "\q" holds an escape that stands for nothing)"},
        BadFile{"Kind", smart(R"("kind":"tube")"), R"(objects[1].kind: the name of a kind expected, "tube" found)"},
        BadFile{"NodeTaken", object("HextSite", R"("in":1,"node":1)"),
                "objects[1].node: the id 1 of the tree node is taken"},
        BadFile{"NodeOfOther", object("HextSite", R"("in":1,"node":70368744177665)"),
                "objects[0].node: the id 70368744177665 of the tree node is taken"},
        BadFile{"NodeTwice", fileWith(R"({"id":2,"class":"HextSite","node":50},{"id":3,"class":"HextSite","node":50})"),
                "objects[2].node: id 50 is that of another node"},
        BadFile{"NodeTooLarge", fileWith(R"({"id":9007199254740000,"class":"HextSite","in":1})"),
                "objects[1].node: the id 9077567998917664 of the tree node is too large"},
        BadFile{"DanglingSpec", smart(R"("spec":77)"), "objects[1].spec: no object 77"},
        BadFile{"SpecOfOtherClass", smart(R"("spec":1)"),
                "objects[1].spec: object 1 is a HextWorld, a HxDbTubeSpecification expected"},
        BadFile{"DanglingMember", object("HextEquipe", R"("members":[1,77])"), "objects[1].members[1]: no object 77"},
        BadFile{"DanglingBranch", object("HextPipeline", R"("branches":[[],[77]])"),
                "objects[1].branches[1][0]: no object 77"},
        BadFile{"BranchOfManager", object("HextPipeline", R"("branches":[[1]])"),
                "objects[1].branches[0][0]: object 1 is a HextWorld, a HxDbSmrtlnEntity expected"},
        BadFile{"DanglingRun", object("HextPipeline", R"("runs":[{"name":"r","items":[77]}])"),
                "objects[1].runs[0].items[0]: no object 77"},
        BadFile{"RunTwice", object("HextPipeline", R"("runs":[{"name":"r"},{"name":"r"}])"),
                "objects[1].runs[1]: a run of this name stands before it"},
        BadFile{"Insulation", smart(R"("insulation":{"thickness":"50"})"),
                R"(objects[1].insulation.thickness: a finite number expected, "50" found)"},
        BadFile{"EndMember", object("HxDbTubeSpecification", R"("ends":[{"dn":50}])"),
                "objects[1].ends[0].dn: no member of an end"},
        BadFile{"BoltWeight", object("HextBolt", R"("weight":1e999)"),
                "objects[1].weight: a finite number expected, 1e999 found"}));

INSTANTIATE_TEST_SUITE_P(
    Parts, BadInput,
    testing::Values(
        BadFile{"Flow", smart(R"("points":[{"no":1,"at":[0,0,0]},{"no":2,"at":[0,0,0],"flow":"x"}])"),
                R"(objects[1].points[1].flow: 1, 2 or 0 expected, "x" found)"},
        BadFile{"PointTwice", smart(R"("points":[{"no":1,"at":[0,0,0]},{"no":1,"at":[0,0,0]}])"),
                "objects[1].points[1]: number 1 stands twice"},
        BadFile{"PointNumber", smart(R"("points":[{"no":32768,"at":[0,0,0]}])"),
                "objects[1].points[0].no: a whole number from 0 to 32767 expected, 32768 found"},
        BadFile{"PointWithoutPlace", smart(R"("points":[{"no":1}])"), "objects[1].points[0]: member \"at\" is missing"},
        BadFile{"TwoCoordinates", smart(R"("points":[{"no":1,"at":[0,0]}])"),
                "objects[1].points[0].at: an array of three finite numbers expected, 2 found"},
        BadFile{"FourCoordinates", smart(R"("points":[{"no":1,"at":[0,0,0,0]}])"),
                "objects[1].points[0].at: an array of three finite numbers expected, more found"},
        BadFile{"TextCoordinate", smart(R"("points":[{"no":1,"at":[0,"1",0]}])"),
                R"(objects[1].points[0].at: a finite number expected, "1" found)"},
        BadFile{"DanglingTo", smart(R"("points":[{"no":1,"at":[0,0,0],"to":77}])"),
                "objects[1].points[0].to: no object 77"},
        BadFile{"DanglingToOfList",
                smart(R"("points":[{"no":3,"at":[0,0,0]},{"no":1,"at":[0,0,0],"to":[3,77]}]},)"
                      R"({"id":3,"class":"HxDbPipeSpec")"),
                "objects[1].points[1].to[1]: no object 77"},
        BadFile{"ToItself", smart(R"("points":[{"no":1,"at":[0,0,0],"to":2}])"),
                "objects[1].points[0].to: an object does not hang at itself"},
        BadFile{"ToManager", smart(R"("points":[{"no":1,"at":[0,0,0],"to":1}])"),
                "objects[1].points[0].to: object 1 is a HextWorld, a HxDbSmrtlnEntity expected"},
        BadFile{"AttributeTwice", attribute(R"({"a":"1","a":"2"})"),
                "objects[1].attrs.a: stands twice; repeated keys need the array form"},
        BadFile{"AttributeObject", attribute(R"({"a":{}})"),
                "objects[1].attrs.a: a text or a number expected, an object found"},
        BadFile{"AttributePoint", attribute(R"({"a":[1,2,3]})"),
                "objects[1].attrs.a: a text or a number expected, an array found"},
        BadFile{"AttributeHuge", attribute(R"({"a":123456789012345678901234567890})"),
                "objects[1].attrs.a: a finite number, or a whole number of 64 bits, expected, "
                "123456789012345678901234567890 found"},
        BadFile{"AttributesText", attribute(R"("a")"),
                R"(objects[1].attrs: an object or an array expected, "a" found)"},
        BadFile{"ItemWithoutKey", attribute(R"([{"value":1}])"), "objects[1].attrs[0]: member \"key\" is missing"},
        BadFile{"ItemType", attribute(R"([{"key":"a","value":"x","type":5}])"),
                "objects[1].attrs[0]: type 5 takes a whole number of 32 bits"},
        BadFile{"ItemShort", attribute(R"([{"key":"a","value":32768,"type":1}])"),
                "objects[1].attrs[0]: type 1 takes a whole number of 16 bits"},
        BadFile{"ItemTypeUnknown", attribute(R"([{"key":"a","value":1,"type":10}])"),
                "objects[1].attrs[0].type: a whole number from 1 to 9 expected, 10 found"},
        BadFile{"PrimitiveType", primitive(R"({"type":"HextBall"})"),
                R"(objects[1].primitives[0].type: the name of a primitive class expected, "HextBall" found)"},
        BadFile{"PrimitiveTypeNotFirst", primitive(R"({"radius":1,"type":"HextSphere3D","center":[0,0,0]})"),
                "objects[1].primitives[0].radius: no member of a primitive before \"type\", which stands first"},
        BadFile{"PrimitiveField", primitive(R"({"type":"HextSphere3D","center":[0,0,0]})"),
                "objects[1].primitives[0]: member \"radius\" is missing"},
        BadFile{"PrimitiveUnknownField", primitive(R"({"type":"HextSphere3D","diameter":1})"),
                "objects[1].primitives[0].diameter: no member of a HextSphere3D"},
        BadFile{"LineMaterial", primitive(R"({"type":"HextPrimaryLine","material":"x"})"),
                "objects[1].primitives[0].material: no member of a HextPrimaryLine"},
        BadFile{"Handedness", primitive(R"({"type":"HextSphere3D","handedness":2})"),
                "objects[1].primitives[0].handedness: a whole number from 0 to 1 expected, 2 found"},
        BadFile{"VertexKind", primitive(R"({"type":"HextRevolve","profile":[[8,0,0,0]]})"),
                "objects[1].primitives[0].profile[0][0]: a whole number from 1 to 7 expected, 8 found"},
        BadFile{"VertexShort", primitive(R"({"type":"HextSpolygon","holes":[[[1,0,0]]]})"),
                "objects[1].primitives[0].holes[0][0]: [kind, x, y, z] expected, 3 values found"},
        BadFile{"EntityNumber", primitive(R"({"type":"HextPrimaryAcad","entity":5})"),
                "objects[1].primitives[0].entity: an object or a text expected, 5 found"},
        BadFile{"EntityBadInside", primitive(R"({"type":"HextPrimaryAcad","entity":{"a":[1,tru]}})"),
                "objects[1].primitives[0].entity.a[1]: true or false expected, tru found"},
        BadFile{"EntityDeep",
                primitive(R"({"type":"HextPrimaryAcad","entity":{"a":)" + std::string(40, '[') + std::string(40, ']') +
                          "}}"),
                "objects[1].primitives[0].entity.a[0][0][0][0][0][0][0][0][0][0][0][0][0][0][0][0][0][0][0][0][0][0]"
                "[0][0][0][0][0][0][0][0][0][0]: nested deeper than 32"}));

// Text that is no JSON. Places are near what is wrong; the reader is a token ahead.
INSTANTIATE_TEST_SUITE_P(
    Syntax, BadInput,
    testing::Values(
        BadFile{"Truncated", head + R"("databases":[{"name":)",
                "a bracket is not closed as it was opened, line 1, column 60 (byte 60)"},
        BadFile{"TruncatedInObjects", fileWith(R"({"id":2,)"),
                "objects: a bracket is not closed as it was opened, line 1, column 155 (byte 155)"},
        BadFile{"CutInArray", fileWith("").substr(0, fileWith("").size() - 2),
                "\",\" or \"]\" expected, the end of the file found, line 1, column 144 (byte 144)"},
        BadFile{"CutBehindArray", fileWith("").substr(0, fileWith("").size() - 1),
                "\",\" or \"}\" expected, the end of the file found, line 1, column 145 (byte 145)"},
        BadFile{"CommaAtEnd", fileWith("").insert(fileWith("").size() - 2, ","),
                "objects[1]: an object expected, ] found"},
        BadFile{"CommaBehindArray", fileWith("").insert(fileWith("").size() - 1, ","),
                "nothing behind a comma, near line 1, column 147 (byte 147)"},
        BadFile{"MissingComma", fileWith(R"({"id":2 "class":"HextSite"})"),
                "objects[1]: a comma, colon, bracket or name is missing or one too many, near line 1, column 153 (byte "
                "153)"},
        BadFile{"MissingCommaBetween", fileWith(R"({"id":2,"class":"HextSite"}{"id":3,"class":"HextSite"})"),
                "objects[2]: a comma, colon, bracket or name is missing or one too many, near line 1, column 172 (byte "
                "172)"},
        BadFile{"Trailing", fileWith("") + " x",
                "the end of the file expected, \"x\" found, line 1, column 147 (byte 147)"},
        BadFile{"TrailingZero", fileWith("") + std::string(1, '\0'),
                std::string("the end of the file expected, \"") + '\0' + "\" found, line 1, column 146 (byte 146)"},
        BadFile{"TwoDocuments", fileWith("") + "{}",
                "the end of the file expected, \"{\" found, line 1, column 146 (byte 146)"},
        BadFile{"WrongBracket", fileWith(R"({"id":2,"class":"HextSite"]})"),
                "objects: a bracket is not closed as it was opened, line 1, column 173 (byte 173)"},
        BadFile{"NotClosedText", fileWith(R"({"id":2,"class":"HextSite","name":"abc})"),
                "a text without an end, line 1, column 179 (byte 179)"},
        BadFile{"NewlineInText", fileWith("{\"id\":2,\"class\":\"HextSite\",\n\"name\":\"a\nb\"}"),
                "a control character in a text, line 2, column 10 (byte 182)"},
        BadFile{"NotUtf8", fileWith("{\"id\":2,\"class\":\"HextSite\",\n \"name\":\"\xC3\xA9\xFF\"}"),
                "not UTF-8, line 2, column 11 (byte 184)"},
        BadFile{"KeyNoText", fileWith("{id:2}"),
                "objects[1]: a comma, colon, bracket or name is missing or one too many, near line 1, column 146 (byte "
                "146)"},
        BadFile{"Literal", fileWith(R"({"id":2,"class":"HextSite","available":tru})"),
                "objects[1].available: true or false expected, tru found"},
        BadFile{"MillionDeepClosed", smart(R"("points":)" + std::string(1000000, '[') + std::string(1000000, ']')),
                "objects[1].points[0]: an object expected, an array found"},
        BadFile{"MillionDeep", fileWith(smart(R"("points":)" + std::string(1000000, '['))),
                "objects: a bracket is not closed as it was opened, line 1, column 1000339 (byte 1000339)"}));

// A folder of its own for files that cannot be read.
class BadFiles : public testing::Test {
protected:
    BadFiles() : folder_(std::filesystem::temp_directory_path() / ("bad-files-" + std::to_string(::getpid()))) {
        std::filesystem::create_directories(folder_);
    }
    ~BadFiles() override { std::filesystem::remove_all(folder_); }
    std::string errorOf(const std::string& name) const {
        const plant::LoadResult result = plant::loadModel(folder_ / name);
        EXPECT_FALSE(result);
        const std::string start = (folder_ / name).string() + ": ";
        EXPECT_EQ(result.error.substr(0, start.size()), start);
        return result.error.substr(start.size());
    }
    std::filesystem::path folder_;
};

TEST_F(BadFiles, SayWhyTheyCannotBeRead) {
    EXPECT_EQ(errorOf("nowhere.json"), "cannot be read: No such file or directory");
    EXPECT_EQ(errorOf("."), "cannot be read: Is a directory");
    std::ofstream(folder_ / "empty.json").flush();
    EXPECT_EQ(errorOf("empty.json"), "the file is empty");
    std::ofstream(folder_ / "lines.json") << "{\n  \"format\": \"tessaro-plant\",\n  \"version\" 1\n}\n";
    EXPECT_EQ(errorOf("lines.json"),
              "a comma, colon, bracket or name is missing or one too many, near line 3, column 13 (byte 44)");
}

TEST_F(BadFiles, LongOnesOfOtherKindsAreNotReadToTheirEnd) {
    std::ofstream(folder_ / "other.json") << "{\"data\":[" << std::string(3000000, '1') << "]}";
    EXPECT_EQ(errorOf("other.json"), "no \"tessaro-plant\" in the first 524288 bytes");
}

// Its bytes come in pieces; columns are those of the line.
TEST_F(BadFiles, LongOnesAreRefusedWithTheirLineAndColumn) {
    const std::string blanks(3000000, ' ');
    std::ofstream(folder_ / "long.json") << fileWith("") << blanks << "\n" << blanks << "\n  x";
    EXPECT_NE(errorOf("long.json").find("\"x\" found, line 3, column 3 "), std::string::npos) << errorOf("long.json");
}

// Each prefix of a good file is refused, none is taken for a smaller model.
TEST(BadInputs, EveryTruncationIsRefused) {
    const std::string good = fileWith(
        R"({"id":2,"class":"HxDbPipeSpec","name":"a\"b","attrs":{"k":"v"},"points":[{"no":1,"at":[1,2,3],"to":3}]},)"
        R"({"id":3,"class":"HxDbPipeSpec","primitives":[{"type":"HextSphere3D","center":[0,0,0],"radius":1e1}]})");
    ASSERT_TRUE(plant::loadModelText(good));
    for (std::size_t size = 0; size < good.size(); ++size) {
        EXPECT_FALSE(plant::loadModelText(good.substr(0, size))) << size;
    }
}

// A damaged byte gives a model or a message, never anything else; the sanitizers watch.
TEST(BadInputs, DamagedBytesDoNoHarm) {
    const std::string good = fileWith(
        R"({"id":2,"class":"HextPipeline","in":1,"branches":[[3,4]],"runs":[{"name":"r","items":[3]}]},)"
        R"({"id":3,"class":"HxDbPipeSpec","in":2,"attrs":[{"key":"a","value":"\u4e2d","type":4}]},)"
        R"({"id":4,"class":"HxDbPipeSpec","in":2,"primitives":[{"type":"HextRevolve","center":[0,0,0],"axis":[0,0,1],)"
        R"("angle":1,"profile":[[1,0,0,0],[4,1,1,1]]},{"type":"HextPrimaryAcad","entity":{"a":[1,true,null,"x"]}}]})");
    ASSERT_TRUE(plant::loadModelText(good));
    std::size_t refused = 0;
    for (std::size_t at = 0; at < good.size(); ++at) {
        for (const char byte : {'"', '\\', '{', '}', '[', ']', ',', ':', '0', '-', ' ', '\0', '\n', '\xFF'}) {
            std::string bad = good;
            bad[at] = byte;
            const plant::LoadResult result = plant::loadModelText(bad);
            EXPECT_NE(static_cast<bool>(result), !result.error.empty());
            refused += result ? 0 : 1;
        }
    }
    EXPECT_GT(refused, good.size() * 8);
}

}  // namespace
