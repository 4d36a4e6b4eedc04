#include "readers/mapped_file.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

namespace readers {

MappedFile::MappedFile(const std::filesystem::path& path) {
    // Without waiting for the other end of a pipe.
    const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (file < 0) {
        return;
    }
    struct stat status;
    if (::fstat(file, &status) != 0 || !S_ISREG(status.st_mode)) {
        fault_ = "cannot be read: it is no regular file";
    } else if (status.st_size == 0) {
        fault_ = nullptr;
    } else {
        const auto size = static_cast<std::size_t>(status.st_size);
        void* start = ::mmap(nullptr, size, PROT_READ, MAP_PRIVATE, file, 0);
        if (start != MAP_FAILED) {
            fault_ = nullptr;
            bytes_ = {static_cast<const char*>(start), size};
        }
    }
    ::close(file);
}

MappedFile::~MappedFile() {
    if (!bytes_.empty()) {
        ::munmap(const_cast<char*>(bytes_.data()), bytes_.size());
    }
}

}  // namespace readers
