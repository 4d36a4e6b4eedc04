#include "exportbase/safe_file_name.h"

#include "tolmar/code_page.h"

// In UTF-8 none of the characters is part of another.
std::string safeFileName(std::string_view name) {
    std::string utf8 = tolmar::toUtf8(name);
    for (char& c : utf8) {
        if (static_cast<unsigned char>(c) < ' ' || std::string_view("\\/:*?\"<>|").find(c) != std::string_view::npos) {
            c = '_';
        }
    }
    return tolmar::fromUtf8(utf8);
}
