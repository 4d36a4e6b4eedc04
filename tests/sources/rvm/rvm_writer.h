// Writes RVM files for tests, word by word, good ones and bad ones.
#pragma once

#include <array>
#include <bit>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

// A frame as the format has it: axes at a length of 0.001, origin in metres.
struct Frame {
    std::array<double, 3> x{0.001, 0, 0};
    std::array<double, 3> y{0, 0.001, 0};
    std::array<double, 3> z{0, 0, 0.001};
    std::array<double, 3> origin{0, 0, 0};
};
inline Frame at(double x, double y, double z) {
    Frame frame;
    frame.origin = {x, y, z};
    return frame;
}

using Loop = std::vector<std::array<double, 3>>;
using Polygon = std::vector<Loop>;

class RvmWriter {
public:
    // With head and model in front; `version` 1 has no encoding.
    explicit RvmWriter(std::uint32_t version = 2, std::string_view information = "Review", bool begun = true) {
        if (begun) {
            begin("HEAD", version);
            for (const std::string_view entry :
                 {information, std::string_view("note"), std::string_view("today"), std::string_view("user")}) {
                text(entry);
            }
            if (version > 1) {
                text("Unicode UTF-8");
            }
            close();
            begin("MODL", 1);
            text("Project");
            text("MODEL");
            close();
        }
    }

    RvmWriter& begin(std::string_view tag, std::uint32_t version) {
        for (const char c : tag) {
            word(static_cast<unsigned char>(c));
        }
        next_ = bytes_.size();
        return word(0).word(1).word(version);
    }
    RvmWriter& close() {
        patch(next_, static_cast<std::uint32_t>(bytes_.size()));
        return *this;
    }
    RvmWriter& word(std::uint32_t value) {
        for (int shift = 24; shift >= 0; shift -= 8) {
            bytes_ += static_cast<char>(value >> shift);
        }
        return *this;
    }
    RvmWriter& number(double value) { return word(std::bit_cast<std::uint32_t>(static_cast<float>(value))); }
    RvmWriter& numbers(const std::vector<double>& values) {
        for (const double value : values) {
            number(value);
        }
        return *this;
    }
    RvmWriter& text(std::string_view value) {
        const auto words = static_cast<std::uint32_t>((value.size() + 3) / 4);
        word(words);
        bytes_ += value;
        bytes_.append(4 * words - value.size(), '\0');
        return *this;
    }

    RvmWriter& group(std::string_view name, std::uint32_t material = 1, std::uint32_t version = 2,
                     std::uint8_t transparency = 0) {
        begin("CNTB", version).text(name).numbers({0, 0, 0}).word(material);
        for (std::uint32_t i = 0; version >= 3 && i < (version == 3 ? 1U : 7U); ++i) {
            word(i == 0 ? std::uint32_t{transparency} << 24U : 0);
        }
        return close();
    }
    RvmWriter& endGroup() { return begin("CNTE", 2).close(); }
    RvmWriter& primitive(std::uint32_t kind, const std::vector<double>& parameters, const Frame& frame = {},
                         std::string_view role = "PRIM", const std::vector<double>& box = std::vector<double>(6, 0.0)) {
        beginPrimitive(kind, frame, role, box);
        return numbers(parameters).close();
    }
    RvmWriter& facets(const std::vector<Polygon>& polygons, const Frame& frame = {}) {
        beginPrimitive(11, frame, "PRIM", std::vector<double>(6, 0.0));
        word(static_cast<std::uint32_t>(polygons.size()));
        for (const Polygon& polygon : polygons) {
            word(static_cast<std::uint32_t>(polygon.size()));
            for (const Loop& loop : polygon) {
                word(static_cast<std::uint32_t>(loop.size()));
                for (const auto& point : loop) {
                    numbers({point[0], point[1], point[2], 0, 0, 1});
                }
            }
        }
        return close();
    }
    RvmWriter& color(std::uint32_t material, std::uint8_t red, std::uint8_t green, std::uint8_t blue) {
        begin("COLR", 1).word(material);
        return word(std::uint32_t{red} << 24U | std::uint32_t{green} << 16U | std::uint32_t{blue} << 8U).close();
    }
    // END: and zeros up to a multiple of 1760.
    std::string finish(bool padded = true) {
        begin("END:", 1).close();
        constexpr std::size_t block = 1760;
        if (padded) {
            bytes_.append(block - bytes_.size() % block, '\0');
        }
        return bytes_;
    }

    RvmWriter& beginPrimitive(std::uint32_t kind, const Frame& frame, std::string_view role,
                              const std::vector<double>& box) {
        begin(role, 1).word(kind);
        for (const auto& row : {frame.x, frame.y, frame.z, frame.origin}) {
            numbers({row[0], row[1], row[2]});
        }
        numbers(box);
        return role == "PRIM" ? *this : word(25U << 24U);
    }
    void patch(std::size_t place, std::uint32_t value) {
        for (int i = 0; i < 4; ++i) {
            bytes_[place + static_cast<std::size_t>(i)] = static_cast<char>(value >> (24 - 8 * i));
        }
    }
    std::size_t size() const { return bytes_.size(); }
    std::string& bytes() { return bytes_; }

private:
    std::string bytes_;
    std::size_t next_ = 0;
};
