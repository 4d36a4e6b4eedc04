// The design macros and specifications of the macro export.
#pragma once

#include "hextinterface/ornatohextprocess/design/files.h"
#include "hextinterface/ornatohextprocess/design/gather.h"
#include "hextinterface/ornatohextprocess/design/site_zone.h"
#include "hextinterface/ornatohextprocess/pipes/colour_files.h"
#include "hextinterface/ornatohextprocess/pipes/pipe_writer.h"
#include "hextinterface/ornatohextprocess/specs/generator.h"
