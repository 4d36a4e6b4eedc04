#include "sources/json/model_reader.h"

#include "sources/json/faults.h"

#include <algorithm>

namespace plant {

namespace {

constexpr std::string_view formatName = "tessaro-plant";
constexpr std::string_view quotedFormatName = "\"tessaro-plant\"";
constexpr std::int64_t formatVersion = 1;

void checkFormat(od::value& value) {
    if (rawText(value).view() != formatName) {
        refuseValue(value, quotedFormatName);
    }
}

void checkVersion(od::value& value) {
    std::int64_t version;
    if (value.get_int64().get(version) != simdjson::SUCCESS || version != formatVersion) {
        refuseValue(value, "version " + std::to_string(formatVersion));
    }
}

int readModule(od::value& value) {
    std::int64_t module;
    if (value.get_int64().get(module) != simdjson::SUCCESS || (module != 48 && module != 65 && module != 73)) {
        refuseValue(value, "48, 65 or 73");
    }
    return static_cast<int>(module);
}

}  // namespace

void ModelReader::read(ByteSource& source) {
    check(parser_.allocate(PieceCutter::usualSize()));
    PieceCutter cutter(source);
    Piece piece;
    while (cutter.next(piece)) {
        try {
            readPiece(piece);
        } catch (const Refusal& refusal) {
            if (!refusal.isSyntax()) {
                throw;
            }
            const char* near = refusal.byte() ? ", " : ", near ";
            const std::size_t byte = refusal.byte() ? *refusal.byte() : whereItStands(piece);
            refuse(refusal.text() + near + source.placeOf(piece.start + std::min(byte, piece.text.size())));
        }
    }
    checkComplete(rows::top(), seen_);
}

// The byte of the piece where reading stands; the reader is a token ahead of what is wrong.
std::size_t ModelReader::whereItStands(const Piece& piece) {
    const char* at = nullptr;
    const bool known = document_.current_location().get(at) == simdjson::SUCCESS;
    return known ? static_cast<std::size_t>(at - piece.text.data()) : Refusal::end;
}

void ModelReader::readPiece(const Piece& piece) {
    const auto error = parser_.iterate(piece.text, PieceCutter::readable(piece)).get(document_);
    if (error != simdjson::SUCCESS) {
        refuseDocument(piece.text, error);
    }
    const bool isEmpty = piece.kind == Piece::Kind::Elements ? !readElements() : !readMembers();
    if (isEmpty && !piece.mayBeEmpty) {
        throw Refusal("nothing behind a comma", Refusal::syntax);
    }
    const char* rest = nullptr;
    if (document_.current_location().get(rest) == simdjson::SUCCESS) {
        throw Refusal("the end of the file expected", Refusal::syntax);
    }
}

// Members of the top level. False when there are none.
bool ModelReader::readMembers() {
    const std::uint64_t before = seen_;
    od::object object;
    const simdjson::error_code error = document_.get_object().get(object);
    if (error == simdjson::INCORRECT_TYPE) {
        refuse("an object expected");
    }
    check(error);
    const NameRows* names = &rows::top();
    eachMember(object, names, seen_, unescape_,
               [&](int row, od::value& value) { readTop(static_cast<rows::Top>(row), value); });
    return seen_ != before;
}

// Elements of "objects". False when there are none.
bool ModelReader::readElements() {
    const std::size_t before = builder_->objectCount();
    try {
        od::array array;
        check(document_.get_array().get(array));
        eachElement(array, before - firstObject_, [&](od::value& object) { objects_.read(object); });
    } catch (Refusal& refusal) {
        refusal.within(rows::top().nameOf(static_cast<int>(rows::Top::Objects)));
        throw;
    }
    return builder_->objectCount() != before;
}

void ModelReader::readTop(rows::Top row, od::value& value) {
    using Row = rows::Top;
    constexpr std::uint64_t formatSeen = std::uint64_t{1} << static_cast<unsigned>(Row::Format);
    if ((seen_ & formatSeen) == 0) {
        refuse("\"format\" stands first");
    }
    switch (row) {
    case Row::Format:
        return checkFormat(value);
    case Row::Version:
        return checkVersion(value);
    case Row::Project:
        return readProject(value);
    case Row::AttributeLabels:
        return objects_.attributes().readLabels(value, *builder_);
    case Row::Databases:
        return readDatabases(value);
    case Row::Objects:
        return eachElement(value, "an array of objects", [&](od::value& object) { objects_.read(object); });
    }
}

void ModelReader::readProject(od::value& value) {
    ProjectFacts facts;
    eachMember(value, rows::project(), unescape_,
               [&](int row, od::value& member) { readProjectMember(static_cast<rows::Project>(row), member, facts); });
    facts.designItems = designItems_;
    facts.projectItems = projectItems_;
    builder_->project(facts);
}

void ModelReader::readProjectMember(rows::Project row, od::value& value, ProjectFacts& facts) {
    using Row = rows::Project;
    switch (row) {
    case Row::Name:
        facts.name = text(value);
        return;
    case Row::Path:
        facts.path = text(value);
        return;
    case Row::User:
        facts.user = text(value);
        return;
    case Row::Module:
        facts.module = readModule(value);
        return;
    case Row::Database:
        facts.database = text(value);
        return;
    case Row::DesignItems:
        designItems_ = readItems(value);
        return;
    case Row::ProjectItems:
        projectItems_ = readItems(value);
        return;
    case Row::WeldColor:
        facts.weldColor = static_cast<int>(wholeNumber(value, 1, largestWeldColor));
        return;
    case Row::CurrentManager:
        facts.currentManager = objectId(value);
        return;
    case Row::PlatformPath:
        facts.platformPath = text(value);
        return;
    }
}

std::vector<ProjectFacts::Item> ModelReader::readItems(od::value& value) {
    std::vector<ProjectFacts::Item> items;
    eachEntry(value, "an object of texts", [&](const RawText& raw, od::value& item) {
        items.push_back({unescape_(raw), text(item)});
    });
    return items;
}

void ModelReader::readDatabases(od::value& value) {
    eachElement(value, "an array of databases", [&](od::value& database) { readDatabase(database); });
    if (builder_->databaseCount() == firstDatabase_) {
        refuse("at least one database expected");
    }
}

void ModelReader::readDatabase(od::value& value) {
    using Row = rows::Database;
    DatabaseFacts facts;
    eachMember(value, rows::database(), unescape_, [&](int row, od::value& member) {
        switch (static_cast<Row>(row)) {
        case Row::Name:
            facts.name = text(member);
            break;
        case Row::ShortName:
            facts.shortName = text(member);
            break;
        case Row::Main:
            facts.main = trueOrFalse(member);
            break;
        case Row::Root:
            facts.root = objectId(member);
            break;
        }
    });
    builder_->database(facts);
}

}  // namespace plant
