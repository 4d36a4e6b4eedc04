// The stream of cata.txt: owns the number format and the line ends of every catalogue line.
#pragma once

#include "hextinterface/hextbasemethod/limited_text.h"
#include "hextinterface/hextbasemethod/macro_text.h"
#include "tolmar/file.h"

#include <cmath>
#include <string>
#include <string_view>

// The form in which every element name stands in a catalogue line: "/" and the name; "Nulref" stays as it is.
std::string cataRef(std::string_view name);

// Pieces of a line: a name through cataRef, a free text through limitedText.
struct Ref {
    std::string_view name;
};
struct Limited {
    std::string_view text;
};

class CataStream {
public:
    CataStream() = default;
    // For tests: writes to a file that is open already.
    explicit CataStream(tolmar::OutputFile file) : file_(std::move(file)) {}

    // Opens <folder>/cata.txt, replacing what it held; a stream that is open is closed first.
    void openCataFile(std::string_view folder);
    bool isOpen() const { return file_.isOpen(); }
    bool close() { return file_.close(); }
    // How many lines have been put.
    std::size_t lineCount() const { return lineCount_; }

    // One line of texts, doubles (six decimals), integers, Ref and Limited pieces. Nothing happens on a closed stream.
    // A line with a double that is not finite is left out and told to the run report.
    template <typename... Pieces>
    void line(const Pieces&... pieces) {
        text_.clear();
        isFinite_ = true;
        (append(pieces), ...);
        if (!isFinite_) {
            return leaveOut();
        }
        text_ += '\n';
        file_.write(text_);
        ++lineCount_;
    }

private:
    void append(std::string_view text) { text_ += text; }
    void append(double value) {
        isFinite_ = isFinite_ && std::isfinite(value);
        appendFixed(text_, value);
    }
    void append(int value) { appendInt(text_, value); }
    void append(Ref ref) { ref.name == "Nulref" ? text_ += ref.name : text_.append("/").append(ref.name); }
    void append(Limited limited) { text_ += limitedText(limited.text); }
    void leaveOut() const;

    tolmar::OutputFile file_;
    std::string text_;
    bool isFinite_ = true;  // every number of the line in hand
    std::size_t lineCount_ = 0;
};
