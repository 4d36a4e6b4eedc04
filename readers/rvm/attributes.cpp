#include "readers/rvm/attributes.h"

#include "readers/utf8.h"

#include <algorithm>

namespace readers::rvm {

namespace {

constexpr std::size_t headerLines = 5;
constexpr std::string_view keywordLine =
    "CADC_Attributes_File v1.0 , start: NEW , end: END , name_end: := , sep: &end&";
constexpr std::string_view projectBegin = "\tProject:=";
constexpr std::string_view databaseBegin = " &end& MDB:=";
constexpr std::string_view projectEnd = " &end& Element:=All";

class AttributeReader {
public:
    AttributeReader(std::string_view bytes, Findings& findings) : rest_(bytes), findings_(findings) {}

    AttributeContent run() {
        if (rest_.empty()) {
            return {};
        }
        readHeader();
        while (nextLine()) {
            readLine();
        }
        for (std::uint32_t at = open_; at != none; at = content_.elements[at].parent) {
            expect(at == 0, "an element without END", content_.elements[at].line);
        }
        return std::move(content_);
    }

private:
    void expect(bool good, const std::string& text, std::size_t line) {
        if (!good) {
            note(findings_, atLine(line), text);
        }
    }

    bool nextLine() {
        if (rest_.empty()) {
            return false;
        }
        ++lineNumber_;
        const std::size_t end = rest_.find('\n');
        line_ = rest_.substr(0, end);
        rest_ = end == std::string_view::npos ? std::string_view() : rest_.substr(end + 1);
        const bool isEnded = end != std::string_view::npos && line_.ends_with('\r');
        expect(isEnded, "a line that does not end in CR LF", lineNumber_);
        if (isEnded) {
            line_.remove_suffix(1);
        }
        expect(isUtf8(line_), "not UTF-8", lineNumber_);
        return true;
    }

    void readHeader() {
        for (std::size_t i = 1; i <= headerLines && nextLine(); ++i) {
            switch (i) {
            case 1:
                expect(line_ == keywordLine, "unknown keywords", i);
                break;
            case 2:
                expect(line_ == "NEW Header Information", "header expected", i);
                break;
            case 3:
                expect(line_.starts_with("\tSource:= Orna Data &end& Date:= "), "source expected", i);
                break;
            case 4:
                readProject();
                break;
            default:
                expect(line_ == "END", "the header has no end", i);
            }
        }
        expect(lineNumber_ == headerLines, "the file ends within its header", lineNumber_);
    }

    void readProject() {
        const std::size_t middle = line_.rfind(databaseBegin);
        const bool good =
            line_.starts_with(projectBegin) && middle != std::string_view::npos && line_.ends_with(projectEnd);
        expect(good, "project and database expected", lineNumber_);
        if (good) {
            const std::size_t from = middle + databaseBegin.size();
            content_.project = line_.substr(projectBegin.size(), middle - projectBegin.size());
            content_.database = line_.substr(from, line_.size() - projectEnd.size() - from);
        }
    }

    void readLine() {
        const std::size_t indent = std::min(line_.find_first_not_of('\t'), line_.size());
        const std::string_view text = line_.substr(indent);
        if (text.starts_with("NEW ")) {
            beginElement(indent, text.substr(4));
        } else if (text == "END") {
            endElement(indent);
        } else if (const std::size_t at = text.find(":=  "); at != std::string_view::npos) {
            addAttribute(indent, text.substr(0, at), text.substr(at + 4));
        } else {
            expect(false, "a line of no known form", lineNumber_);
        }
    }

    void beginElement(std::size_t indent, std::string_view name) {
        Element element;
        element.name = name;
        element.line = lineNumber_;
        element.parent = open_;
        const bool isRoot = content_.elements.empty();
        element.level = isRoot ? 0 : indent + 1;
        expect(isRoot ? indent == 0 : open_ != none && indent <= 3, "an element in a wrong place", lineNumber_);
        // The indent goes by the kind of element: sites and zones that stand in one another share theirs.
        constexpr std::size_t zoneLevel = 2;
        const std::size_t around = isRoot || open_ == none ? 0 : content_.elements[open_].level;
        expect(around <= zoneLevel || element.level > around,
               "an element that is indented no deeper than the one around it", lineNumber_);
        const auto index = static_cast<std::uint32_t>(content_.elements.size());
        if (open_ != none) {
            content_.elements[open_].children.push_back(index);
        }
        content_.elements.push_back(std::move(element));
        open_ = index;
    }

    void endElement(std::size_t indent) {
        expect(open_ != none, "END without NEW", lineNumber_);
        if (open_ == none) {
            return;
        }
        Element& element = content_.elements[open_];
        expect(indent == (element.level == 0 ? 0 : element.level - 1), "END and NEW stand at different indents",
               lineNumber_);
        element.isClosed = true;
        open_ = element.parent;
    }

    void addAttribute(std::size_t indent, std::string_view key, std::string_view value) {
        expect(open_ != none, "an attribute outside of any element", lineNumber_);
        if (open_ == none) {
            return;
        }
        constexpr std::size_t indents[] = {0, 0, 1, 2, 4};
        Element& element = content_.elements[open_];
        expect(element.children.empty(), "an attribute behind the first child of its element", lineNumber_);
        expect(element.level > 0 && element.level <= 4 && indent == indents[element.level],
               "an attribute at a wrong indent", lineNumber_);
        element.attributes.emplace_back(key, value);
    }

    std::string_view rest_;
    Findings& findings_;
    AttributeContent content_;
    std::string_view line_;
    std::size_t lineNumber_ = 0;
    std::uint32_t open_ = none;
};

}  // namespace

AttributeContent readAttributes(std::string_view bytes, Findings& findings) {
    return AttributeReader(bytes, findings).run();
}

}  // namespace readers::rvm
