// The command OBMOUT.
#pragma once

// Writes the selected part of the plant model into a PModel package. Reports through the command line, message boxes
// and the run report; catches the cancel of the progress dialog and lets other exceptions out.
void obmout();
