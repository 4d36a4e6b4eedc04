#include "generator/output.h"

#include <charconv>
#include <utility>

namespace plant::generator {

namespace {
constexpr std::size_t fullBuffer = std::size_t{1} << 20;
constexpr std::size_t largestObject = std::size_t{1} << 16;
constexpr std::int64_t thousandth = 1000;
constexpr std::int64_t millionth = 1000000;
}  // namespace

Output::Output(Sink sink) : sink_(std::move(sink)) {
    buffer_.reserve(fullBuffer + largestObject);
}

void Output::beginObject() {
    endObject();
    if (buffer_.size() >= fullBuffer) {
        flush();
    }
    text(first_ ? "\n" : ",\n");
    first_ = false;
    objectStart_ = buffer_.size();
}

void Output::endObject() {
    if (rewrite_ && objectStart_ != 0) {
        object_.assign(buffer_, objectStart_);
        rewrite_(object_);
        buffer_.resize(objectStart_);
        buffer_ += object_;
    }
    objectStart_ = 0;
}

void Output::flush() {
    failed_ = failed_ || !sink_(buffer_);
    buffer_.clear();
}

Output& Output::whole(std::int64_t value) {
    char digits[24];
    const auto end = std::to_chars(digits, digits + sizeof digits, value);
    buffer_.append(digits, end.ptr);
    return *this;
}

// `value` counts parts of `unit` to the whole.
void Output::decimals(std::int64_t value, std::int64_t unit) {
    if (value < 0) {
        buffer_.push_back('-');
        value = -value;
    }
    whole(value / unit);
    std::int64_t rest = value % unit;
    if (rest == 0) {
        return;
    }
    buffer_.push_back('.');
    for (unit /= 10; rest != 0; unit /= 10) {
        buffer_.push_back(static_cast<char>('0' + rest / unit));
        rest %= unit;
    }
}

Output& Output::number(double value) {
    decimals(std::llround(value * static_cast<double>(thousandth)), thousandth);
    return *this;
}

Output& Output::point(const TlGePoint3d& p) {
    return text("[").number(p.x).text(",").number(p.y).text(",").number(p.z).text("]");
}

Output& Output::direction(const TlGeVector3d& v) {
    const double parts[] = {v.x, v.y, v.z};
    char before = '[';
    for (const double part : parts) {
        buffer_.push_back(before);
        decimals(std::llround(part * static_cast<double>(millionth)), millionth);
        before = ',';
    }
    return text("]");
}

Output& Output::member(std::string_view name, std::string_view value) {
    return text(",\"").text(name).text("\":\"").text(value).text("\"");
}

Output& Output::member(std::string_view name, std::int64_t value) {
    return text(",\"").text(name).text("\":").whole(value);
}

Output& Output::memberAsText(std::string_view name, std::int64_t value) {
    return text(",\"").text(name).text("\":\"").whole(value).text("\"");
}

}  // namespace plant::generator
