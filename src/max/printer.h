// Printing of MAXOUT's documents into a file, element by element, in the form of RapidXML's own printer.
#pragma once

#include "max/rapidxml.h"
#include "tolmar/file.h"

#include <array>
#include <cstdint>
#include <string_view>

namespace maxfile {

// The longest text of a double with six decimals, its sign and point included.
inline constexpr std::size_t longestLength = 320;
// A length with six decimals, as C's "%f" gives it.
std::string_view lengthText(double value, char (&text)[longestLength]);

// A `point` or `face`: one element whose four values change from one to the next, so that a mesh needs no element for
// each.
class CornerElement {
public:
    explicit CornerElement(const char* name);
    CornerElement(const CornerElement&) = delete;
    CornerElement& operator=(const CornerElement&) = delete;
    // Attribute 0 is `index`, 1 to 3 are the corners.
    void setInteger(std::size_t attribute, std::uint64_t value);
    void setLength(std::size_t attribute, double value);
    const rapidxml::xml_node<char>& node() const { return node_; }
    // The most characters that it takes, indents aside.
    static constexpr std::size_t longest = 4 * (longestLength + 16) + 16;

private:
    struct Value {
        rapidxml::xml_attribute<char> attribute;
        char text[longestLength];
    };
    rapidxml::xml_node<char> node_{rapidxml::node_element};
    std::array<Value, 4> values_;
};

// Where the printed characters go.
class XmlSink {
public:
    using Node = rapidxml::xml_node<char>;

    explicit XmlSink(tolmar::OutputFile& file) : file_(file) {}
    // A node with its attributes and everything below it, and the line end behind it.
    void node(const Node& node, int depth);
    // The same for a corner, without a look at the room for each character.
    void corner(const CornerElement& corner, int depth);
    void startTag(const Node& node, int depth);
    void endTag(const Node& node, int depth);
    // The line end behind the whole document. Nothing may follow; without it the end of the file is missing.
    void endDocument();

private:
    class Iterator;
    void flush();
    void put(char c) {
        if (used_ == buffer_.size()) {
            flush();
        }
        buffer_[used_++] = c;
    }

    tolmar::OutputFile& file_;
    std::array<char, 1 << 14> buffer_{};
    std::size_t used_ = 0;
};

}  // namespace maxfile
