// The macro solids of equipment, structures and supports, each of which writes its own macro text.
//
// A solid holds numbers and a frame, in millimetres and degrees. It is made in world coordinates, then moved into the
// frame of its element, then written. A cutting solid stands in the frame of the solid that it cuts.
#pragma once

#include "hextinterface/hextbasemethod/macro_text.h"
#include "hextinterface/ornatohextprocess/solids/prim_loop.h"

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <utility>
#include <vector>

// The variables of the macro text that hold the last solid and the last cutting solid with a loop.
inline constexpr const char* solidVariable = "!SolidPrtName";
inline constexpr const char* negativeVariable = "!NegativePrtName";

// Maps world coordinates to those of the frame.
TlGeMatrix3d worldToFrame(const CoordFrame& frame);

// Root of the macro objects. Owners delete through the concrete class, see PrimPtr.
class _PPrimBase {
public:
    std::string name;   // nozzles only
    std::string owner;  // first argument of the macro call: quoted, or the name of a variable
    CoordFrame frame;
    std::int32_t negative = 0;  // not 0: a cutting solid

    // Sets every field to its default.
    virtual void clear() = 0;
    // Appends the macro text. ExportException "无效方向" for an axis without direction.
    virtual void write(std::string& out) const = 0;
    // Moves the frame. ExportException "无效方向" when an axis loses its length.
    virtual void transformBy(const TlGeMatrix3d& matrix);
    // Expresses the frame in another one.
    virtual void transformToFrame(const CoordFrame& targetFrame);

protected:
    _PPrimBase() = default;
    _PPrimBase(const _PPrimBase&) = default;
    _PPrimBase(_PPrimBase&&) = default;
    _PPrimBase& operator=(const _PPrimBase&) = default;
    _PPrimBase& operator=(_PPrimBase&&) = default;
    ~_PPrimBase() = default;
};

using PrimPtr = std::unique_ptr<_PPrimBase, void (*)(_PPrimBase*)>;

template <typename Prim>
PrimPtr ownPrim(Prim prim) {
    return PrimPtr(new Prim(std::move(prim)), [](_PPrimBase* owned) { delete static_cast<Prim*>(owned); });
}

// A number of a solid: the macro variable that carries it, and where it stands.
struct MacroParam {
    const char* variable;
    double (*value)(const _PPrimBase&);
};

// How a class of solids is written. Parameter lines and arguments have the same order.
struct MacroForm {
    const char* function;
    std::span<const MacroParam> params;
    const PLoop& (*loop)(const _PPrimBase&) = nullptr;  // extrusions and revolutions only
};

void writeSolid(std::string& out, const _PPrimBase& solid, const MacroForm& form);
// ExportException "参数无效" for a number or a position that is not finite.
void requireFinite(const _PPrimBase& solid, const MacroForm& form);

template <typename Solid>
class MacroSolid : public _PPrimBase {
public:
    void clear() override { static_cast<Solid&>(*this) = Solid(); }
    void write(std::string& out) const override { writeSolid(out, *this, Solid::form); }

protected:
    MacroSolid() = default;
    MacroSolid(const MacroSolid&) = default;
    MacroSolid(MacroSolid&&) = default;
    MacroSolid& operator=(const MacroSolid&) = default;
    MacroSolid& operator=(MacroSolid&&) = default;
    ~MacroSolid() = default;
};

// Centred on the frame's origin.
class _PBox final : public MacroSolid<_PBox> {
public:
    double xlen = 0, ylen = 0, zlen = 0;
    static const MacroForm form;
};

// Centred, along Z.
class _PCylinder final : public MacroSolid<_PCylinder> {
public:
    double height = 0, dia = 0;
    static const MacroForm form;
};

// Centred, along Z; the top lies at +Z.
class _PCone final : public MacroSolid<_PCone> {
public:
    double dTop = 0, dBottom = 0, height = 0;
    static const MacroForm form;
};

// A cone whose top is shifted by the offsets against its bottom.
class _PSnou final : public MacroSolid<_PSnou> {
public:
    double dTop = 0, dBottom = 0, xoff = 0, yoff = 0, height = 0;
    static const MacroForm form;
};

// A cap on the disc in the XY plane, bulging along Z; a part of a sphere where `radius` is 0.
class _PDish final : public MacroSolid<_PDish> {
public:
    double dia = 0, height = 0, radius = 0;
    static const MacroForm form;
};

// A bend about Z, from X on; at most 180 degrees are written.
class _PCtor final : public MacroSolid<_PCtor> {
public:
    double rIn = 0, rOut = 0, angle = 0;
    static const MacroForm form;
};

class _PRtor final : public MacroSolid<_PRtor> {
public:
    double rIn = 0, rOut = 0, height = 0, angle = 0;
    static const MacroForm form;
};

// A frustum along Z, centred between its two rectangles.
class _PPyra final : public MacroSolid<_PPyra> {
public:
    double xbottom = 0, ybottom = 0, xtop = 0, ytop = 0, height = 0, xoff = 0, yoff = 0;
    static const MacroForm form;
};

// A centred cylinder whose ends are inclined by the shears, in degrees.
class _PSlcy final : public MacroSolid<_PSlcy> {
public:
    double dia = 0, height = 0, xtshear = 0, ytshear = 0, xbshear = 0, ybshear = 0;
    static const MacroForm form;
};

// A loop in the XY plane, extruded along Z.
class _PExtru final : public MacroSolid<_PExtru> {
public:
    double height = 0;
    PLoop loop;
    static const MacroForm form;
};

// A loop in the XY plane, revolved about X.
class _PRevo final : public MacroSolid<_PRevo> {
public:
    double angle = 0;
    PLoop loop;
    static const MacroForm form;
};

// What one source primitive has become. The first solid is cut by the cutting solids.
struct PrimGroup {
    std::vector<PrimPtr> _posPrimitive;
    std::vector<PrimPtr> _negPrimitive;
    std::vector<std::string> leftOut;  // what could not be carried over, for the run report

    bool empty() const { return _posPrimitive.empty() && _negPrimitive.empty(); }

    template <typename Solid>
    void addSolid(Solid solid) {
        requireFinite(solid, Solid::form);
        _posPrimitive.push_back(ownPrim(std::move(solid)));
    }
    template <typename Solid>
    void addCut(Solid solid) {
        requireFinite(solid, Solid::form);
        solid.negative = 1;
        _negPrimitive.push_back(ownPrim(std::move(solid)));
    }
};
