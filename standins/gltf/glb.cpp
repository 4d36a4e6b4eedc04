#include "gltf/glb.h"

namespace gltf {

namespace {

constexpr std::uint64_t fileHead = 12;
constexpr std::uint64_t chunkHead = 8;
constexpr std::uint32_t version = 2;

void appendWord(std::string& out, std::uint64_t value) {
    for (unsigned shift = 0; shift < 32; shift += 8) {
        out += static_cast<char>((value >> shift) & 0xFFU);
    }
}

}  // namespace

std::uint64_t glbSize(std::uint64_t jsonSize, std::uint64_t binSize) {
    return fileHead + chunkHead + padded(jsonSize) + (binSize == 0 ? 0 : chunkHead + padded(binSize));
}

std::string glbHead(std::uint64_t jsonSize, std::uint64_t binSize) {
    std::string head = "glTF";
    appendWord(head, version);
    appendWord(head, glbSize(jsonSize, binSize));
    appendWord(head, padded(jsonSize));
    return head + "JSON";
}

std::string glbBinHead(std::uint64_t binSize) {
    std::string head;
    if (binSize != 0) {
        appendWord(head, padded(binSize));
        head.append("BIN\0", 4);
    }
    return head;
}

}  // namespace gltf
