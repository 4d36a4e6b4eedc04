#include "max/document.h"

#include "max/printer.h"
#include "tolmar/code_page.h"

#include <algorithm>
#include <charconv>

namespace maxfile {

namespace {

constexpr bool isUtf8CodePage = std::string_view(TESSARO_CODE_PAGE) == "UTF-8";
constexpr const char* declaration = "xml version='1.0' encoding='utf-8'";

bool isForbidden(char c) {
    return static_cast<unsigned char>(c) < ' ' && c != '\t' && c != '\n' && c != '\r';
}

// The two code points that are no characters, in UTF-8.
constexpr std::string_view noCharacters[] = {"\xEF\xBF\xBE", "\xEF\xBF\xBF"};

bool isCleanUtf8(std::string_view text) {
    return tolmar::isAscii(text) ||
           (tolmar::isValidUtf8(text) && text.find(noCharacters[0]) == std::string_view::npos &&
            text.find(noCharacters[1]) == std::string_view::npos);
}

bool isClean(std::string_view text) {
    return std::none_of(text.begin(), text.end(), isForbidden) && (!isUtf8CodePage || isCleanUtf8(text));
}

std::string cleanUtf8(std::string_view text) {
    std::u16string wide = tolmar::utf8ToWide(text);
    std::replace_if(
        wide.begin(), wide.end(), [](char16_t unit) { return unit >= 0xFFFE; }, u'?');
    return tolmar::wideToUtf8(wide);
}

}  // namespace

MaxDocument::MaxDocument() {
    document_.append_node(document_.allocate_node(rapidxml::node_pi, declaration));
}

XmlNode* MaxDocument::element(const char* name) {
    return document_.allocate_node(rapidxml::node_element, name);
}

std::string_view MaxDocument::cleaned(std::string_view value) {
    if (isClean(value)) {
        return value;
    }
    ++replacedTexts_;
    clean_ = isUtf8CodePage ? cleanUtf8(value) : std::string(value);
    std::replace_if(clean_.begin(), clean_.end(), isForbidden, ' ');
    return clean_;
}

// RapidXML measures a text of size 0 by itself.
void MaxDocument::append(XmlNode& element, const char* name, std::string_view kept) {
    element.append_attribute(document_.allocate_attribute(name, kept.empty() ? "" : kept.data(), 0, kept.size()));
}

void MaxDocument::addText(XmlNode& element, const char* name, std::string_view value) {
    const std::string_view clean = cleaned(value);
    append(element, name,
           clean.empty() ? clean
                         : std::string_view(document_.allocate_string(clean.data(), clean.size()), clean.size()));
}

void MaxDocument::addRepeatedText(XmlNode& element, const char* name, std::string_view value) {
    const std::string_view clean = cleaned(value);
    const auto known = repeated_.find(clean);
    if (known != repeated_.end()) {
        append(element, name, *known);
    } else if (clean.empty()) {
        append(element, name, clean);
    } else {
        append(element, name,
               *repeated_.emplace(document_.allocate_string(clean.data(), clean.size()), clean.size()).first);
    }
}

void MaxDocument::addInteger(XmlNode& element, const char* name, std::int64_t value) {
    char text[24];
    const char* end = std::to_chars(text, text + sizeof text, value).ptr;
    addText(element, name, {text, static_cast<std::size_t>(end - text)});
}

void MaxDocument::addLength(XmlNode& element, const char* name, double value) {
    char text[longestLength];
    addText(element, name, lengthText(value, text));
}

void MaxDocument::setMesh(const XmlNode& element, const Mesh& mesh) {
    Triangles& triangles = meshes_[&element];
    triangles.positions.assign(mesh.positions.begin(), mesh.positions.end());
    triangles.indices.assign(mesh.indices.begin(), mesh.indices.end());
}

// Walks the document as RapidXML's own printer does; it prints every element without content itself, meshes included.
class MaxDocument::Printer {
public:
    Printer(const MaxDocument& document, XmlSink& sink) : document_(document), sink_(sink) {}

    void children(const XmlNode& parent, int depth) {
        for (const XmlNode* child = parent.first_node(); child != nullptr; child = child->next_sibling()) {
            node(*child, depth);
        }
    }

private:
    void node(const XmlNode& node, int depth) {
        const auto mesh = document_.meshes_.find(&node);
        const bool hasMesh = mesh != document_.meshes_.end();
        if (!hasMesh && node.first_node() == nullptr) {
            sink_.node(node, depth);
            return;
        }
        sink_.startTag(node, depth);
        if (hasMesh) {
            points(mesh->second.positions, depth + 1);
            faces(mesh->second.indices, depth + 1);
        } else {
            children(node, depth + 1);
        }
        sink_.endTag(node, depth);
    }

    void points(const std::vector<double>& positions, int depth) {
        for (std::size_t i = 0; i + 3 <= positions.size(); i += 3) {
            point_.setInteger(0, i / 3);
            for (std::size_t k = 0; k < 3; ++k) {
                point_.setLength(k + 1, positions[i + k]);
            }
            sink_.corner(point_, depth);
        }
    }

    void faces(const std::vector<std::uint32_t>& indices, int depth) {
        for (std::size_t i = 0; i + 3 <= indices.size(); i += 3) {
            face_.setInteger(0, i / 3);
            for (std::size_t k = 0; k < 3; ++k) {
                face_.setInteger(k + 1, indices[i + k]);
            }
            sink_.corner(face_, depth);
        }
    }

    const MaxDocument& document_;
    XmlSink& sink_;
    CornerElement point_{"point"};
    CornerElement face_{"face"};
};

void MaxDocument::print(tolmar::OutputFile& file) const {
    XmlSink sink(file);
    Printer(*this, sink).children(document_, 0);
    sink.endDocument();
}

}  // namespace maxfile
