// All bytes of a file that a source wants at once.
#pragma once

#include "sources/mapped_file.h"
#include "sources/source.h"

#include <optional>
#include <string>
#include <string_view>

namespace plant {

// Seen as memory where it is a file, else read to the end.
class Contents {
public:
    // Refuses a file that cannot be read.
    explicit Contents(SourceFile& file);
    // Valid while this lives.
    std::string_view bytes() const { return bytes_; }

private:
    std::optional<MappedFile> mapped_;
    std::string read_;
    std::string_view bytes_;
};

}  // namespace plant
