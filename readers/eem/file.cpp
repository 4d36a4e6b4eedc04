#include "readers/eem/file.h"

#include <bit>
#include <cmath>

namespace readers::eem {

namespace {

constexpr std::size_t shortestBlock = 33;
constexpr std::size_t shortestRecord = 36;
constexpr std::size_t vertexSize = 28;

// Fields by code: p a point or direction, d a number, i an integer, v a list of vertices, h a list of such lists.
constexpr std::array<const char*, 21> fieldsOfCode = {
    "ppd",         // cylinder
    "pppddd",      // box
    "pppddd",      // box given by its centre
    "ppdd",        // cone
    "ppddp",       // eccentric cone
    "pdddp",       // oval head
    "pppi",        // prism
    "pppi",        // prism with a turned vertex
    "vppd",        // revolution
    "pppdddd",     // saddle
    "pppd",        // sloped cylinder
    "pd",          // sphere
    "vhpd",        // extrusion
    "ppppddd",     // square to round
    "ppppdddddd",  // square cone
    "pppddddd",    // square bend
    "pppddddd",    // square bend by angle
    "pppddd",      // round bend
    "pppddd",      // round bend by angle
    "pppd",        // wedge
    "pp",          // line
};

// Ends the reading of a block or of the file; the finding has been noted.
struct Stop {};

class EemReader {
public:
    EemReader(std::string_view bytes, const BlockVisitor& visit, Findings& findings)
        : bytes_(bytes), visit_(visit), findings_(findings) {}

    FileEnds run() {
        try {
            readHeader();
            while (!isAtTrailer()) {
                readBlock();
            }
            ends_.isWhole = true;
            expect(at_ == bytes_.size(), at_, "bytes behind the trailer");
        } catch (const Stop&) {
        }
        return ends_;
    }

private:
    void note(std::uint64_t offset, std::string text) { readers::note(findings_, atByte(offset), std::move(text)); }
    [[noreturn]] void stop(std::uint64_t offset, std::string text) {
        note(offset, std::move(text));
        throw Stop();
    }
    void expect(bool good, std::uint64_t offset, const char* text) {
        if (!good) {
            note(offset, text);
        }
    }

    std::string_view take(std::uint64_t size, const char* what) {
        if (size > limit_ - at_) {
            stop(at_, std::string(limit_ == bytes_.size() ? "the file" : "the block") + " ends within " + what);
        }
        const std::string_view piece = bytes_.substr(at_, static_cast<std::size_t>(size));
        at_ += static_cast<std::size_t>(size);
        return piece;
    }
    std::uint64_t bits(std::size_t size, const char* what) {
        const std::string_view piece = take(size, what);
        std::uint64_t value = 0;
        for (std::size_t i = size; i > 0; --i) {
            value = value * 256 + static_cast<unsigned char>(piece[i - 1]);
        }
        return value;
    }
    std::int32_t integer(const char* what) {
        return static_cast<std::int32_t>(static_cast<std::uint32_t>(bits(4, what)));
    }
    double number() {
        const auto value = std::bit_cast<double>(bits(8, "a number"));
        expect(std::isfinite(value), at_ - 8, "a number that is not finite");
        return value;
    }
    std::string text(const char* what) {
        const std::size_t start = at_;
        const std::int32_t length = integer(what);
        if (length < 0) {
            stop(start, std::string(what) + " of negative length");
        }
        return std::string(take(static_cast<std::uint64_t>(length), what));
    }
    // A number of things of at least `least` bytes each.
    std::size_t count(std::size_t least, const char* what) {
        const std::size_t start = at_;
        const std::int32_t value = integer(what);
        if (value < 0 || static_cast<std::uint64_t>(value) * least > limit_ - at_) {
            stop(start, std::string("no room for ") + what);
        }
        return static_cast<std::size_t>(value);
    }
    void tag(const char* expected) {
        const std::size_t start = at_;
        if (text("a tag") != expected) {
            stop(start, std::string("the tag ") + expected + " expected");
        }
    }
    bool skip(std::string_view expected) {
        const bool isThere = bytes_.substr(at_, expected.size()) == expected;
        at_ += isThere ? expected.size() : 0;
        return isThere;
    }

