// The design macros and specifications of the macro export.
#pragma once

#include "hextinterface/ornatohextprocess/colour_files.h"
#include "hextinterface/ornatohextprocess/design_files.h"
#include "hextinterface/ornatohextprocess/design_gather.h"
#include "hextinterface/ornatohextprocess/pipe_writer.h"
#include "hextinterface/ornatohextprocess/site_zone.h"
#include "hextinterface/ornatohextprocess/spec_generator.h"
