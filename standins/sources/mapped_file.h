// A file seen as memory, for readers that jump about in it. What is no regular file is read as a whole.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace plant {

class MappedFile {
public:
    // Refuses a file that cannot be read, without its name.
    explicit MappedFile(const std::filesystem::path& path);
    ~MappedFile();
    MappedFile(const MappedFile&) = delete;
    MappedFile& operator=(const MappedFile&) = delete;
    // Valid while this lives. A file that another program shortens meanwhile ends the process, as for any mapping.
    std::string_view bytes() const { return bytes_; }

private:
    void readAll(int file);

    std::string_view bytes_;
    bool isMapped_ = false;
    std::string read_;
};

}  // namespace plant
