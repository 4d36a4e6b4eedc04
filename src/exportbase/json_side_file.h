// The JSON file that exports write beside their main file: one object at the top, whose members are objects.
//
// It is composed while the tree is walked and written at the end, in cJSON's formatted form: a member a line, tabs for
// the depth, a tab behind the colon. Keys and values are texts in the code page, which go out byte by byte, and stand
// in the order in which they come; equal keys are not looked for.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

class JsonSideFile {
public:
    // A member that is an object; what follows goes into it until its endObject. Objects may be nested.
    void beginObject(std::string_view key);
    // The same under a number.
    void beginObject(std::int64_t key);
    void endObject();
    // A member that is a text.
    void addText(std::string_view key, std::string_view value);
    // Forgets everything.
    void clear();
    // Writes the file in text mode; every object must be closed. False when it could not be written whole, which the
    // run report knows. What was composed stays.
    bool write(std::string_view path) const;

private:
    // Where text is added. Blocks keep a long text from being copied as it grows.
    std::string& block();
    std::string& startLine();
    std::string& startMember(std::string_view key);

    std::vector<std::string> blocks_;
    std::size_t depth_ = 1;
    bool hasMember_ = false;  // of the object in hand
};

// The side file of a main file: its folder, a backslash, its name up to the last dot, and ".json". The last separator
// of the path is its last backslash, or else its last slash.
std::string sideFilePath(std::string_view mainPath);
