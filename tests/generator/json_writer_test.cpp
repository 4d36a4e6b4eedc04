// The writer of model files: the text of every call, what it refuses, and what a reader makes of it.
#include "sources/json/writer.h"

#include "generator/generate.h"
#include "plant/model.h"
#include "plant/refusal.h"
#include "platform/entities.h"
#include "platform/hxcom.h"
#include "platform/objects.h"
#include "platform/smrtln.h"

#include <charconv>
#include <cmath>
#include <cstring>
#include <limits>
#include <random>
#include <set>
#include <simdjson.h>

namespace {

using namespace plant;

// A file on its way: a database, and whatever a test tells.
struct Told {
    std::string text;
    JsonModelWriter writer{[this](std::string_view piece) {
        text += piece;
        return true;
    }};

    Told() { writer.database({.name = "D"}); }
    // The objects, without what stands around them.
    std::string objects() {
        writer.finish();
        constexpr std::string_view head =
            "{\"format\":\"tessaro-plant\",\"version\":1,\n\"databases\":[{\"name\":\"D\"}],\n\"objects\":[";
        EXPECT_TRUE(text.starts_with(head)) << text;
        EXPECT_TRUE(text.ends_with("]}\n")) << text;
        return text.substr(head.size(), text.size() - head.size() - 3);
    }
};

// What an object says behind its id and class when `tell` has told it.
template <typename Tell>
std::string membersOf(Tell tell) {
    Told told;
    told.writer.beginObject(7, "HxDbOther");
    tell(told.writer);
    told.writer.endObject();
    constexpr std::string_view start = "\n{\"id\":7,\"class\":\"HxDbOther\"";
    const std::string object = told.objects();
    EXPECT_TRUE(object.starts_with(start)) << object;
    return object.substr(start.size(), object.size() - start.size() - 1);
}

template <typename Tell>
std::string refusalOf(Tell tell) {
    try {
        tell();
    } catch (const Refusal& refusal) {
        return refusal.text();
    }
    return "";
}

// ------------------------------------------------------------------------------------------------- members of a file

TEST(JsonWriter, WritesTheHeadInItsOrder) {
    std::string text;
    JsonModelWriter writer([&text](std::string_view piece) {
        text += piece;
        return true;
    });
    const ProjectFacts::Item items[] = {{"a", "1"}, {"b", "\"2\""}};
    writer.project({.name = "P",
                    .path = "",
                    .user = "u",
                    .module = 48,
                    .designItems = items,
                    .weldColor = 3,
                    .currentManager = 1});
    writer.attributeLabel("k", "label");
    writer.attributeLabel("l", "other");
    writer.database({.name = "A", .shortName = "a", .main = true, .root = 1});
    writer.database({.name = "B"});
    writer.beginObject(1, "HextWorld");
    writer.endObject();
    writer.finish();
    EXPECT_EQ(text, "{\"format\":\"tessaro-plant\",\"version\":1,\n"
                    R"("project":{"name":"P","path":"","user":"u","module":48,"designItems":{"a":"1","b":"\"2\""},)"
                    R"("weldColor":3,"currentManager":1},)"
                    "\n"
                    R"("attributeLabels":{"k":"label","l":"other"},)"
                    "\n"
                    R"("databases":[{"name":"A","shortName":"a","main":true,"root":1},{"name":"B"}],)"
                    "\n"
                    "\"objects\":[\n"
                    R"({"id":1,"class":"HextWorld"}]})"
                    "\n");
    EXPECT_EQ(loadModelText(text).error, "");
}

TEST(JsonWriter, WritesMembersAsTheyAreTold) {
    const ObjectId ids[] = {8, 9};
    EXPECT_EQ(membersOf([&](JsonModelWriter& w) {
                  w.name("N");
                  w.parent(3);
                  w.nodeId(5);
                  w.color(0);
                  w.available(false);
                  w.kind(PartKind::VirtualGasket);
                  w.text(TextMember::UnitText, "1");
                  w.text(TextMember::DisplayName, "");
                  w.whole(WholeMember::NutNum, 4);
                  w.number(NumberMember::Weight, 0.25);
                  w.vector(VectorMember::InsPoint, {1, -2.5, 0});
                  w.reference(ReferenceMember::Flange, 12);
                  w.references(ListMember::Members, ids);
                  w.references(ListMember::Subs, {});
                  w.insulation({.thickness = 50, .code = "HC"});
              }),
              R"(,"name":"N","in":3,"node":5,"color":0,"available":false,"kind":"virtualGasket","unit":"1",)"
              R"("displayName":"","nutNum":4,"weight":0.25,"insPoint":[1,-2.5,0],"flange":12,"members":[8,9],)"
              R"("subs":[],"insulation":{"thickness":50,"code":"HC"})");
}

