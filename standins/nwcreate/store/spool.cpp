#include "nwcreate/store/spool.h"

#include "tolmar/code_page.h"
#include "tolmar/file.h"
#include "tolmar/write_all.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>

namespace nwcreate {

namespace {

constexpr std::size_t bufferSize = std::size_t{1} << 18U;
// More than OutputFile's own buffer, so that a piece goes to the system without another copy.
constexpr std::size_t copySize = (std::size_t{1} << 20U) + (std::size_t{1} << 12U);
constexpr std::size_t compareSize = std::size_t{1} << 14U;

}  // namespace

Spool::~Spool() {
    if (file_ >= 0) {
        ::close(file_);
    }
}

void Spool::fail(int error) {
    if (failure_.empty()) {
        failure_ = "temporary file in " + tolmar::fromUtf8(folder_) + ": " +
                   (error == 0 ? "not all of it could be read or written" : std::strerror(error));
    }
}

bool Spool::openFile() {
    if (file_ < 0 && failure_.empty()) {
        std::string name = folder_ + "/.scene-XXXXXX";
        file_ = ::mkostemp(name.data(), O_CLOEXEC);
        if (file_ < 0) {
            fail(errno);
        } else {
            ::unlink(name.c_str());
        }
    }
    return file_ >= 0 && failure_.empty();
}

void Spool::flush() {
    errno = 0;
    if (used_ > 0 && openFile() && !tolmar::writeAll(buffer_.get(), used_, [this](const char* data, std::size_t size) {
            return ::write(file_, data, size);
        })) {
        fail(errno);
    }
    flushed_ += used_;
    used_ = 0;
}

void Spool::append(std::string_view bytes) {
    while (!bytes.empty()) {
        const std::string_view piece = bytes.substr(0, bufferSize);
        char* to = room(piece.size());
        std::memcpy(to, piece.data(), piece.size());
        keep(to + piece.size());
        bytes.remove_prefix(piece.size());
    }
}

char* Spool::room(std::size_t size) {
    if (capacity_ - used_ < size) {
        flush();
    }
    if (capacity_ < size) {
        const std::size_t capacity = std::max(size, bufferSize);
        // The old one goes first; when there is no memory for the new one, there is none.
        dropBuffer();
        buffer_ = std::make_unique_for_overwrite<char[]>(capacity);
        capacity_ = capacity;
    }
    return buffer_.get() + used_;
}

void Spool::dropBuffer() {
    buffer_.reset();
    capacity_ = 0;
}

void Spool::settle() {
    flush();
    dropBuffer();
}

bool Spool::readAt(std::uint64_t offset, char* to, std::size_t size) {
    while (size > 0) {
        if (offset >= flushed_) {
            std::memcpy(to, buffer_.get() + (offset - flushed_), size);
            return true;
        }
        const auto piece = static_cast<std::size_t>(std::min<std::uint64_t>(size, flushed_ - offset));
        const ssize_t got = ::pread(file_, to, piece, static_cast<off_t>(offset));
        if (got < 0 && errno == EINTR) {
            continue;
        }
        if (got <= 0) {
            fail(got < 0 ? errno : 0);
            return false;
        }
        to += got;
        offset += static_cast<std::uint64_t>(got);
        size -= static_cast<std::size_t>(got);
    }
    return true;
}

bool Spool::equals(std::uint64_t offset, std::string_view bytes) {
    char there[compareSize];
    while (!bytes.empty() && failure_.empty()) {
        const std::size_t piece = std::min(bytes.size(), compareSize);
        if (!readAt(offset, there, piece) || std::memcmp(there, bytes.data(), piece) != 0) {
            return false;
        }
        offset += piece;
        bytes.remove_prefix(piece);
    }
    return failure_.empty();
}

bool Spool::copyTo(tolmar::OutputFile& file) {
    const auto piece = std::make_unique_for_overwrite<char[]>(copySize);
    for (std::uint64_t at = 0; at < size() && !file.failed();) {
        const auto length = static_cast<std::size_t>(std::min<std::uint64_t>(copySize, size() - at));
        if (!failure_.empty() || !readAt(at, piece.get(), length)) {
            return false;
        }
        file.write(std::string_view(piece.get(), length));
        at += length;
    }
    return failure_.empty();
}

}  // namespace nwcreate
