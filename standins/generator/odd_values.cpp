#include "generator/odd_values.h"

#include "generator/planning/tables.h"
#include "plant/shapes/primitive_table.h"

namespace plant::generator {

namespace {

constexpr const char* numbers[] = {
    "0",
    "-0.0",
    "1",
    "-1",
    "0.5",
    "100",
    "-250.125",
    "1e-9",
    "-1e-9",
    "1e-300",
    "5e-324",
    "360",
    "3.141592653589793",
    "6.283185307179586",
    "2e4",
    "1e9",
    "1e12",
    "-1e12",
    "1e300",
    "-1.7e308",
};

// As they stand between quotes in JSON.
constexpr std::u8string_view texts[] = {
    u8"",
    u8" ",
    u8"\\\"",
    u8"'",
    u8"''\\\"'",
    u8"|",
    u8"two\\r\\nlines\\n",
    u8"\\t tab",
    u8"&end&",
    u8"&end&:=&end&",
    u8"NEW /x\\r\\nEND",
    u8"<a b=\\\"&amp;\\\">]]></a><!--",
    u8"\\u0001\\u0008\\u000b\\u001f\\u007f",
    u8"\\ufffe\\uffff",
    u8"%s%n%1%{}$*",
    u8"/",
    u8"//a//b/",
    u8"..\\\\..\\\\x:*?<>.txt",
    u8"\\\\",
    u8"CON",
    u8"name with  blanks ",
    u8"誠",
    u8"誠乗\\\\",
    u8"名\\\"称'",
    u8"\\u20ac\\u00a0\\u00e9",
    u8"\\ud83d\\ude00",
    u8"-",
    u8"0",
    u8"-1",
    u8"1e999",
    u8"nan",
    u8"9223372036854775808",
    u8"99999999999999999999999999",
    u8"0x10",
    u8"1.5.2",
    u8"15x20x",
    u8"PIPE",
    u8"ELBO",
    u8"TEE",
    u8"OLET",
    u8"GASKET",
    u8"FLANGE",
    u8"WELD",
    u8"UNKNOWN_ITEM",
    u8"Pipe",
    u8"Elbow",
    u8"Normal",
    u8"_W_",
};

bool isSmallChance(Random& random) {
    return random.chance(30);
}

std::string_view plainNumber(Random& random) {
    constexpr const char* usual[] = {"10", "25", "40.5", "80", "300", "1000", "-120"};
    return random.pick(usual);
}

}  // namespace

void OddValues::number(std::string& out) {
    out += random_.pick(numbers);
}

void OddValues::point(std::string& out) {
    constexpr const char* whole[] = {"[0,0,0]", "[0,0,1]", "[1,0,0]", "[0,-1,0]", "[1e12,1e12,1e12]", "[3,4,5]"};
    if (random_.chance(50)) {
        out += random_.pick(whole);
        return;
    }
    char before = '[';
    for (int i = 0; i < 3; ++i) {
        out += before;
        out += isSmallChance(random_) ? std::string_view(random_.pick(numbers)) : plainNumber(random_);
        before = ',';
    }
    out += ']';
}

void OddValues::text(std::string& out) {
    constexpr int longest = 40000;
    out += '"';
    if (random_.chance(5)) {
        const std::string_view piece = random_.chance(50) ? utf8(u8"很长的名称") : std::string_view("very-long-");
        for (int left = random_.between(20, longest, 20); left > 0; left -= static_cast<int>(piece.size())) {
            out += piece;
        }
    } else {
        out += utf8(random_.pick(texts));
    }
    out += '"';
}

void OddValues::outline(std::string& out) {
    const int count = random_.below(7);
    out += '[';
    std::string last;
    for (int i = 0; i < count; ++i) {
        if (last.empty() || random_.chance(80)) {
            last = "[" + std::to_string(random_.between(1, 7));
            for (int k = 0; k < 3; ++k) {
                last += ',';
                last += random_.chance(15) ? std::string_view(random_.pick(numbers)) : plainNumber(random_);
            }
            last += ']';
        }
        out += i == 0 ? "" : ",";
        out += last;
    }
    out += ']';
}

void OddValues::entity(std::string& out) {
    constexpr const char* entities[] = {
        "\"\"",
        "\"{\"",
        "{}",
        R"({"type":"line","startPoint":[0,0,0],"endPoint":[0,0,0]})",
        R"({"type":"circle","center":[0,0,0],"radius":0})",
        R"({"type":"arc","center":[0,0,0],"radius":-5,"startAngle":9,"endAngle":-9})",
        R"({"type":"polyline","points":[]})",
        R"({"type":"polyline","points":[[1,1,1]]})",
        R"({"type":"text","text":"&end&\"<\u0001>","position":[0,0,0],"height":0})",
        R"({"type":"hatch"})",
        R"({"type":"mesh","points":[],"faces":[]})",
        R"({"type":"mesh","points":[[0,0,0],[0,0,0],[0,0,0]],"faces":[[0,1,2],[0,0,0]]})",
        R"({"type":"subDMesh","vertices":[[0,0,0],[1,0,0],[1,1e12,0]],"faces":[[0,1,2]]})",
        R"({"type":"block","parts":[]})",
        R"({"type":"block","parts":[{"type":"block","parts":[{"type":"point","position":[1,2,3]}]}]})",
        R"({"type":"nothing that is known"})",
    };
    if (random_.chance(40)) {
        out += random_.chance(50) ? R"({"type":"parametric","color":256,"primitive":)"
                                  : R"({"type":"surface","colors":[1],"primitive":)";
        primitive(out);
        out += '}';
    } else {
        out += random_.pick(entities);
    }
}

void OddValues::primitive(std::string& out) {
    const auto classes = primitiveClasses();
    const PrimitiveClass& type = classes[static_cast<std::size_t>(random_.below(static_cast<int>(classes.size())))];
    const auto whole = [&](const FieldRow& field) {
        const bool isEnd = isSmallChance(random_);
        const std::int64_t end = random_.chance(50) ? field.low : field.high;
        const std::int64_t between = field.low + random_.below(static_cast<int>(field.high - field.low) + 1);
        // A sphere of ten thousand segments is whole but takes its time.
        out += std::to_string(std::min<std::int64_t>(isEnd ? end : between, field.low < 0 ? end : 120));
    };
    out += "{\"type\":\"" + std::string(type.record->name()) + "\"";
    for (const FieldRow& field : type.fields) {
        if (field.type == FieldType::ClassName || (!field.required && random_.chance(40))) {
            continue;
        }
        out += ",\"" + std::string(field.name) + "\":";
        switch (field.type) {
        case FieldType::ClassName:
            break;
        case FieldType::Double:
            out += random_.chance(50) ? std::string_view(random_.pick(numbers)) : plainNumber(random_);
            break;
        case FieldType::Point:
        case FieldType::Vector:
            point(out);
            break;
        case FieldType::Int32:
        case FieldType::Int16:
            whole(field);
            break;
        case FieldType::PlatformText:
        case FieldType::OwnText:
            text(out);
            break;
        case FieldType::Outline:
            outline(out);
            break;
        case FieldType::Outlines:
            out += '[';
            outline(out);
            out += ']';
            break;
        case FieldType::Entity:
            entity(out);
            break;
        }
    }
    out += '}';
}

}  // namespace plant::generator
