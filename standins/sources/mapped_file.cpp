#include "sources/mapped_file.h"

#include "plant/refusal.h"

#include <cerrno>
#include <fcntl.h>
#include <memory>
#include <sys/mman.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace plant {

namespace {

[[noreturn]] void refuseFile() {
    refuse("cannot be read: " + std::generic_category().message(errno));
}

class Descriptor {
public:
    explicit Descriptor(const std::filesystem::path& path) : number_(::open(path.c_str(), O_RDONLY | O_CLOEXEC)) {
        if (number_ < 0) {
            refuseFile();
        }
    }
    ~Descriptor() { ::close(number_); }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    int number() const { return number_; }

private:
    int number_;
};

}  // namespace

MappedFile::MappedFile(const std::filesystem::path& path) {
    const Descriptor file(path);
    struct stat status {};
    if (::fstat(file.number(), &status) != 0) {
        refuseFile();
    }
    const auto size = S_ISREG(status.st_mode) ? static_cast<std::size_t>(status.st_size) : 0;
    void* start = size > 0 ? ::mmap(nullptr, size, PROT_READ, MAP_PRIVATE, file.number(), 0) : MAP_FAILED;
    if (start == MAP_FAILED) {
        readAll(file.number());
    } else {
        isMapped_ = true;
        bytes_ = {static_cast<const char*>(start), size};
    }
}

void MappedFile::readAll(int file) {
    constexpr std::size_t partSize = std::size_t{1} << 16;
    const std::unique_ptr<char[]> part(new char[partSize]);
    for (;;) {
        const ssize_t count = ::read(file, part.get(), partSize);
        if (count < 0 && errno != EINTR) {
            refuseFile();
        }
        if (count == 0) {
            break;
        }
        read_.append(part.get(), count > 0 ? static_cast<std::size_t>(count) : 0);
    }
    bytes_ = read_;
}

MappedFile::~MappedFile() {
    if (isMapped_) {
        ::munmap(const_cast<char*>(bytes_.data()), bytes_.size());
    }
}

}  // namespace plant
