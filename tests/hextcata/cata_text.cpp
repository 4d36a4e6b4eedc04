#include "cata_text.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <sstream>
#include <stdexcept>

namespace {

constexpr double tolerance = 2e-3;
constexpr std::string_view callStart = "call !!ORNACata";

class StringSink final : public tolmar::Sink {
public:
    explicit StringSink(std::shared_ptr<std::string> bytes) : bytes_(std::move(bytes)) {}
    bool write(const char* data, std::size_t size) override {
        bytes_->append(data, size);
        return true;
    }
    bool writeAt(std::uint64_t, const char*, std::size_t) override { return false; }
    bool truncate(std::uint64_t) override { return false; }
    bool close() override { return true; }

private:
    std::shared_ptr<std::string> bytes_;
};

// The quoted arguments of a call; "'" and "|" delimit.
std::vector<std::string> argumentsOf(const std::string& call) {
    std::vector<std::string> arguments;
    char quote = 0;
    for (const char c : call) {
        if (quote == 0 && (c == '\'' || c == '|')) {
            quote = c;
            arguments.emplace_back();
        } else if (c == quote) {
            quote = 0;
        } else if (quote != 0) {
            arguments.back() += c;
        }
    }
    return arguments;
}

HxGeVector3D letter(char c) {
    switch (c) {
    case 'x':
    case 'X':
    case 'E':
        return {1, 0, 0};
    case 'y':
    case 'Y':
    case 'N':
        return {0, 1, 0};
    case 'z':
    case 'Z':
    case 'U':
        return {0, 0, 1};
    case 'W':
        return {-1, 0, 0};
    case 'S':
        return {0, -1, 0};
    case 'D':
        return {0, 0, -1};
    default:
        throw std::runtime_error(std::string("no axis: ") + c);
    }
}

HxGeVector3D turned(const HxGeVector3D& from, double degrees, const HxGeVector3D& towards) {
    const double angle = degrees * tlGePi / 180.0;
    return from * std::cos(angle) + towards * std::sin(angle);
}

// The corners of a rectangle.
void addRectangle(std::vector<HxGePoint3D>& out, const HxGePoint3D& centre, const HxGeVector3D& a,
                  const HxGeVector3D& b) {
    for (const double i : {-0.5, 0.5}) {
        for (const double j : {-0.5, 0.5}) {
            out.push_back(centre + a * i + b * j);
        }
    }
}

}  // namespace

TextStream::TextStream() : bytes_(std::make_shared<std::string>()) {
    stream_ =
        std::make_unique<CataStream>(tolmar::OutputFile(std::make_unique<StringSink>(bytes_), tolmar::FileMode::Text));
}

std::string TextStream::text() {
    EXPECT_TRUE(stream_->close());
    std::string text = *bytes_;
    std::erase(text, '\r');
    return text;
}

HxGeVector3D readDirection(const std::string& text) {
    if (text == "X DDANGLE Y") {
        return letter('Y');
    }
    const bool negative = text.front() == '-';
    const std::string word = text.substr(negative ? 1 : 0);
    if (word.size() == 1) {
        return negative ? -letter(word[0]) : letter(word[0]);
    }
    if (word[1] != ' ') {
        return turned(letter(word[0]), std::stod(word.substr(1)), letter(word.back()));
    }
    std::istringstream words(word);
    std::string axis;
    double angle = 0;
    words >> axis;
    HxGeVector3D direction = letter(axis[0]);
    while (words >> angle >> axis) {
        direction = turned(direction, angle, letter(axis[0]));
    }
    return direction;
}

double readNumber(const std::string& argument) {
    std::string text = argument;
    std::erase(text, '(');
    std::erase(text, ')');
    std::size_t read = 0;
    const double value = std::stod(text, &read);
    EXPECT_EQ(read, text.size()) << argument;
    return value;
}

std::string withoutNoise(const std::string& text) {
    std::string result;
    for (std::size_t i = 0; i < text.size();) {
        std::size_t end = i + (text[i] == '-' ? 1 : 0);
        while (end < text.size() && (std::isdigit(static_cast<unsigned char>(text[end])) || text[end] == '.')) {
            ++end;
        }
        const std::string token = text.substr(i, std::max<std::size_t>(end - i, 1));
        i += token.size();
        if (token.find('.') == std::string::npos) {
            result += token;
            continue;
        }
        double value = std::round(std::stod(token) * 1e4) / 1e4;
        value = value == 0 ? 0 : value == -180 ? 180 : value;
        result += std::to_string(value);
    }
    return result;
}

