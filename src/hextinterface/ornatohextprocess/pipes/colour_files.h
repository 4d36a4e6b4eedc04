// The two files that teach the target's graphics to colour elements by their FUNC words.
#pragma once

// Reads the used colours and the array "color" of config.json; writes des-col.pmldat and des-element-rules.pmldat into
// the working folder. Does nothing when either cannot be opened. The exceptions of the JSON layer pass: a missing or
// short array, a configuration that cannot be parsed.
void writeColourFiles();
