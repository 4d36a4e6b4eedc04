#include "hextinterface/hextcata/solids.h"

#include "frame/exceptions.h"
#include "platform/hxcom.h"

#include <cmath>

namespace {

constexpr double smallestSection = 1e-6;

}  // namespace

void HEXT_CATA_SCYL::write(CataStream& out, int) const {
    out.line("call !!ORNACataSCYL('", distance, "','", height, "','", axis, "','", diameter, "')");
}

void HEXT_CATA_SCYLE::write(CataStream& out, int) const {
    out.line("call !!ORNACataLCYL('(", bottom, ")','(", top, ")','", axis, "','", diameter, "')");
}

void HEXT_CATA_SSPH::write(CataStream& out, int) const {
    out.line("call !!ORNACataSSPH('", axis, "','(", distance, ")','", diameter, "')");
}

HEXT_CATA_SDSH::HEXT_CATA_SDSH(std::string axisText, double bdisValue, double heightValue, double pdiaValue)
    : axis(std::move(axisText)), bdis(bdisValue), height(heightValue), pdia(pdiaValue) {
    const struct {
        const char* name;
        double value;
    } values[] = {{"bdis", bdis}, {"height", height}, {"pdia", pdia}};
    for (const auto& [name, value] : values) {
        if (std::isnan(value)) {
            hxcad::hextPrintf("\n%s is nan", name);
            throw ExportException("参数无效");
        }
    }
    valid = true;
}

void HEXT_CATA_SDSH::write(CataStream& out, int) const {
    out.line("call !!ORNACataSDSH('", axis, "','(0)','", height, "','", pdia, "')");
}

void HEXT_CATA_SSLC::write(CataStream& out, int) const {
    out.line("call !!ORNACataSSLC('", axis, "','(", height, ")','", diameter, "','(", topShearX, ")','(", topShearY,
             ")','(", bottomShearX, ")','(", bottomShearY, ")','(", distance, ")')");
}

void HEXT_CATA_LSNO::write(CataStream& out, int mode) const {
    out.line("call !!ORNACataLSNO('", offsetAxis, "','", axis, "','(", diameterA, ")','(", diameterB, ")','(", bottom,
             ")','(", top, ")','(", offset, ")','", mode, "')");
}

void HEXT_CATA_LPYR::write(CataStream& out, int) const {
    out.line("call !!ORNACataLPYR('", axisA, "','", axisB, "','", axisC, "','(", distance, ")','(", height, ")','",
             topY, "','", topX, "','", bottomX, "','", bottomY, "','(", offsetX, ")','(", offsetY, ")')");
}

void HEXT_CATA_TORUS::write(CataStream& out, int) const {
    if (diameter >= smallestSection) {
        out.line("call !!ORNACataSCTO('", axisA, "','", axisB, "','", diameter, "')");
    }
}

void HEXT_CATA_SRTO::write(CataStream& out, int) const {
    if (width >= smallestSection && height >= smallestSection) {
        out.line("call !!ORNACataSRTO('", axisA, "','", axisB, "','", width, "','(", height, ")')");
    }
}

void HEXT_CATA_SEXT::write(CataStream& out, int) const {
    out.line("call !!ORNACataSEXT('(", position.x, ")','(", position.y, ")','(", position.z, ")','", axisA, "','",
             axisB, "','(", height, ")')");
    out.line("SAME");
    out.line("new sloo");
    for (const HEXT_CATA_Vertex& vertex : vertices) {
        out.line("call !!ORNACataSVER('(", vertex.x, ")','(", vertex.y, ")','(", vertex.radius, ")')");
    }
}

void HEXT_CATA_LINE::write(CataStream& out, int) const {
    std::string joined;
    for (const std::string& point : points) {
        joined.append(" ").append(point);
    }
    out.line("call !!ORNACataLINE('", joined, "')");
}

void HEXT_CATA_Box::write(CataStream& out, int) const {
    out.line("call !!ORNACataSBOX('(", x, ")','(", y, ")','(", z, ")','(", xLength, ")','(", yLength, ")','(", zLength,
             ")')");
}
