// What the tests of the RVM export share: bytes as text, and reading back through the program's checker.
#pragma once

#include "rvm/format/writer.h"
#include "rvm/pair.h"
#include "support/memory_file.h"
#include "tessaro/check/rvm/rules.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

// "48 65" as bytes.
inline std::string bytesOf(std::string_view hex) {
    std::string bytes;
    const auto digit = [](char c) { return c <= '9' ? c - '0' : c - 'A' + 10; };
    for (std::size_t i = 0; i < hex.size(); ++i) {
        if (hex[i] != ' ' && hex[i] != '\n') {
            bytes += static_cast<char>(16 * digit(hex[i]) + digit(hex[i + 1]));
            ++i;
        }
    }
    return bytes;
}

// A pair of files in memory, read back.
struct ReadPair {
    readers::rvm::RvmContent rvm;
    readers::rvm::AttributeContent text;
    readers::Findings findings;

    ReadPair(std::string_view rvmBytes, std::string_view textBytes) {
        rvm = readers::rvm::readRvm(rvmBytes, findings);
        text = readers::rvm::readAttributes(textBytes, findings);
        check::rvmPair(rvm, text, findings);
        if (text.isRootClosed()) {
            check::rvmStrictForm(rvm, text, findings);
        }
        EXPECT_EQ(allFindings(findings), "");
        EXPECT_TRUE(rvm.isWhole);
    }

    // Every group as "path[material]" and its primitives as " kind", or " kind!" for an obstruction; a line each.
    std::string groups() const {
        std::string lines;
        for (std::uint32_t i = 0; i < rvm.groups.size(); ++i) {
            lines += rvm.pathOf(i) + "[" + std::to_string(rvm.groups[i].material) + "]";
            for (const std::uint32_t primitive : rvm.groups[i].primitives) {
                lines += " " + std::to_string(rvm.primitives[primitive].kind) +
                         (rvm.primitives[primitive].isObstruction() ? "!" : "");
            }
            lines += "\n";
        }
        return lines;
    }
};
