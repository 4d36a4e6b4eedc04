// Objects of the tree, seen as what exports can write.
#pragma once

#include "platform/objects.h"

// The object as a smart one, or null. An object that its class keeps from having a shape stands in the run report;
// managers and other nodes of the tree do not, since they are walked themselves.
const HxDbSmrtlnEntity* smartObject(const HxDbObject* object);
