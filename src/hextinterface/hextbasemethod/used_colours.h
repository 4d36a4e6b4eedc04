// The colours that elements have got by their FUNC words, gathered while the model is sorted and its structures are
// read; the colour files tell the target about each of them.
#pragma once

#include <cstdint>
#include <set>

enum class ColourClass : std::uint16_t { Pipeline = 1, Structure = 2, Equipment = 3, Support = 4, Window = 6 };

// `index` is the colour index of the model, of which the low byte counts.
void useColour(ColourClass colourClass, int index);
// Keys in use: high byte the class, low byte the colour index. Module-wide; grows as long as the module is loaded.
std::set<std::uint16_t>& usedColours();
