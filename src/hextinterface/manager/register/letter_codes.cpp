#include "hextinterface/manager/register/letter_codes.h"

#include "frame/exceptions.h"

#include <algorithm>

namespace naming {

void LetterCode::increment() {
    std::array<char, maxWidth> next = letters_;
    for (int i = width_ - 1; i >= 0; --i) {
        char& letter = next[static_cast<std::size_t>(i)];
        if (letter != 'z') {
            letter = letter == 'Z' ? 'a' : static_cast<char>(letter + 1);
            letters_ = next;
            return;
        }
        letter = 'A';
    }
    throw OutOfRange();
}

// Codes are given in the order of counting and never taken back, so the code behind the last one given is free.
std::string_view CodeTable::code(std::string_view value) {
    const std::uint32_t known = values_.find(value);
    if (known != TextTable::none) {
        return codes_[known].text();
    }
    try {
        last_.increment();
    } catch (const OutOfRange&) {
        throw ExportException(std::string(value) + "类型数超出预定范围！");
    }
    values_.add(value);
    codes_.push_back(last_);
    return codes_.back().text();
}

void CodeTable::append(std::string& name, std::string_view value) {
    if (value.empty()) {
        name.append(last_.text().size(), '_');
    } else {
        name += code(value);
    }
}

std::string letters(std::uint64_t counter) {
    constexpr std::size_t maxLetters = 8;
    std::string text;
    for (; counter != 0; counter /= 26) {
        if (text.size() == maxLetters) {
            throw OutOfRange();
        }
        text += static_cast<char>('A' + counter % 26);
    }
    std::reverse(text.begin(), text.end());
    return text;
}

}  // namespace naming
