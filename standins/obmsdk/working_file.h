// A file of the working folder. A failed operation makes it fail for good.
#pragma once

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <string_view>

namespace obm {

class WorkingFile {
public:
    // Creates or replaces the file. While the host leaves everything outside the process as it is, what is written is
    // only counted.
    void open(const std::filesystem::path& path);
    void write(std::string_view bytes);
    // Patches earlier bytes.
    void overwriteStart(std::string_view bytes);
    // Adds the contents of another file, which must be closed.
    void append(const std::filesystem::path& other);
    // Bytes written so far.
    std::uint64_t size() const { return size_; }
    bool failed() const { return failed_; }
    // False when anything has failed, closing included. The file may be opened again.
    bool close();

private:
    struct Closer {
        void operator()(std::FILE* file) const { std::fclose(file); }
    };
    void check(bool good) { failed_ = failed_ || !good; }

    std::unique_ptr<std::FILE, Closer> file_;
    std::unique_ptr<char[]> buffer_;
    std::uint64_t size_ = 0;
    bool failed_ = false;
};

}  // namespace obm
