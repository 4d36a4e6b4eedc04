// The export tree of OBMOUT: plain records, filled in one pass over the model and handed to the SDK afterwards.
#pragma once

#include <cstdint>
#include <deque>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

namespace pmodel {

// Keeps texts for as long as it lives.
class TextKeeper {
public:
    std::string_view keep(std::string_view text);
    // The one copy of a text that comes again and again.
    const std::string& shared(std::string_view text);

private:
    std::vector<std::unique_ptr<char[]>> blocks_;
    std::size_t left_ = 0;
    char* next_ = nullptr;
    std::unordered_set<std::string> shared_;
    std::string key_;
};

// A map from name to value, ordered by the bytes of the names. Its texts stand in a keeper.
class PropertyMap {
public:
    struct Entry {
        const std::string* name;
        std::string_view value;
    };
    // A second value for a name replaces the first.
    void set(TextKeeper& texts, std::string_view name, std::string_view value);
    std::vector<Entry>::const_iterator begin() const { return entries_.begin(); }
    std::vector<Entry>::const_iterator end() const { return entries_.end(); }
    std::size_t size() const { return entries_.size(); }

private:
    std::vector<Entry> entries_;
};

// Names are UTF-16, ids ASCII, properties in the code page.
struct ObmNode {
    std::u16string name;
    std::string databaseId;                // value of the counter at creation
    std::vector<int> materials;            // a code for each of geometryIds
    std::vector<ObmNode*> children;        // in order of addition
    std::vector<std::string> geometryIds;  // meshes of this record
    PropertyMap properties;
};

// Owns all records of a run.
class ObmTree {
public:
    ObmTree();
    ObmTree(const ObmTree&) = delete;
    ObmTree& operator=(const ObmTree&) = delete;

    ObmNode& root() { return *root_; }
    // A new record, last under its parent. The name is in the code page.
    ObmNode& add(ObmNode& parent, std::string_view name);
    void setProperty(ObmNode& node, std::string_view name, std::string_view value) {
        node.properties.set(texts_, name, value);
    }

private:
    ObmNode& create();

    TextKeeper texts_;
    std::deque<ObmNode> nodes_;
    ObmNode* root_;
};

// The running counter of the module, in decimal; it goes up with each call and is never reset, so that no two records
// or meshes bear one id while the module stays loaded.
std::string nextObmId();

// The name and id of the material of a code (exportbase/material_code).
std::string materialName(int code);
// All codes used since the module was loaded: the materials of an earlier run go into a later package as well.
std::set<int>& materialCodes();

}  // namespace pmodel
