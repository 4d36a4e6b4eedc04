#include "sources/json/model_reader.h"

#include "sources/json/faults.h"
#include "tolmar/code_page.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace plant {

namespace {

constexpr std::string_view formatName = "tessaro-plant";
constexpr std::string_view quotedFormatName = "\"tessaro-plant\"";
constexpr std::int64_t formatVersion = 1;
constexpr std::int64_t largestColor = 255;

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
    checkComplete(shapes::top(), seen_);
    resolver_.finish();
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
    resolver_.resolveNew();
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
    const Shape* shape = &shapes::top();
    eachMember(object, shape, seen_, unescape_,
               [&](int row, od::value& value) { readTop(static_cast<shapes::Top>(row), value); });
    return seen_ != before;
}

// Elements of "objects". False when there are none.
bool ModelReader::readElements() {
    const std::size_t before = model_->objects.size();
    try {
        od::array array;
        check(document_.get_array().get(array));
        eachElement(array, before, [&](od::value& object) { objects_.read(object); });
    } catch (Refusal& refusal) {
        refusal.within(shapes::top().nameOf(static_cast<int>(shapes::Top::Objects)));
        throw;
    }
    return model_->objects.size() != before;
}

void ModelReader::readTop(shapes::Top row, od::value& value) {
    using Row = shapes::Top;
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
        return objects_.attributes().readLabels(value);
    case Row::Databases:
        return readDatabases(value);
    case Row::Objects:
        return eachElement(value, "an array of objects", [&](od::value& object) { objects_.read(object); });
    }
}

void ModelReader::readProject(od::value& value) {
    eachMember(value, shapes::project(), unescape_,
               [&](int row, od::value& member) { readProjectMember(static_cast<shapes::Project>(row), member); });
}

void ModelReader::readProjectMember(shapes::Project row, od::value& value) {
    using Row = shapes::Project;
    ProjectData& project = model_->project;
    switch (row) {
    case Row::Name:
        project.name = texts_.keep(value);
        return;
    case Row::Path:
        project.path = texts_.keep(value);
        return;
    case Row::User:
        project.user = texts_.keep(value);
        return;
    case Row::Module:
        project.module = readModule(value);
        return;
    case Row::Database:
        project.database = texts_.keep(value);
        return;
    case Row::DesignItems:
        return readItems(value, project.designItems);
    case Row::ProjectItems:
        return readItems(value, project.projectItems);
    case Row::WeldColor:
        project.weldColor = static_cast<int>(wholeNumber(value, 1, largestColor));
        return;
    case Row::CurrentManager:
        project.currentManager.id = objectId(value);
        return;
    case Row::PlatformPath:
        project.platformPath = texts_.keep(value);
        return;
    }
}

void ModelReader::readItems(od::value& value, TextMap& items) {
    eachEntry(value, "an object of texts", [&](const RawText& raw, od::value& item) {
        const std::string key = raw.plain ? std::string(raw.view()) : tolmar::fromUtf8(unescape_(raw));
        if (!items.emplace(key, texts_.keep(item)).second) {
            refuse("stands twice");
        }
    });
}

void ModelReader::readDatabases(od::value& value) {
    eachElement(value, "an array of databases", [&](od::value& database) { readDatabase(database); });
    if (model_->databases.empty()) {
        refuse("at least one database expected");
    }
    if (model_->main == nullptr) {
        model_->main = &model_->databases.front();
    }
}

void ModelReader::readDatabase(od::value& value) {
    using Row = shapes::Database;
    DatabaseData& database = model_->databases.emplace_back(*model_);
    database.shortName = nullptr;
    eachMember(value, shapes::database(), unescape_, [&](int row, od::value& member) {
        switch (static_cast<Row>(row)) {
        case Row::Name:
            database.name = texts_.keep(member);
            break;
        case Row::ShortName:
            database.shortName = texts_.keep(member);
            break;
        case Row::Main:
            if (trueOrFalse(member) && std::exchange(model_->main, &database) != nullptr) {
                refuse("another database is the main one already");
            }
            break;
        case Row::Root:
            database.root.id = objectId(member);
            break;
        }
    });
    if (database.shortName == nullptr) {
        database.shortName = database.name;
    }
    checkDatabase(database);
}

void ModelReader::checkDatabase(const DatabaseData& database) const {
    for (const DatabaseData& other : model_->databases) {
        if (&other != &database && std::strcmp(other.name, database.name) == 0) {
            refuse("another database has this name");
        }
    }
}

}  // namespace plant