TEST(JsonWriter, WritesRecords) {
    const ObjectId ids[] = {8, 9};
    EXPECT_EQ(membersOf([&](JsonModelWriter& w) {
                  w.point({.no = 1, .at = {0, 0, 0.5}, .flow = 1, .to = std::span(ids).first(1)});
                  w.point({.no = 2, .saysFlow = true, .to = ids});
                  w.point({.no = 3, .to = std::span(ids).first(1), .toIsArray = true});
                  w.keyPoints();
                  w.tubeEnd({.size = "50", .outer = 60.3, .section = 1});
                  w.tubeEnd({});
                  w.branch(ids);
                  w.branch({});
                  w.run("r", ids);
                  w.run("s", {});
                  w.runAttribute({.key = "k", .text = "v"});
                  w.runAttribute({.key = "l", .text = "v"});
                  w.run("t", {});
                  w.shape();
              }),
              R"(,"points":[{"no":1,"at":[0,0,0.5],"flow":1,"to":8},{"no":2,"at":[0,0,0],"flow":0,"to":[8,9]},)"
              R"({"no":3,"at":[0,0,0],"to":[8]}],"keyPoints":[],"ends":[{"size":"50","outer":60.3,"section":1},{}],)"
              R"("branches":[[8,9],[]],"runs":[{"name":"r","items":[8,9]},{"name":"s","items":[],)"
              R"("attrs":{"k":"v","l":"v"}},{"name":"t","items":[]}],"primitives":[])");
}

// The object form as far as it goes.
TEST(JsonWriter, WritesAttributesInTheFormThatTheyNeed) {
    using Form = AttributeFacts::Form;
    const auto textOf = [](std::initializer_list<AttributeFacts> attributes) {
        return membersOf([&](JsonModelWriter& w) {
            for (const AttributeFacts& one : attributes) {
                w.attribute(one);
            }
        });
    };
    const AttributeFacts text{.key = "a", .text = "x,\"}"};
    const AttributeFacts whole{.key = "b\"\\", .form = Form::Whole, .whole = 5'000'000'000};
    EXPECT_EQ(textOf({text, whole, {.key = "c", .form = Form::Real, .number = 0.5}}),
              R"(,"attrs":{"a":"x,\"}","b\"\\":5000000000,"c":0.5})");
    EXPECT_EQ(
        textOf({text, whole, text}),
        R"(,"attrs":[{"key":"a","value":"x,\"}"},{"key":"b\"\\","value":5000000000},{"key":"a","value":"x,\"}"}])");
    EXPECT_EQ(textOf({text, {.key = "p", .form = Form::Point, .point = {1, 2, 3}}, {.key = "q", .text = "y"}}),
              R"(,"attrs":[{"key":"a","value":"x,\"}"},{"key":"p","value":[1,2,3],"type":3},{"key":"q","value":"y"}])");
    EXPECT_EQ(textOf({{.key = "d", .text = "x", .description = "said"}, text}),
              R"(,"attrs":[{"key":"d","value":"x","description":"said"},{"key":"a","value":"x,\"}"}])");
    EXPECT_EQ(textOf({{.key = "r", .form = Form::Real, .number = 5}, {.key = "s", .form = Form::Whole, .type = 5}}),
              R"(,"attrs":[{"key":"r","value":5,"type":2},{"key":"s","value":0}])");
    EXPECT_EQ(textOf({{.key = "s", .form = Form::Whole, .type = 1, .whole = 3}}),
              R"(,"attrs":[{"key":"s","value":3,"type":1}])");
}

// More keys than the first table of them holds; then one of them again.
TEST(JsonWriter, FindsARepeatedKeyAmongMany) {
    const auto tell = [](JsonModelWriter& w) {
        for (int i = 0; i < 1000; ++i) {
            w.attribute("key" + std::to_string(i), "x");
        }
    };
    EXPECT_TRUE(membersOf(tell).starts_with(",\"attrs\":{\"key0\":\"x\",\"key1\":"));
    const std::string repeated = membersOf([&](JsonModelWriter& w) {
        tell(w);
        w.attribute("key3", "y");
    });
    EXPECT_TRUE(repeated.starts_with(R"(,"attrs":[{"key":"key0","value":"x"},)")) << repeated.substr(0, 60);
    EXPECT_TRUE(repeated.ends_with(R"({"key":"key999","value":"x"},{"key":"key3","value":"y"}])"));
}

