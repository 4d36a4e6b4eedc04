// The members of the smaller JSON objects of a model file. Those of the plant's own objects follow from their classes
// (plant/model/class_table.h), those of primitives from theirs (plant/shapes/primitive_table.h).
#pragma once

#include "plant/memory/name_rows.h"

namespace plant {

// The enumerations number the rows of the names.
namespace rows {

enum class Top { Format, Version, Project, AttributeLabels, Databases, Objects };
enum class Project {
    Name,
    Path,
    User,
    Module,
    Database,
    DesignItems,
    ProjectItems,
    WeldColor,
    CurrentManager,
    PlatformPath
};
enum class Database { Name, ShortName, Main, Root };
enum class Attribute { Key, Value, Type, Description };
enum class Point { No, At, Flow, To };
enum class KeyPoint { No, At };
enum class Insulation { Thickness, Material, Code };
enum class End { Size, EndType, Outer, Inner, Section };
enum class Run { Name, Items, Attrs };

const NameRows& top();
const NameRows& project();
const NameRows& database();
const NameRows& attribute();
const NameRows& point();
const NameRows& keyPoint();
const NameRows& insulation();
const NameRows& end();
const NameRows& run();

}  // namespace rows

}  // namespace plant
