// Names, user attributes, Skey and GType of the macro export.
#pragma once

#include "hextinterface/manager/context.h"
#include "hextinterface/manager/name_manager.h"
#include "hextinterface/manager/uda_writer.h"