    void readHeader() {
        using namespace std::string_view_literals;
        ends_.isPapers = skip("\3\0\0\0PID"sv);
        if (ends_.isPapers) {
            const std::int32_t version = integer("the version");
            expect(version == 1, at_ - 4, "unknown version");
        }
    }
    bool isAtTrailer() {
        using namespace std::string_view_literals;
        if (at_ == bytes_.size()) {
            stop(at_, "the trailer is missing");
        }
        return skip("\4\0\0\0ENDE"sv);
    }
    void readBlock() {
        Block block;
        block.offset = at_;
        const std::int32_t end = integer("a block");
        if (end < 0 || static_cast<std::uint64_t>(end) < block.offset + shortestBlock ||
            static_cast<std::uint64_t>(end) > bytes_.size()) {
            stop(block.offset, "a block that ends at " + std::to_string(end));
        }
        block.end = static_cast<std::uint64_t>(end);
        limit_ = static_cast<std::size_t>(block.end);
        try {
            readFields(block);
            expect(at_ == limit_, at_, "bytes between the last record and the block's end");
        } catch (const Stop&) {
        }
        at_ = limit_;
        limit_ = bytes_.size();
        visit_(std::move(block));
    }
    void readFields(Block& block) {
        tag(ends_.isPapers ? "PNA:" : "NA:");
        block.name = text("a name");
        expect(block.name.find('\0') == std::string::npos, block.offset, "a name with a zero byte");
        tag("OBJID:");
        block.id = static_cast<std::int64_t>(bits(8, "an id"));
        expect(block.id > 0, at_ - 8, "an id that is none");
        if (!ends_.isPapers) {
            tag("GEO:");
            for (std::size_t left = count(shortestRecord, "the records"); left > 0; --left) {
                block.records.push_back(readRecord());
            }
        }
    }
    Record readRecord() {
        Record record;
        record.offset = at_;
        record.code = integer("a record");
        if (record.code < 0 || static_cast<std::size_t>(record.code) >= fieldsOfCode.size()) {
            stop(record.offset, "unknown code " + std::to_string(record.code));
        }
        for (const char* field = fieldsOfCode[static_cast<std::size_t>(record.code)]; *field != '\0'; ++field) {
            readField(*field, record);
        }
        if (record.code != codeOfLine) {
            record.handedness = integer("a record");
            expect(record.handedness == 0 || record.handedness == 1, at_ - 4, "a handedness other than 0 and 1");
        }
        record.color = static_cast<std::uint32_t>(integer("a record"));
        const std::uint32_t alpha = record.color & alphaMask;
        expect(record.code == codeOfLine || alpha == 0 || alpha == alphaOfObstruction, at_ - 4,
               "a colour word with unknown bits");
        return record;
    }
    void readField(char kind, Record& record) {
        switch (kind) {
        case 'i':
            record.integers.push_back(integer("a record"));
            return;
        case 'v':
            record.lists.push_back(readVertices());
            return;
        case 'h':
            for (std::size_t left = count(4, "the holes"); left > 0; --left) {
                record.lists.push_back(readVertices());
            }
            return;
        default:
            for (int left = kind == 'p' ? 3 : 1; left > 0; --left) {
                record.numbers.push_back(number());
            }
        }
    }
    std::vector<Vertex> readVertices() {
        std::vector<Vertex> list(count(vertexSize, "the vertices"));
        for (Vertex& vertex : list) {
            vertex.kind = integer("a vertex");
            expect(vertex.kind >= 1 && vertex.kind <= 7, at_ - 4, "a vertex of unknown kind");
            for (double& coordinate : vertex.point) {
                coordinate = number();
            }
        }
        return list;
    }

    std::string_view bytes_;
    const BlockVisitor& visit_;
    Findings& findings_;
    FileEnds ends_;
    std::size_t at_ = 0;
    std::size_t limit_ = bytes_.size();
};

}  // namespace

FileEnds readBlocks(std::string_view bytes, const BlockVisitor& visit, Findings& findings) {
    return EemReader(bytes, visit, findings).run();
}

EemContent readEem(std::string_view bytes, Findings& findings) {
    EemContent content;
    static_cast<FileEnds&>(content) = readBlocks(
        bytes, [&content](Block&& block) { content.blocks.push_back(std::move(block)); }, findings);
    return content;
}

}  // namespace readers::eem
