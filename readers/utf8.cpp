#include "readers/utf8.h"

#include <cstddef>

namespace readers {

namespace {

// Length of the character that begins with `lead`; 0 for a byte that begins none.
std::size_t lengthByLead(unsigned char lead) {
    if (lead < 0x80) {
        return 1;
    }
    if (lead >= 0xC2 && lead < 0xE0) {
        return 2;
    }
    if (lead >= 0xE0 && lead < 0xF0) {
        return 3;
    }
    return lead >= 0xF0 && lead < 0xF5 ? 4 : 0;
}

}  // namespace

bool isUtf8(std::string_view text) {
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t length = lengthByLead(static_cast<unsigned char>(text[at]));
        if (length == 0 || length > text.size() - at) {
            return false;
        }
        for (std::size_t i = 1; i < length; ++i) {
            if ((static_cast<unsigned char>(text[at + i]) & 0xC0U) != 0x80) {
                return false;
            }
        }
        at += length;
    }
    return true;
}

}  // namespace readers
