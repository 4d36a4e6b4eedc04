// One XML document of MAXOUT, built with RapidXML in memory and printed at the end.
//
// Triangles make up nearly all of a geometry document, and an XML element takes some 300 bytes. So the points and faces
// of a mesh stay numbers until they are printed, one element at a time.
#pragma once

#include "exportbase/mesher.h"
#include "max/rapidxml.h"
#include "tolmar/file.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

namespace maxfile {

using XmlNode = rapidxml::xml_node<char>;

// Elements belong to the document. Names of elements and attributes must outlive it; values are copied as they are, in
// the code page. What XML cannot hold in a value (control characters, and in the code page UTF-8 what is none) becomes
// a blank or a question mark and counts in `replacedTexts`.
class MaxDocument final {
public:
    // Begins with the processing instruction.
    MaxDocument();
    MaxDocument(const MaxDocument&) = delete;
    MaxDocument& operator=(const MaxDocument&) = delete;

    // The document itself, as the parent of elements.
    XmlNode& top() { return document_; }
    // A new element; it is not printed before it is appended to another.
    XmlNode* element(const char* name);
    void addText(XmlNode& element, const char* name, std::string_view value);
    // The same for texts that come again and again: each is kept once.
    void addRepeatedText(XmlNode& element, const char* name, std::string_view value);
    void addInteger(XmlNode& element, const char* name, std::int64_t value);
    // With six decimals.
    void addLength(XmlNode& element, const char* name, double value);
    // A `point` for each vertex and then a `face` for each triangle become the content of an element, which must have
    // none of its own.
    void setMesh(const XmlNode& element, const Mesh& mesh);

    // Text values changed so far.
    std::size_t replacedTexts() const { return replacedTexts_; }

    void print(tolmar::OutputFile& file) const;

private:
    struct Triangles {
        std::vector<double> positions;
        std::vector<std::uint32_t> indices;
    };
    class Printer;

    std::string_view cleaned(std::string_view value);
    void append(XmlNode& element, const char* name, std::string_view kept);

    rapidxml::xml_document<char> document_;
    std::unordered_map<const XmlNode*, Triangles> meshes_;  // looked up, never walked
    std::unordered_set<std::string_view> repeated_;         // views of the document's pool
    std::string clean_;
    std::size_t replacedTexts_ = 0;
};

}  // namespace maxfile
