// The nozzles that have a catalogue entry, and with it a specification.
#pragma once

#include "platform/objects.h"

#include <vector>

// Module-wide. The nozzle catalogue of a run empties it and fills it in the order of writing.
std::vector<HxDbNozzleModel*>& nozzlesWithSpec();
