// The command OBMOUT: the selected part of the model as a PModel package.
//
// The room: walk goes through each data tree once and fills a tree of plain records (record), in which objects puts
// properties and materials; every mesh goes to the SDK at once. package_writer then hands materials, model tree,
// instance tree and properties over, one pass each, and the SDK composes the scene and the archive.
#pragma once

// Writes the selected part of the plant model into a PModel package. Reports through the command line, message boxes
// and the run report; catches the cancel of the progress dialog and lets other exceptions out.
void obmout();
