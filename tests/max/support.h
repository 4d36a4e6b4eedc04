// Runs MAXOUT on a model and a script, and reads both files back by libxml2.
#pragma once

#include "max/command.h"
#include "support/export_test.h"
#include "tolmar/code_page.h"

#include <libxml/parser.h>
#include <libxml/tree.h>

#include <deque>
#include <memory>
#include <utility>

struct Element {
    std::string name;
    std::vector<std::pair<std::string, std::string>> attributes;  // in the order of the file, UTF-8
    std::vector<Element> children;

    std::string operator[](const std::string& key) const {
        for (const auto& [name_, value] : attributes) {
            if (name_ == key) {
                return value;
            }
        }
        return "(none)";
    }
    std::size_t number(const std::string& key) const { return std::stoul((*this)[key]); }
    // The attributes' names with blanks between.
    std::string attributeNames() const {
        std::string names;
        for (const auto& [name_, value] : attributes) {
            names += (names.empty() ? "" : " ") + name_;
        }
        return names;
    }
    // The first element of a value of `key` below this one; fails the test when there is none.
    const Element& find(const std::string& key, const std::string& value) const {
        if (const Element* found = lookFor(key, value)) {
            return *found;
        }
        ADD_FAILURE() << "no element with " << key << " = " << value;
        static const Element none;
        return none;
    }
    bool has(const std::string& key, const std::string& value) const { return lookFor(key, value) != nullptr; }
    const Element* lookFor(const std::string& key, const std::string& value) const {
        for (const Element& child : children) {
            if (child[key] == value) {
                return &child;
            }
            if (const Element* found = child.lookFor(key, value)) {
                return found;
            }
        }
        return nullptr;
    }
};

inline std::string utf8(const xmlChar* text) {
    return reinterpret_cast<const char*>(text);
}

inline Element elementOf(const xmlNode* node) {
    Element element{utf8(node->name), {}, {}};
    for (const xmlAttr* at = node->properties; at != nullptr; at = at->next) {
        xmlChar* value = xmlNodeGetContent(reinterpret_cast<const xmlNode*>(at));
        element.attributes.emplace_back(utf8(at->name), utf8(value));
        xmlFree(value);
    }
    for (const xmlNode* child = node->children; child != nullptr; child = child->next) {
        if (child->type == XML_ELEMENT_NODE) {
            element.children.push_back(elementOf(child));
        }
    }
    return element;
}

// The root element. The declaration says UTF-8, the bytes are those of the code page: what a reader of such a file does
// first. In the code page UTF-8 the bytes go to the parser as they are.
inline Element parseXml(const std::string& bytes) {
    const bool isUtf8 = std::string(TESSARO_CODE_PAGE) == "UTF-8";
    const std::string text = isUtf8 ? bytes : tolmar::toUtf8(bytes);
    const std::unique_ptr<xmlDoc, decltype(&xmlFreeDoc)> document(
        xmlReadMemory(text.data(), static_cast<int>(text.size()), "max", nullptr, XML_PARSE_NOERROR | XML_PARSE_HUGE),
        xmlFreeDoc);
    if (document == nullptr || xmlDocGetRootElement(document.get()) == nullptr) {
        ADD_FAILURE() << "no valid XML: " << text.substr(0, 500);
        return {};
    }
    return elementOf(xmlDocGetRootElement(document.get()));
}

// Answers input boxes in order; cancels when none is left.
class MaxUi : public TestUi {
public:
    std::optional<std::string> inputBox(const std::string& prompt) override {
        prompts.push_back(prompt);
        if (inputs.empty()) {
            return std::nullopt;
        }
        std::string text = inputs.front();
        inputs.pop_front();
        return text;
    }
    std::deque<std::string> inputs{"PC", "ST"};
    std::vector<std::string> prompts;
};

inline const char* const boxPrimitive = R"({"type":"HextBox3D","point":[0,0,0],"xLength":1,"yLength":2,"zLength":3.5})";

class MaxTest : public ExportTest<MaxUi> {
protected:
    MaxTest() { ui.answer = out().string(); }

    void script(const std::string& lua) { root.write("plugins/maxoutplugins.lua", lua); }
    // A script whose functions are these; the others give a mesh without properties.
    void scriptWith(const std::string& lua) {
        script("function isObjChangeMesh() return true end\nfunction getObjCenterPt() end\n"
               "function changeObj4Spline() return {} end\nfunction getPartNum() return 1 end\n"
               "function getObjsize() return '' end\nfunction maxOutdata() return {} end\n" +
               lua);
    }
    void run() {
        maxout();
        geometry = parseXml(root.read("out/P.orna"));
        properties = parseXml(root.read("out/P.xml"));
    }
    Element geometry;
    Element properties;
};
