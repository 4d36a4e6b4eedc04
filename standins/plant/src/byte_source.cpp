#include "byte_source.h"

#include "refusal.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace plant {

namespace {

[[noreturn]] void refuseFile() {
    refuse("cannot be read: " + std::generic_category().message(errno));
}

class FileSource final : public ByteSource {
public:
    explicit FileSource(std::filesystem::path file)
        : file_(std::move(file)), descriptor_(::open(file_.c_str(), O_RDONLY | O_CLOEXEC)) {
        if (descriptor_ < 0) {
            refuseFile();
        }
    }
    ~FileSource() override { ::close(descriptor_); }

    std::size_t read(char* to, std::size_t most) override {
        std::size_t size = 0;
        while (size < most) {
            const ssize_t count = ::read(descriptor_, to + size, most - size);
            if (count < 0 && errno == EINTR) {
                continue;
            }
            if (count < 0) {
                refuseFile();
            }
            if (count == 0) {
                break;
            }
            size += static_cast<std::size_t>(count);
        }
        return size;
    }

    // Reads the file again from its start; of a pipe the number of the byte must do.
    std::string placeOf(std::uint64_t byte) const override {
        struct stat status {};
        if (::fstat(descriptor_, &status) != 0 || !S_ISREG(status.st_mode)) {
            return "byte " + std::to_string(byte + 1);
        }
        std::string text(byte, '\0');
        const ssize_t count = ::pread(descriptor_, text.data(), text.size(), 0);
        return placeBehind(std::string_view(text).substr(0, static_cast<std::size_t>(std::max<ssize_t>(count, 0))));
    }

private:
    std::filesystem::path file_;
    int descriptor_;
};

class MemorySource final : public ByteSource {
public:
    explicit MemorySource(std::string_view bytes) : bytes_(bytes) {}
    std::size_t read(char* to, std::size_t most) override {
        const std::string_view part = bytes_.substr(next_, most);
        std::memcpy(to, part.data(), part.size());
        next_ += part.size();
        return part.size();
    }
    std::string placeOf(std::uint64_t byte) const override { return placeBehind(bytes_.substr(0, byte)); }

private:
    std::string_view bytes_;
    std::size_t next_ = 0;
};

}  // namespace

std::unique_ptr<ByteSource> openSource(const std::filesystem::path& file) {
    return std::make_unique<FileSource>(file);
}

std::unique_ptr<ByteSource> sourceOf(std::string_view bytes) {
    return std::make_unique<MemorySource>(bytes);
}

std::string placeBehind(std::string_view text) {
    const std::string_view line = text.substr(text.rfind('\n') + 1);
    const auto lines = std::count(text.begin(), text.end(), '\n');
    const auto characters = std::count_if(line.begin(), line.end(),
                                          [](char c) { return (static_cast<unsigned char>(c) & 0xC0U) != 0x80U; });
    return "line " + std::to_string(lines + 1) + ", column " + std::to_string(characters + 1) + " (byte " +
           std::to_string(text.size() + 1) + ")";
}

}  // namespace plant
