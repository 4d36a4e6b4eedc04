// An independent reader of the macro text of equipment, structures and supports: what the receiving system would build.
#pragma once

#include "hextinterface/hextbasemethod/macro_text.h"

#include <map>
#include <string>
#include <vector>

namespace macro {

struct Vertex {
    HxGePoint3D at;
    double frad;
};

struct Solid {
    std::string function;  // such as "Box"
    std::string owner;
    bool sign = true;
    CoordFrame frame;  // in the element, a cut's in its solid
    std::map<std::string, double> numbers;
    std::vector<Vertex> loop;
    std::vector<Solid> cuts;

    double at(const char* name) const { return numbers.at(name); }
};

struct Element {
    std::string function, owner, self, old, func;
    CoordFrame frame;
    std::vector<std::string> udas;  // lines
    std::vector<Solid> solids;
};

// A direction and a frame told in words. Throws std::runtime_error for words that tell none, here and below.
HxGeVector3D readDirection(const std::string& text);
CoordFrame readFrame(const std::string& position, const std::string& orientation);

// The elements of a file, nozzles left out. Solids without an element stand in a first element without a name.
std::vector<Element> readElements(const std::string& text);

}  // namespace macro
