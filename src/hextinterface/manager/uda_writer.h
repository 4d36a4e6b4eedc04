// User-defined attributes: their dictionary in uda.txt, and the only way by which macro writers set a value.
#pragma once

#include "hextinterface/manager/register/numbered_texts.h"
#include "tolmar/file.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

class NameManager;

struct UdaDef {
    std::string name;
    std::string elements;     // element types that get the attribute, separated by blanks
    std::string description;  // the report title
};

class UdaWriter {
public:
    // Empties the file and writes the whole dictionary. The file stays open, since long lists add definitions later.
    // `names` is not owned. ExportException "文件 %1% 打开失败！" with the path.
    UdaWriter(std::string_view path, NameManager& names);
    // For tests: an open file.
    UdaWriter(tolmar::OutputFile file, NameManager& names);
    UdaWriter(const UdaWriter&) = delete;
    UdaWriter& operator=(const UdaWriter&) = delete;

    // Value lines go to the end of `out`, each with "\n" behind it; the caller passes them on to its file.
    // ExportException "未知的UDA名称！%s" for a name outside the dictionary.

    // One value. An empty value writes nothing, whatever the name.
    void writeUda(std::string& out, std::string_view name, std::string_view value) const;
    // The texts joined by ";" in as few pieces of 120 units as fit: the first under `name`, the next under `name` 1, 2
    // and so on, which are defined when first needed. An empty list writes nothing.
    void writeUdaList(std::string& out, std::string_view name, std::span<const std::string> values);

    // Ends the file, when no value will come any more; false when it is not whole.
    bool close() { return file_.close(); }

private:
    class ListPieces;

    void fillDefinitions();
    void writeDictionary();
    // Defines `name` as a copy of `def`, unless it is known.
    void define(const UdaDef& def, const std::string& name);
    const UdaDef& definition(std::string_view name) const;

    std::vector<UdaDef> definitions_;    // in byte order of their names
    naming::TextTable definitionNames_;  // by number of the definition
    tolmar::OutputFile file_;
    NameManager& names_;
};
