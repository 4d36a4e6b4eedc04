#include "hextinterface/hextbasemethod/used_colours.h"

std::set<std::uint16_t>& usedColours() {
    static std::set<std::uint16_t> keys;
    return keys;
}

void useColour(ColourClass colourClass, int index) {
    usedColours().insert(
        static_cast<std::uint16_t>((static_cast<unsigned>(colourClass) << 8) | (static_cast<unsigned>(index) & 0xFFU)));
}
