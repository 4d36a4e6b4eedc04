// A value of a parsed JSON document: the only way in which this code touches JSON.
//
// A JsonValue either owns a whole tree (default constructor and load) or refers to a node of a tree that somebody else
// owns (operator[], at, children). A referring value must not outlive the tree's owner. Failures are standard
// exceptions with the texts named below.
#pragma once

#include <string_view>

struct cJSON;

class JsonValue {
public:
    // An owning value without a tree.
    JsonValue() = default;
    // Refers to `node`; throws "object is invalid" when it is null.
    explicit JsonValue(cJSON* node);
    ~JsonValue();
    JsonValue(JsonValue&& other) noexcept;
    JsonValue& operator=(JsonValue&& other) noexcept;
    JsonValue(const JsonValue&) = delete;
    JsonValue& operator=(const JsonValue&) = delete;

    // Frees a tree that is held, then reads and parses the file; the value owns the new tree. Throws "parse fail" when
    // there is no tree: a file that cannot be opened (said on the command line, too), or that is not JSON.
    void load(std::string_view codePagePath);

    // The member of that name, letter case aside. Reading never fails: a missing member is made, as an empty object,
    // and the value that was asked turns into an object. This changes the tree in memory, never the file.
    JsonValue operator[](const char* key);
    // An element of an array. Throws "json is not array", "pos need greater than 0" for an index below 0, and "object
    // is invalid" for one at or beyond the end. Takes time in proportion to the index: walk a long array by
    // forEachChild.
    JsonValue at(int index) const;
    // Number of elements or members; 0 for anything else.
    int size() const;
    // The number cut to 32 bits; 0 for what is no number.
    int intValue() const;
    // The text of a string, the empty text for what is no string; never null. Lives with the tree.
    const char* stringValue() const;
    // The member name of this value; empty for elements and the root, never null. Lives with the tree.
    const char* name() const;

    using ChildCallback = bool (*)(JsonValue& child, void* userData);
    // Calls back for each child in order. With `stopOnFalse` a false result ends the walk and gives false; otherwise
    // the walk goes to the end and gives true. False when there is no child or no callback.
    bool forEachChild(ChildCallback callback, void* userData, bool stopOnFalse) const;

    // The node itself; null for an owning value without a tree.
    cJSON* node() const { return node_; }

private:
    void release();

    cJSON* node_ = nullptr;
    bool owned_ = true;
};
