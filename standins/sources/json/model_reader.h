// Reads a model file into an empty model.
#pragma once

#include "plant/model/class_table.h"
#include "plant/model/resolver.h"
#include "sources/json/attribute_reader.h"
#include "sources/json/object_reader.h"
#include "sources/json/piece_cutter.h"
#include "sources/json/text_keeper.h"

namespace plant {

class ModelReader {
public:
    explicit ModelReader(Model& model)
        : model_(&model), unescape_(parser_), texts_(model.texts, unescape_), objects_(model, document_, texts_),
          resolver_(model) {}

    // Reads the pieces of a source to its end. Throws a Refusal.
    void read(ByteSource& source);

private:
    void readPiece(const Piece& piece);
    bool readMembers();
    bool readElements();
    void readTop(shapes::Top row, od::value& value);
    void readProject(od::value& value);
    void readProjectMember(shapes::Project row, od::value& value);
    void readItems(od::value& value, TextMap& items);
    void readDatabases(od::value& value);
    void readDatabase(od::value& value);
    void checkDatabase(const DatabaseData& database) const;
    std::size_t whereItStands(const Piece& piece);

    Model* model_;
    od::parser parser_;
    od::document document_;  // of the piece in hand
    Unescaper unescape_;
    TextKeeper texts_;
    ObjectReader objects_;
    Resolver resolver_;
    std::uint64_t seen_ = 0;  // members of the top level
};

}  // namespace plant
