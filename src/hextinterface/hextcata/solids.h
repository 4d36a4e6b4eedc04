// The primitives of the catalogue; each knows its line. An object is valid once it has got its values.
#pragma once

#include "hextinterface/hextcata/stream.h"
#include "platform/geometry.h"

#include <string>
#include <vector>

class HEXT_CATA_CateBase {
public:
    HEXT_CATA_CateBase() = default;
    virtual ~HEXT_CATA_CateBase() = default;
    HEXT_CATA_CateBase(const HEXT_CATA_CateBase&) = default;
    HEXT_CATA_CateBase& operator=(const HEXT_CATA_CateBase&) = default;
    // Nothing happens on a closed stream. `mode` is the last argument of a snout's line; the others have none.
    virtual void write(CataStream& out, int mode) const = 0;

    bool valid = false;
};

struct HEXT_CATA_SCYL final : HEXT_CATA_CateBase {
    double distance = 0;
    double height = 0;
    std::string axis;
    double diameter = 0;
    void write(CataStream& out, int mode) const override;
};
struct HEXT_CATA_SCYLE final : HEXT_CATA_CateBase {
    double bottom = 0;
    double top = 0;
    std::string axis;
    double diameter = 0;
    void write(CataStream& out, int mode) const override;
};
struct HEXT_CATA_SSPH final : HEXT_CATA_CateBase {
    std::string axis;
    double distance = 0;
    double diameter = 0;
    void write(CataStream& out, int mode) const override;
};
struct HEXT_CATA_SDSH final : HEXT_CATA_CateBase {
    HEXT_CATA_SDSH() = default;
    // ExportException "参数无效" for a value that is no number, with its name on the command line.
    HEXT_CATA_SDSH(std::string axisText, double bdisValue, double heightValue, double pdiaValue);
    std::string axis;
    double bdis = 0;  // not written
    double height = 0;
    double pdia = 0;
    void write(CataStream& out, int mode) const override;
};
struct HEXT_CATA_SSLC final : HEXT_CATA_CateBase {
    std::string axis;
    double height = 0;
    double diameter = 0;
    double topShearX = 0;
    double topShearY = 0;
    double bottomShearX = 0;
    double bottomShearY = 0;
    double distance = 0;
    void write(CataStream& out, int mode) const override;
};
struct HEXT_CATA_LSNO final : HEXT_CATA_CateBase {
    std::string offsetAxis;
    std::string axis;
    double diameterA = 0;
    double diameterB = 0;
    double bottom = 0;
    double top = 0;
    double offset = 0;
    void write(CataStream& out, int mode) const override;
};
struct HEXT_CATA_LPYR final : HEXT_CATA_CateBase {
    std::string axisA;
    std::string axisB;
    std::string axisC;
    double distance = 0;
    double height = 0;
    double topY = 0;
    double topX = 0;
    double bottomX = 0;
    double bottomY = 0;
    double offsetX = 0;
    double offsetY = 0;
    void write(CataStream& out, int mode) const override;
};
// Writes nothing for a diameter below 1e-6.
struct HEXT_CATA_TORUS final : HEXT_CATA_CateBase {
    std::string axisA;
    std::string axisB;
    double diameter = 0;
    void write(CataStream& out, int mode) const override;
};
// Writes nothing for a width or height below 1e-6.
struct HEXT_CATA_SRTO final : HEXT_CATA_CateBase {
    std::string axisA;
    std::string axisB;
    double width = 0;
    double height = 0;
    void write(CataStream& out, int mode) const override;
};
struct HEXT_CATA_Vertex {
    double x = 0;
    double y = 0;
    double radius = 0;
};
// An extrusion writes a group of lines.
struct HEXT_CATA_SEXT final : HEXT_CATA_CateBase {
    HxGePoint3D position;
    std::string axisA;
    std::string axisB;
    double height = 0;
    std::vector<HEXT_CATA_Vertex> vertices;
    void write(CataStream& out, int mode) const override;
};
struct HEXT_CATA_LINE final : HEXT_CATA_CateBase {
    std::vector<std::string> points;
    void write(CataStream& out, int mode) const override;
};
struct HEXT_CATA_Box final : HEXT_CATA_CateBase {
    double x = 0;
    double y = 0;
    double z = 0;
    double xLength = 0;
    double yLength = 0;
    double zLength = 0;
    void write(CataStream& out, int mode) const override;
};
