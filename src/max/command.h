// The command MAXOUT: the main database's tree as a geometry file and a property file for a 3ds Max importer.
#pragma once

// Asks for a folder and two texts and writes both files, named after the project: ".orna" and ".xml". There is no
// progress dialog and no message at the end; what was left out stands in the run report.
void maxout();
