// What the macro writers share.
#pragma once

#include "hextinterface/hextbasemethod/component_geometry.h"
#include "hextinterface/hextbasemethod/limited_text.h"
#include "hextinterface/hextbasemethod/macro_text.h"
#include "hextinterface/hextbasemethod/text_faults.h"
