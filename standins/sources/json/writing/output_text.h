// JSON text on its way out, in one buffer that grows and is used again.
//
// Nothing here knows what stands before or behind; who writes puts commas and braces.
#pragma once

#include "sources/json/writing/number_text.h"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <span>
#include <string_view>

namespace plant {

class OutputText {
public:
    OutputText();

    std::size_t size() const { return size_; }
    std::string_view view() const { return {buffer_.get(), size_}; }
    std::string_view from(std::size_t start) const { return view().substr(start); }
    // Keeps the first `size` bytes.
    void cutTo(std::size_t size) { size_ = size; }

    // As it stands.
    OutputText& raw(std::string_view text) {
        std::memcpy(room(text.size()), text.data(), text.size());
        size_ += text.size();
        return *this;
    }
    OutputText& raw(char letter) {
        *room(1) = letter;
        ++size_;
        return *this;
    }
    // UTF-8 in quotes, escaped where JSON asks for it. Refuses a zero character and bytes that are no UTF-8.
    OutputText& quoted(std::string_view text);
    OutputText& whole(std::int64_t value) {
        size_ = static_cast<std::size_t>(writeWhole(room(longestNumber), value) - buffer_.get());
        return *this;
    }
    // Refuses what is not finite.
    OutputText& number(double value);
    // Three numbers, each with a comma before it but for the first.
    OutputText& numbers(double x, double y, double z);
    // An array of whole numbers.
    OutputText& list(std::span<const std::int64_t> values);

private:
    char* room(std::size_t count) {
        if (count > capacity_ - size_) [[unlikely]] {
            grow(count);
        }
        return buffer_.get() + size_;
    }
    void grow(std::size_t count);
    void quotedWithEscapes(std::string_view text);

    std::unique_ptr<char[]> buffer_;
    std::size_t size_ = 0;
    std::size_t capacity_ = 0;
};

}  // namespace plant
