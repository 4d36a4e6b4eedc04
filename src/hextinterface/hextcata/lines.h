// The line templates of the catalogue's tree and points. A parent is named in each call, and a call creates its child
// below it: every parent has to be written before its children.
#pragma once

#include "hextinterface/hextbasemethod/cata_point.h"
#include "hextinterface/hextcata/stream.h"

void writeCatalogue(CataStream& out, std::string_view cata);
void writeSection(CataStream& out, std::string_view cata, std::string_view section);
void writeCategory(CataStream& out, std::string_view section, std::string_view category, std::string_view standard);
void writeGeometrySet(CataStream& out, std::string_view category, std::string_view gmse);
void writePointSet(CataStream& out, std::string_view category, std::string_view ptse);
void writeMaterialText(CataStream& out, std::string_view category, std::string_view smte, std::string_view material);

struct DetailText {
    std::string_view rtext;
    std::string_view stext;
    std::string_view ttext;
    std::string_view skey;
};
void writeDetailText(CataStream& out, std::string_view category, std::string_view sdte, const DetailText& text);

struct ComponentLine {
    std::string_view category;
    std::string_view scom;
    std::string_view gtype;
    std::string_view description;
    std::string_view ptse;
    std::string_view gmse;
};
void writeComponent(CataStream& out, const ComponentLine& line);

struct PipeComponentLine {
    std::string_view category;
    std::string_view scom;
    std::string_view description;
    std::string_view ptse;
    int size = 0;
    double outerDiameter = 0;
    std::string_view endType;
};
void writePipeComponent(CataStream& out, const PipeComponentLine& line);
void writeInsulationComponent(CataStream& out, std::string_view category, std::string_view scom, double thickness);

// The line that enters an element for what follows.
void enterElement(CataStream& out, std::string_view name);

// One point line: axial for type "PTAXI", cartesian for any other. An axial point of a set without name writes nothing
// and says so on the command line; a distance above 1e7 shows a message box and is written all the same.
void writePoint(CataStream& out, std::string_view ptse, const CataPoint& point);
// An axial point with an expression in the place of its distance.
void writePointWithDistance(CataStream& out, std::string_view ptse, const CataPoint& point, std::string_view distance);
// Shows the message box for a distance above 1e7.
void testDistance(const CataPoint& point);
