// From the platform's solids to macro solids, in world coordinates.
#pragma once

#include "hextinterface/ornatohextprocess/solids/equip_prims.h"
#include "platform/primitives.h"

// The macro solids of a primitive. An empty group means that nothing could be made of it. ExportException "无效方向"
// for a direction of zero length, "角度异常" for a bend that two pieces cannot hold, "参数无效" for sizes that give no
// finite number.
PrimGroup convertPrimary(const HextPrimary& primary);
