// Reads a model file and tells a builder what it finds. The file comes in pieces (piece_cutter.h); each is a JSON
// document, whose values are told as they are met.
//
// The reader tells a MemoryBuilder, not any builder, so that its calls are direct ones and texts, attributes and
// primitives can go the quickest way; it knows the file and the builder, nothing of the model's memory.
#pragma once

#include "plant/building/memory_builder.h"
#include "sources/json/object_reader.h"
#include "sources/json/piece_cutter.h"
#include "sources/json/rows.h"

namespace plant {

class ModelReader {
public:
    explicit ModelReader(MemoryBuilder& builder)
        : builder_(&builder), unescape_(parser_), objects_(builder, document_, unescape_),
          firstObject_(builder.objectCount()), firstDatabase_(builder.databaseCount()) {}

    // Reads the pieces of a source to its end. Throws a Refusal.
    void read(ByteSource& source);

private:
    void readPiece(const Piece& piece);
    bool readMembers();
    bool readElements();
    void readTop(rows::Top row, od::value& value);
    void readProject(od::value& value);
    void readProjectMember(rows::Project row, od::value& value, ProjectFacts& facts);
    std::vector<ProjectFacts::Item> readItems(od::value& value);
    void readDatabases(od::value& value);
    void readDatabase(od::value& value);
    std::size_t whereItStands(const Piece& piece);
    std::string_view text(od::value& value) { return unescape_(rawText(value)); }

    MemoryBuilder* builder_;
    od::parser parser_;
    od::document document_;  // of the piece in hand
    Unescaper unescape_;
    ObjectReader objects_;
    std::size_t firstObject_;    // of this file in the builder
    std::size_t firstDatabase_;  // the same
    std::uint64_t seen_ = 0;     // members of the top level
    std::vector<ProjectFacts::Item> designItems_;
    std::vector<ProjectFacts::Item> projectItems_;
};

}  // namespace plant
