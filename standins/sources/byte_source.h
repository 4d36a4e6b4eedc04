// Where the bytes of a model file come from.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

namespace plant {

class ByteSource {
public:
    virtual ~ByteSource() = default;
    // Fills `to` with the next bytes; fewer than `most` only at the end. Throws a Refusal when they cannot be read.
    virtual std::size_t read(char* to, std::size_t most) = 0;
    // Where the byte of this number (from 0) stands, for a message.
    virtual std::string placeOf(std::uint64_t byte) const = 0;

protected:
    ByteSource() = default;
    ByteSource(const ByteSource&) = delete;
    ByteSource& operator=(const ByteSource&) = delete;
};

// A file or a pipe. Throws a Refusal when it cannot be opened.
std::unique_ptr<ByteSource> openSource(const std::filesystem::path& file);
// Bytes that live as long as the source.
std::unique_ptr<ByteSource> sourceOf(std::string_view bytes);

// Counts lines and columns of a text that comes part by part.
class PlaceCounter {
public:
    void add(std::string_view text);
    // Where the next byte stands: "line 3, column 14 (byte 57)", all from 1, columns in characters.
    std::string place() const;

private:
    std::uint64_t bytes_ = 0;
    std::uint64_t lines_ = 0;
    std::uint64_t characters_ = 0;  // of the line
};

}  // namespace plant