CataText::CataText(const std::string& text) {
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) {
        CataLine entry{{}, {}, line};
        if (line.substr(0, callStart.size()) == callStart) {
            entry.function = line.substr(callStart.size(), line.find('(') - callStart.size());
            entry.arguments = argumentsOf(line);
        }
        if (entry.function == "Ptca") {
            const auto& a = entry.arguments;
            points_[std::stoi(a[1])] = {{readNumber(a[4]), readNumber(a[5]), readNumber(a[6])}, readDirection(a[7])};
        }
        lines_.push_back(std::move(entry));
    }
}

std::vector<const CataLine*> CataText::calls(const std::string& function) const {
    std::vector<const CataLine*> found;
    for (const CataLine& line : lines_) {
        if (line.function == function) {
            found.push_back(&line);
        }
    }
    return found;
}

CataText::Ray CataText::ray(const std::string& axis) const {
    if ((axis[0] == 'P' || axis[0] == 'p') && axis.size() > 1) {
        return points_.at(std::stoi(axis.substr(1)));
    }
    return {{}, readDirection(axis)};
}

std::vector<SolidShape> CataText::solids() const {
    std::vector<SolidShape> found;
    for (std::size_t i = 0; i < lines_.size(); ++i) {
        if (lines_[i].function == "SEXT") {
            EXPECT_EQ(lines_.at(i + 1).text, "SAME");
            EXPECT_EQ(lines_.at(i + 2).text, "new sloo");
            std::vector<Vertex> loop;
            for (std::size_t j = i + 3; j < lines_.size() && lines_[j].function == "SVER"; ++j) {
                const auto& a = lines_[j].arguments;
                loop.push_back({readNumber(a[0]), readNumber(a[1]), readNumber(a[2])});
            }
            found.push_back(extrusion(lines_[i], loop));
        } else if (SolidShape shape = solid(lines_[i]); !shape.kind.empty()) {
            found.push_back(std::move(shape));
        }
    }
    return found;
}

SolidShape CataText::solid(const CataLine& line) const {
    const std::string& f = line.function;
    if (f == "LCYL" || f == "SSPH" || f == "SDSH" || f == "SSLC") {
        return roundSolid(line);
    }
    if (f == "LSNO") {
        return snout(line);
    }
    if (f == "LPYR") {
        return pyramid(line);
    }
    if (f == "SCTO" || f == "SRTO") {
        return bend(line);
    }
    if (f == "LINE") {
        std::istringstream references(line.arguments[0]);
        SolidShape shape{"line", {}, {}};
        for (std::string reference; references >> reference;) {
            shape.points.push_back(ray(reference).origin);
        }
        return shape;
    }
    return {};
}

SolidShape CataText::roundSolid(const CataLine& line) const {
    const auto& a = line.arguments;
    if (line.function == "LCYL") {
        const Ray r = ray(a[2]);
        return {"cylinder",
                {readNumber(a[3])},
                {r.origin + r.direction * readNumber(a[0]), r.origin + r.direction * readNumber(a[1])}};
    }
    const Ray r = ray(a[0]);
    if (line.function == "SSPH") {
        return {"sphere", {readNumber(a[2])}, {r.origin + r.direction * readNumber(a[1])}};
    }
    if (line.function == "SDSH") {
        EXPECT_EQ(a[1], "(0)");
        return {"dish", {readNumber(a[3])}, {r.origin, r.origin + r.direction * readNumber(a[2])}};
    }
    const HxGePoint3D base = r.origin + r.direction * readNumber(a[7]);
    return {"sloped", {readNumber(a[2])}, {base, base + r.direction * readNumber(a[1])}};
}

// The third point tells which end has which diameter.
SolidShape CataText::snout(const CataLine& line) const {
    const auto& a = line.arguments;
    const Ray r = ray(a[1]);
    const double offset = readNumber(a[6]);
    EXPECT_EQ(a[7], "2");
    const HxGePoint3D near = r.origin + r.direction * readNumber(a[4]);
    const HxGePoint3D far =
        r.origin + r.direction * readNumber(a[5]) + (offset != 0 ? ray(a[0]).direction : HxGeVector3D()) * offset;
    const double nearSize = readNumber(a[2]);
    const double farSize = readNumber(a[3]);
    return {"cone", {nearSize + farSize}, {near, far, near + (far - near) * (farSize / (nearSize + farSize))}};
}

