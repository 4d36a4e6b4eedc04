#include "readers/scene/mapped_file.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

namespace gltfcheck {

MappedFile::MappedFile(const std::filesystem::path& path) {
    const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (file < 0) {
        return;
    }
    struct stat status;
    if (::fstat(file, &status) == 0 && S_ISREG(status.st_mode)) {
        const auto size = static_cast<std::size_t>(status.st_size);
        void* start = size == 0 ? nullptr : ::mmap(nullptr, size, PROT_READ, MAP_PRIVATE, file, 0);
        isGood_ = start != MAP_FAILED;
        if (isGood_ && size > 0) {
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

}  // namespace gltfcheck
