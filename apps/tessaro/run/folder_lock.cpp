#include "tessaro/run/folder_lock.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr const char* lockName = ".tessaro.lock";

// Its holder may have taken it away between our opening and our lock.
bool isStillThere(int file, const std::filesystem::path& path) {
    struct stat open;
    struct stat named;
    return ::fstat(file, &open) == 0 && ::stat(path.c_str(), &named) == 0 && open.st_ino == named.st_ino &&
           open.st_dev == named.st_dev;
}

std::string holderOf(int file) {
    char text[24];
    const ssize_t size = ::pread(file, text, sizeof text, 0);
    return size > 0 ? "process " + std::string(text, static_cast<std::size_t>(size)) : "just starting";
}

void writeOwnId(int file) {
    const std::string id = std::to_string(::getpid());
    if (::ftruncate(file, 0) != 0 || ::pwrite(file, id.data(), id.size(), 0) < 0) {
        // Who meets the lock reads less of its holder.
        return;
    }
}

}  // namespace

FolderLock::~FolderLock() {
    if (file_ >= 0) {
        ::unlink((folder_ / lockName).c_str());
        ::close(file_);
    }
    if (isMadeHere_) {
        ::rmdir(folder_.c_str());
    }
}

std::string FolderLock::take(const std::filesystem::path& folder) {
    std::error_code error;
    folder_ = folder;
    isMadeHere_ = std::filesystem::create_directories(folder, error);
    const std::filesystem::path path = folder / lockName;
    for (;;) {
        file_ = ::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0666);
        if (file_ < 0) {
            return {};
        }
        if (::flock(file_, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK) {
            const std::string holder = holderOf(file_);
            ::close(file_);
            file_ = -1;
            return folder.string() + ": another run writes there (" + holder +
                   "); wait for its end, or give this one a folder of its own";
        }
        if (isStillThere(file_, path)) {
            writeOwnId(file_);
            return {};
        }
        ::close(file_);
    }
}
