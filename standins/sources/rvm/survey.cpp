#include "sources/rvm/survey.h"

#include <algorithm>

namespace plant::rvm {

namespace {

// What RVMOUT writes as information, in both of its forms.
constexpr std::string_view ownInformation = "ORNA ORNA";
constexpr std::uint32_t firstWithEncoding = 2;
constexpr std::uint32_t lastGroupVersion = 4;
constexpr std::uint32_t firstWithTransparency = 3;
constexpr std::uint8_t mostTransparency = 100;

class Surveyor {
public:
    Surveyor(std::string_view bytes, std::string_view file, SourceReport& report)
        : bytes_(bytes), file_(file), report_(report) {}

    Survey run() {
        readHead();
        readModel();
        for (Chunk chunk = next(); chunk.tag != Tag::End; chunk = next()) {
            take(chunk);
        }
        closeAll();
        checkRest();
        addTo(report_.balance("chunks"), chunks_);
        addTo(report_.balance("primitives"), primitives_);
        return std::move(survey_);
    }

private:
    Chunk next() {
        const Chunk chunk = chunkAt(bytes_, at_);
        at_ = chunk.next;
        ++chunks_.read;
        ++(isKnown(chunk.tag) ? chunks_.taken : chunks_.told);
        if (chunk.tag == Tag::End) {
            Body body(bytes_, chunk);
            body.word();
            body.finish();
        }
        return chunk;
    }
    Chunk expect(Tag tag) {
        const Chunk chunk = next();
        if (chunk.tag != tag) {
            refuseAt(chunk.offset, "a chunk " + tagText(tag) + " is expected, " + tagText(chunk.tag) + " stands there");
        }
        return chunk;
    }
    void tell(std::string_view code, SourceGrade grade, std::uint64_t offset, std::string text) {
        report_.tell(code, grade, {std::string(file_) + ": " + placeOf(offset), std::move(text)});
    }

    static void addTo(SourceCount& sum, const SourceCount& part) {
        sum.read += part.read;
        sum.taken += part.taken;
        sum.told += part.told;
    }

    void readHead() {
        const Chunk chunk = expect(Tag::Head);
        Body body(bytes_, chunk);
        const std::uint32_t version = body.word();
        survey_.information = body.text();
        survey_.note = body.text();
        survey_.date = body.text();
        survey_.user = body.text();
        if (version >= firstWithEncoding) {
            survey_.encoding = body.text();
        }
        body.finish();
        survey_.isOwn = survey_.information == ownInformation;
    }
    void readModel() {
        const Chunk chunk = expect(Tag::Model);
        Body body(bytes_, chunk);
        body.word();
        survey_.project = body.text();
        survey_.model = body.text();
        body.finish();
    }

