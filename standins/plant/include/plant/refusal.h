// Why a plant is refused, and where.
//
// A Refusal is thrown where something is wrong; whoever stands around it adds the place from the inside outwards and
// throws it on. So a builder says what is wrong and where within the record that it was told ("flow"), and the source
// that told it adds where that record stands ("objects[17].points[2]", a line of a file). What a builder refuses of a
// record that was told long before names it by its number; its source alone can say where that stands, so whoever asks
// for the text gives a function that does.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace plant {

// A record by its number among those of its kind that a builder was told, from 0.
struct RecordNumber {
    enum class Kind : std::uint8_t { Object, Database };
    Kind kind = Kind::Object;
    std::size_t number = 0;
};
// Where a record stands in its source. This one is for model files: "objects[17]", "databases[0]".
using PlaceOfRecord = std::function<std::string(RecordNumber record)>;
std::string placeInModelFile(RecordNumber record);

// All texts are UTF-8.
class Refusal {
public:
    // Marks text that cannot be read at all: its place in the file is told beside its path.
    struct Syntax {};
    static constexpr Syntax syntax{};

    // The byte behind the last one of the document.
    static constexpr std::size_t end = static_cast<std::size_t>(-1);

    explicit Refusal(std::string what) : what_(std::move(what)) {}
    // What is wrong ends by naming a record told earlier: "id 5 is that of " objects[0].
    Refusal(std::string what, RecordNumber named) : what_(std::move(what)), named_(named) {}
    // `byte` counts from the start of the document in hand; without it the reader's own place counts.
    Refusal(std::string what, Syntax, std::optional<std::size_t> byte = {})
        : what_(std::move(what)), isSyntax_(true), byte_(byte) {}

    // The place so far is within this member, or this element of a list.
    void within(std::string_view member);
    void within(std::size_t index);
    // The place so far is within this record, which ends it: nothing is put around it any more.
    void about(RecordNumber record) { record_ = record; }

    // "objects[17].points[2].flow: what is wrong"; without a place what is wrong alone.
    std::string text(const PlaceOfRecord& placeOf = placeInModelFile) const;
    // The record that it is about, where it was told before the call that was refused.
    std::optional<RecordNumber> record() const { return record_; }
    bool isSyntax() const { return isSyntax_; }
    std::optional<std::size_t> byte() const { return byte_; }

private:
    std::string path_;
    std::string what_;
    std::optional<RecordNumber> record_;
    std::optional<RecordNumber> named_;
    bool isSyntax_ = false;
    std::optional<std::size_t> byte_;
};

[[noreturn]] void refuse(std::string what);

// Calls `body` and gives its refusals their place, a member's name or an element's number.
template <typename Place, typename Body>
void within(Place place, Body body) {
    try {
        body();
    } catch (Refusal& refusal) {
        refusal.within(place);
        throw;
    }
}

// The same for what is wrong with a record told earlier.
template <typename Body>
void about(RecordNumber record, Body body) {
    try {
        body();
    } catch (Refusal& refusal) {
        refusal.about(record);
        throw;
    }
}

}  // namespace plant
