// Signals that ask the program to stop, as the cancel button of the progress dialog: Ctrl-C, a polite kill, and the
// terminal that goes away.
#pragma once

// From here on the first of each of these signals is a wish to cancel; the second ends the process. A hang-up that was
// ignored at the start, as under nohup, stays so.
void catchCancelSignals();
bool cancelSignalled();
