#include "hextinterface/hextcata/lines.h"

#include "platform/hxcom.h"
#include "platform/left_out.h"
#include "tolmar/host_ui.h"

namespace {

constexpr double largestDistance = 1e7;

bool refuseNamelessSet(std::string_view ptse) {
    if (ptse.empty()) {
        hxcad::hextPrintf("参考点空值\n");
    }
    return ptse.empty();
}

template <typename Distance>
void writeAxialPoint(CataStream& out, std::string_view ptse, const CataPoint& p, const Distance& distance) {
    if (refuseNamelessSet(ptse)) {
        return;
    }
    testDistance(p);
    out.line("call !!ORNACataPtaxi('", Ref{ptse}, "','", p.id, "','", p.con, "','(", p.bore, ")','(", distance, ")','",
             p.paxi, "')");
}

}  // namespace

std::string cataRef(std::string_view name) {
    return name == "Nulref" ? std::string(name) : "/" + std::string(name);
}

void CataStream::openCataFile(std::string_view folder) {
    file_.close();
    file_.open(std::string(folder) + "/cata.txt", tolmar::FileMode::Text);
}

void CataStream::leaveOut() const {
    reportLeftOut({HxDbObjectId(), text_, "catalogue line"}, "holds a number that is not finite");
}

void writeCatalogue(CataStream& out, std::string_view cata) {
    out.line("call !!ORNACataCreateCata('", Ref{cata}, "')");
}

void writeSection(CataStream& out, std::string_view cata, std::string_view section) {
    out.line("call !!ORNACataCreateSec('", Ref{cata}, "','", Ref{section}, "')");
}

void writeCategory(CataStream& out, std::string_view section, std::string_view category, std::string_view standard) {
    out.line("call !!ORNACataCreateCate('", Ref{section}, "','", Ref{category}, "','", standard, "')");
}

void writeGeometrySet(CataStream& out, std::string_view category, std::string_view gmse) {
    out.line("call !!ORNACataCreateGmse('", Ref{category}, "','", Ref{gmse}, "')");
}

void writePointSet(CataStream& out, std::string_view category, std::string_view ptse) {
    out.line("call !!ORNACataCreatePtse('", Ref{category}, "','", Ref{ptse}, "')");
}

void writeMaterialText(CataStream& out, std::string_view category, std::string_view smte, std::string_view material) {
    out.line("call !!ORNACataCreateSmte('", Ref{category}, "','", Ref{smte}, "',", Limited{material}, ")");
}

void writeDetailText(CataStream& out, std::string_view category, std::string_view sdte, const DetailText& text) {
    out.line("call !!ORNACataCreateSdte('", Ref{category}, "','", Ref{sdte}, "',", Limited{text.rtext}, ",",
             Limited{text.stext}, ",", Limited{text.ttext}, ",'", text.skey, "')");
}

void writeComponent(CataStream& out, const ComponentLine& line) {
    out.line("call !!ORNACataCreateScom('", Ref{line.category}, "','", Ref{line.scom}, "','", line.gtype, "','",
             line.description, "','", Ref{line.ptse}, "','", Ref{line.gmse}, "')");
}

void writePipeComponent(CataStream& out, const PipeComponentLine& line) {
    out.line("call !!ORNACataCreatePipeScom('", Ref{line.category}, "','", Ref{line.scom}, "','", line.description,
             "','", Ref{line.ptse}, "','", line.size, " ", line.outerDiameter, " ", line.endType, "')");
}

void writeInsulationComponent(CataStream& out, std::string_view category, std::string_view scom, double thickness) {
    out.line("call !!ORNACataCreateInsuScom('", Ref{category}, "','", Ref{scom}, "','Pipe ", thickness, "','",
             2 * thickness, "')");
}

void enterElement(CataStream& out, std::string_view name) {
    out.line("OLD ", Ref{name});
}

void testDistance(const CataPoint& point) {
    if (point.dist > largestDistance) {
        tolmar::messageBox("PP点distance计算错误");
    }
}

void writePoint(CataStream& out, std::string_view ptse, const CataPoint& p) {
    if (p.type == "PTAXI") {
        return writeAxialPoint(out, ptse, p, p.dist);
    }
    out.line("call !!ORNACataPtca('", Ref{ptse}, "','", p.id, "','", p.con, "','", p.bore, "','(", p.pos.x, ")','(",
             p.pos.y, ")','(", p.pos.z, ")','", p.dir, "')");
}

void writePointWithDistance(CataStream& out, std::string_view ptse, const CataPoint& point, std::string_view distance) {
    writeAxialPoint(out, ptse, point, distance);
}
