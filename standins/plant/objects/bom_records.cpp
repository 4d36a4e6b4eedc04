#include "plant/model/data.h"
#include "platform/smrtln.h"

namespace smrtln {

namespace {

std::string_view descriptionOf(const BomRecord& record, const plant::AttributeTables& tables) {
    return record.description != 0 ? tables.descriptions[record.description] : tables.labelOf(record.key);
}

KVParams::Value valueOf(const BomRecord& record) {
    switch (record.type) {
    case KVParams::Short:
    case KVParams::ShortAlias:
        return {.shortValue = static_cast<std::int16_t>(record.integer)};
    case KVParams::Double:
        return {.doubleValue = record.number};
    case KVParams::Point:
        return {.point = record.point};
    case KVParams::Int:
        return {.intValue = static_cast<std::int32_t>(record.integer)};
    case KVParams::Pointer:
        return {.pointer = record.pointer};
    case KVParams::Int64:
        return {.int64Value = record.integer};
    case KVParams::Bytes:
        return {.bytes = {static_cast<std::int32_t>(record.length), record.text}};
    default:
        return {.text = record.text};
    }
}

}  // namespace

KVParams toKVParams(const BomRecord& record) {
    KVParams params;
    params.valueType = static_cast<std::int32_t>(record.type);
    params.value = valueOf(record);
    if (const plant::Model* model = plant::currentModel()) {
        params.key = model->attributes.keys[record.key];
        params.description = descriptionOf(record, model->attributes);
    }
    return params;
}

}  // namespace smrtln
