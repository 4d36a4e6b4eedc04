// Short texts put together from texts and numbers, without memory of their own: TextLine("V-", 12).
//
// A line passes for a text where one is asked for, and lives as long as the expression that it stands in.
#pragma once

#include "generator/planning/rounding.h"
#include "sources/json/writing/number_text.h"

#include <cassert>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace plant::generator {

class TextLine {
public:
    // Texts, whole numbers and numbers of at most three decimals; 200 letters at most.
    template <typename... Parts>
    explicit TextLine(const Parts&... parts) {
        (add(parts), ...);
    }
    operator std::string_view() const { return {text_, static_cast<std::size_t>(end_ - text_)}; }

private:
    void add(std::string_view text) {
        assert(text.size() <= room());
        std::memcpy(end_, text.data(), text.size());
        end_ += text.size();
    }
    void add(std::int64_t value) {
        assert(longestNumber <= room());
        end_ = writeWhole(end_, value);
    }
    void add(int value) { add(std::int64_t{value}); }
    void add(double value) {
        assert(longestNumber <= room());
        end_ = writeNumber(end_, thousandths(value));
    }
    std::size_t room() const { return static_cast<std::size_t>(text_ + sizeof text_ - end_); }

    char text_[200 + longestNumber];
    char* end_ = text_;
};

}  // namespace plant::generator
