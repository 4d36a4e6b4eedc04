#include "sources/json/writing/entity_text.h"

#include <simdjson.h>

namespace plant {

namespace {

namespace dom = simdjson::dom;

bool isReadable(dom::element value, int depth) {
    constexpr int deepest = 32;  // as the reader of model files has it
    if (depth > deepest) {
        return false;
    }
    if (value.is_object()) {
        for (const auto [key, inner] : dom::object(value)) {
            if (!isReadable(inner, depth + 1)) {
                return false;
            }
        }
    } else if (value.is_array()) {
        for (const dom::element inner : dom::array(value)) {
            if (!isReadable(inner, depth + 1)) {
                return false;
            }
        }
    }
    return !value.is_string() || std::string_view(value).find('\0') == std::string_view::npos;
}

}  // namespace

struct EntityCheck::Parser {
    dom::parser json;
};

EntityCheck::EntityCheck() : parser_(std::make_unique<Parser>()) {}
EntityCheck::~EntityCheck() = default;

bool EntityCheck::canStand(std::string_view serial) {
    dom::element value;
    return serial.starts_with('{') &&
           parser_->json.parse(serial.data(), serial.size()).get(value) == simdjson::SUCCESS && value.is_object() &&
           isReadable(value, 0);
}

}  // namespace plant
