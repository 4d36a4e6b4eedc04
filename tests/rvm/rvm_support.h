// What the tests of the RVM export share: files in memory, bytes as text, and reading back through the program's
// checker.
#pragma once

#include "../../apps/tessaro/checkers/rvm_reader.h"
#include "rvm/rvm_file.h"
#include "rvm/rvm_pair.h"
#include "tolmar/file.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <string_view>

// Keeps what is written; beyond `limit` bytes every write fails.
class MemorySink final : public tolmar::Sink {
public:
    explicit MemorySink(std::string& bytes, std::size_t limit = std::string::npos) : bytes_(bytes), limit_(limit) {}
    bool write(const char* data, std::size_t size) override {
        if (size > limit_ - bytes_.size()) {
            return false;
        }
        bytes_.append(data, size);
        return true;
    }
    bool writeAt(std::uint64_t, const char*, std::size_t) override { return false; }
    bool truncate(std::uint64_t) override { return false; }
    bool close() override { return true; }

private:
    std::string& bytes_;
    std::size_t limit_;
};

inline tolmar::OutputFile memoryFile(std::string& bytes, tolmar::FileMode mode = tolmar::FileMode::Binary,
                                     std::size_t limit = std::string::npos) {
    return {std::make_unique<MemorySink>(bytes, limit), mode};
}

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

inline std::string hexOf(std::string_view bytes) {
    std::string hex;
    for (const char c : bytes) {
        const auto value = static_cast<unsigned char>(c);
        hex += "0123456789ABCDEF"[value / 16];
        hex += "0123456789ABCDEF"[value % 16];
        hex += ' ';
    }
    return hex;
}

inline std::string allFindings(const rvmcheck::Findings& findings) {
    std::string text;
    for (const rvmcheck::Finding& finding : findings) {
        text += finding.place + ": " + finding.text + "\n";
    }
    return text;
}

// A pair of files in memory, read back.
struct ReadPair {
    rvmcheck::RvmContent rvm;
    rvmcheck::AttributeContent text;
    rvmcheck::Findings findings;

    ReadPair(std::string_view rvmBytes, std::string_view textBytes) {
        rvm = rvmcheck::readRvm(rvmBytes, findings, true);
        text = rvmcheck::readAttributes(textBytes, findings);
        rvmcheck::checkPair(rvm, text, findings);
        if (text.isRootClosed()) {
            rvmcheck::checkStrictForm(rvm, text, findings);
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
                         (rvm.primitives[primitive].isObstruction ? "!" : "");
            }
            lines += "\n";
        }
        return lines;
    }
};
