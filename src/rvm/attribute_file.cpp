#include "rvm/attribute_file.h"

#include "platform/left_out.h"
#include "scripts/script_host.h"
#include "tolmar/code_page.h"

#include <algorithm>
#include <array>

// A file is a header of five lines and then lines of three kinds, each behind an indent of tabs:
//
//   NEW name            begins an element
//   key:=  value        an attribute of the element begun last
//   END                 ends it
//
// The root's NEW comes first and has no END.

namespace rvm {

namespace {

constexpr std::string_view keywords = "CADC_Attributes_File v1.0 , start: NEW , end: END , name_end: := , sep: &end&\n";
constexpr std::string_view source = "\tSource:= Orna Data &end& Date:= 12 Sep 2020 &end& Time:= 17:48\n";
constexpr std::string_view start = "NEW ";
constexpr std::string_view assign = ":=  ";
constexpr std::string_view end = "END";
constexpr std::string_view separator = "&end&";

struct Indents {
    std::string_view element;
    std::string_view attributes;
};
constexpr std::array<Indents, 5> indents = {{
    {"", ""},
    {"", ""},
    {"\t", "\t"},
    {"\t\t", "\t\t"},
    {"\t\t\t", "\t\t\t\t"},
}};

const Indents& indentsOf(int level) {
    return indents[static_cast<std::size_t>(std::clamp(level, 0, 4))];
}

bool looksLikeKeyword(std::string_view key) {
    return key.starts_with("END") || key.starts_with("NEW");
}

// A tab at the start of a key, which reads as a deeper indent.
bool looksIndented(std::string_view key) {
    return key.starts_with('\t');
}

}  // namespace

// Neither a line break nor "&" is a byte of a character of several bytes.
std::string flattened(std::string_view value) {
    std::string flat;
    flat.reserve(value.size());
    for (std::size_t i = 0; i < value.size();) {
        if (value.compare(i, separator.size(), separator) == 0) {
            flat += ' ';
            i += separator.size();
        } else if (value[i] == '\r' || value[i] == '\n') {
            flat += ' ';
            i += value.compare(i, 2, "\r\n") == 0 ? 2 : 1;
        } else {
            flat += value[i++];
        }
    }
    return flat;
}

bool hasLineBreak(std::string_view text) {
    return text.find_first_of("\r\n") != std::string_view::npos;
}

std::string_view elementIndent(int level) {
    return indentsOf(level).element;
}

std::string_view attributeIndent(int level) {
    return indentsOf(level).attributes;
}

void AttributeFile::writeAttributeHeader(std::string_view projectName, std::string_view databaseName) {
    line_.assign(keywords).append("NEW Header Information\n").append(source).append("\tProject:=");
    append(projectName);
    line_ += " &end& MDB:=";
    append(databaseName);
    line_ += " &end& Element:=All\nEND";
    writeLine();
}

void AttributeFile::writeElementStart(std::string_view name, std::string_view indent) {
    line_.assign(indent).append(start);
    append(name);
    writeLine();
}

void AttributeFile::writeAttribute(std::string_view key, std::string_view value, std::string_view indent) {
    if (compat_ && value.empty()) {
        return;
    }
    line_.assign(indent);
    if (compat_ && (looksLikeKeyword(key) || looksIndented(key))) {
        line_ += '_';
    }
    compat_&& hasLineBreak(key) ? append(flattened(key)) : append(key);
    line_ += assign;
    appendValue(value);
    writeLine();
}

void AttributeFile::writeElementEnd(std::string_view indent) {
    line_.assign(indent).append(end);
    writeLine();
}

void AttributeFile::writeElementAttributes(HxDbObjectId id, int level) {
    if (!asksScript_) {
        return;
    }
    getReferenceRvm(id, params_);
    for (const KVParams& param : params_) {
        value_.clear();
        appendKvText(value_, param);
        if (hasLineBreak(value_) || hasLineBreak(param.key)) {
            reportBrokenLine(id, param.key, "a line break splits its line");
        } else if (looksIndented(param.key)) {
            reportBrokenLine(id, param.key, "its key begins with a tab, which reads as an indent");
        }
        writeAttribute(param.key, value_, attributeIndent(level));
    }
}

// With `compat` the line is mended; else the text stays as it is, and no reader gets it back.
void AttributeFile::reportBrokenLine(HxDbObjectId id, std::string_view key, const char* why) const {
    if (!compat_) {
        reportLeftOut({id, key, "attribute"}, why);
    }
}

void AttributeFile::append(std::string_view codePageText) {
    if (tolmar::isAscii(codePageText)) {
        line_ += codePageText;
    } else {
        line_ += tolmar::toUtf8(codePageText);
    }
}

void AttributeFile::appendValue(std::string_view value) {
    if (compat_) {
        append(flattened(value));
    } else {
        append(value);
    }
}

void AttributeFile::writeLine() {
    line_ += '\n';
    file_.write(line_);
}

}  // namespace rvm
