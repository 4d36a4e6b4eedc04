// A growing list of numbers, for streams of vertices and indices: new places are not initialised before they are
// filled, and the memory stays when the list is cleared, since one section follows the other.
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

    // The numbers must not be the list's own.
    void append(std::span<const Number> numbers) {
        if (capacity_ - size_ < numbers.size()) {
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
