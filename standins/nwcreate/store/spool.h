// Bytes on their way into the scene: a temporary file without a name, so that nothing is left behind however the run
// ends. Appended to, read back for comparing and for copying into the scene.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace tolmar {
class OutputFile;
}

namespace nwcreate {

class Spool {
public:
    // The file is made in the folder (UTF-8) with the first bytes that leave the buffer.
    explicit Spool(std::string folder) : folder_(std::move(folder)) {}
    ~Spool();
    Spool(const Spool&) = delete;
    Spool& operator=(const Spool&) = delete;

    // A write that fails makes the spool fail for good; failure() says why.
    void append(std::string_view bytes);
    // A place for this many bytes behind the end, until the next call; `keep` takes those up to the end of what was
    // written there.
    char* room(std::size_t size);
    void keep(const char* end) { used_ = static_cast<std::size_t>(end - buffer_.get()); }
    std::uint64_t size() const { return flushed_ + used_; }
    // Whether these bytes stand at the offset; false when they cannot be read.
    bool equals(std::uint64_t offset, std::string_view bytes);
    // Copies everything; false (and failed) when it cannot be read back.
    bool copyTo(tolmar::OutputFile& file);
    // Gives the buffer back; for a spool that is full.
    void settle();

    // Empty while all is well; in the code page.
    const std::string& failure() const { return failure_; }

private:
    void flush();
    void dropBuffer();
    bool openFile();
    bool readAt(std::uint64_t offset, char* to, std::size_t size);
    void fail(int error);

    std::string folder_;
    std::string failure_;
    std::unique_ptr<char[]> buffer_;
    std::size_t used_ = 0;
    std::size_t capacity_ = 0;
    std::uint64_t flushed_ = 0;
    int file_ = -1;
};

}  // namespace nwcreate
