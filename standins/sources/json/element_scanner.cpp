#include "sources/json/element_scanner.h"

#include "plant/memory/byte_part.h"

#include <bit>

namespace plant {

namespace {

constexpr std::size_t blockSize = 64;

// One bit for each of 64 bytes, the first byte lowest.
struct Block {
    std::uint64_t quotes = 0;
    std::uint64_t backslashes = 0;
    std::uint64_t opening = 0;  // { and [
    std::uint64_t closing = 0;  // } and ]
};

Block classify(const char* at) {
    constexpr char bracketBit = 0x20;  // in which { and [ differ, and } and ]
    Block block;
    for (std::size_t i = 0; i < blockSize; i += BytePart::size) {
        const BytePart part(at + i);
        block.quotes |= part.equal('"') << i;
        block.backslashes |= part.equal('\\') << i;
        block.opening |= part.equalWith(bracketBit, '{') << i;
        block.closing |= part.equalWith(bracketBit, '}') << i;
    }
    return block;
}

// The number of bits, also on processors that cannot count them.
int bitCount(std::uint64_t bits) {
    bits -= bits >> 1U & 0x5555555555555555ULL;
    bits = (bits & 0x3333333333333333ULL) + (bits >> 2U & 0x3333333333333333ULL);
    bits = (bits + (bits >> 4U)) & 0x0F0F0F0F0F0F0F0FULL;
    return static_cast<int>(bits * 0x0101010101010101ULL >> 56U);
}

// Bit i is the exclusive or of the bits 0 to i.
std::uint64_t prefixXor(std::uint64_t bits) {
    for (unsigned shift = 1; shift < 64; shift *= 2) {
        bits ^= bits << shift;
    }
    return bits;
}

// The state from block to block.
class Scan {
public:
    void block(const char* text, std::size_t at, std::size_t size);
    bool done() const { return result_.arrayEnd != 0; }
    const ElementScanner::Result& result() const { return result_; }

private:
    std::uint64_t outsideTexts(const Block& block);
    std::uint64_t escapedBytes(std::uint64_t backslashes);
    void brackets(std::uint64_t opening, std::uint64_t closing, std::size_t at);

    ElementScanner::Result result_;
    std::uint64_t inText_ = 0;  // all bits set at the start of a block that begins within a text
    bool escaped_ = false;      // the next block's first byte is escaped
    int depth_ = 0;             // below the array
};

// A byte behind a backslash that is not escaped itself.
std::uint64_t Scan::escapedBytes(std::uint64_t backslashes) {
    if (backslashes == 0 && !escaped_) {
        return 0;
    }
    std::uint64_t escaped = escaped_ ? 1 : 0;
    escaped_ = false;
    for (std::uint64_t rest = backslashes; rest != 0; rest &= rest - 1) {
        const auto place = static_cast<unsigned>(std::countr_zero(rest));
        if ((escaped >> place & 1U) != 0) {
            continue;
        }
        if (place == blockSize - 1) {
            escaped_ = true;
        } else {
            escaped |= std::uint64_t{2} << place;
        }
    }
    return escaped;
}

std::uint64_t Scan::outsideTexts(const Block& block) {
    const std::uint64_t quotes = block.quotes & ~escapedBytes(block.backslashes);
    const std::uint64_t inText = prefixXor(quotes) ^ inText_;
    inText_ = (inText >> (blockSize - 1)) != 0 ? ~std::uint64_t{0} : 0;
    return ~inText;
}

void Scan::block(const char* text, std::size_t at, std::size_t size) {
    const Block block = classify(text + at);
    const std::uint64_t inside = size - at >= blockSize ? ~std::uint64_t{0} : (std::uint64_t{1} << (size - at)) - 1;
    const std::uint64_t counted = outsideTexts(block) & inside;
    const std::uint64_t opening = block.opening & counted;
    const std::uint64_t closing = block.closing & counted;
    const int closed = bitCount(closing);
    if (depth_ > closed) {
        depth_ += bitCount(opening) - closed;
    } else {
        brackets(opening, closing, at);
    }
}

void Scan::brackets(std::uint64_t opening, std::uint64_t closing, std::size_t at) {
    for (std::uint64_t rest = opening | closing; rest != 0; rest &= rest - 1) {
        const auto place = static_cast<unsigned>(std::countr_zero(rest));
        const bool opens = (opening >> place & 1U) != 0;
        depth_ += opens ? 1 : -1;
        if (opens || depth_ > 0) {
            continue;
        }
        if (depth_ < 0) {
            result_.arrayEnd = at + place + 1;
            return;
        }
        result_.lastEnd = at + place + 1;
    }
}

}  // namespace

ElementScanner::Result ElementScanner::scan(const char* text, std::size_t size) {
    Scan scan;
    for (std::size_t at = 0; at < size && !scan.done(); at += blockSize) {
        scan.block(text, at, size);
    }
    return scan.result();
}

}  // namespace plant