// ------------------------------------------------------------------------------------------------- texts and numbers

std::string quotedText(std::string_view text) {
    OutputText out;
    out.quoted(text);
    return std::string(out.view());
}

TEST(JsonWriter, EscapesWhatJsonAsksFor) {
    EXPECT_EQ(quotedText("a\"b\\c\n\r\t\x01\x1f\x7f/"), "\"a\\\"b\\\\c\\n\\r\\t\\u0001\\u001f\x7f/\"");
    EXPECT_EQ(quotedText("\xe7\xae\xa1\xf0\x9f\x98\x80"), "\"\xe7\xae\xa1\xf0\x9f\x98\x80\"");
    // Each at each place of texts of each length, as an independent reader has them back.
    simdjson::dom::parser parser;
    for (std::size_t size = 0; size < 27; ++size) {
        for (std::size_t at = 0; at <= size; ++at) {
            for (const std::string_view special : {"\"", "\\", "\n", "\x1f", "\xc3\xa9", "\x7f"}) {
                std::string text(size, 'x');
                text.insert(at, special);
                const std::string json = "[" + quotedText(text) + "]";
                std::string_view back;
                ASSERT_EQ(parser.parse(json).at(0).get(back), simdjson::SUCCESS) << json;
                ASSERT_EQ(back, text);
            }
        }
    }
}

TEST(JsonWriter, RefusesTextsThatNoFileCanHold) {
    EXPECT_EQ(refusalOf([] { quotedText(std::string_view("a\0b", 3)); }), "a text holds a zero character");
    EXPECT_EQ(refusalOf([] { quotedText("\xb9\xdc"); }), "a text is not UTF-8");
    EXPECT_EQ(refusalOf([] { quotedText("long enough for eight and cut \xe7\xae"); }), "a text is not UTF-8");
}

std::string numberText(double value) {
    char letters[longestNumber];
    return {letters, writeNumber(letters, value)};
}

TEST(JsonWriter, SpellsNumbers) {
    const std::pair<double, const char*> spellings[] = {{0, "0"},
                                                        {-0.0, "-0.0"},
                                                        {5, "5"},
                                                        {-1500, "-1500"},
                                                        {0.1, "0.1"},
                                                        {-21.34, "-21.34"},
                                                        {0.001, "0.001"},
                                                        {1000.05, "1000.05"},
                                                        {1e-6, "0.000001"},
                                                        {1e-7, "0.0000001"},
                                                        {1e-9, "1e-09"},
                                                        {6.283185307179586, "6.283185307179586"},
                                                        {1e14, "100000000000000"},
                                                        {1e15, "1e+15"},
                                                        {999999999999999, "999999999999999"},
                                                        {1.7e308, "1.7e+308"},
                                                        {5e-324, "5e-324"},
                                                        {0.1 + 0.2, "0.30000000000000004"}};
    for (const auto& [value, spelling] : spellings) {
        EXPECT_EQ(numberText(value), spelling);
    }
    for (const double value : {std::nan(""), std::numeric_limits<double>::infinity()}) {
        EXPECT_EQ(refusalOf([value] { OutputText().number(value); }), "a number is not finite");
    }
}

// Numbers of all kinds read back as they were, and no shorter text would.
TEST(JsonWriter, NumbersReadBackFromTheShortestText) {
    std::mt19937_64 random(7);
    const auto expectShortest = [](double value) {
        const std::string text = numberText(value);
        double back = 0;
        ASSERT_EQ(std::from_chars(text.data(), text.data() + text.size(), back).ptr, text.data() + text.size()) << text;
        ASSERT_EQ(std::memcmp(&back, &value, sizeof value), 0) << text;
        if (value != 0 && std::abs(value) >= 1e-7 && std::abs(value) < 1e15) {
            char library[400];
            const char* end = std::to_chars(library, std::end(library), value, std::chars_format::fixed).ptr;
            ASSERT_EQ(text, std::string_view(library, static_cast<std::size_t>(end - library)));
        }
    };
    for (int i = 0; i < 200000; ++i) {
        const std::uint64_t bits = random();
        double any = 0;
        std::memcpy(&any, &bits, sizeof any);
        if (std::isfinite(any)) {
            expectShortest(any);
        }
        const auto whole = static_cast<double>(static_cast<std::int64_t>(bits) >> (i % 50));
        for (const double parts : {1.0, 10.0, 1000.0, 1e6, 1e7, 3.0}) {
            expectShortest(whole / parts);
            expectShortest(std::nextafter(whole / parts, 0.0));
        }
    }
}

