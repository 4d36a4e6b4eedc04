#include "max/printer.h"

#include <charconv>
#include <iterator>

namespace maxfile {

namespace {

constexpr int decimals = 6;
constexpr const char* cornerNames[] = {"index", "pointX", "pointY", "pointZ"};

}  // namespace

std::string_view lengthText(double value, char (&text)[longestLength]) {
    const auto end = std::to_chars(text, text + sizeof text, value, std::chars_format::fixed, decimals).ptr;
    return {text, static_cast<std::size_t>(end - text)};
}

// What RapidXML's printer writes to.
class XmlSink::Iterator {
public:
    using iterator_category = std::output_iterator_tag;
    using value_type = void;
    using difference_type = std::ptrdiff_t;
    using pointer = void;
    using reference = void;

    explicit Iterator(XmlSink& sink) : sink_(&sink) {}
    Iterator& operator*() { return *this; }
    Iterator& operator++() { return *this; }
    Iterator& operator++(int) { return *this; }
    Iterator& operator=(char c) {
        sink_->put(c);
        return *this;
    }

private:
    XmlSink* sink_;
};

void XmlSink::node(const Node& node, int depth) {
    rapidxml::internal::print_node(Iterator(*this), &node, 0, depth);
}

void XmlSink::corner(const CornerElement& corner, int depth) {
    const std::size_t most = CornerElement::longest + static_cast<std::size_t>(depth);
    if (most > buffer_.size()) {
        node(corner.node(), depth);
        return;
    }
    if (buffer_.size() - used_ < most) {
        flush();
    }
    char* end = rapidxml::internal::print_node(buffer_.data() + used_, &corner.node(), 0, depth);
    used_ = static_cast<std::size_t>(end - buffer_.data());
}

void XmlSink::startTag(const Node& node, int depth) {
    Iterator out = rapidxml::internal::fill_chars(Iterator(*this), depth, '\t');
    out = '<';
    out = rapidxml::internal::copy_chars(node.name(), node.name() + node.name_size(), out);
    out = rapidxml::internal::print_attributes(out, &node, 0);
    out = '>';
    out = '\n';
}

void XmlSink::endTag(const Node& node, int depth) {
    Iterator out = rapidxml::internal::fill_chars(Iterator(*this), depth, '\t');
    out = '<';
    out = '/';
    out = rapidxml::internal::copy_chars(node.name(), node.name() + node.name_size(), out);
    out = '>';
    out = '\n';
}

void XmlSink::endDocument() {
    put('\n');
    flush();
}

void XmlSink::flush() {
    file_.write({buffer_.data(), used_});
    used_ = 0;
}

CornerElement::CornerElement(const char* name) {
    node_.name(name);
    for (std::size_t i = 0; i < values_.size(); ++i) {
        values_[i].attribute.name(cornerNames[i]);
        node_.append_attribute(&values_[i].attribute);
    }
}

void CornerElement::setInteger(std::size_t attribute, std::uint64_t value) {
    Value& target = values_[attribute];
    const char* end = std::to_chars(target.text, target.text + sizeof target.text, value).ptr;
    target.attribute.value(target.text, static_cast<std::size_t>(end - target.text));
}

void CornerElement::setLength(std::size_t attribute, double value) {
    Value& target = values_[attribute];
    const std::string_view text = lengthText(value, target.text);
    target.attribute.value(text.data(), text.size());
}

}  // namespace maxfile
