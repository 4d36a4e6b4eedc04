// Cuts the text of a model file into pieces that are JSON documents of their own, so that neither the file nor the JSON
// reader's index of it ever stands in memory as a whole.
#pragma once

#include "sources/byte_source.h"
#include "sources/json/element_scanner.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>

namespace plant {

// A file's pieces in order: its head, an object that ends with an empty "objects"; arrays of its objects; its tail, an
// object of the members behind "objects". A file in which "objects" is not found, or that is no JSON before it, is one
// piece, as it stands.
struct Piece {
    enum class Kind { Whole, Head, Elements, Tail };
    Kind kind = Kind::Whole;
    bool mayBeEmpty = true;   // a comma before it calls for an element or member
    std::string_view text;    // followed by the room that the JSON reader wants; valid until the next piece
    std::uint64_t start = 0;  // byte of the file where the text begins, counting what was put before it
};

class PieceCutter {
public:
    // The source lives as long as the cutter.
    explicit PieceCutter(ByteSource& source);
    // False at the end. Throws a Refusal.
    bool next(Piece& piece);
    // Bytes that may be read from the start of a piece's text.
    static std::size_t readable(const Piece& piece);
    // The most bytes that a piece has while no object is longer.
    static std::size_t usualSize();

private:
    enum class State { Start, InArray, BehindArray, End };

    bool start(Piece& piece);
    bool elements(Piece& piece);
    ElementScanner::Result scanElements();
    bool behindArray(Piece& piece);
    char firstLetter();
    void readRest();
    void fill();
    void grow();
    void drop(std::size_t count);
    std::string_view surround(char before, std::size_t size, std::string_view after);
    void restore();
    [[noreturn]] void refuseHere(const std::string& what) const;
    char* data() { return buffer_.get() + 1; }
    std::string_view text() const { return {buffer_.get() + 1, size_}; }

    struct Free {
        void operator()(char* bytes) const { std::free(bytes); }
    };
    ByteSource* source_;
    std::unique_ptr<char, Free> buffer_;  // one byte, the text in hand, room
    std::size_t capacity_ = 0;            // of the text in hand
    std::size_t size_ = 0;
    std::uint64_t offset_ = 0;  // of the text in hand in the file
    bool sourceEnded_ = false;
    State state_ = State::Start;
    std::size_t used_ = 0;     // of the text in hand by the last piece
    std::string overwritten_;  // what stood behind it
    bool atArrayStart_ = true;
};

}  // namespace plant
