// What a source made of its files, as plain values that a program prints: a balance for each kind of thing (read =
// taken over + told), and findings under stable codes. Of a code that comes often the first findings are kept, the
// others are counted. Texts are UTF-8.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace plant {

enum class SourceGrade : std::uint8_t {
    Note,  // nothing is missing from the model, or what is has no place in it
    Loss   // the model could have held it and does not
};

// One kind of thing, such as "primitives".
struct SourceCount {
    std::string kind;
    std::uint64_t read = 0;
    std::uint64_t taken = 0;
    std::uint64_t told = 0;
    bool isBalanced() const { return read == taken + told; }
};

struct SourceEntry {
    std::string place;  // "review.rvm: offset 1204 (0x4B4)", "review.txt: line 17"
    std::string text;   // what it is, and what became of it
};

struct SourceFinding {
    std::string code;  // "rvm.chunk-unknown"
    SourceGrade grade = SourceGrade::Note;
    std::uint64_t count = 0;
    std::vector<SourceEntry> first;
};

class SourceReport {
public:
    // Entries that are kept of one code.
    static constexpr std::size_t mostEntries = 20;

    // The balance of a kind, begun at zero. The reference holds until the next new kind.
    SourceCount& balance(std::string_view kind);
    // True when a further entry of the code would be kept: who is about to tell composes its text only then.
    bool keeps(std::string_view code) const;
    void tell(std::string_view code, SourceGrade grade, SourceEntry entry);
    // One more of a code whose entries are not kept any more.
    void tellMore(std::string_view code);

    const std::vector<SourceCount>& balances() const { return balances_; }
    const std::vector<SourceFinding>& findings() const { return findings_; }
    bool isBalanced() const;
    bool hasLosses() const;

private:
    SourceFinding* find(std::string_view code);

    std::vector<SourceCount> balances_;
    std::vector<SourceFinding> findings_;
};

}  // namespace plant
