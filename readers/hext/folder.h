// Reads a folder of macro files in the order in which the target runs them and rebuilds the names of its elements: what
// is entered or referred to must have been created by then, nothing is created twice, no name is too long.
#pragma once

#include <filesystem>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

class HextFolder {
public:
    // Reads every file of the folder that is there, and adds what is wrong with it to `findings` as "file:line: what".
    // Texts stay in the bytes of the files.
    static std::vector<std::string> check(const std::filesystem::path& folder);

private:
    explicit HextFolder(std::filesystem::path folder) : folder_(std::move(folder)) {}

    void readFile(const char* name);
    void readLine(std::string_view line);
    void readMacro(std::string_view line);
    void readCatalogueCall(std::string_view function, const std::vector<std::string>& arguments);
    void readPipeCall(std::string_view function, const std::vector<std::string>& arguments);
    void readDesignCall(std::string_view function, const std::vector<std::string>& arguments);
    void readNew(std::string_view rest);
    void readOld(std::string_view rest);
    void readRow(std::string_view line);
    void readAttribute(std::string_view line);
    void readAssignment(std::string_view line);
    void testQuotes(std::string_view line);

    void create(std::string_view name);
    void require(std::string_view name);
    // A reference of a macro argument: "/name", or "unset" for none.
    void requireReference(std::string_view argument);
    void requireRow(std::string_view argument);
    void find(const std::string& what);
    std::string valueOf(std::string_view argument) const;

    std::filesystem::path folder_;
    std::vector<std::string> findings_;
    std::string place_;
    std::size_t line_ = 0;
    std::map<std::string, std::string, std::less<>> created_;  // name to the place of its creation
    std::set<std::string, std::less<>> rows_;                  // specification rows
    std::set<std::string, std::less<>> attributes_;            // user attributes
    std::map<std::string, std::string, std::less<>> variables_;
    std::string specification_;
};
