// Expected files of a test program, which stand in UTF-8 in tests/<room>/golden. TESSARO_REBASE=1 writes them anew.
#pragma once

#include "support/files.h"
#include "tolmar/code_page.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

inline bool isRebasing() {
    return std::getenv("TESSARO_REBASE") != nullptr;
}

// A file of the code page with bare line feeds, so that it can be read.
inline std::string readable(const std::string& bytes) {
    std::string text = tolmar::toUtf8(bytes);
    std::erase(text, '\r');
    return text;
}

// The first line that differs, with its number; empty when none does.
inline std::string firstDifference(const std::string& expected, const std::string& actual) {
    std::istringstream a(expected);
    std::istringstream b(actual);
    std::string lineA;
    std::string lineB;
    for (int number = 1;; ++number) {
        const bool moreA = static_cast<bool>(std::getline(a, lineA));
        const bool moreB = static_cast<bool>(std::getline(b, lineB));
        if (moreA != moreB || lineA != lineB) {
            return "line " + std::to_string(number) + "\n  expected: " + (moreA ? lineA : "(end)") +
                   "\n  written:  " + (moreB ? lineB : "(end)");
        }
        if (!moreA) {
            break;
        }
    }
    return expected == actual ? "" : "the end of the last line";
}

inline std::filesystem::path goldenFolder(const std::string& room) {
    return std::filesystem::path(TESSARO_SOURCE_DIR) / "tests" / room / "golden";
}

// Fails the test unless `text` is that of the expected file, and when it is empty.
inline void expectGolden(const std::string& room, const std::string& name, const std::string& text) {
    const std::filesystem::path path = goldenFolder(room) / name;
    if (isRebasing()) {
        std::filesystem::create_directories(path.parent_path());
        std::ofstream(path, std::ios::binary) << text;
    }
    EXPECT_EQ(firstDifference(fileBytes(path), text), "") << path;
    EXPECT_FALSE(text.empty()) << path;
}