    void take(const Chunk& chunk) {
        switch (chunk.tag) {
        case Tag::GroupBegin:
            return beginGroup(chunk);
        case Tag::GroupEnd:
            return endGroup(chunk);
        case Tag::Primitive:
        case Tag::Obstruction:
        case Tag::Insulation:
            return countPrimitive(chunk);
        case Tag::Color:
            return readColor(chunk);
        default:
            return passOver(chunk);
        }
    }
    void beginGroup(const Chunk& chunk) {
        if (open_.size() == deepestGroup) {
            refuseAt(chunk.offset, "groups stand in groups to more than " + std::to_string(deepestGroup) + " levels");
        }
        const auto number = static_cast<std::uint32_t>(survey_.groups.size());
        Group group{static_cast<std::uint32_t>(chunk.offset), 0};
        group.parent = open_.empty() ? noGroup : open_.back().group;
        std::uint32_t& lastSon = open_.empty() ? lastTop_ : open_.back().lastSon;
        link(group.parent, lastSon, number);
        lastSon = number;
        survey_.groups.push_back(group);
        groupFacts(bytes_, group);
        open_.push_back({number, noGroup});
    }
    void link(std::uint32_t parent, std::uint32_t before, std::uint32_t number) {
        if (before != noGroup) {
            survey_.groups[before].brother = number;
        } else {
            (parent != noGroup ? survey_.groups[parent].son : survey_.firstTop) = number;
        }
    }
    void endGroup(const Chunk& chunk) {
        Body body(bytes_, chunk);
        body.word();
        body.finish();
        if (open_.empty()) {
            return tell("rvm.group-end-surplus", SourceGrade::Note, chunk.offset,
                        "a group ends here that never began; passed over");
        }
        survey_.groups[open_.back().group].end = static_cast<std::uint32_t>(chunk.next);
        open_.pop_back();
    }
    void countPrimitive(const Chunk& chunk) {
        ++primitives_.read;
        if (!open_.empty()) {
            Group& group = survey_.groups[open_.back().group];
            ++group.primitives;
            if (chunk.tag != Tag::Primitive && group.obstructionTransparency == 0) {
                group.obstructionTransparency = transparencyOf(chunk);
            }
            return;
        }
        ++primitives_.told;
        tell("rvm.primitive-outside", SourceGrade::Loss, chunk.offset, "a primitive that stands in no group; left out");
    }
    // Behind version, kind, matrix and bounding box. A chunk too short for it is refused where it is read.
    std::uint8_t transparencyOf(const Chunk& chunk) const {
        constexpr std::size_t place = (2 + 12 + 6) * 4;
        const bool isThere = chunk.next - chunk.body > place;
        return isThere ? static_cast<std::uint8_t>(bytes_[chunk.body + place]) : std::uint8_t{0};
    }
    void readColor(const Chunk& chunk) {
        Body body(bytes_, chunk);
        body.word();
        const std::uint32_t number = body.word();
        const char* parts = body.take(4);
        body.finish();
        const auto part = [&](int i) { return static_cast<std::uint8_t>(parts[i]); };
        survey_.colors.add(number, {part(0), part(1), part(2)});
    }
    void passOver(const Chunk& chunk) {
        if (isKnown(chunk.tag)) {
            refuseAt(chunk.offset, "a second chunk " + tagText(chunk.tag));
        }
        tell("rvm.chunk-unknown", SourceGrade::Loss, chunk.offset,
             "chunk " + tagText(chunk.tag) + " is not known; its " + std::to_string(chunk.next - chunk.offset) +
                 " bytes are left out");
    }
    void closeAll() {
        for (; !open_.empty(); open_.pop_back()) {
            Group& group = survey_.groups[open_.back().group];
            group.end = static_cast<std::uint32_t>(at_);
            tell("rvm.group-not-ended", SourceGrade::Note, group.at, "a group that does not end; ended with the file");
        }
    }
    void checkRest() {
        const std::string_view rest = bytes_.substr(at_);
        if (rest.find_first_not_of('\0') != std::string_view::npos) {
            tell("rvm.bytes-behind-end", SourceGrade::Loss, at_,
                 std::to_string(rest.size()) + " bytes stand behind the last chunk; left out");
        }
    }

    struct Open {
        std::uint32_t group;
        std::uint32_t lastSon;
    };

    std::string_view bytes_;
    std::string_view file_;
    SourceReport& report_;
    Survey survey_;
    SourceCount chunks_;
    SourceCount primitives_;
    std::uint64_t at_ = 0;
    std::vector<Open> open_;
    std::uint32_t lastTop_ = noGroup;
};

std::size_t bytesBehindMaterial(std::uint32_t version) {
    constexpr std::size_t ofVersion3 = 4;
    constexpr std::size_t ofVersion4 = 28;
    return version < firstWithTransparency ? 0 : version < lastGroupVersion ? ofVersion3 : ofVersion4;
}

}  // namespace

bool isRvm(std::string_view firstBytes) {
    constexpr std::string_view head("\0\0\0H\0\0\0E\0\0\0A\0\0\0D", 16);
    return firstBytes.starts_with(head);
}

Survey surveyRvm(std::string_view bytes, std::string_view file, SourceReport& report) {
    return Surveyor(bytes, file, report).run();
}

GroupFacts groupFacts(std::string_view bytes, const Group& group) {
    const Chunk chunk = chunkAt(bytes, group.at);
    Body body(bytes, chunk);
    const std::uint32_t version = body.word();
    if (version > lastGroupVersion) {
        refuseAt(chunk.offset, "chunk CNTB of version " + std::to_string(version) + "; versions 1 to 4 are known");
    }
    GroupFacts facts;
    facts.name = body.text();
    body.take(12);
    facts.material = body.word();
    const std::size_t rest = bytesBehindMaterial(version);
    const char* more = body.take(rest);
    facts.transparency = rest > 0 ? std::min(static_cast<std::uint8_t>(more[0]), mostTransparency) : std::uint8_t{0};
    body.finish();
    facts.contents = chunk.next;
    return facts;
}

}  // namespace plant::rvm
