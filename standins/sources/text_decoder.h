// Texts of foreign files as UTF-8. What is not UTF-8 is taken for Latin-1: every byte is a character then, and nothing
// is lost. A zero byte ends a text.
#pragma once

#include <string>
#include <string_view>

namespace plant {

class TextDecoder {
public:
    // The text itself where it is UTF-8; else valid until the next call.
    std::string_view decode(std::string_view bytes);
    // Some text was not UTF-8.
    bool fellBack() const { return fellBack_; }

private:
    std::string converted_;
    bool fellBack_ = false;
};

// Without blanks, tabs and carriage returns at both ends.
std::string_view trimmed(std::string_view text);
bool equalIgnoringCase(std::string_view text, std::string_view upper);

}  // namespace plant
