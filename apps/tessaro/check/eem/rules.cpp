#include "tessaro/check/eem/rules.h"

#include "tolmar/code_page.h"

#include <algorithm>

namespace check {

using readers::eem::Block;

void eemNames(const readers::eem::EemContent& content, readers::Findings& findings) {
    for (const Block& block : content.blocks) {
        if (tolmar::fromUtf8(tolmar::toUtf8(block.name)) != block.name) {
            findings.push_back(
                {"object " + std::to_string(block.id), "its name is no text of the code page " TESSARO_CODE_PAGE});
        }
    }
}

void eemPair(const readers::eem::EemContent& content, const std::vector<readers::eem::SideMember>& members,
             readers::Findings& findings) {
    const std::size_t common = std::min(content.blocks.size(), members.size());
    for (std::size_t i = 0; i < common; ++i) {
        const Block& block = content.blocks[i];
        if (members[i].key != std::to_string(block.id) || members[i].name != block.name) {
            findings.push_back({"member " + members[i].key, "\"" + members[i].name + "\" where the EEM file has " +
                                                                std::to_string(block.id) + " \"" + block.name + "\""});
            return;
        }
    }
    if (content.blocks.size() != members.size()) {
        findings.push_back({"member " + std::to_string(common), std::to_string(members.size()) + " members beside " +
                                                                    std::to_string(content.blocks.size()) + " blocks"});
    }
}

}  // namespace check
