// A list of attributes that owns its texts, such as a script's result.
#pragma once

#include "platform/kvparams.h"

#include <cstddef>
#include <memory>
#include <string_view>
#include <vector>

// Entries are views into the list's storage and stay valid until clear, reset or destruction. clear keeps the storage,
// so that a list used again and again stops allocating.
class ParamList {
public:
    ParamList() = default;
    ParamList(ParamList&&) noexcept = default;
    ParamList& operator=(ParamList&&) noexcept = default;
    ParamList(const ParamList&) = delete;
    ParamList& operator=(const ParamList&) = delete;

    void clear();

    // A text ends at its first zero byte, as everywhere on the platform.
    void addText(std::string_view key, std::string_view text, std::string_view description = {});
    void addInteger(std::string_view key, std::int64_t number, std::string_view description = {});
    void addDouble(std::string_view key, double number, std::string_view description = {});
    // A row that could not become an entry.
    void countSkipped() { ++skipped_; }

    const std::vector<KVParams>& entries() const { return entries_; }
    std::vector<KVParams>::const_iterator begin() const { return entries_.begin(); }
    std::vector<KVParams>::const_iterator end() const { return entries_.end(); }
    std::size_t size() const { return entries_.size(); }
    bool empty() const { return entries_.empty(); }
    const KVParams& operator[](std::size_t index) const { return entries_[index]; }
    std::size_t skipped() const { return skipped_; }

private:
    struct Block {
        std::unique_ptr<char[]> bytes;
        std::size_t size = 0;
    };
    std::string_view keep(std::string_view text);
    void nextBlock(std::size_t needed);
    KVParams& append(std::string_view key, std::string_view description);

    std::vector<KVParams> entries_;
    std::vector<Block> blocks_;
    std::size_t block_ = 0;  // the block in use
    std::size_t used_ = 0;   // bytes used of it
    std::size_t skipped_ = 0;
};