SolidShape CataText::pyramid(const CataLine& line) const {
    const auto& a = line.arguments;
    const Ray z = ray(a[0]);
    const HxGeVector3D x = ray(a[1]).direction;
    const HxGeVector3D y = ray(a[2]).direction;
    const HxGePoint3D bottom = z.origin + z.direction * readNumber(a[3]);
    const HxGePoint3D top = bottom + z.direction * readNumber(a[4]) + x * readNumber(a[9]) + y * readNumber(a[10]);
    SolidShape shape{"frustum", {}, {}};
    addRectangle(shape.points, top, x * readNumber(a[6]), y * readNumber(a[5]));
    addRectangle(shape.points, bottom, x * readNumber(a[7]), y * readNumber(a[8]));
    return shape;
}

// An arc that leaves its first point against the first direction and ends along the second.
SolidShape CataText::bend(const CataLine& line) const {
    const auto& a = line.arguments;
    const Ray start = ray(a[0]);
    const Ray end = ray(a[1]);
    const HxGeVector3D chord = end.origin - start.origin;
    const HxGeVector3D out = -start.direction;
    // The centre lies across the first direction, as far from the one end as from the other.
    const HxGeVector3D across = (chord - out * chord.dotProduct(out)).normal();
    const double radius = chord.lengthSqrd() / (2 * chord.dotProduct(across));
    const HxGePoint3D centre = start.origin + across * radius;
    const HxGeVector3D r1 = end.origin - centre;
    double sweep = std::atan2(r1.dotProduct(out), -r1.dotProduct(across));
    sweep += sweep < 0 ? 2 * tlGePi : 0;
    const HxGePoint3D middle = centre - across * (radius * std::cos(sweep / 2)) + out * (radius * std::sin(sweep / 2));
    EXPECT_NEAR(end.direction.dotProduct(r1.normal()), 0, 1e-4) << line.text;
    SolidShape shape{"bend", {readNumber(a[2])}, {start.origin, middle, end.origin}};
    if (line.function == "SRTO") {
        shape.kind = "square bend";
        shape.sizes.push_back(readNumber(a[3]));
    }
    return shape;
}

// A rounded corner counts by the middle of its arc.
SolidShape CataText::extrusion(const CataLine& line, const std::vector<Vertex>& loop) const {
    const auto& a = line.arguments;
    const Ray x = ray(a[3]);
    const HxGeVector3D y = ray(a[4]).direction;
    const HxGeVector3D shift = x.direction.crossProduct(y) * readNumber(a[5]);
    const auto place = [&](const Vertex& v) { return x.origin + x.direction * v.x + y * v.y; };
    SolidShape shape{"extrusion", {}, {}};
    for (std::size_t i = 0; i < loop.size(); ++i) {
        HxGePoint3D point = place(loop[i]);
        if (loop[i].radius > 0) {
            const HxGeVector3D in = (place(loop[(i + loop.size() - 1) % loop.size()]) - point).normal();
            const HxGeVector3D on = (place(loop[(i + 1) % loop.size()]) - point).normal();
            const double half = in.angleTo(on) / 2;
            point += (in + on).normal() * (loop[i].radius / std::sin(half) - loop[i].radius);
            shape.sizes.push_back(loop[i].radius);
        }
        shape.points.push_back(point);
        shape.points.push_back(point + shift);
    }
    return shape;
}

void expectSame(const SolidShape& actual, const SolidShape& expected, const std::string& what) {
    EXPECT_EQ(actual.kind, expected.kind) << what;
    ASSERT_EQ(actual.sizes.size(), expected.sizes.size()) << what;
    for (std::size_t i = 0; i < expected.sizes.size(); ++i) {
        EXPECT_NEAR(actual.sizes[i], expected.sizes[i], tolerance) << what;
    }
    ASSERT_EQ(actual.points.size(), expected.points.size()) << what;
    std::vector<HxGePoint3D> open = actual.points;
    for (const HxGePoint3D& point : expected.points) {
        const auto nearest = std::min_element(open.begin(), open.end(), [&](const auto& a, const auto& b) {
            return a.distanceTo(point) < b.distanceTo(point);
        });
        ASSERT_LT(nearest->distanceTo(point), tolerance)
            << what << ": no point at " << point.x << " " << point.y << " " << point.z << ", nearest " << nearest->x
            << " " << nearest->y << " " << nearest->z;
        open.erase(nearest);
    }
}
