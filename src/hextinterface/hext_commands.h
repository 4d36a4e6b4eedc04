// The commands of the macro export.
#pragma once

// Turns the selected part of the plant model into the macro files of the working folder and starts the packaging
// program. Reports through the command line, message boxes and the run report; lets no exception out.
void hextout();

// Colours the branches of the one selected pipeline in the drawing. Lets no exception out.
void showHextBranch();
