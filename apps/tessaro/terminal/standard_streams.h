// The program's three standard streams.
#pragma once

// To be called before anything is opened. A descriptor that the caller has closed is put on /dev/null, so that no file
// gets its number and with it what is printed. Nothing can be written to a standard output that was closed: what prints
// there fails as on a full disk.
void openStandardStreams();

// Writes out what is left for standard output; false when not all of what was printed has arrived.
bool finishStandardOutput();
