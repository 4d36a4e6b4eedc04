// The command MAXOUT: the main database's tree as a geometry file and a property file for a 3ds Max importer.
//
// The room: tree walks the model and gives nodes and objects running ids; object writes one object into both documents,
// with what script (maxoutplugins.lua) says of it and the mesh of shape. document holds a file as a RapidXML tree and
// printer prints it at the end.
#pragma once

// Asks for a folder and two texts and writes both files, named after the project: ".orna" and ".xml". There is no
// progress dialog and no message at the end; what was left out stands in the run report.
void maxout();
