// The catalogue of the macro export: cata.txt.
//
// CataBuilder takes branches, nozzles and supports, reads each object into a CataItem (item.h), writes its place in the
// tree (lines.h) and then its points and solids (geometry.h). A solid of the platform is turned into one of the
// catalogue (solids.h) by the translator of its class (gem_trans.h), in the component's local frame. Bolts have a part
// of the tree of their own. CataStream (stream.h) has the number format and the line ends.
#pragma once

#include "hextinterface/hextcata/bolt_catalogue.h"
#include "hextinterface/hextcata/builder.h"
#include "hextinterface/hextcata/nozzle_list.h"
