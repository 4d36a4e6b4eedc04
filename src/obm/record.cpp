#include "obm/record.h"

#include "tolmar/code_page.h"

#include <algorithm>
#include <cstring>

namespace pmodel {

namespace {

constexpr std::size_t blockSize = std::size_t{64} << 10U;
constexpr const char* rootId = "-12581";

}  // namespace

std::string_view TextKeeper::keep(std::string_view text) {
    if (text.size() > left_) {
        left_ = std::max(blockSize, text.size());
        next_ = blocks_.emplace_back(std::make_unique_for_overwrite<char[]>(left_)).get();
    }
    if (!text.empty()) {
        std::memcpy(next_, text.data(), text.size());
    }
    const std::string_view kept(next_, text.size());
    next_ += text.size();
    left_ -= text.size();
    return kept;
}

const std::string& TextKeeper::shared(std::string_view text) {
    key_ = text;
    return *shared_.insert(key_).first;
}

void PropertyMap::set(TextKeeper& texts, std::string_view name, std::string_view value) {
    const auto at = std::lower_bound(entries_.begin(), entries_.end(), name,
                                     [](const Entry& entry, std::string_view wanted) { return *entry.name < wanted; });
    if (at != entries_.end() && *at->name == name) {
        at->value = texts.keep(value);
    } else {
        entries_.insert(at, {&texts.shared(name), texts.keep(value)});
    }
}

ObmTree::ObmTree() : root_(&create()) {
    root_->databaseId = rootId;
}

ObmNode& ObmTree::create() {
    ObmNode& node = nodes_.emplace_back();
    node.databaseId = nextObmId();
    return node;
}

ObmNode& ObmTree::add(ObmNode& parent, std::string_view name) {
    ObmNode& node = create();
    node.name = tolmar::toWide(name);
    parent.children.push_back(&node);
    return node;
}

std::string nextObmId() {
    static std::int64_t counter = 0;
    return std::to_string(counter++);
}

std::string materialName(int code) {
    return "m" + std::to_string(code);
}

std::set<int>& materialCodes() {
    static std::set<int> codes;
    return codes;
}

}  // namespace pmodel
