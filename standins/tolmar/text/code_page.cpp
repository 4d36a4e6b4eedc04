#include "tolmar/code_page.h"

#include <bit>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <iconv.h>
#include <simdjson.h>

namespace tolmar {

namespace {

constexpr bool codePageIsUtf8 = std::string_view(TESSARO_CODE_PAGE) == "UTF-8";
// GB18030 holds all of GBK and every other character besides, so nothing of a model is lost.
constexpr const char* codePageName = codePageIsUtf8 ? "UTF-8" : "GB18030";
constexpr const char* wideName = std::endian::native == std::endian::little ? "UTF-16LE" : "UTF-16BE";

// The size of the piece of input that cannot be converted, at least one unit.
using SkipRule = std::size_t (*)(const char* at, std::size_t left);

std::size_t skipByte(const char*, std::size_t) {
    return 1;
}

std::size_t skipUtf8(const char* at, std::size_t left) {
    std::size_t size = 1;
    while (size < left && (static_cast<unsigned char>(at[size]) & 0xC0U) == 0x80U) {
        ++size;
    }
    return size;
}

std::size_t skipWide(const char*, std::size_t left) {
    return left < 2 ? left : 2;
}

// One direction of conversion. The handle lives until the process ends.
class Converter {
public:
    Converter(const char* to, const char* from, SkipRule skip) : handle_(iconv_open(to, from)), skip_(skip) {}
    Converter(const Converter&) = delete;
    Converter& operator=(const Converter&) = delete;
    ~Converter() {
        if (usable()) {
            iconv_close(handle_);
        }
    }

    template <typename Target>
    std::basic_string<Target> convert(const char* data, std::size_t size) {
        std::basic_string<Target> result(size + size / 2 + leastRoom, Target{});
        std::size_t used = 0;
        if (usable()) {
            iconv(handle_, nullptr, nullptr, nullptr, nullptr);
        }
        while (size > 0) {
            if (result.size() - used < leastRoom) {
                result.resize(result.size() * 2);
            }
            const int error = step(data, size, result, used);
            if (error == E2BIG) {
                result.resize(result.size() * 2);
            } else if (error != 0) {
                const std::size_t bad = skip_(data, size);
                data += bad;
                size -= bad;
                result[used++] = Target{'?'};
            }
        }
        result.resize(used);
        return result;
    }

private:
    // One character, and a "?" behind it.
    static constexpr std::size_t leastRoom = 8;

    bool usable() const { return handle_ != reinterpret_cast<iconv_t>(-1); }

    // Converts as far as it goes, with one place always left for a "?".
    template <typename Target>
    int step(const char*& data, std::size_t& size, std::basic_string<Target>& result, std::size_t& used) {
        if (!usable()) {
            return EILSEQ;
        }
        char* in = const_cast<char*>(data);
        char* out = reinterpret_cast<char*>(result.data() + used);
        std::size_t room = (result.size() - used - 1) * sizeof(Target);
        const std::size_t before = room;
        const std::size_t status = iconv(handle_, &in, &size, &out, &room);
        const int error = status == static_cast<std::size_t>(-1) ? errno : 0;
        data = in;
        used += (before - room) / sizeof(Target);
        return error;
    }

    iconv_t handle_;
    SkipRule skip_;
};

constexpr SkipRule codePageSkip = codePageIsUtf8 ? skipUtf8 : skipByte;

std::string repairedUtf8(std::string_view text) {
    if (isValidUtf8(text)) {
        return std::string(text);
    }
    static Converter converter("UTF-8", "UTF-8", skipUtf8);
    return converter.convert<char>(text.data(), text.size());
}

std::u16string widened(std::string_view ascii) {
    return {ascii.begin(), ascii.end()};
}

bool isAsciiWide(std::u16string_view wide) {
    char16_t all = 0;
    for (const char16_t unit : wide) {
        all |= unit;
    }
    return all < 0x80;
}

std::string narrowed(std::u16string_view ascii) {
    std::string result(ascii.size(), '\0');
    for (std::size_t i = 0; i < ascii.size(); ++i) {
        result[i] = static_cast<char>(ascii[i]);
    }
    return result;
}

std::string convertWide(Converter& converter, std::u16string_view wide) {
    return converter.convert<char>(reinterpret_cast<const char*>(wide.data()), wide.size() * sizeof(char16_t));
}

}  // namespace

bool isAscii(std::string_view text) {
    constexpr std::uint64_t highBits = 0x8080808080808080ULL;
    const char* at = text.data();
    std::size_t left = text.size();
    for (; left >= sizeof(std::uint64_t); at += sizeof(std::uint64_t), left -= sizeof(std::uint64_t)) {
        std::uint64_t eight;
        std::memcpy(&eight, at, sizeof eight);
        if ((eight & highBits) != 0) {
            return false;
        }
    }
    unsigned char rest = 0;
    for (; left > 0; ++at, --left) {
        rest |= static_cast<unsigned char>(*at);
    }
    return rest < 0x80;
}

bool isValidUtf8(std::string_view text) {
    return simdjson::validate_utf8(text.data(), text.size());
}

std::string toUtf8(std::string_view codePageText) {
    if (isAscii(codePageText)) {
        return std::string(codePageText);
    }
    if (codePageIsUtf8) {
        return repairedUtf8(codePageText);
    }
    static Converter converter("UTF-8", codePageName, skipByte);
    return converter.convert<char>(codePageText.data(), codePageText.size());
}

std::string fromUtf8(std::string_view utf8) {
    if (isAscii(utf8)) {
        return std::string(utf8);
    }
    if (codePageIsUtf8) {
        return repairedUtf8(utf8);
    }
    static Converter converter(codePageName, "UTF-8", skipUtf8);
    return converter.convert<char>(utf8.data(), utf8.size());
}

std::u16string toWide(std::string_view codePageText) {
    if (isAscii(codePageText)) {
        return widened(codePageText);
    }
    static Converter converter(wideName, codePageName, codePageSkip);
    return converter.convert<char16_t>(codePageText.data(), codePageText.size());
}

std::u16string utf8ToWide(std::string_view utf8) {
    if (isAscii(utf8)) {
        return widened(utf8);
    }
    static Converter converter(wideName, "UTF-8", skipUtf8);
    return converter.convert<char16_t>(utf8.data(), utf8.size());
}

std::string fromWide(std::u16string_view wide) {
    if (isAsciiWide(wide)) {
        return narrowed(wide);
    }
    static Converter converter(codePageName, wideName, skipWide);
    return convertWide(converter, wide);
}

std::string wideToUtf8(std::u16string_view wide) {
    if (isAsciiWide(wide)) {
        return narrowed(wide);
    }
    static Converter converter("UTF-8", wideName, skipWide);
    return convertWide(converter, wide);
}

}  // namespace tolmar
