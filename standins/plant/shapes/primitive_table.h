// The primitive classes that a model file can name, with their fields.
#pragma once

#include "plant/memory/arena.h"
#include "plant/memory/name_rows.h"
#include "platform/primitives.h"

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace plant {

// How a field is read; the type of the place that it goes to follows from it.
enum class FieldType : std::uint8_t {
    ClassName,  // "type", no place
    Double,
    Point,
    Vector,
    Int32,
    Int16,
    PlatformText,  // const char*, lives with the model
    OwnText,       // std::string
    Outline,       // HextOwned<HextVertexList>
    Outlines,      // HextOwned<std::vector<HextVertexList>>
    Entity,        // std::string, a JSON text
};

struct FieldRow {
    std::string_view name;
    FieldType type;
    void* (*place)(HextPrimary& primitive) = nullptr;
    bool required = false;
    std::int64_t low = 0;  // limits of a whole number
    std::int64_t high = 0;
};

struct PrimitiveClass {
    const TlRxClass* record;
    // A primitive with its defaults, put into the arena.
    HextPrimary* (*construct)(Arena& arena);
    // The same with the fields of another one of exactly this class.
    HextPrimary* (*copy)(Arena& arena, const HextPrimary& other);
    bool ownsMemory;  // its destructor must run
    std::vector<FieldRow> fields;
    NameRows names;  // rows as `fields`; "type" is the first
};

std::span<const PrimitiveClass> primitiveClasses();
// The row of a class; NameRows::none when there is none of the name.
const NameRows& primitiveNames();
// The class of a primitive; null for one that no model file can name.
const PrimitiveClass* primitiveClassOf(const HextPrimary& primitive);
// The members that may stand before the type is known: "type" alone.
const NameRows& typeNames();

}  // namespace plant
