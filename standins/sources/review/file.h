// One review model as it is read: the bytes of its files, what was found in them, and where reports go.
#pragma once

#include "sources/attributes/index.h"
#include "sources/report.h"
#include "sources/review/tree.h"
#include "sources/rvm/survey.h"
#include "sources/text_decoder.h"

#include <memory>
#include <string>
#include <string_view>

namespace plant::review {

struct File {
    std::string_view bytes;  // of the RVM file
    std::string name;        // for places
    std::string textName;    // of its attribute text; empty without one
    rvm::Survey survey;
    const attributes::Index* index = nullptr;
    TextDecoder decoder;  // of names in the RVM file and of the attribute text
    SourceReport* report = nullptr;

    // Valid until the next call, as TextDecoder has it.
    std::string_view nameOf(const Tree& tree, const Node& node) { return decoder.decode(tree.rawName(node)); }
    void tellAt(std::string_view code, SourceGrade grade, std::uint64_t offset, std::string_view text) const;
    void tellLine(std::string_view code, SourceGrade grade, std::uint32_t line, std::string_view text) const;
};

}  // namespace plant::review
