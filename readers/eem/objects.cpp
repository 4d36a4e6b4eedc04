#include "readers/eem/objects.h"

#include "readers/eem/file.h"
#include "readers/eem/side_file.h"

#include <unordered_map>

namespace readers::eem {

namespace {

// The member of each block: mostly the one in the same place, else the first of that key.
class Members {
public:
    explicit Members(std::vector<SideMember> members) : members_(std::move(members)) {
        for (std::size_t i = 0; i < members_.size(); ++i) {
            first_.try_emplace(members_[i].key, i);
        }
    }

    const SideMember* of(const std::string& id, std::size_t block) const {
        if (block < members_.size() && members_[block].key == id) {
            return &members_[block];
        }
        const auto at = first_.find(id);
        return at != first_.end() ? &members_[at->second] : nullptr;
    }

private:
    std::vector<SideMember> members_;
    std::unordered_map<std::string_view, std::size_t> first_;  // keys of members_
};

double part(std::uint32_t word, unsigned shift) {
    return static_cast<double>(word >> shift & 0xFFU) / 255;
}

Solid solidOf(const Record& record) {
    Solid solid;
    solid.place = atByte(record.offset);
    if (record.code == codeOfLine) {
        const std::vector<double>& n = record.numbers;
        solid.form = SolidForm::Lines;
        solid.points = {{n[0], n[1], n[2]}, {n[3], n[4], n[5]}};
        solid.indices = {0, 1};
        solid.look.material = std::to_string(static_cast<std::int32_t>(record.color));
        return solid;
    }
    solid.form = SolidForm::Eem;
    solid.kind = record.code;
    solid.numbers = record.numbers;
    solid.integers = record.integers;
    solid.handedness = record.handedness;
    solid.look.color = {part(record.color, 0), part(record.color, 8), part(record.color, 16)};
    solid.isObstruction = (record.color & alphaMask) == alphaOfObstruction;
    for (const std::vector<Vertex>& list : record.lists) {
        std::vector<OutlineVertex>& outline = solid.outlines.emplace_back();
        for (const Vertex& vertex : list) {
            outline.push_back({vertex.kind, vertex.point});
        }
    }
    return solid;
}

class Teller {
public:
    Teller(std::vector<SideMember> members, ToUtf8 toUtf8, const ObjectVisitor& visit)
        : members_(std::move(members)), toUtf8_(toUtf8), visit_(visit) {}

    void tell(const Block& block) {
        Object object;
        object.name = utf8(block.name);
        object.path = {object.name};
        object.id = std::to_string(block.id);
        object.place = atByte(block.offset);
        if (const SideMember* member = members_.of(object.id, count_++)) {
            object.className = utf8(member->className);
            for (const auto& [key, value] : member->attributes) {
                object.attributes.push_back({{}, utf8(key), utf8(value), {}, {}, {}});
            }
        }
        for (const Record& record : block.records) {
            object.solids.push_back(solidOf(record));
        }
        visit_(object);
    }

private:
    std::string utf8(const std::string& text) const { return toUtf8_ != nullptr ? toUtf8_(text) : text; }

    Members members_;
    ToUtf8 toUtf8_;
    const ObjectVisitor& visit_;
    std::size_t count_ = 0;
};

}  // namespace

void readObjects(std::string_view eem, std::string_view side, ToUtf8 toUtf8, const ObjectVisitor& visit,
                 Findings& findings) {
    Teller teller(side.empty() ? std::vector<SideMember>() : readSideFile(side, findings), toUtf8, visit);
    readBlocks(
        eem, [&teller](Block&& block) { teller.tell(block); }, findings);
}

}  // namespace readers::eem
