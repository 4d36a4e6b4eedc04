// The attribute file beside an RVM file, read back. Text in UTF-8, lines end in CR LF:
//
//   file      = keywords  header  element
//   keywords  = "CADC_Attributes_File v1.0 , start: NEW , end: END , name_end: := , sep: &end&"
//   header    = "NEW Header Information"
//               TAB "Source:= Orna Data &end& Date:= " ...
//               TAB "Project:=" project " &end& MDB:=" database " &end& Element:=All"
//               "END"
//   element   = indent "NEW " name  { attribute }  { element }  [ indent "END" ]
//   attribute = indent key ":=  " value
//
// Indents are tabs and go by the level of an element: root and sites none, zones one, managers two, objects three; the
// root alone may lack its END.
#pragma once

#include "readers/rvm/file.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace readers::rvm {

struct Element {
    std::string name;
    std::size_t level = 0;  // 0 root, 1 site, 2 zone, 3 manager, 4 object
    std::uint32_t parent = none;
    std::vector<std::uint32_t> children;
    std::vector<std::pair<std::string, std::string>> attributes;
    std::size_t line = 0;
    bool isClosed = false;
};

struct AttributeContent {
    std::string project;
    std::string database;
    std::vector<Element> elements;  // parents before children
    // The root has its END: the form for strict readers.
    bool isRootClosed() const { return !elements.empty() && elements.front().isClosed; }
};

AttributeContent readAttributes(std::string_view bytes, Findings& findings);

}  // namespace readers::rvm
