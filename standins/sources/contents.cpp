#include "sources/contents.h"

namespace plant {

Contents::Contents(SourceFile& file) {
    std::error_code error;
    if (std::filesystem::is_regular_file(file.path, error)) {
        mapped_.emplace(file.path);
        bytes_ = mapped_->bytes();
        return;
    }
    constexpr std::size_t partSize = std::size_t{1} << 20;
    for (std::size_t size = partSize; size == partSize;) {
        const std::size_t before = read_.size();
        read_.resize(before + partSize);
        size = file.bytes.read(read_.data() + before, partSize);
        read_.resize(before + size);
    }
    bytes_ = read_;
}

}  // namespace plant
