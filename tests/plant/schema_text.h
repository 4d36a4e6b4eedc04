// The JSON Schema of the model file, written from the tables that the reader reads by.
#pragma once

#include "plant/memory/id_index.h"
#include "plant/model/class_table.h"
#include "plant/shapes/primitive_table.h"
#include "sources/json/rows.h"

#include <initializer_list>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

class SchemaText {
public:
    std::string text() {
        out_ = "{\n"
               "  \"$schema\": \"https://json-schema.org/draft/2020-12/schema\",\n"
               "  \"title\": \"Plant model of Tessaro\",\n"
               "  \"description\": \"model-format.md says what the members mean and which of them stand first.\",\n"
               "  \"$ref\": \"#/$defs/file\",\n"
               "  \"$defs\": {\n";
        basics();
        smallObjects();
        objects();
        primitives();
        out_ += "\n  }\n}\n";
        return out_;
    }

private:
    using Fragments = std::vector<std::string>;

    static std::string ref(std::string_view name) { return R"({"$ref": "#/$defs/)" + std::string(name) + "\"}"; }
    static std::string whole(std::int64_t low, std::int64_t high) {
        return R"({"type": "integer", "minimum": )" + std::to_string(low) + R"(, "maximum": )" + std::to_string(high) +
               "}";
    }
    static std::string arrayOf(const std::string& items) { return R"({"type": "array", "items": )" + items + "}"; }
    static std::string mapOf(const std::string& values) {
        return R"({"type": "object", "additionalProperties": )" + values + "}";
    }
    static std::string either(const std::string& a, const std::string& b) {
        return R"({"oneOf": [)" + a + ", " + b + "]}";
    }
    static std::string oneOf(const Fragments& values) {
        std::string list;
        for (const std::string& value : values) {
            list += (list.empty() ? "" : ", ") + value;
        }
        return R"({"enum": [)" + list + "]}";
    }
    static std::string quoted(std::string_view text) { return "\"" + std::string(text) + "\""; }
    static Fragments namesOf(const plant::NameRows& rows) {
        Fragments names;
        for (const plant::NameRows::Name& name : rows.names()) {
            names.push_back(quoted(name.text));
        }
        return names;
    }

    void define(std::string_view name, const std::string& fragment) {
        out_ += std::string(out_.ends_with("{\n") ? "" : ",\n") + "    " + quoted(name) + ": " + fragment;
    }
    // An object with the members that the names tell, whose fragments stand in the same order.
    void defineObject(std::string_view name, const plant::NameRows& names, const Fragments& fragments) {
        std::string properties;
        std::string required;
        for (std::size_t i = 0; i < names.names().size(); ++i) {
            const plant::NameRows::Name& member = names.names()[i];
            properties += std::string(i == 0 ? "" : ",") + "\n        " + quoted(member.text) + ": " + fragments.at(i);
            required += member.required ? (required.empty() ? "" : ", ") + quoted(member.text) : "";
        }
        define(name, "{\n      \"type\": \"object\",\n      \"additionalProperties\": false,\n" +
                         (required.empty() ? "" : "      \"required\": [" + required + "],\n") +
                         "      \"properties\": {" + properties + "\n      }\n    }");
    }

    void basics() {
        define("text", R"({"type": "string", "pattern": "^[^\\u0000]*$"})");
        define("number", R"({"type": "number"})");
        define("truth", R"({"type": "boolean"})");
        define("triple", R"({"type": "array", "items": {"type": "number"}, "minItems": 3, "maxItems": 3})");
        define("id", whole(1, plant::largestId));
        define("ids", arrayOf(ref("id")));
        define("texts", mapOf(ref("text")));
        define("kind", oneOf(namesOf(plant::kindNames())));
        define("attributes", either(mapOf(R"({"type": ["string", "number"]})"), arrayOf(ref("attribute"))));
        define("vertex", R"({"type": "array", "prefixItems": [)" + whole(1, 7) +
                             R"(], "items": {"type": "number"}, "minItems": 4, "maxItems": 4})");
        define("outline", arrayOf(ref("vertex")));
    }

    void smallObjects() {
        namespace rows = plant::rows;
        constexpr std::int64_t largestNumber = std::numeric_limits<std::int16_t>::max();
        const std::string text = ref("text");
        const std::string number = ref("number");
        defineObject("file", rows::top(),
                     {R"({"const": "tessaro-plant"})", R"({"const": 1})", ref("project"), ref("texts"),
                      R"({"type": "array", "items": {"$ref": "#/$defs/database"}, "minItems": 1})",
                      arrayOf(ref("object"))});
        defineObject("project", rows::project(),
                     {text, text, text, oneOf({"48", "65", "73"}), text, ref("texts"), ref("texts"), whole(1, 255),
                      ref("id"), text});
        defineObject("database", rows::database(), {text, text, ref("truth"), ref("id")});
        defineObject("attribute", rows::attribute(),
                     {text,
                      R"({"type": ["string", "number", "array"], "items": {"type": "number"}, "minItems": 3, )"
                      R"("maxItems": 3})",
                      whole(1, 9), text});
        defineObject("point", rows::point(),
                     {whole(0, largestNumber), ref("triple"), whole(0, 2), either(ref("id"), ref("ids"))});
        defineObject("keyPoint", rows::keyPoint(), {whole(0, largestNumber), ref("triple")});
        defineObject("insulation", rows::insulation(), {number, text, text});
        defineObject("end", rows::end(),
                     {text, text, number, number, whole(0, std::numeric_limits<std::int32_t>::max())});
        defineObject("run", rows::run(), {text, ref("ids"), ref("attributes")});
    }

    static std::string fragmentOf(const plant::MemberRow& row) {
        using plant::Reading;
        switch (row.reading) {
        case Reading::Id:
        case Reading::Parent:
        case Reading::NodeId:
        case Reading::Reference:
            return ref("id");
        case Reading::ClassName:
            break;
        case Reading::Name:
        case Reading::Text:
            return ref("text");
        case Reading::Attributes:
            return ref("attributes");
        case Reading::Color:
        case Reading::Whole:
            return whole(row.low, row.high);
        case Reading::Available:
            return ref("truth");
        case Reading::Kind:
            return ref("kind");
        case Reading::Points:
            return arrayOf(ref("point"));
        case Reading::Primitives:
            return arrayOf(ref("primitive"));
        case Reading::Number:
            return ref("number");
        case Reading::Vector:
            return ref("triple");
        case Reading::References:
            return ref("ids");
        case Reading::KeyPoints:
            return arrayOf(ref("keyPoint"));
        case Reading::Insulation:
            return ref("insulation");
        case Reading::Ends:
            return arrayOf(ref("end"));
        case Reading::Branches:
            return arrayOf(ref("ids"));
        case Reading::Runs:
            return arrayOf(ref("run"));
        }
        return "";
    }

    void objects() {
        const char* const names[plant::familyCount] = {"plainObject",       "pipeline",    "smartObject", "boltSet",
                                                       "tubeSpecification", "supportItem", "bolt",        "nut",
                                                       "flangeBolts"};
        std::string any;
        for (std::size_t i = 0; i < plant::familyCount; ++i) {
            const auto family = static_cast<plant::Family>(i);
            Fragments classes;
            for (const plant::ClassRow& row : plant::classRows()) {
                if (row.family == family) {
                    classes.push_back(quoted(row.name()));
                }
            }
            const plant::FamilyTable& table = plant::familyTable(family);
            Fragments fragments;
            for (const plant::MemberRow& row : table.members) {
                fragments.push_back(row.reading == plant::Reading::ClassName ? oneOf(classes) : fragmentOf(row));
            }
            defineObject(names[i], table.names, fragments);
            any += (any.empty() ? "" : ", ") + ref(names[i]);
        }
        define("object", R"({"oneOf": [)" + any + "]}");
    }

    static std::string fragmentOf(const plant::FieldRow& row, const std::string& typeName) {
        using plant::FieldType;
        switch (row.type) {
        case FieldType::ClassName:
            return R"({"const": )" + quoted(typeName) + "}";
        case FieldType::Double:
            return ref("number");
        case FieldType::Point:
        case FieldType::Vector:
            return ref("triple");
        case FieldType::Int32:
        case FieldType::Int16:
            return whole(row.low, row.high);
        case FieldType::PlatformText:
        case FieldType::OwnText:
            return ref("text");
        case FieldType::Outline:
            return ref("outline");
        case FieldType::Outlines:
            return arrayOf(ref("outline"));
        case FieldType::Entity:
            return R"({"type": ["object", "string"]})";
        }
        return "";
    }

    void primitives() {
        std::string any;
        for (const plant::PrimitiveClass& type : plant::primitiveClasses()) {
            const std::string name = type.record->name();
            Fragments fragments;
            for (const plant::FieldRow& row : type.fields) {
                fragments.push_back(fragmentOf(row, name));
            }
            defineObject(name, type.names, fragments);
            any += (any.empty() ? "" : ", ") + ref(name);
        }
        define("primitive", R"({"oneOf": [)" + any + "]}");
    }

    std::string out_;
};
