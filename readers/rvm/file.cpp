#include "readers/rvm/file.h"

#include "readers/utf8.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <optional>

namespace readers::rvm {

namespace {

// Number of parameters by kind; 0 for kinds that there are not.
constexpr std::array<std::size_t, 11> parameterCounts = {0, 7, 3, 4, 3, 2, 2, 9, 2, 1, 2};
// In the order of Use.
constexpr std::string_view primitiveTags[] = {"PRIM", "OBST", "INSU"};
// A facet is a count of outlines, a count of corners, and six numbers a corner.
constexpr std::size_t facetSize = 4 * (2 + 18);

std::uint32_t wordAt(std::string_view bytes, std::size_t at) {
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < 4; ++i) {
        value = value << 8U | static_cast<unsigned char>(bytes[at + i]);
    }
    return value;
}

// Ends the reading; the finding has been noted.
struct Stop {};

class RvmReader {
public:
    RvmReader(std::string_view bytes, Findings& findings) : bytes_(bytes), findings_(findings) {}

    RvmContent run() {
        try {
            readHead();
            readModel();
            while (readChunk()) {
            }
            content_.isWhole = true;
        } catch (const Stop&) {
        }
        return std::move(content_);
    }

private:
    void note(std::uint64_t offset, std::string text) { readers::note(findings_, atByte(offset), std::move(text)); }
    [[noreturn]] void stop(std::uint64_t offset, std::string text) {
        note(offset, std::move(text));
        throw Stop();
    }
    void expect(bool good, const char* text) {
        if (!good) {
            note(chunk_, text);
        }
    }

    std::string_view take(std::uint64_t size, const char* what) {
        if (size > bytes_.size() - at_) {
            stop(at_, std::string("the file ends within ") + what);
        }
        const std::string_view piece = bytes_.substr(at_, static_cast<std::size_t>(size));
        at_ += static_cast<std::size_t>(size);
        return piece;
    }
    std::uint32_t word(const char* what = "a chunk") { return wordAt(take(4, what), 0); }
    float number(const char* what) {
        const auto value = std::bit_cast<float>(word(what));
        if (!std::isfinite(value)) {
            note(at_ - 4, std::string(what) + " that is not finite");
        }
        return value;
    }
    template <std::size_t N>
    void numbers(std::array<float, N>& out, std::size_t count, const char* what) {
        for (std::size_t i = 0; i < count; ++i) {
            out[i] = number(what);
        }
    }
    std::string tag() {
        chunk_ = at_;
        const std::string_view piece = take(16, "a tag");
        std::string name;
        for (std::size_t i = 0; i < 16; ++i) {
            if (i % 4 == 3) {
                name += piece[i];
            } else if (piece[i] != 0) {
                stop(chunk_, "a tag expected");
            }
        }
        return name;
    }
    // The text without the zero bytes that fill it up; more than three of them are part of it.
    std::string text(const char* what) {
        const std::uint64_t size = std::uint64_t{4} * word(what);
        const std::string_view piece = take(size, what);
        std::size_t length = piece.size();
        while (length > 0 && piece.size() - length < 3 && piece[length - 1] == 0) {
            --length;
        }
        return std::string(piece.substr(0, length));
    }
    void versions(std::uint32_t first, std::uint32_t second) {
        const std::uint32_t one = word();
        const std::uint32_t two = word();
        expect(one == first && two == second, "unknown version words");
    }
    void checkNext(std::uint32_t next) {
        if (next != at_) {
            note(chunk_, "next is " + std::to_string(next) + ", the chunk ends at " + std::to_string(at_));
        }
    }

