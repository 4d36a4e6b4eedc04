// What the writers of the macro export share; the lowest of its rooms.
//
//   macro_text, limited_text      numbers, places, directions and quoted texts as HEXT reads them
//   text_faults                   texts and names that a line cannot carry as they are, told to the run report
//   component_geometry            what the connection points of a component mean, by family
//   object_lists, object_tests    lists of objects that go from room to room, and small questions about one
//   used_colours                  the colours in use, for the colour files
#pragma once

#include "hextinterface/hextbasemethod/component_geometry.h"
#include "hextinterface/hextbasemethod/limited_text.h"
#include "hextinterface/hextbasemethod/macro_text.h"
#include "hextinterface/hextbasemethod/object_lists.h"
#include "hextinterface/hextbasemethod/object_tests.h"
#include "hextinterface/hextbasemethod/text_faults.h"
#include "hextinterface/hextbasemethod/used_colours.h"
