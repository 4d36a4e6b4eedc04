#include "tolmar/files/part_file.h"

#include "tolmar/code_page.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <string_view>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tolmar {

namespace {

constexpr std::string_view partEnding = ".part";
constexpr std::size_t longestName = 255;  // of a file, in bytes

std::filesystem::path partOf(const std::filesystem::path& place) {
    std::string name = place.filename().string();
    name.resize(std::min(name.size(), longestName - partEnding.size()));
    return place.parent_path() / name.append(partEnding);
}

std::filesystem::path asideOf(const std::filesystem::path& place) {
    std::filesystem::path aside = place;
    aside += ".incomplete";
    return aside;
}

// Through links, so that what they point to is replaced and not they.
std::filesystem::path endOfLinks(const std::filesystem::path& path) {
    std::error_code error;
    const bool isLink = std::filesystem::is_symlink(path, error);
    const std::filesystem::path end =
        isLink ? std::filesystem::weakly_canonical(path, error) : std::filesystem::absolute(path, error);
    return error ? path : end;
}

// Whoever wrote the part may have put it in its place between our opening and our lock.
bool isStillThere(int file, const std::filesystem::path& part) {
    struct stat open;
    struct stat named;
    return ::fstat(file, &open) == 0 && ::stat(part.c_str(), &named) == 0 && open.st_dev == named.st_dev &&
           open.st_ino == named.st_ino;
}

// A file system without locks has none to wait for.
bool lock(int file) {
    return ::flock(file, LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK;
}

int closedWith(int file, int error) {
    ::close(file);
    errno = error;
    return -1;
}

// Never waits: a pipe of that name has no reader.
int openPart(const std::filesystem::path& part, bool& isStale) {
    constexpr int flags = O_WRONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK;
    for (;;) {
        int file = ::open(part.c_str(), flags | O_CREAT | O_EXCL, 0666);
        isStale = file < 0 && errno == EEXIST;
        file = isStale ? ::open(part.c_str(), flags) : file;
        if (file < 0 && isStale && errno == ENOENT) {
            continue;
        }
        if (file < 0) {
            return -1;
        }
        if (!lock(file)) {
            return closedWith(file, EWOULDBLOCK);
        }
        if (isStillThere(file, part)) {
            return isStale && ::ftruncate(file, 0) != 0 ? closedWith(file, errno) : file;
        }
        ::close(file);
    }
}

// What may not be written may not be replaced, and keeps who may read it.
bool mayReplace(const std::filesystem::path& place, mode_t& mode) {
    struct stat old;
    if (::stat(place.c_str(), &old) != 0) {
        mode = 0;
        return true;
    }
    mode = old.st_mode & 07777U;
    return ::access(place.c_str(), W_OK) == 0;
}

}  // namespace

int PartFile::open(const std::filesystem::path& place) {
    const std::filesystem::path end = endOfLinks(place);
    mode_t mode = 0;
    if (!mayReplace(end, mode)) {
        return -1;
    }
    const std::filesystem::path part = partOf(end);
    file_ = openPart(part, isStale_);
    if (file_ >= 0) {
        place_ = end;
        part_ = part;
        if (mode != 0) {
            ::fchmod(file_, mode);
        }
    }
    return file_;
}

void PartFile::keepLock() {
    if (isOpen()) {
        lock_ = ::fcntl(file_, F_DUPFD_CLOEXEC, 0);
    }
}

bool PartFile::putInPlace() {
    if (std::rename(part_.c_str(), place_.c_str()) != 0) {
        return false;
    }
    ::unlink(asideOf(place_).c_str());
    release();
    return true;
}

std::string PartFile::setAside() {
    std::string told = renameAside(part_, place_);
    release();
    return told;
}

void PartFile::remove() {
    ::unlink(part_.c_str());
    release();
}

void PartFile::release() {
    if (lock_ >= 0) {
        ::close(lock_);
    }
    lock_ = -1;
    file_ = -1;
    part_.clear();
}

std::string renameAside(const std::filesystem::path& from, const std::filesystem::path& place) {
    std::error_code error;
    if (!std::filesystem::is_regular_file(from, error)) {
        return {};
    }
    const std::filesystem::path aside = asideOf(place);
    std::filesystem::rename(from, aside, error);
    return error ? std::string() : "; what there is of it is kept as " + fromUtf8(aside.filename().string());
}

}  // namespace tolmar
