#include "sources/review/attribute_teller.h"

#include "sources/attributes/values.h"

#include <array>

namespace plant::review {

namespace {

constexpr std::array<std::string_view, 5> suffixes = {"", ".mm", ".deg", ".degC", ".MPa"};

bool mayBeMeasure(std::string_view value) {
    constexpr std::size_t longest = 24;
    const char first = value.empty() ? ' ' : value.front();
    const bool isNumber = (first >= '0' && first <= '9') || first == '-' || first == '+' || first == '.';
    return isNumber && value.size() <= longest && !(value.back() >= '0' && value.back() <= '9');
}

bool mayBePosition(std::string_view value) {
    constexpr std::string_view letters = "EWNSUD";
    return value.size() > 2 && letters.find(value.front()) != std::string_view::npos && value[1] == ' ';
}

}  // namespace

void AttributeTeller::put(const AttributeFacts& facts, bool toRun) {
    toRun ? builder_->runAttribute(facts) : builder_->attribute(facts);
}

std::string_view AttributeTeller::key(std::string_view text) {
    return file_->decoder.decode(text);
}

void AttributeTeller::tellMeasure(std::string_view key, std::string_view value, bool toRun) {
    AttributeFacts facts;
    if (mayBeMeasure(value)) {
        const auto measure = attributes::readMeasure(value);
        if (!measure || measure->quantity == attributes::Quantity::Plain) {
            return;
        }
        measureKey_.assign(key).append(suffixes[static_cast<std::size_t>(measure->quantity)]);
        facts.form = AttributeFacts::Form::Real;
        facts.number = measure->value;
    } else if (mayBePosition(value)) {
        const auto at = attributes::readPosition(value);
        if (!at) {
            return;
        }
        measureKey_.assign(key).append(".mm");
        facts.form = AttributeFacts::Form::Point;
        facts.point = {at->x, at->y, at->z};
    } else {
        return;
    }
    facts.key = measureKey_;
    put(facts, toRun);
}

void AttributeTeller::tell(std::string_view key, std::string_view value, bool toRun) {
    key = this->key(key);
    value = values_.decode(attributes::unquoted(value));
    put({.key = key, .text = value}, toRun);
    tellMeasure(key, value, toRun);
}

void AttributeTeller::tellBlock(std::uint32_t block, const OwnTerms& terms) {
    SourceCount& balance = file_->report->balance("attributes");
    attributes::eachAttribute(*file_->index, file_->index->blocks()[block],
                              [&](std::string_view key, std::string_view value, std::uint32_t) {
                                  ++balance.taken;
                                  if (terms.hasClass && key == "Class") {
                                      return;
                                  }
                                  const bool isLine = !terms.line.empty() && key == "lineno";
                                  tell(key, isLine ? std::string_view(terms.line) : value, false);
                              });
    ++file_->report->balance("blocks").taken;
}

void AttributeTeller::tellRunBlock(std::uint32_t block) {
    SourceCount& balance = file_->report->balance("attributes");
    attributes::eachAttribute(*file_->index, file_->index->blocks()[block],
                              [&](std::string_view key, std::string_view value, std::uint32_t) {
                                  ++balance.taken;
                                  tell(key, value, true);
                              });
    ++file_->report->balance("blocks").taken;
}

}  // namespace plant::review