// ------------------------------------------------------------------------------------------------------- primitives

std::string primitiveText(const HextPrimary& primitive) {
    OutputText text;
    PrimitiveWriter(text).write(primitive);
    return std::string(text.view());
}

TEST(JsonWriter, LeavesDefaultsOutAndKeepsAxesTogether) {
    HextBox3D box;
    box.xLength = 10.5;
    EXPECT_EQ(primitiveText(box), R"({"type":"HextBox3D","point":[0,0,0],"xLength":10.5,"yLength":0,"zLength":0})");
    box.yAxis = {0, 0, 1};
    box.material = "steel \"1\"";
    box.handedness = 0;
    box.color = 4;
    EXPECT_EQ(primitiveText(box),
              R"({"type":"HextBox3D","point":[0,0,0],"xLength":10.5,"yLength":0,"zLength":0,)"
              R"("xAxis":[1,0,0],"yAxis":[0,0,1],"color":4,"handedness":0,"material":"steel \"1\""})");
    HextPrimaryText text;
    text.text = "T";
    EXPECT_EQ(primitiveText(text),
              R"({"type":"HextPrimaryText","text":"T","position":[0,0,0],"normal":[0,0,1],"height":0})");
    HextSpolygon polygon;
    EXPECT_EQ(primitiveText(polygon), R"({"type":"HextSpolygon","origin":[0,0,0],"height":0})");
    polygon.outline = HextVertexList{{1, {1, 2, 3}}, {4, {0.5, 0, 0}}};
    polygon.holes = std::vector<HextVertexList>(1);
    EXPECT_EQ(primitiveText(polygon),
              R"({"type":"HextSpolygon","origin":[0,0,0],"height":0,"outline":[[1,1,2,3],[4,0.5,0,0]],"holes":[[]]})");
}

