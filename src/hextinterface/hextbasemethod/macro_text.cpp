#include "hextinterface/hextbasemethod/macro_text.h"

#include "frame/exceptions.h"
#include "platform/attribute_cache.h"

#include <array>
#include <charconv>
#include <cmath>

const CoordFrame worldFrame;

namespace {

constexpr double directionTolerance = 1e-6;
constexpr const char* invalidDirection = "无效方向";

constexpr char positiveWord[3] = {'E', 'N', 'U'};
constexpr char negativeWord[3] = {'W', 'S', 'D'};

template <typename... Format>
void appendDouble(std::string& out, double value, Format... format) {
    char buffer[400];  // the longest double in fixed notation has 309 digits before the point
    const auto end = std::to_chars(buffer, buffer + sizeof buffer, value, format...);
    out.append(buffer, end.ptr);
}

void appendMillionths(std::string& out, std::uint64_t count, bool negative) {
    constexpr std::uint64_t million = 1000000;
    char buffer[32];
    char* end = buffer;
    if (negative) {
        *end++ = '-';
    }
    end = std::to_chars(end, buffer + sizeof buffer, count / million).ptr;
    *end = '.';
    std::uint64_t rest = count % million;
    for (int digit = 6; digit > 0; --digit) {
        end[digit] = static_cast<char>('0' + rest % 10);
        rest /= 10;
    }
    out.append(buffer, end + 7);
}

std::array<double, 3> components(const HxGeVector3D& v) {
    return {v.x, v.y, v.z};
}

bool counts(double component) {
    return component > directionTolerance || component < -directionTolerance;
}

char axisWord(int axis, double component) {
    return (component < 0 ? negativeWord : positiveWord)[axis];
}

HxGeVector3D alongAxis(int axis, double length) {
    HxGeVector3D v;
    (axis == 0 ? v.x : axis == 1 ? v.y : v.z) = length;
    return v;
}

std::string clause(char letter, const HxGeVector3D& axis) {
    const std::string direction = directionText(axis);
    if (direction.empty()) {
        throw ExportException(invalidDirection);
    }
    return std::string(1, letter) + " is " + direction;
}

void appendQuoted(std::string& out, std::string_view before, std::string_view text) {
    if (text.empty() || text == "unset") {
        out += "'unset'";
        return;
    }
    out.append(before).append(text) += '\'';
}

}  // namespace

CoordFrame::CoordFrame(const HxGePoint3D& o, const HxGeVector3D& x, const HxGeVector3D& y, const HxGeVector3D& z)
    : origin(o), xAxis(x), yAxis(y), zAxis(z) {
    check();
}

void CoordFrame::check() const {
    for (const HxGeVector3D* axis : {&xAxis, &yAxis, &zAxis}) {
        if (axis->isZeroLength(TlGeContext::gTol)) {
            throw ExportException(invalidDirection);
        }
    }
}

// Most numbers are told by their whole millionths. Near a tie, where the product with 10^6 may be rounded to the wrong
// side, and for large numbers the exact conversion decides.
void appendFixed(std::string& out, double value) {
    constexpr double millionths = 1e6;
    constexpr double largest = 1e8;  // the product is off by less than a hundredth
    constexpr double surelyNoTie = 0.49;
    const double scaled = std::fabs(value) * millionths;
    const double whole = std::floor(scaled + 0.5);
    if (!(std::fabs(value) < largest) || std::fabs(scaled - whole) > surelyNoTie) {
        return appendDouble(out, value, std::chars_format::fixed, 6);
    }
    appendMillionths(out, static_cast<std::uint64_t>(whole), std::signbit(value));
}

void appendShort(std::string& out, double value) {
    appendDouble(out, value, std::chars_format::general, 6);
}

void appendInt(std::string& out, std::int64_t value) {
    char buffer[24];
    out.append(buffer, std::to_chars(buffer, buffer + sizeof buffer, value).ptr);
}

