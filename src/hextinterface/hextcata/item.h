// The working record of one object on its way into the catalogue.
#pragma once

#include "hextinterface/hextbasemethod/cata_point.h"
#include "platform/objects.h"

#include <array>
#include <string>
#include <vector>

class ConfigTexts;
class NameManager;

using Bores = std::array<int, 4>;

// The nominal sizes of the four ends: a weld takes those of its first connected object, a balloon counts as 20; a size
// that is no number counts as 0. `sizes` stays as it is where a weld's first connected object is no smart object.
void readSizes(const HxDbSmrtlnEntity* object, Bores& sizes);
// The bore at end `no`: 0 and 1 the first size, 2 to 4 their own or the one that stands in for it; 0 beyond.
int sizeOfEnd(const Bores& sizes, int no);
// Outer diameter of an object by its specification; 0 when it does not tell.
double outerDiameterOf(const HxDbSmrtlnEntity* object);

// A number without its fraction; what no integer holds is cut to the nearest one, no number is 0.
int cutToInteger(double value);

struct CataItem {
    std::string smrtlnType;  // attribute "smrtln"; "Balloon" for a balloon
    std::string categoryName;
    std::string scomName;
    CataPoints points;
    std::string gtype;
    std::string skey;
    std::string schedule;
    std::string thickness;
    std::string material;
    std::string item;  // or "ATTACH" in an attachment
    std::string standard;
    std::string description;
    std::string rtext;
    std::string stext;
    std::string ttext;
    bool hasGeometry = true;
    Bores sizes{};  // bores of the four ends
    std::array<std::string, 4> ends;
    std::string gmseName;
    std::string ptseName;
    std::string sdteName;
    std::string smteName;
    bool virtualGasket = false;
    const HxDbSmrtlnEntity* object = nullptr;
};

// Reads everything that an object tells of itself. Names stay as they are.
void fillItem(CataItem& item, const HxDbSmrtlnEntity* object, const NameManager& names, const ConfigTexts& texts);
