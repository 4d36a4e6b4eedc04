// Writing through calls of the system that may take a part only.
#pragma once

#include <cerrno>
#include <cstddef>
#include <sys/types.h>

namespace tolmar {

// Calls `writeSome(data, size)`, which gives the bytes taken or a negative number with errno, until all are out. False
// on an error, whose number is in errno.
template <typename Write>
bool writeAll(const char* data, std::size_t size, Write&& writeSome) {
    while (size > 0) {
        const ssize_t written = writeSome(data, size);
        if (written < 0 && errno == EINTR) {
            continue;
        }
        if (written <= 0) {
            return false;
        }
        data += written;
        size -= static_cast<std::size_t>(written);
    }
    return true;
}

}  // namespace tolmar
