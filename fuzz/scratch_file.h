// A file of a fuzzer's own, for readers that take a path.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <unistd.h>

namespace fuzz {

inline std::string_view asText(const std::uint8_t* data, std::size_t size) {
    return {reinterpret_cast<const char*>(data), size};
}

// An installation root in shared memory where there is one; it goes with the process.
class Root {
public:
    explicit Root(const char* relativeFile) {
        namespace fs = std::filesystem;
        const fs::path base = fs::is_directory("/dev/shm") ? fs::path("/dev/shm") : fs::temp_directory_path();
        root_ = base / ("tessaro-fuzz-" + std::to_string(::getpid()));
        file_ = root_ / relativeFile;
        fs::create_directories(file_.parent_path());
    }
    ~Root() {
        std::error_code ignored;
        std::filesystem::remove_all(root_, ignored);
    }
    Root(const Root&) = delete;
    Root& operator=(const Root&) = delete;

    void put(std::string_view bytes) const {
        std::ofstream out(file_, std::ios::binary);
        out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    }
    std::string path() const { return root_.string(); }
    std::string file() const { return file_.string(); }

private:
    std::filesystem::path root_;
    std::filesystem::path file_;
};

// What must hold whatever the input is.
inline void require(bool holds) {
    if (!holds) {
        std::abort();
    }
}

}  // namespace fuzz