TEST(JsonWriter, PutsEntitiesInAsObjectsOrAsTexts) {
    const auto textOf = [](std::string serial) {
        HextPrimaryAcad primitive;
        primitive.serial = std::move(serial);
        const std::string text = primitiveText(primitive);
        constexpr std::string_view start = R"({"type":"HextPrimaryAcad","entity":)";
        EXPECT_TRUE(text.starts_with(start)) << text;
        return text.substr(start.size(), text.size() - start.size() - 1);
    };
    EXPECT_EQ(textOf(R"({"type": "hatch"})"), R"({"type": "hatch"})");
    EXPECT_EQ(textOf(R"({"type)"), R"("{\"type")");
    EXPECT_EQ(textOf(""), R"("")");
    EXPECT_EQ(textOf("[1]"), R"("[1]")");
    EXPECT_EQ(textOf("{} {}"), R"("{} {}")");
    EXPECT_EQ(textOf(R"({"a":"\u0000"})"), R"("{\"a\":\"\\u0000\"}")");
    std::string deep = "{}";
    for (int i = 0; i < 32; ++i) {
        deep = "{\"a\":" + deep + "}";
    }
    EXPECT_EQ(textOf(deep), deep);
    EXPECT_EQ(textOf("{\"a\":" + deep + "}").substr(0, 9), R"("{\"a\":{)");
}

// What the reader makes of a plant's primitives is written as it stood.
TEST(JsonWriter, WritesPrimitivesBackAsTheyWereRead) {
    const std::string text = generateModelText({.objects = 700, .seed = 3});
    const LoadResult result = loadModelText(text);
    ASSERT_TRUE(result) << result.error;
    setCurrentModel(result.model.get());
    simdjson::dom::parser parser;
    std::set<std::string> classes;
    for (const auto object : parser.parse(text)["objects"].get_array()) {
        simdjson::dom::array list;
        if (object["primitives"].get(list) != simdjson::SUCCESS) {
            continue;
        }
        HextPrimaryView primitives;
        CadGiDraw::viewPrimarys(openAs<HxDbObject>(HxDbObjectId(std::int64_t{object["id"]})), primitives, 7);
        ASSERT_EQ(primitives.size(), list.size());
        std::size_t at = 0;
        for (const auto primitive : list) {
            const std::string back = primitiveText(*primitives[at++]);
            ASSERT_NE(text.find(back), std::string::npos) << back;
            simdjson::dom::parser other;
            ASSERT_EQ(simdjson::minify(other.parse(back)), simdjson::minify(primitive));
            classes.insert(std::string(std::string_view(primitive["type"])));
        }
    }
    setCurrentModel(nullptr);
    EXPECT_GT(classes.size(), 15U);
}

// ---------------------------------------------------------------------------------------------- order, sink, memory

TEST(JsonWriter, RefusesCallsThatGiveNoFile) {
    const auto refused = [](auto tell) { return refusalOf([&] { membersOf(tell); }); };
    EXPECT_EQ(refused([](JsonModelWriter& w) { w.beginObject(8, "HxDbOther"); }), "an object begins in another one");
    EXPECT_EQ(refused([](JsonModelWriter& w) {
                  w.name("a");
                  w.name("b");
              }),
              "\"name\" of one object is told in two places");
    EXPECT_EQ(refused([](JsonModelWriter& w) {
                  w.attribute("a", "x");
                  w.name("n");
                  w.attribute("b", "x");
              }),
              "\"attrs\" of one object is told in two places");
    EXPECT_EQ(refused([](JsonModelWriter& w) { w.runAttribute({.key = "a"}); }),
              "an attribute of a run that was not told");
    EXPECT_EQ(refused([](JsonModelWriter& w) { w.finish(); }), "an object is not complete");
    EXPECT_EQ(refusalOf([] { Told().writer.name("n"); }), "no object is open");
    EXPECT_EQ(refusalOf([] { Told().writer.endObject(); }), "no object is open");
    const std::string order = "the project, labels, databases and objects are told in this order";
    EXPECT_EQ(refusalOf([] { Told().writer.project({}); }), order);
    EXPECT_EQ(refusalOf([] {
                  Told told;
                  told.writer.finish();
                  told.writer.finish();
              }),
              order);
    EXPECT_EQ(refusalOf([] { JsonModelWriter([](std::string_view) { return true; }).finish(); }),
              "a model file has a database");
}

TEST(JsonWriter, HandsOutIdsAboveAllThatWereTold) {
    Told told;
    EXPECT_EQ(told.writer.newId(), 1);
    told.writer.beginObject(40, "HxDbOther");
    told.writer.endObject();
    EXPECT_EQ(told.writer.newId(), 41);
    told.writer.reserveIds(100);
    EXPECT_EQ(told.writer.newId(), 101);
    told.writer.reserveIds(50);
    EXPECT_EQ(told.writer.newId(), 102);
}

TEST(JsonWriter, GivesTheSinkNothingOnceItFailed) {
    int pieces = 0;
    JsonModelWriter writer([&pieces](std::string_view) { return ++pieces < 2; });
    generateInto({.objects = 6000, .seed = 1}, writer);
    EXPECT_TRUE(writer.failed());
    EXPECT_EQ(pieces, 2);
}

// Many objects, and one object of many primitives.
TEST(JsonWriter, LeavesInPiecesOfAMebibyte) {
    constexpr std::size_t mebibyte = std::size_t{1} << 20;
    std::size_t pieces = 0;
    std::size_t largest = 0;
    JsonModelWriter writer([&](std::string_view piece) {
        ++pieces;
        largest = std::max(largest, piece.size());
        return true;
    });
    writer.database({.name = "D"});
    HextSphere3D sphere;
    for (int object = 1; object <= 30000; ++object) {
        writer.beginObject(object, "HxDbOther");
        writer.name("an object with a name of some length that fills the buffer");
        for (int i = 0; i < (object == 1 ? 100000 : 1); ++i) {
            writer.primitive(sphere);
        }
        writer.endObject();
    }
    writer.finish();
    EXPECT_GT(pieces, 8U);
    EXPECT_LT(largest, mebibyte + 1000);
}

TEST(JsonWriter, LetsEachObjectBeRewritten) {
    std::string text;
    std::vector<std::string> seen;
    JsonModelWriter writer(
        [&text](std::string_view piece) {
            text += piece;
            return true;
        },
        [&seen](std::string& object) {
            seen.push_back(object);
            object = "{\"id\":" + std::to_string(seen.size()) + "}";
        });
    writer.database({.name = "D"});
    for (const int id : {5, 6}) {
        writer.beginObject(id, "HxDbOther");
        writer.attribute("a", "b");
        writer.endObject();
    }
    writer.finish();
    EXPECT_EQ(seen, (std::vector<std::string>{R"({"id":5,"class":"HxDbOther","attrs":{"a":"b"}})",
                                              R"({"id":6,"class":"HxDbOther","attrs":{"a":"b"}})"}));
    EXPECT_TRUE(text.ends_with("\"objects\":[\n{\"id\":1},\n{\"id\":2}]}\n")) << text;
}

}  // namespace
