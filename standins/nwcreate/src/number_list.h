// A growing list of numbers for calls that come by the million: whoever has asked for room writes behind its end and
// tells afterwards. Keeps its memory when cleared.
#pragma once

#include <algorithm>
#include <cstddef>
#include <memory>
#include <span>

namespace nwcreate {

template <typename Number>
class NumberList {
public:
    std::size_t size() const { return size_; }
    bool empty() const { return size_ == 0; }
    const Number* data() const { return data_.get(); }
    const Number* begin() const { return data_.get(); }
    const Number* end() const { return data_.get() + size_; }
    operator std::span<const Number>() const { return {data_.get(), size_}; }
    void clear() { size_ = 0; }

    Number* end() { return data_.get() + size_; }
    std::size_t room() const { return capacity_ - size_; }
    // Numbers up to here were written into the room behind the end.
    void endAt(const Number* end) { size_ = static_cast<std::size_t>(end - data_.get()); }
    // Makes room.
    void append(std::span<const Number> numbers) {
        if (room() < numbers.size()) {
            grow(size_ + numbers.size());
        }
        std::copy(numbers.begin(), numbers.end(), data_.get() + size_);
        size_ += numbers.size();
    }

private:
    void grow(std::size_t needed) {
        constexpr std::size_t fewest = 256;
        const std::size_t capacity = std::max({needed, 2 * capacity_, fewest});
        auto bigger = std::make_unique_for_overwrite<Number[]>(capacity);
        std::copy(data_.get(), data_.get() + size_, bigger.get());
        data_ = std::move(bigger);
        capacity_ = capacity;
    }

    std::unique_ptr<Number[]> data_;
    std::size_t size_ = 0;
    std::size_t capacity_ = 0;
};

}  // namespace nwcreate
