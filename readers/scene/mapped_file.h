#pragma once

#include <filesystem>
#include <string_view>

namespace gltfcheck {

// A file seen as memory; empty when it cannot be read.
class MappedFile {
public:
    explicit MappedFile(const std::filesystem::path& path);
    ~MappedFile();
    MappedFile(const MappedFile&) = delete;
    MappedFile& operator=(const MappedFile&) = delete;
    bool isGood() const { return isGood_; }
    std::string_view bytes() const { return bytes_; }

private:
    std::string_view bytes_;
    bool isGood_ = false;
};

}  // namespace gltfcheck
