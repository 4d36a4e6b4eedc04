// Small questions about one object or primitive that several rooms of the macro export ask. Nothing here keeps
// anything; objects may not be null unless something else is said.
#pragma once

#include "platform/objects.h"

#include "platform/primitives.h"

// The id as printf takes it, with %lld.
long long idNumber(const HxDbObject* object);

bool isWeld(const HxDbObject* object);
bool isTubeStop(const HxDbObject* object);
// False for a size such as "100*50", which has no bore: the object then gets no row and no line.
bool hasPlainSize(const HxDbObject* object);
// The insulation of an object, which has a specification in place of a shape.
bool isObstruction(const HextPrimary3D& solid);

// The object that a node of a tree stands for; null when it does not open.
HxDbObject* objectOf(const HxDbTreeNode& node);

// Directions that count as parallel when axes are chosen: a vector this close to another makes no plane with it.
inline constexpr TlGeTol nearlyParallel(1e-5, 1e-5);
