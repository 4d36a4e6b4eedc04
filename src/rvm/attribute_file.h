// The text file beside an RVM file: the same tree of names, with the attributes of each element.
#pragma once

#include "platform/ids.h"
#include "platform/param_list.h"
#include "tolmar/file.h"

#include <string>
#include <string_view>

namespace rvm {

enum Level : int { levelRoot = 0, levelSite = 1, levelZone = 2, levelManager = 3, levelObject = 4 };

// Indents of an element of a level, and of its attributes.
std::string_view elementIndent(int level);
std::string_view attributeIndent(int level);

// Whether a text takes more than one line.
bool hasLineBreak(std::string_view text);
// The text with a blank for each line break and each separator of attributes.
std::string flattened(std::string_view text);

// Writes into a text file that belongs to the caller and must outlive this object. Names, keys and values stand in the
// code page and go out in UTF-8.
class AttributeFile {
public:
    // `compat`: attributes without a value are left out, keys and values that a reader could take for the file's own
    // words are changed. Without `asksScript` elements have no attributes.
    AttributeFile(tolmar::OutputFile& file, bool compat, bool asksScript = true)
        : file_(file), compat_(compat), asksScript_(asksScript) {}
    AttributeFile(const AttributeFile&) = delete;
    AttributeFile& operator=(const AttributeFile&) = delete;

    void writeAttributeHeader(std::string_view projectName, std::string_view databaseName);
    void writeElementStart(std::string_view name, std::string_view indent);
    void writeAttribute(std::string_view key, std::string_view value, std::string_view indent);
    void writeElementEnd(std::string_view indent);
    // The attributes that the script gives to an object, in its order; none without a script. An invalid id is asked
    // for as 0.
    void writeElementAttributes(HxDbObjectId id, int level);

private:
    void append(std::string_view codePageText);
    void reportBrokenLine(HxDbObjectId id, std::string_view key, const char* why) const;
    void appendValue(std::string_view value);
    void writeLine();

    tolmar::OutputFile& file_;
    bool compat_;
    bool asksScript_;
    std::string line_;
    std::string value_;
    ParamList params_;
};

}  // namespace rvm
