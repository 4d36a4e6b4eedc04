// Files in memory, and their bytes as text.
#pragma once

#include "tolmar/file.h"

#include <memory>
#include <string>
#include <string_view>

// Keeps what is written; beyond `limit` bytes every write fails, and at a limit of 0 the end, too.
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
    bool writeAt(std::uint64_t offset, const char* data, std::size_t size) override {
        bytes_.replace(static_cast<std::size_t>(offset), size, data, size);
        return true;
    }
    bool truncate(std::uint64_t offset) override {
        bytes_.resize(static_cast<std::size_t>(offset));
        return true;
    }
    bool close() override { return limit_ != 0; }

private:
    std::string& bytes_;
    std::size_t limit_;
};

inline tolmar::OutputFile memoryFile(std::string& bytes, tolmar::FileMode mode = tolmar::FileMode::Binary,
                                     std::size_t limit = std::string::npos) {
    return {std::make_unique<MemorySink>(bytes, limit), mode};
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

// Findings of a checker, a line each.
template <typename Findings>
std::string allFindings(const Findings& findings) {
    std::string text;
    for (const auto& finding : findings) {
        text += finding.place + ": " + finding.text + "\n";
    }
    return text;
}
