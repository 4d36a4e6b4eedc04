// Whether asking the project's script is worth a call for each of many objects.
#pragma once

// True when the script has a global function of this name. Makes the host when there is none.
bool scriptHasFunction(const char* name);
