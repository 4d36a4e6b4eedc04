// The command RVMOUT: the selected tree as RVM files with their attribute files.
#pragma once

// Asks for a folder and a selection, and writes one pair of files for everything, or one for each data tree, as the
// script decides. Ends with a message box; what was left out stands in the run report.
void rvmout();
