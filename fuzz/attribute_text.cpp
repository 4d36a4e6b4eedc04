// Attribute texts beside an RVM file of a few groups: none of them keeps the file from being read.
#include "review.h"

namespace {

// Chunks of a head, a model, groups "/Z", "/P" and "/P/B1" with a cylinder, and the end.
class SmallFile {
public:
    SmallFile() {
        chunk("HEAD", 2, std::string(20, '\0'));
        chunk("MODL", 1, std::string(8, '\0'));
        for (const std::string_view name : {"/Z", "/P", "/P/B1"}) {
            chunk("CNTB", 2, word(2) + std::string(name) + std::string(8 - name.size(), '\0') + std::string(16, '\0'));
        }
        const std::string thousandth("\x3A\x83\x12\x6F", 4);
        const std::string none = word(0);
        const std::string axes = thousandth + none + none + none + thousandth + none + none + none + thousandth;
        const std::string size("\x42\x48\0\0", 4);  // 50
        chunk("PRIM", 1, word(8) + axes + std::string(36, '\0') + size + size);
        for (int i = 0; i < 3; ++i) {
            chunk("CNTE", 2, {});
        }
        chunk("END:", 1, {});
    }
    const std::string& bytes() const { return bytes_; }

private:
    static std::string word(std::uint32_t value) {
        return {static_cast<char>(value >> 24U), static_cast<char>(value >> 16U), static_cast<char>(value >> 8U),
                static_cast<char>(value)};
    }
    void chunk(std::string_view tag, std::uint32_t version, const std::string& body) {
        for (const char c : tag) {
            bytes_ += word(static_cast<unsigned char>(c));
        }
        const auto next = static_cast<std::uint32_t>(bytes_.size() + 12 + body.size());
        bytes_ += word(next) + word(1) + word(version) + body;
    }

    std::string bytes_;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const SmallFile file;
    fuzz::describeReview(file.bytes(), fuzz::asText(data, size));
    return 0;
}
