// The design macros and specifications of the macro export: what goes into the target's design and specification
// databases. Every writer takes its names from the name manager (manager/manager.h) and composes its lines by
// hextbasemethod.
//
//   specs/    SpecGenerator writes the tables of specifications, a file for each kind of element. It runs first: design
//             elements point at its rows, and what has no row gets no line.
//   design/   gathers records of equipment, structures and supports from the sorted selection (gather.h) and writes
//             equip.txt, struct.txt and sup.txt (files.h); sites, zones and grids (site_zone.h)
//   solids/   the macro solids of these records, and how the platform's primitives become such
//   pipes/    PipeWriter: pipe.txt. The calls of a pipe and a branch stand in pipe_desc.cpp, those of components in
//             component_desc.cpp, which bends come in between in branch_chain.cpp; and the colour files
//
// Lengths are in millimetres, angles in degrees.
#pragma once

#include "hextinterface/ornatohextprocess/design/files.h"
#include "hextinterface/ornatohextprocess/design/gather.h"
#include "hextinterface/ornatohextprocess/design/site_zone.h"
#include "hextinterface/ornatohextprocess/pipes/colour_files.h"
#include "hextinterface/ornatohextprocess/pipes/pipe_writer.h"
#include "hextinterface/ornatohextprocess/specs/generator.h"
