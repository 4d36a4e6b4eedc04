#include "scripts/json_value.h"

#include "platform/hxcom.h"
#include "tolmar/file.h"
#include "tolmar/text.h"

#include <cjson/cJSON.h>

#include <stdexcept>
#include <string>
#include <utility>

namespace {

cJSON* parseFile(std::string_view path) {
    std::string text;
    if (!tolmar::readFile(path, text)) {
        hxcad::hextPrintf("Failed to open file!\n");
        return nullptr;
    }
    return cJSON_Parse(text.c_str());
}

// What the value held stays in memory and is freed with the tree, it only no longer counts.
void turnIntoObject(cJSON& node) {
    node.type = (node.type & ~0xFF) | cJSON_Object;
}

cJSON* addMember(cJSON& node, const char* key) {
    cJSON* member = cJSON_CreateObject();
    if (cJSON_AddItemToObject(&node, key, member) == 0) {
        cJSON_Delete(member);
        return nullptr;
    }
    turnIntoObject(node);
    return member;
}

}  // namespace

JsonValue::JsonValue(cJSON* node) : node_(node), owned_(false) {
    if (node == nullptr) {
        throw std::runtime_error("object is invalid");
    }
}

JsonValue::~JsonValue() {
    release();
}

JsonValue::JsonValue(JsonValue&& other) noexcept
    : node_(std::exchange(other.node_, nullptr)), owned_(std::exchange(other.owned_, true)) {}

JsonValue& JsonValue::operator=(JsonValue&& other) noexcept {
    if (this != &other) {
        release();
        node_ = std::exchange(other.node_, nullptr);
        owned_ = std::exchange(other.owned_, true);
    }
    return *this;
}

void JsonValue::release() {
    if (owned_) {
        cJSON_Delete(node_);
    }
    node_ = nullptr;
}

void JsonValue::load(std::string_view codePagePath) {
    release();
    owned_ = true;
    node_ = parseFile(codePagePath);
    if (node_ == nullptr) {
        throw std::runtime_error("parse fail");
    }
}

JsonValue JsonValue::operator[](const char* key) {
    if (node_ == nullptr) {
        node_ = cJSON_CreateObject();  // only an owning value has no tree
    }
    cJSON* member = cJSON_GetObjectItem(node_, key);
    return JsonValue(member != nullptr ? member : addMember(*node_, key));
}

JsonValue JsonValue::at(int index) const {
    if (!cJSON_IsArray(node_)) {
        throw std::runtime_error("json is not array");
    }
    if (index < 0) {
        throw std::runtime_error("pos need greater than 0");
    }
    return JsonValue(cJSON_GetArrayItem(node_, index));
}

int JsonValue::size() const {
    return cJSON_GetArraySize(node_);
}

int JsonValue::intValue() const {
    return cJSON_IsNumber(node_) ? node_->valueint : 0;
}

const char* JsonValue::stringValue() const {
    return tolmar::textOrEmpty(cJSON_GetStringValue(node_));
}

const char* JsonValue::name() const {
    return node_ != nullptr ? tolmar::textOrEmpty(node_->string) : "";
}

bool JsonValue::forEachChild(ChildCallback callback, void* userData, bool stopOnFalse) const {
    if (callback == nullptr || node_ == nullptr || node_->child == nullptr) {
        return false;
    }
    for (cJSON* child = node_->child; child != nullptr; child = child->next) {
        JsonValue value(child);
        if (!callback(value, userData) && stopOnFalse) {
            return false;
        }
    }
    return true;
}
