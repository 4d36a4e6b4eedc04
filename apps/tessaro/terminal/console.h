// What the program says: UTF-8 on standard error and in the log file, with the progress between the lines.
#pragma once

#include "tessaro/terminal/progress_view.h"

#include <cstdio>
#include <filesystem>
#include <set>
#include <string>
#include <string_view>

enum class Verbosity { Quiet, Normal, Verbose };

class Console {
public:
    Console(Verbosity verbosity, ProgressStyle progress);
    ~Console();
    Console(const Console&) = delete;
    Console& operator=(const Console&) = delete;

    // From now on everything goes into the file too, whatever the verbosity; false when it cannot be opened.
    bool openLog(const std::filesystem::path& file);
    // Closes the log; false when a write into it failed.
    bool closeLog();

    // Text of the command line, whole lines or not.
    void print(std::string_view utf8);
    // A line of its own: told unless quiet, told always, told when verbose.
    void note(std::string_view utf8);
    void error(std::string_view utf8);
    void detail(std::string_view utf8);
    // Whether `error` has told exactly this.
    bool hasTold(const std::string& error) const { return errors_.count(error) != 0; }
    void progress(const tolmar::ProgressState& state);
    Verbosity verbosity() const { return verbosity_; }

private:
    void emit(std::string_view utf8, bool shown);
    void line(std::string_view utf8, bool shown);
    void show(std::string_view utf8);

    Verbosity verbosity_;
    ProgressView view_;
    std::set<std::string> errors_;
    std::FILE* log_ = nullptr;
    bool screenAtLineStart_ = true;
    bool logAtLineStart_ = true;
    // A line end that was put in for the progress; the next text may bring its own.
    bool borrowedLineEnd_ = false;
};
