#include "hextinterface/ornatohextprocess/solids/equip_prims.h"

#include "frame/exceptions.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double maxTorusAngle = 180;

template <auto>
struct Reader;
template <typename Solid, double Solid::*field>
struct Reader<field> {
    static double value(const _PPrimBase& solid) { return static_cast<const Solid&>(solid).*field; }
};

template <auto field>
constexpr double (*reads)(const _PPrimBase&) = Reader<field>::value;

template <typename Torus>
double cappedAngle(const _PPrimBase& solid) {
    return std::min(static_cast<const Torus&>(solid).angle, maxTorusAngle);
}

template <typename Solid>
const PLoop& loopOf(const _PPrimBase& solid) {
    return static_cast<const Solid&>(solid).loop;
}

constexpr MacroParam boxParams[] = {
    {"!xlen", reads<&_PBox::xlen>}, {"!ylen", reads<&_PBox::ylen>}, {"!zlen", reads<&_PBox::zlen>}};
constexpr MacroParam cylinderParams[] = {{"!dia", reads<&_PCylinder::dia>}, {"!height", reads<&_PCylinder::height>}};
constexpr MacroParam coneParams[] = {
    {"!dTop", reads<&_PCone::dTop>}, {"!dBottom", reads<&_PCone::dBottom>}, {"!height", reads<&_PCone::height>}};
constexpr MacroParam snouParams[] = {{"!dTop", reads<&_PSnou::dTop>},
                                     {"!dBottom", reads<&_PSnou::dBottom>},
                                     {"!xoff", reads<&_PSnou::xoff>},
                                     {"!yoff", reads<&_PSnou::yoff>},
                                     {"!height", reads<&_PSnou::height>}};
constexpr MacroParam dishParams[] = {
    {"!dia", reads<&_PDish::dia>}, {"!height", reads<&_PDish::height>}, {"!radius", reads<&_PDish::radius>}};
constexpr MacroParam ctorParams[] = {
    {"!rIn", reads<&_PCtor::rIn>}, {"!rOut", reads<&_PCtor::rOut>}, {"!angle", cappedAngle<_PCtor>}};
constexpr MacroParam rtorParams[] = {{"!rIn", reads<&_PRtor::rIn>},
                                     {"!rOut", reads<&_PRtor::rOut>},
                                     {"!height", reads<&_PRtor::height>},
                                     {"!angle", cappedAngle<_PRtor>}};
constexpr MacroParam pyraParams[] = {{"!xtop", reads<&_PPyra::xtop>},     {"!xbottom", reads<&_PPyra::xbottom>},
                                     {"!ytop", reads<&_PPyra::ytop>},     {"!ybottom", reads<&_PPyra::ybottom>},
                                     {"!height", reads<&_PPyra::height>}, {"!xoff", reads<&_PPyra::xoff>},
                                     {"!yoff", reads<&_PPyra::yoff>}};
constexpr MacroParam slcyParams[] = {{"!dia", reads<&_PSlcy::dia>},         {"!height", reads<&_PSlcy::height>},
                                     {"!xtshear", reads<&_PSlcy::xtshear>}, {"!ytshear", reads<&_PSlcy::ytshear>},
                                     {"!xbshear", reads<&_PSlcy::xbshear>}, {"!ybshear", reads<&_PSlcy::ybshear>}};
constexpr MacroParam extruParams[] = {{"!height", reads<&_PExtru::height>}};
constexpr MacroParam revoParams[] = {{"!angle", reads<&_PRevo::angle>}};

void appendParams(std::string& out, const _PPrimBase& solid, const MacroForm& form) {
    for (const MacroParam& param : form.params) {
        out.append(param.variable).append(" = ");
        appendFixed(out, param.value(solid));
        out += '\n';
    }
}

const char* callWord(bool negative, bool hasLoop) {
    if (!negative) {
        return "!SolidPrtName = ";
    }
    // The loop that follows needs the result of the call.
    return hasLoop ? "!NegativePrtName = " : "call ";
}