void appendTrimmed(std::string& out, double value) {
    appendFixed(out, value);
    if (!std::isfinite(value)) {
        return;
    }
    while (out.back() == '0') {
        out.pop_back();
    }
    if (out.back() == '.') {
        out.pop_back();
    }
}

void appendPosition(std::string& out, const HxGePoint3D& point) {
    const auto values = components(point.asVector());
    for (int axis = 0; axis < 3; ++axis) {
        if (axis > 0) {
            out += ' ';
        }
        out += axisWord(axis, values[axis]);
        out += ' ';
        appendTrimmed(out, std::fabs(values[axis]));
    }
}

std::string positionText(const HxGePoint3D& point) {
    std::string text;
    appendPosition(text, point);
    return text;
}

std::string directionText(const HxGeVector3D& vector, bool* isAxis) {
    const auto values = components(vector);
    std::string text;
    int leading = 0;
    while (leading < 3 && !counts(values[leading])) {
        ++leading;
    }
    if (leading < 3) {
        text += axisWord(leading, values[leading]);
        HxGeVector3D reference = alongAxis(leading, values[leading] < 0 ? -1 : 1);
        bool first = true;
        for (int axis = 0; axis < 3; ++axis) {
            if (axis == leading || !counts(values[axis])) {
                continue;
            }
            const HxGeVector3D next =
                first ? alongAxis(leading, values[leading]) + alongAxis(axis, values[axis]) : vector;
            text += ' ';
            appendTrimmed(text, reference.angleTo(next) * 180.0 / tlGePi);
            text += ' ';
            text += axisWord(axis, values[axis]);
            reference = next;
            first = false;
        }
    }
    if (isAxis != nullptr) {
        *isAxis = text.size() == 1;
    }
    return text;
}

int axisClass(const HxGeVector3D& vector) {
    const bool x = std::fabs(vector.x) > directionTolerance;
    const bool y = std::fabs(vector.y) > directionTolerance;
    const bool z = std::fabs(vector.z) > directionTolerance;
    if (x + y + z != 1) {
        return 4;
    }
    return z ? 1 : y ? 2 : 3;
}

std::string orientationText(const CoordFrame& frame) {
    const bool x = axisClass(frame.xAxis) < 4;
    const bool y = axisClass(frame.yAxis) < 4;
    const bool z = axisClass(frame.zAxis) < 4;
    if (!(x && z) && y && z) {
        return clause('X', frame.xAxis) + " AND " + clause('Z', frame.zAxis);
    }
    if (!z && x && y) {
        return clause('Z', frame.zAxis) + " AND " + clause('X', frame.xAxis);
    }
    return clause('Y', frame.yAxis) + " AND " + clause('Z', frame.zAxis);
}

std::string axesText(const HxGeVector3D& x, const HxGeVector3D& y) {
    return "X is " + directionText(x) + " and Y is " + directionText(y);
}

void appendEscaped(std::string& out, std::string_view text) {
    for (std::size_t quote; (quote = text.find('\'')) != std::string_view::npos; text.remove_prefix(quote + 1)) {
        out.append(text.substr(0, quote)) += "''";
    }
    out += text;
}

std::string escapeQuotes(std::string_view text) {
    std::string result;
    appendEscaped(result, text);
    return result;
}

void appendValue(std::string& out, std::string_view value) {
    appendQuoted(out, "'", value);
}

void appendRef(std::string& out, std::string_view name) {
    appendQuoted(out, "'/", name);
}

bool isNumericText(std::string_view text) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        const bool passes = c == ' ' || (c == '-' && i == 0) || c == '.' || (c >= '0' && c <= '9');
        if (!passes) {
            return false;
        }
    }
    return true;
}

std::string firstEndType(const HxDbObject* object) {
    for (const char* key : {"end2", "end3", "end4"}) {
        const std::string_view value = getBomValue(object, key);
        if (!value.empty() && value != "NONE") {
            return std::string(value);
        }
    }
    return {};
}
