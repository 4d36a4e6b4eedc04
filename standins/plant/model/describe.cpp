// What is in a model, as a table or as JSON.
#include "plant/model/facts.h"

#include <fmt/format.h>
#include <iterator>

namespace plant {

namespace {

using Text = fmt::memory_buffer;

template <typename... Values>
void add(Text& text, std::string_view format, const Values&... values) {
    fmt::vformat_to(std::back_inserter(text), format, fmt::make_format_args(values...));
}

void addCounts(Text& text, std::string_view title, const Counts& counts) {
    if (counts.empty()) {
        return;
    }
    add(text, "\n{}\n", title);
    for (const auto& [name, count] : counts) {
        add(text, "  {:<28}{:>12}\n", name, count);
    }
}

void addLine(Text& text, std::string_view name, std::size_t count) {
    add(text, "{:<30}{:>12}\n", name, count);
}

void addBounds(Text& text, const Bounds& bounds) {
    if (bounds.isEmpty) {
        return;
    }
    add(text, "\nbounds (mm)\n  low   {:>14.1f}{:>14.1f}{:>14.1f}\n", bounds.low.x, bounds.low.y, bounds.low.z);
    add(text, "  high  {:>14.1f}{:>14.1f}{:>14.1f}\n", bounds.high.x, bounds.high.y, bounds.high.z);
    add(text, "  the middle lies {:.1f} from the origin\n", bounds.distance());
}

void addMissing(Text& text, const std::vector<std::string>& keys) {
    if (keys.empty()) {
        return;
    }
    add(text, "\nattributes that exports read and no object has\n ");
    for (const std::string& key : keys) {
        add(text, " {}", key);
    }
    add(text, "\n");
}

std::string asTable(const ModelFacts& facts) {
    Text text;
    add(text, "project {}\n\ndatabases\n", facts.project);
    for (const DatabaseCounts& database : facts.databases) {
        add(text, "  {:<28}{:>12} objects in its tree{}\n", database.name, database.objects,
            database.isMain ? ", main" : "");
    }
    addCounts(text, "objects", facts.objects);
    addCounts(text, "primitives", facts.primitives);
    addCounts(text, "smart objects without a shape", facts.withoutShape);
    add(text, "\n");
    addLine(text, "pipelines", facts.pipelines);
    addLine(text, "pipelines without branches", facts.emptyPipelines);
    addLine(text, "branches", facts.branches);
    addLine(text, "connections, told or known", facts.connections);
    addLine(text, "attributes", facts.attributes);
    addLine(text, "managers without a name", facts.unnamedManagers);
    addCounts(text, "names of several managers", facts.repeatedNames);
    addBounds(text, facts.bounds);
    addMissing(text, facts.missingAttributes);
    return fmt::to_string(text);
}

// A text as a JSON value.
std::string jsonText(std::string_view text) {
    std::string result = "\"";
    for (const char c : text) {
        if (c == '"' || c == '\\') {
            result += '\\';
        }
        if (static_cast<unsigned char>(c) < ' ') {
            result += fmt::format("\\u{:04x}", static_cast<unsigned>(c));
        } else {
            result += c;
        }
    }
    return result += '"';
}

// Members of an object or elements of an array, with commas between.
class Json {
public:
    Json(Text& text, char open, char close) : text_(&text), close_(close) { text_->push_back(open); }
    ~Json() { text_->push_back(close_); }
    Json(const Json&) = delete;
    Json& operator=(const Json&) = delete;

    Text& element() {
        if (!first_) {
            text_->push_back(',');
        }
        first_ = false;
        return *text_;
    }
    Text& member(std::string_view name) {
        add(element(), "{}:", jsonText(name));
        return *text_;
    }

private:
    Text* text_;
    char close_;
    bool first_ = true;
};

void addJson(Text& text, const Counts& counts) {
    Json object(text, '{', '}');
    for (const auto& [name, count] : counts) {
        add(object.member(name), "{}", count);
    }
}

void addJson(Text& text, const std::vector<DatabaseCounts>& databases) {
    Json list(text, '[', ']');
    for (const DatabaseCounts& database : databases) {
        Json object(list.element(), '{', '}');
        add(object.member("name"), "{}", jsonText(database.name));
        add(object.member("shortName"), "{}", jsonText(database.shortName));
        add(object.member("main"), "{}", database.isMain);
        add(object.member("objects"), "{}", database.objects);
    }
}

void addJson(Text& text, const Bounds& bounds) {
    if (bounds.isEmpty) {
        add(text, "null");
        return;
    }
    Json object(text, '{', '}');
    add(object.member("low"), "[{},{},{}]", bounds.low.x, bounds.low.y, bounds.low.z);
    add(object.member("high"), "[{},{},{}]", bounds.high.x, bounds.high.y, bounds.high.z);
    add(object.member("distanceFromOrigin"), "{}", bounds.distance());
}

void addJson(Text& text, const std::vector<std::string>& texts) {
    Json list(text, '[', ']');
    for (const std::string& one : texts) {
        add(list.element(), "{}", jsonText(one));
    }
}

std::string asJson(const ModelFacts& facts) {
    Text text;
    {
        Json object(text, '{', '}');
        add(object.member("project"), "{}", jsonText(facts.project));
        addJson(object.member("databases"), facts.databases);
        addJson(object.member("objects"), facts.objects);
        addJson(object.member("primitives"), facts.primitives);
        addJson(object.member("withoutShape"), facts.withoutShape);
        add(object.member("pipelines"), "{}", facts.pipelines);
        add(object.member("emptyPipelines"), "{}", facts.emptyPipelines);
        add(object.member("branches"), "{}", facts.branches);
        add(object.member("connections"), "{}", facts.connections);
        add(object.member("attributes"), "{}", facts.attributes);
        add(object.member("unnamedManagers"), "{}", facts.unnamedManagers);
        addJson(object.member("repeatedNames"), facts.repeatedNames);
        addJson(object.member("bounds"), facts.bounds);
        addJson(object.member("missingAttributes"), facts.missingAttributes);
    }
    text.push_back('\n');
    return fmt::to_string(text);
}

}  // namespace

std::string describeModel(const Model& model, const ModelInfoOptions& options) {
    const ModelFacts facts = factsOf(model);
    return options.json ? asJson(facts) : asTable(facts);
}

}  // namespace plant
