#include "sources/rvm/chunks.h"

#include "plant/refusal.h"

#include <algorithm>
#include <cstdio>
#include <iterator>

namespace plant::rvm {

namespace {

constexpr std::size_t wordSize = 4;
constexpr std::size_t tagSize = 4 * wordSize;
constexpr std::size_t headSize = tagSize + 2 * wordSize;
constexpr Tag knownTags[] = {Tag::Head,        Tag::Model,      Tag::GroupBegin, Tag::GroupEnd, Tag::Primitive,
                             Tag::Obstruction, Tag::Insulation, Tag::Color,      Tag::End};

std::string chunkText(const Chunk& chunk) {
    return "chunk " + tagText(chunk.tag);
}

}  // namespace

std::string tagText(Tag tag) {
    std::string text(4, '?');
    for (std::size_t i = 0; i < 4; ++i) {
        const auto c = static_cast<unsigned char>(static_cast<std::uint32_t>(tag) >> (24 - 8 * i));
        text[i] = c > ' ' && c < 0x7F ? static_cast<char>(c) : '?';
    }
    return text;
}

std::string placeOf(std::uint64_t offset) {
    char text[64];
    const auto number = static_cast<unsigned long long>(offset);
    std::snprintf(text, sizeof text, "offset %llu (0x%llX)", number, number);
    return text;
}

void refuseAt(std::uint64_t offset, const std::string& what) {
    refuse(placeOf(offset) + ": " + what);
}

void Body::refuseShort() const {
    refuseAt(chunk_->offset, chunkText(*chunk_) + " says that it ends at " + std::to_string(chunk_->next) +
                                 ", which is within what it holds");
}

void Body::refuseLong() const {
    refuseAt(chunk_->offset, chunkText(*chunk_) + " says that it ends at " + std::to_string(chunk_->next) +
                                 ", but what it holds ends at " + std::to_string(offset()));
}

std::string_view Body::text() {
    const std::size_t size = wordSize * std::size_t{word()};
    const std::string_view whole(take(size), size);
    return whole.substr(0, whole.find('\0'));
}

bool isKnown(Tag tag) {
    return std::find(std::begin(knownTags), std::end(knownTags), tag) != std::end(knownTags);
}

Chunk chunkAt(std::string_view file, std::uint64_t offset) {
    if (offset > file.size() || file.size() - offset < headSize) {
        refuseAt(offset, "the file ends where a chunk is expected");
    }
    const char* at = file.data() + offset;
    std::uint32_t tag = 0;
    std::uint32_t others = 0;
    bool isText = true;
    for (std::size_t i = 0; i < 4; ++i) {
        const std::uint32_t word = wordAt(at + wordSize * i);
        tag = tag << 8U | (word & 0xFFU);
        others |= word >> 8U;
        isText = isText && (word & 0xFFU) > ' ' && (word & 0xFFU) < 0x7F;
    }
    if (others != 0 || !isText) {
        refuseAt(offset, "a chunk is expected, and no tag stands there");
    }
    const Chunk chunk{Tag{tag}, offset, offset + headSize, wordAt(at + tagSize)};
    if (chunk.next < chunk.body || chunk.next > file.size()) {
        refuseAt(offset, chunkText(chunk) + " says that it ends at " + std::to_string(chunk.next) +
                             (chunk.next < chunk.body ? ", which is not behind it" : ", which is beyond the file"));
    }
    return chunk;
}

}  // namespace plant::rvm
