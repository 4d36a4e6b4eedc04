// The command NVOUT: the selected part of the model as a scene, and a JSON file with the properties beside it.
//
// The room: scene/ walks the data trees into groups (tree, manager_groups, object_groups); geometry/ streams the shape
// of an object into geometry nodes, and shows a solid again that came before; properties/ fills the attributes of a
// group and the JSON file. library_session keeps the scene library up, handles give back what it hands out.
#pragma once

// Asks for the file and the selection and writes both. Ends with a message box; the run report tells what was left out,
// and an error of the scene library, the cancel and a failure as the end of the command. Other exceptions pass.
void nvout();
