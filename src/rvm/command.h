// The command RVMOUT: the selected tree as RVM files with their attribute files.
//
// The room: export_tree reduces the selection to sites, zones and managers; tree_writer walks that and object_writer
// the objects of a manager; both write through pair, which holds the RVM file (file: chunks and bytes) and the
// attribute file in step. shapes/ turns a primitive into the format's own (primitive_shape) or into facets
// (facet_source), and primitive_writer takes the bytes of one that fails back.
#pragma once

// Asks for a folder and a selection, and writes one pair of files for everything, or one for each data tree, as the
// script decides. Ends with a message box; what was left out stands in the run report.
void rvmout();
