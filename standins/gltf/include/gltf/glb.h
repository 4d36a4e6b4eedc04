// The frame of a binary glTF 2.0 file and the numbers of the format.
//
//   file  = "glTF" version=2 length, JSON chunk, BIN chunk (left out when it is empty)
//   chunk = length type data, data padded to a multiple of 4 (JSON with blanks, BIN with zeros); length counts the
//   padding
//
// All numbers are 32-bit, lowest byte first.
#pragma once

#include <cstdint>
#include <string>

namespace gltf {

// What `componentType`, `target` and `mode` may hold.
enum ComponentType : int { UnsignedShort = 5123, UnsignedInt = 5125, Float = 5126 };
enum BufferTarget : int { ArrayBuffer = 34962, ElementArrayBuffer = 34963 };
enum PrimitiveMode : int { Points = 0, Lines = 1, LineStrip = 3, Triangles = 4 };

// A file's length is a 32-bit number.
inline constexpr std::uint64_t glbMaxSize = 0xFFFFFFFF;

inline constexpr std::uint64_t padded(std::uint64_t size) {
    return (size + 3) / 4 * 4;
}
// Size of the whole file from the sizes of both chunks' data without padding.
std::uint64_t glbSize(std::uint64_t jsonSize, std::uint64_t binSize);
// What stands ahead of the JSON text: file head and chunk head. The size of the file must be within glbMaxSize.
std::string glbHead(std::uint64_t jsonSize, std::uint64_t binSize);
// What stands ahead of the binary data; empty when there is none.
std::string glbBinHead(std::uint64_t binSize);

}  // namespace gltf
