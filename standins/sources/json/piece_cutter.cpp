#include "sources/json/piece_cutter.h"

#include "plant/memory/arena.h"
#include "plant/refusal.h"
#include "sources/json/element_scanner.h"

#include <algorithm>
#include <cstring>
#include <simdjson.h>

namespace plant {

namespace {

// Small enough that text, index and objects of a piece stay in the processor's cache.
constexpr std::size_t firstCapacity = std::size_t{512} << 10;
constexpr std::size_t largestCapacity = simdjson::SIMDJSON_MAXSIZE_BYTES - 4096;
constexpr std::size_t roomBehind = simdjson::SIMDJSON_PADDING + 64;
constexpr std::string_view formatName = "\"tessaro-plant\"";
constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

bool isBlank(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

std::size_t skipBlanks(std::string_view text, std::size_t at) {
    while (at < text.size() && isBlank(text[at])) {
        ++at;
    }
    return at;
}

// Behind the closing quote of the text that begins at `at`.
std::size_t skipText(std::string_view text, std::size_t at) {
    for (++at; at < text.size() && text[at] != '"'; ++at) {
        at += text[at] == '\\' ? 1 : 0;
    }
    return at + 1;
}

// Behind the bracket that opens the array of the top-level member "objects"; 0 when it is not there.
std::size_t findObjects(std::string_view text) {
    constexpr std::string_view name = "\"objects\"";
    int depth = 0;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const char c = text[at];
        if (c == '"') {
            const std::size_t end = skipText(text, at);
            const std::size_t colon = skipBlanks(text, end);
            const std::size_t value = skipBlanks(text, colon + 1);
            const bool found = depth == 1 && text.substr(at, end - at) == name && value < text.size() &&
                               text[colon] == ':' && text[value] == '[';
            if (found) {
                return value + 1;
            }
            at = end - 1;
        } else if (c == '{' || c == '[') {
            ++depth;
        } else if (c == '}' || c == ']') {
            --depth;
        }
    }
    return 0;
}

}  // namespace

PieceCutter::PieceCutter(ByteSource& source) : source_(&source) {
    grow();
}

std::size_t PieceCutter::readable(const Piece& piece) {
    return piece.text.size() + simdjson::SIMDJSON_PADDING;
}

std::size_t PieceCutter::usualSize() {
    return firstCapacity + 2;
}

bool PieceCutter::next(Piece& piece) {
    restore();
    switch (state_) {
    case State::Start:
        return start(piece);
    case State::InArray:
        return elements(piece);
    case State::BehindArray:
        return behindArray(piece);
    case State::End:
        break;
    }
    return false;
}

// Puts a byte before the first `size` bytes of the text in hand and some behind them, which restore takes back.
std::string_view PieceCutter::surround(char before, std::size_t size, std::string_view after) {
    used_ = size;
    overwritten_.assign(data() + size, after.size());
    std::memcpy(data() + size, after.data(), after.size());
    buffer_.get()[0] = before;
    return {buffer_.get(), size + after.size() + 1};
}

void PieceCutter::restore() {
    std::memcpy(data() + used_, overwritten_.data(), overwritten_.size());
    overwritten_.clear();
    drop(used_);
    used_ = 0;
}

void PieceCutter::drop(std::size_t count) {
    size_ -= count;
    offset_ += count;
    std::memmove(data(), data() + count, size_);
}

void PieceCutter::grow() {
    const std::size_t capacity = std::clamp(capacity_ * 2, firstCapacity, largestCapacity);
    if (capacity == capacity_) {
        refuse("more than " + std::to_string(capacity_) +
               " bytes in one object or before \"objects\", which is the most "
               "that can be read");
    }
    std::unique_ptr<char, Free> buffer(static_cast<char*>(allocateLarge(capacity + 1 + roomBehind)));
    if (buffer_ != nullptr) {
        std::memcpy(buffer.get(), buffer_.get(), size_ + 1);
    }
    buffer_ = std::move(buffer);
    capacity_ = capacity;
}

void PieceCutter::fill() {
    if (!sourceEnded_) {
        const std::size_t wanted = capacity_ - size_;
        const std::size_t count = source_->read(data() + size_, wanted);
        size_ += count;
        sourceEnded_ = count < wanted;
    }
    std::memset(data() + size_, 0, roomBehind);
}

bool PieceCutter::start(Piece& piece) {
    fill();
    if (text().starts_with(byteOrderMark)) {
        drop(byteOrderMark.size());
        fill();
    }
    std::size_t head = findObjects(text());
    while (head == 0 && !sourceEnded_) {
        // A long file of another kind need not be read to its end.
        if (text().find(formatName) == std::string_view::npos) {
            refuse("no " + std::string(formatName) + " in the first " + std::to_string(size_) + " bytes");
        }
        grow();
        fill();
        head = findObjects(text());
    }
    if (head == 0) {
        state_ = State::End;
        piece = {Piece::Kind::Whole, true, text(), offset_};
        return true;
    }
    state_ = State::InArray;
    surround(' ', head, "]}");
    piece = {Piece::Kind::Head, true, {data(), head + 2}, offset_};
    return true;
}

// The text in hand begins at the start of the array or behind an element of it.
bool PieceCutter::elements(Piece& piece) {
    const char separator = atArrayStart_ ? '\0' : firstLetter();
    if (!atArrayStart_ && separator != ',' && separator != ']') {
        refuseHere("\",\" or \"]\" expected");
    }
    if (separator == ',') {
        drop(1);
    }
    atArrayStart_ = false;
    const ElementScanner::Result found = scanElements();
    piece.kind = Piece::Kind::Elements;
    piece.mayBeEmpty = separator != ',';
    piece.start = offset_ - 1;
    if (found.arrayEnd != 0) {
        state_ = State::BehindArray;
        piece.text = surround('[', found.arrayEnd, "");
    } else if (found.lastEnd != 0) {
        piece.text = surround('[', found.lastEnd, "]");
    } else {
        state_ = State::End;
        piece.text = surround('[', size_, "");
    }
    return true;
}

ElementScanner::Result PieceCutter::scanElements() {
    fill();
    ElementScanner::Result found = ElementScanner::scan(data(), size_);
    while (found.lastEnd == 0 && found.arrayEnd == 0 && !sourceEnded_) {
        grow();
        fill();
        found = ElementScanner::scan(data(), size_);
    }
    return found;
}

bool PieceCutter::behindArray(Piece& piece) {
    state_ = State::End;
    switch (firstLetter()) {
    case ',':
        readRest();
        data()[0] = '{';
        piece = {Piece::Kind::Tail, false, text(), offset_};
        return true;
    case '}':
        drop(1);
        firstLetter();
        if (size_ != 0) {
            refuseHere("the end of the file expected");
        }
        return false;
    default:
        refuseHere("\",\" or \"}\" expected");
    }
}

// The first letter of the text in hand, without the blanks before it; zero at the end of the file.
char PieceCutter::firstLetter() {
    std::size_t blanks = skipBlanks(text(), 0);
    while (blanks == size_ && !sourceEnded_) {
        drop(size_);
        fill();
        blanks = skipBlanks(text(), 0);
    }
    drop(blanks);
    return size_ == 0 ? '\0' : data()[0];
}

void PieceCutter::readRest() {
    fill();
    while (!sourceEnded_) {
        grow();
        fill();
    }
}

void PieceCutter::refuseHere(const std::string& what) const {
    const std::string found = size_ == 0 ? "the end of the file" : std::string("\"") + *text().data() + "\"";
    refuse(what + ", " + found + " found, " + source_->placeOf(offset_));
}

}  // namespace plant
