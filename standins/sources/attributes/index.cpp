#include "sources/attributes/index.h"

#include "plant/refusal.h"
#include "sources/attributes/lines.h"
#include "sources/text_decoder.h"

#include <algorithm>
#include <limits>

namespace plant::attributes {

namespace {

constexpr std::string_view mark = "CADC_Attributes_File";
constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
// Types are a few hundred words; beyond this many the others count as unknown.
constexpr std::size_t mostWords = 60000;
constexpr std::size_t longestWord = 64;

std::string_view withoutMark(std::string_view text) {
    return text.starts_with(byteOrderMark) ? text.substr(byteOrderMark.size()) : text;
}

// The word behind "name:" in the first line; `otherwise` without one.
std::string_view wordBehind(std::string_view line, std::string_view name, std::string_view otherwise) {
    const std::size_t at = line.find(name);
    if (at == std::string_view::npos) {
        return otherwise;
    }
    std::string_view rest = trimmed(line.substr(at + name.size()));
    const std::string_view word = rest.substr(0, rest.find_first_of(" \t"));
    return word.empty() || word == "," ? otherwise : word;
}

Syntax readSyntax(std::string_view line) {
    Syntax syntax;
    syntax.start = wordBehind(line, "start:", syntax.start);
    syntax.end = wordBehind(line, " end:", syntax.end);
    syntax.assign = wordBehind(line, "name_end:", syntax.assign);
    syntax.separator = wordBehind(line, "sep:", syntax.separator);
    return syntax;
}

std::string inCapitals(std::string_view text) {
    std::string capitals(text);
    std::transform(capitals.begin(), capitals.end(), capitals.begin(),
                   [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; });
    return capitals;
}

}  // namespace

bool isAttributeText(std::string_view firstBytes) {
    return withoutMark(firstBytes).starts_with(mark);
}

class IndexBuilder {
public:
    IndexBuilder(Index& index, std::string_view file, SourceReport& report)
        : index_(index), file_(file), report_(report) {}

    void run() {
        const std::string_view text = index_.text_;
        std::uint64_t at = text.size() - withoutMark(text).size();
        if (isAttributeText(text)) {
            index_.syntax_ = readSyntax(trimmed(takeLine(text, at)));
            line_ = 1;
        }
        while (at < text.size()) {
            const std::uint64_t start = at;
            const std::string_view line = takeLine(text, at);
            ++line_;
            take(readLine(line, index_.syntax_), start, at);
        }
        closeAll(at);
        countBlocks();
    }

private:
    void tell(std::string_view code, SourceGrade grade, std::uint32_t line, std::string text) {
        report_.tell(code, grade, {std::string(file_) + ": line " + std::to_string(line), std::move(text)});
    }

    void take(const Line& line, std::uint64_t start, std::uint64_t behind) {
        switch (line.kind) {
        case LineKind::Empty:
            return;
        case LineKind::Start:
            return begin(line.text, behind);
        case LineKind::End:
            return end(behind);
        case LineKind::Attributes:
            return takeAttributes(line.text);
        case LineKind::Unknown:
            (void)start;
            return tell("attributes.line-unknown", SourceGrade::Loss, line_,
                        "neither a block nor an attribute: \"" + shortened(line.text) + "\"; left out");
        }
    }
    std::string shortened(std::string_view text) {
        constexpr std::size_t most = 60;
        return std::string(decoder_.decode(text.substr(0, most)));
    }

