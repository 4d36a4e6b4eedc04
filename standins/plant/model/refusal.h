// Why a model file is refused, and where.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace plant {

// Thrown where something is wrong; whoever stands around it adds the place from the inside outwards. All in UTF-8.
class Refusal {
public:
    // Marks text that is no JSON: its place in the file is told beside its path.
    struct Syntax {};
    static constexpr Syntax syntax{};

    // The byte behind the last one of the document.
    static constexpr std::size_t end = static_cast<std::size_t>(-1);

    explicit Refusal(std::string what) : what_(std::move(what)) {}
    // `byte` counts from the start of the document in hand; without it the reader's own place counts.
    Refusal(std::string what, Syntax, std::optional<std::size_t> byte = {})
        : what_(std::move(what)), isSyntax_(true), byte_(byte) {}

    void within(std::string_view member);
    void within(std::size_t index);
    // "objects[17].points[2].flow: what is wrong"; without a place what is wrong alone.
    std::string text() const;
    bool isSyntax() const { return isSyntax_; }
    std::optional<std::size_t> byte() const { return byte_; }

private:
    std::string path_;
    std::string what_;
    bool isSyntax_ = false;
    std::optional<std::size_t> byte_;
};

[[noreturn]] void refuse(std::string what);

}  // namespace plant
