// The JSON file that exports write beside their main file: one object at the top, whose members are objects.
//
// It is composed while the tree is walked and written at the end, in cJSON's formatted form. Keys and values are texts
// in the code page and stand in the order in which they come; equal keys are not looked for.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

class JsonSideFile {
public:
    // Its members stand at this depth: 1 in a file, more in what goes into one by addObject.
    explicit JsonSideFile(std::size_t depth = 1) : depth_(depth) {}
    // A member that is an object; what follows goes into it until its endObject. Objects may be nested.
    void beginObject(std::string_view key);
    // The same under a number.
    void beginObject(std::int64_t key);
    void endObject();
    // A member that is a text.
    void addText(std::string_view key, std::string_view value);
    // A member that is an object, from the members that another side file composed one level deeper.
    void addObject(std::int64_t key, std::string_view members);
    // What was composed, for addObject; every object must be closed.
    std::string members() const;
    // Forgets everything.
    void clear();
    // Writes the file in text mode; every object must be closed. False when it could not be written whole, which the
    // run report knows. What was composed stays.
    bool write(std::string_view path) const;

private:
    // Bytes of the text, which is never copied as a whole.
    struct Block {
        std::unique_ptr<char[]> bytes;
        std::size_t size = 0;
        std::size_t used = 0;
    };
    // A place for this many bytes; keep() counts those that were used.
    char* room(std::size_t size);
    void keep(const char* end);
    char* startLine(char* at) const;
    std::size_t lineRoom() const;
    char* printPiece(char* at, std::string_view text);
    char* putQuoted(char* at, std::string_view text);
    char* startMember(std::string_view key, std::size_t more);
    char* startMember(std::int64_t key, std::size_t more);
    void openObject(char* at);

    std::vector<Block> blocks_;
    std::string terminated_;
    std::size_t depth_;
    bool hasMember_ = false;  // of the object in hand
};

// The side file of a main file: its folder, a backslash, its name up to the last dot, and ".json". The last separator
// of the path is its last backslash, or else its last slash.
std::string sideFilePath(std::string_view mainPath);
