#include "eem/file.h"

// All numbers are little-endian:
//
//   int      32 bits, signed
//   int64    64 bits, signed
//   double   IEEE 754, 64 bits
//   point    double x, double y, double z; directions likewise
//   string   int n, then n bytes in the system's code page; no terminator
//
//   model file    object* trailer
//   paper file    string "PID", int 1, paper* trailer
//   other file    trailer
//   trailer       string "ENDE"
//
//   object        int end, string "NA:", string name, string "OBJID:", int64 id, string "GEO:", int n, n records
//   paper         int end, string "PNA:", string name, string "OBJID:", int64 id
//
// `end` is the absolute offset of the first byte behind the block; it is filled in when the block is complete. The
// grammar of a record stands in eem_primitives.cpp.

namespace eem {

namespace {

constexpr std::string_view paperTag = "PID";
constexpr std::int32_t paperVersion = 1;
constexpr std::string_view trailer = "ENDE";
constexpr std::size_t trailerSize = 4 + trailer.size();

}  // namespace

EemFile::EemFile(tolmar::OutputFile& file, std::uint64_t limit) : file_(file), limit_(limit), buffer_(file) {}

void EemFile::checkLimit(std::size_t more) const {
    if (offset() + more + trailerSize > limit_) {
        throw FileTooLarge();
    }
}

void EemFile::writePaperHeader() {
    writeString(paperTag);
    writeInt(paperVersion);
}

// The blocks before have left room for it.
void EemFile::writeTrailer() {
    writeString(trailer);
}

void EemFile::beginBlock() {
    openBlocks_.push_back(offset());
    writeInt(0);
}

void EemFile::endBlock() {
    checkLimit(0);
    patchInt(openBlocks_.back(), static_cast<std::int32_t>(offset()));
    openBlocks_.pop_back();
    settle();
}

void EemFile::patchInt(std::uint64_t place, std::int32_t value) {
    if (char* written = buffer_.written(place)) {
        putInt(written, value);
        return;
    }
    char bytes[intSize];
    putInt(bytes, value);
    file_.writeAt(place, {bytes, sizeof bytes});
}

}  // namespace eem
