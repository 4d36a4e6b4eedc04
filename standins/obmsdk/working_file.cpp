#include "obmsdk/working_file.h"

#include "tolmar/system.h"

namespace obm {

namespace {

constexpr std::size_t bufferSize = std::size_t{256} << 10U;

}  // namespace

void WorkingFile::open(const std::filesystem::path& path) {
    close();
    size_ = 0;
    failed_ = false;
    if (tolmar::dryRun()) {
        return;
    }
    if (buffer_ == nullptr) {
        buffer_ = std::make_unique_for_overwrite<char[]>(bufferSize);
    }
    file_.reset(std::fopen(path.c_str(), "wb"));
    check(file_ != nullptr && std::setvbuf(file_.get(), buffer_.get(), _IOFBF, bufferSize) == 0);
}

void WorkingFile::write(std::string_view bytes) {
    size_ += bytes.size();
    if (file_ != nullptr && !failed_) {
        check(std::fwrite(bytes.data(), 1, bytes.size(), file_.get()) == bytes.size());
    }
}

void WorkingFile::overwriteStart(std::string_view bytes) {
    if (file_ != nullptr && !failed_) {
        std::FILE* file = file_.get();
        check(std::fseek(file, 0, SEEK_SET) == 0 && std::fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size() &&
              std::fseek(file, 0, SEEK_END) == 0);
    }
}

void WorkingFile::append(const std::filesystem::path& other) {
    if (file_ == nullptr || failed_) {
        return;
    }
    const std::unique_ptr<std::FILE, Closer> from(std::fopen(other.c_str(), "rb"));
    check(from != nullptr);
    const auto block = std::make_unique_for_overwrite<char[]>(bufferSize);
    while (!failed_) {
        const std::size_t got = std::fread(block.get(), 1, bufferSize, from.get());
        if (got == 0) {
            check(std::ferror(from.get()) == 0);
            break;
        }
        write({block.get(), got});
    }
}

bool WorkingFile::close() {
    if (std::FILE* file = file_.release()) {
        check(std::fclose(file) == 0);
    }
    return !failed_;
}

}  // namespace obm
