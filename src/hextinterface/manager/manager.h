// Names, user attributes, Skey and GType of the macro export.
//
// A writer is handed an ExportContext. From its NameManager it takes the name of an element by topic (components,
// bolts, branches...), asks the register whether the element is written already, writes it and so marks it. User
// attributes of an element go through the UdaWriter, which knows their dictionary, into the writer's own text.
//
//   name_register      which names there are, of which kind, and which are written
//   component_key      what makes two components the same; letter_codes: the letters that stand for values in names
//   type_names         Skey and GType by class and by the tables of the project (type_tables)
//   *_names            the names of one topic each
//   uda_writer         uda.txt
//
// The room stands on the texts of hextbasemethod and on nothing above that.
#pragma once

#include "hextinterface/manager/context.h"
#include "hextinterface/manager/name_manager.h"
#include "hextinterface/manager/uda_writer.h"