    void begin(std::string_view name, std::uint64_t behind) {
        if (open_.size() == deepestBlock) {
            refuse("line " + std::to_string(line_) + ": blocks stand in blocks to more than " +
                   std::to_string(deepestBlock) + " levels");
        }
        const auto number = static_cast<std::uint32_t>(index_.blocks_.size());
        Block block{};
        block.name = static_cast<std::uint64_t>(name.data() - index_.text_.data());
        block.nameSize = static_cast<std::uint32_t>(name.size());
        block.body = behind;
        block.line = line_;
        block.parent = open_.empty() ? noBlock : open_.back().block;
        block.son = block.brother = noBlock;
        std::uint32_t& last = open_.empty() ? lastTop_ : open_.back().lastSon;
        if (last != noBlock) {
            index_.blocks_[last].brother = number;
        } else {
            (open_.empty() ? index_.firstTop_ : index_.blocks_[block.parent].son) = number;
        }
        last = number;
        index_.blocks_.push_back(block);
        open_.push_back({number, noBlock});
    }
    void close(std::uint64_t behind) {
        Block& block = index_.blocks_[open_.back().block];
        block.end = behind;
        block.endLine = line_;
        open_.pop_back();
    }
    void end(std::uint64_t behind) {
        if (open_.empty()) {
            return tell("attributes.end-surplus", SourceGrade::Note, line_,
                        "a block ends here that never began; passed over");
        }
        close(behind);
    }
    void closeAll(std::uint64_t behind) {
        while (!open_.empty()) {
            tell("attributes.block-not-ended", SourceGrade::Note, index_.blocks_[open_.back().block].line,
                 "a block that does not end; ended with the file");
            close(behind);
        }
    }

    void takeAttributes(std::string_view line) {
        while (const std::optional<KeyValue> pair = takeAttribute(line, index_.syntax_)) {
            if (pair->key.empty()) {
                tell("attributes.line-unknown", SourceGrade::Loss, line_,
                     "no attribute: \"" + shortened(pair->value) + "\"; left out");
                continue;
            }
            ++attributes_;
            if (open_.empty()) {
                ++told_;
                tell("attributes.outside", SourceGrade::Loss, line_,
                     "attribute " + shortened(pair->key) + " stands in no block; left out");
                continue;
            }
            Block& block = index_.blocks_[open_.back().block];
            ++block.attributes;
            note(block, *pair);
        }
    }
    // The keys by which blocks are sorted and found.
    void note(Block& block, const KeyValue& pair) {
        switch (pair.key.size()) {
        case 3:
        case 5:
            if (equalIgnoringCase(pair.key, "REF") || equalIgnoringCase(pair.key, "REFNO")) {
                noteRef(block, unquoted(pair.value));
            } else if (pair.key == "Class" && block.classType == 0) {
                block.classType = wordNumber(std::string(unquoted(pair.value)));
            }
            return;
        case 4:
            if (block.type == 0 && equalIgnoringCase(pair.key, "TYPE")) {
                noteType(block, unquoted(pair.value));
            }
            return;
        default:
            return;
        }
    }
    static bool isShort(std::string_view text) { return text.size() <= std::numeric_limits<std::uint16_t>::max(); }
    void noteRef(Block& block, std::string_view ref) {
        if (block.refSize == 0 && isShort(ref)) {
            block.ref = static_cast<std::uint64_t>(ref.data() - index_.text_.data());
            block.refSize = static_cast<std::uint16_t>(ref.size());
        }
    }
    void noteType(Block& block, std::string_view type) {
        if (type != lastType_) {
            lastType_ = type;
            lastNumber_ = wordNumber(inCapitals(trimmed(type)));
        }
        block.type = lastNumber_;
    }
    std::uint16_t wordNumber(const std::string& word) {
        if (word.empty() || word.size() > longestWord) {
            return 0;
        }
        const auto known = words_.find(word);
        if (known != words_.end()) {
            return known->second;
        }
        if (index_.words_.size() >= mostWords) {
            return 0;
        }
        const auto number = static_cast<std::uint16_t>(index_.words_.size());
        index_.words_.push_back(word);
        words_.emplace(word, number);
        return number;
    }

    void countBlocks() {
        report_.balance("blocks").read += index_.blocks_.size();
        SourceCount& attributes = report_.balance("attributes");
        attributes.read += attributes_;
        attributes.told += told_;
    }

    struct Open {
        std::uint32_t block;
        std::uint32_t lastSon;
    };

    Index& index_;
    std::string_view file_;
    SourceReport& report_;
    TextDecoder decoder_;
    std::uint32_t line_ = 0;
    std::vector<Open> open_;
    std::uint32_t lastTop_ = noBlock;
    std::unordered_map<std::string, std::uint16_t> words_;
    std::string_view lastType_;
    std::uint16_t lastNumber_ = 0;
    std::uint64_t attributes_ = 0;
    std::uint64_t told_ = 0;
};

Index::Index(std::string_view text, std::string_view file, SourceReport& report) : text_(text) {
    IndexBuilder(*this, file, report).run();
}

}  // namespace plant::attributes
