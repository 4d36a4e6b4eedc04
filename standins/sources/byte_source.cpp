#include "sources/byte_source.h"

#include "plant/refusal.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>
#include <vector>

namespace plant {

namespace {

constexpr std::size_t partSize = std::size_t{1} << 20;

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
        PlaceCounter counter;
        std::vector<char> part(partSize);
        for (std::uint64_t at = 0; at < byte;) {
            const std::size_t wanted = std::min<std::uint64_t>(part.size(), byte - at);
            const ssize_t count = ::pread(descriptor_, part.data(), wanted, static_cast<off_t>(at));
            if (count <= 0) {
                break;
            }
            counter.add({part.data(), static_cast<std::size_t>(count)});
            at += static_cast<std::uint64_t>(count);
        }
        return counter.place();
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
    std::string placeOf(std::uint64_t byte) const override {
        PlaceCounter counter;
        counter.add(bytes_.substr(0, byte));
        return counter.place();
    }

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

void PlaceCounter::add(std::string_view text) {
    bytes_ += text.size();
    if (const std::size_t last = text.rfind('\n'); last != std::string_view::npos) {
        lines_ += static_cast<std::uint64_t>(std::count(text.begin(), text.end(), '\n'));
        characters_ = 0;
        text.remove_prefix(last + 1);
    }
    const auto isFirstByte = [](char c) { return (static_cast<unsigned char>(c) & 0xC0U) != 0x80U; };
    characters_ += static_cast<std::uint64_t>(std::count_if(text.begin(), text.end(), isFirstByte));
}

std::string PlaceCounter::place() const {
    return "line " + std::to_string(lines_ + 1) + ", column " + std::to_string(characters_ + 1) + " (byte " +
           std::to_string(bytes_ + 1) + ")";
}

}  // namespace plant
