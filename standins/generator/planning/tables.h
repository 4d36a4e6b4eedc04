// What generated plants are made of: pipe sizes, piping classes, services, component families.
//
// Texts are UTF-8, as a builder takes them, whatever the code page of narrow literals.
#pragma once

#include "plant/model_builder.h"

#include <cstdint>
#include <string_view>

namespace plant::generator {

inline std::string_view utf8(std::u8string_view text) {
    return {reinterpret_cast<const char*>(text.data()), text.size()};
}

// A nominal size with its dimensions in millimetres.
struct PipeSize {
    int dn;
    double outer;
    double wall;
    struct {
        double outer;
        double thickness;
        double neck;  // from the face to the weld
        int bolts;
        int bolt;
        double circle;
    } flange;
    double tee;      // centre to end
    double reducer;  // length
    double cap;
    struct {
        double gate;
        double globe;
        double ball;
        double check;
        double butterfly;
    } valve;  // face to face
};
inline constexpr int sizeCount = 12;
extern const PipeSize pipeSizes[sizeCount];

struct PipingClass {
    const char* name;
    const char* rating;
    const char* material;
    const char* schedule;
    bool socketWelded;
    double wallFactor;
};
inline constexpr int classCount = 8;
extern const PipingClass pipingClasses[classCount];

struct Service {
    const char* code;
    std::u8string_view fluid;
    int pipingClass;
    std::u8string_view temperature;
    std::u8string_view pressure;
    const char* insulationCode;  // null for services that are never insulated
    std::u8string_view insulation;
    int thickness;
    std::int16_t color;
};
inline constexpr int serviceCount = 12;
extern const Service services[serviceCount];

// End types of a component, end 1 first.
enum class Ends : std::uint8_t {
    Weld,
    Socket,
    Thread,
    Flange,  // the same at every end
    FlangeWeld,
    FlangeBlind,
    WeldNone,
    SocketNone,
    ThreadNone,
    WeldWeldSocket,
    WeldWeldThread,
    WeldSocket,
    NoneFlange,
    NoneFlangeFlange,
};
struct EndsRow {
    const char* ends[4];
    int count;
};
inline constexpr int endsCount = 14;
extern const EndsRow endsRows[endsCount];
inline const EndsRow& row(Ends ends) {
    return endsRows[static_cast<int>(ends)];
}

// How the two sizes of a component stand at its ends.
enum class Layout : std::uint8_t { Even, Reduced, ReducedTee, ReducedCross };
inline constexpr int layoutCount = 4;

enum class Family : std::uint8_t {
    Pipe,
    FlangedPipe,
    Bend,
    Elbow90,
    Elbow45,
    Miter,
    Tee,
    ReducingTee,
    Lateral,
    YPiece,
    Cross,
    ReducingCross,
    Weldolet,
    Sockolet,
    PressureBoss,
    ThermoBoss,
    Concentric,
    Eccentric,
    Swage,
    Cap,
    Coupling,
    Union,
    Plug,
    Flange,
    BlindFlange,
    Gasket,
    VirtualGasket,
    Gate,
    Globe,
    Ball,
    Check,
    Butterfly,
    Safety,
    Control,
    Orifice,
    Strainer,
    Trap,
    Hose,
    Weld,
    Stop,
    Balloon,
};

// The attributes that say what a component is; null for one that a family does not have.
struct TypeAttributes {
    const char* item = nullptr;
    const char* itype = nullptr;
    const char* smrtln = nullptr;
    const char* module = nullptr;
    const char* mtype = nullptr;
    const char* unit = nullptr;
};

// What all components of a family have in common.
struct FamilyRow {
    const char* className;
    PartKind kind;
    const char* objectName;
    TypeAttributes type;
    const char* standard;
    const char* serial;
    std::u8string_view name;
    int ends;         // number of ends that the attributes tell
    const char* tag;  // letters of a tag; null for a family without
};
inline constexpr int familyCount = 41;
extern const FamilyRow familyRows[familyCount];
inline const FamilyRow& row(Family family) {
    return familyRows[static_cast<int>(family)];
}

}  // namespace plant::generator
