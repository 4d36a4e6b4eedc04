// A locale that writes numbers with a comma, made for a test: machines that build seldom have one.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <string>

// Below the folder; the environment then names it as everybody's locale, until the destructor.
class CommaLocale {
public:
    explicit CommaLocale(const std::filesystem::path& folder) {
        const std::string command =
            "localedef -i de_DE -f UTF-8 '" + (folder / "comma.UTF-8").string() + "' 2>/dev/null";
        isThere_ = std::system(command.c_str()) == 0;
        ::setenv("LOCPATH", folder.c_str(), 1);
        ::setenv("LC_ALL", "comma.UTF-8", 1);
    }
    ~CommaLocale() {
        ::unsetenv("LOCPATH");
        ::unsetenv("LC_ALL");
    }
    CommaLocale(const CommaLocale&) = delete;
    CommaLocale& operator=(const CommaLocale&) = delete;

    // False where the machine cannot make one.
    bool isThere() const { return isThere_; }

private:
    bool isThere_ = false;
};