void appendCall(std::string& out, const _PPrimBase& solid, const MacroForm& form) {
    out.append(callWord(solid.negative != 0, form.loop != nullptr));
    out.append(form.function).append(solid.owner).append(", !sign, !pos, !ori");
    for (const MacroParam& param : form.params) {
        out.append(", ").append(param.variable);
    }
    out += ")\n";
}

bool isFinite(const HxGePoint3D& p) {
    return std::isfinite(p.x) && std::isfinite(p.y) && std::isfinite(p.z);
}
bool isFinite(const HxGeVector3D& v) {
    return std::isfinite(v.x) && std::isfinite(v.y) && std::isfinite(v.z);
}
bool isFinite(const CoordFrame& f) {
    return isFinite(f.origin) && isFinite(f.xAxis) && isFinite(f.yAxis) && isFinite(f.zAxis);
}

bool isFinite(const PLoop& loop) {
    return std::all_of(loop.vertices.begin(), loop.vertices.end(),
                       [](const PVertex& v) { return isFinite(v.position) && std::isfinite(v.frad); });
}

bool isFinite(const _PPrimBase& solid, std::span<const MacroParam> params) {
    return std::all_of(params.begin(), params.end(),
                       [&](const MacroParam& param) { return std::isfinite(param.value(solid)); });
}

}  // namespace

const MacroForm _PBox::form{"!!ORNAEquipCreateBox(", boxParams};
const MacroForm _PCylinder::form{"!!ORNAEquipCreateCyli(", cylinderParams};
const MacroForm _PCone::form{"!!ORNAEquipCreateCone(", coneParams};
const MacroForm _PSnou::form{"!!ORNAEquipCreateSnou(", snouParams};
const MacroForm _PDish::form{"!!ORNAEquipCreateDish(", dishParams};
const MacroForm _PCtor::form{"!!ORNAEquipCreateCtor(", ctorParams};
const MacroForm _PRtor::form{"!!ORNAEquipCreateRtor(", rtorParams};
const MacroForm _PPyra::form{"!!ORNAEquipCreatePyra(", pyraParams};
const MacroForm _PSlcy::form{"!!ORNAEquipCreateSlcy(", slcyParams};
const MacroForm _PExtru::form{"!!ORNAEquipCreateExtru(", extruParams, loopOf<_PExtru>};
const MacroForm _PRevo::form{"!!ORNAEquipCreateRevo(", revoParams, loopOf<_PRevo>};

TlGeMatrix3d worldToFrame(const CoordFrame& frame) {
    return TlGeMatrix3d::alignCoordSys(frame.origin, frame.xAxis, frame.yAxis, frame.zAxis, worldFrame.origin,
                                       worldFrame.xAxis, worldFrame.yAxis, worldFrame.zAxis);
}

void _PPrimBase::transformBy(const TlGeMatrix3d& matrix) {
    frame = CoordFrame(matrix * frame.origin, matrix * frame.xAxis, matrix * frame.yAxis, matrix * frame.zAxis);
}

void _PPrimBase::transformToFrame(const CoordFrame& targetFrame) {
    transformBy(worldToFrame(targetFrame));
}

void writeSolid(std::string& out, const _PPrimBase& solid, const MacroForm& form) {
    out.append("!sign = ").append(solid.negative == 0 ? "true" : "false").append("\nvar !pos POSITION ");
    appendPosition(out, solid.frame.origin);
    out.append("\n!ori = '").append(orientationText(solid.frame)).append("'\n");
    appendParams(out, solid, form);
    appendCall(out, solid, form);
    if (form.loop != nullptr) {
        out += "\n\n";
        PLoop loop = form.loop(solid);
        loop.owner = solid.negative == 0 ? solidVariable : negativeVariable;
        writeLoop(out, loop);
    }
}

void requireFinite(const _PPrimBase& solid, const MacroForm& form) {
    const bool loopFinite = form.loop == nullptr || isFinite(form.loop(solid));
    if (!loopFinite || !isFinite(solid.frame) || !isFinite(solid, form.params)) {
        throw ExportException("参数无效");
    }
}
