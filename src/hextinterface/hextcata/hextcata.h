// The catalogue of the macro export.
#pragma once

#include "hextinterface/hextcata/bolt_catalogue.h"
#include "hextinterface/hextcata/builder.h"
#include "hextinterface/hextcata/nozzle_list.h"
