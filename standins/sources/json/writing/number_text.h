// Numbers as the text of a model file has them: the shortest text that reads back as the same number, the same on every
// machine and in every locale.
//
// Numbers from 1e-7 up to 1e15 stand without an exponent ("1500", "0.001", "-21.3"), smaller and larger ones with one
// ("1e-09", "1.7e+308"). Minus zero is "-0.0", since "-0" is a whole number to some readers.
#pragma once

#include <cstddef>
#include <cstdint>

namespace plant {

// Letters that the longest number takes.
inline constexpr std::size_t longestNumber = 48;
inline constexpr double firstWithExponent = 1e15;

// Each writes at `at`, where there is room for `longestNumber` letters, and gives the end of what it wrote.
char* writeWhole(char* at, std::int64_t value);
// `value` is finite.
char* writeNumber(char* at, double value);

}  // namespace plant