    void readHead() {
        if (tag() != "HEAD") {
            stop(chunk_, "HEAD expected");
        }
        const std::uint32_t next = word();
        versions(1, 2);
        for (std::string& entry : content_.headTexts) {
            entry = text("a text of HEAD");
        }
        checkNext(next);
        expect(content_.headTexts[4].starts_with("Unicode UTF-8"), "unknown encoding");
    }
    void readModel() {
        if (tag() != "MODL") {
            stop(chunk_, "MODL expected");
        }
        const std::uint32_t next = word();
        versions(1, 1);
        content_.project = text("the project's name");
        content_.database = text("the database's name");
        checkNext(next);
    }
    // False behind END:.
    bool readChunk() {
        const std::string name = tag();
        if (name == "CNTB") {
            readGroupBegin();
        } else if (name == "CNTE") {
            readGroupEnd();
        } else if (const auto use = useOf(name)) {
            readPrimitive(*use);
        } else if (name == "END:") {
            readEnd();
            return false;
        } else {
            stop(chunk_, "unknown chunk " + name);
        }
        return true;
    }
    void readGroupBegin() {
        const std::uint32_t next = word();
        versions(1, 2);
        Group group;
        group.offset = chunk_;
        group.parent = open_;
        group.name = text("a group's name");
        numbers(group.translation, 3, "a translation");
        group.material = word();
        checkNext(next);
        expect(isUtf8(group.name), "a group's name is not UTF-8");
        expect(group.name.find('\0') == std::string::npos, "a group's name holds a zero byte");
        const auto index = static_cast<std::uint32_t>(content_.groups.size());
        (open_ == none ? content_.tops : content_.groups[open_].children).push_back(index);
        content_.groups.push_back(std::move(group));
        open_ = index;
    }
    void readGroupEnd() {
        checkNext((versionsBehind(word(), 1, 2)));
        if (open_ == none) {
            stop(chunk_, "CNTE without a group");
        }
        open_ = content_.groups[open_].parent;
    }
    void readEnd() {
        checkNext(versionsBehind(word(), 1, 1));
        if (open_ != none) {
            note(chunk_, "END: within group " + content_.pathOf(open_));
        }
        if (at_ != bytes_.size()) {
            note(at_, "bytes behind END:");
        }
    }
    std::uint32_t versionsBehind(std::uint32_t next, std::uint32_t first, std::uint32_t second) {
        versions(first, second);
        return next;
    }
    static std::optional<Use> useOf(std::string_view tag) {
        const auto at = std::find(std::begin(primitiveTags), std::end(primitiveTags), tag);
        return at != std::end(primitiveTags) ? std::optional(static_cast<Use>(at - std::begin(primitiveTags)))
                                             : std::nullopt;
    }
    void readPrimitive(Use use) {
        if (open_ == none) {
            stop(chunk_, "a primitive outside of any group");
        }
        const std::uint32_t next = word();
        versions(1, 1);
        Primitive primitive;
        primitive.offset = chunk_;
        primitive.use = use;
        primitive.kind = word();
        numbers(primitive.matrix, 12, "a matrix");
        numbers(primitive.box, 6, "a bounding box");
        expect(use != Use::Obstruction || word() == 25, "an obstruction without the word 25");
        readParameters(primitive);
        checkNext(next);
        content_.groups[open_].primitives.push_back(static_cast<std::uint32_t>(content_.primitives.size()));
        content_.primitives.push_back(std::move(primitive));
    }
    void readParameters(Primitive& primitive) {
        if (primitive.kind == kindFacets) {
            return readFacets(primitive);
        }
        const bool known = primitive.kind < parameterCounts.size() && parameterCounts[primitive.kind] > 0;
        if (!known) {
            stop(chunk_, "unknown primitive " + std::to_string(primitive.kind));
        }
        primitive.parameterCount = parameterCounts[primitive.kind];
        numbers(primitive.parameters, primitive.parameterCount, "a parameter");
    }
    void readFacets(Primitive& primitive) {
        primitive.triangles = word();
        primitive.facetsAt = at_;
        for (std::uint32_t i = 0; i < primitive.triangles; ++i) {
            if (word("a facet list") != 1 || word("a facet list") != 3) {
                stop(at_, "a facet that is no triangle");
            }
            for (int k = 0; k < 18; ++k) {
                const float value = number("a vertex or normal");
                if (k % 6 < 3) {
                    widen(primitive.extent, static_cast<std::size_t>(k % 6), value, i == 0 && k < 3);
                }
            }
        }
    }
    static void widen(std::array<float, 6>& extent, std::size_t axis, float value, bool isFirst) {
        extent[axis] = isFirst ? value : std::min(extent[axis], value);
        extent[axis + 3] = isFirst ? value : std::max(extent[axis + 3], value);
    }

    std::string_view bytes_;
    Findings& findings_;
    RvmContent content_;
    std::size_t at_ = 0;
    std::uint64_t chunk_ = 0;
    std::uint32_t open_ = none;
};

}  // namespace

std::map<std::uint32_t, std::size_t> RvmContent::kinds() const {
    std::map<std::uint32_t, std::size_t> counts;
    for (const Primitive& primitive : primitives) {
        ++counts[primitive.kind];
    }
    return counts;
}

std::string RvmContent::pathOf(std::uint32_t group) const {
    std::string path;
    for (; group != none; group = groups[group].parent) {
        path = groups[group].name + (path.empty() ? "" : "/") + path;
    }
    return path;
}

std::vector<float> facetsOf(std::string_view bytes, const Primitive& primitive) {
    std::vector<float> numbers;
    numbers.reserve(std::size_t{18} * primitive.triangles);
    for (std::size_t i = 0; i < primitive.triangles; ++i) {
        const std::size_t facet = static_cast<std::size_t>(primitive.facetsAt) + i * facetSize + 8;
        for (std::size_t k = 0; k < 18; ++k) {
            numbers.push_back(std::bit_cast<float>(wordAt(bytes, facet + 4 * k)));
        }
    }
    return numbers;
}

RvmContent readRvm(std::string_view bytes, Findings& findings) {
    return RvmReader(bytes, findings).run();
}

}  // namespace readers::rvm
