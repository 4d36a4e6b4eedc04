// A file seen as memory, so that reading one costs no copy of it.
#pragma once

#include <filesystem>
#include <string_view>

namespace readers {

// Only regular files: a pipe in the place of an output would keep its reader waiting for ever.
class MappedFile {
public:
    explicit MappedFile(const std::filesystem::path& path);
    ~MappedFile();
    MappedFile(const MappedFile&) = delete;
    MappedFile& operator=(const MappedFile&) = delete;
    bool isGood() const { return fault_ == nullptr; }
    // Why there are no bytes: "cannot be read", and what stands there instead of a file.
    const char* fault() const { return fault_; }
    // Empty when it cannot be read. They live as long as this does.
    std::string_view bytes() const { return bytes_; }

private:
    std::string_view bytes_;
    const char* fault_ = "cannot be read";
};

}  // namespace readers
