#include "generator/planning/tables.h"

namespace plant::generator {

const PipeSize pipeSizes[sizeCount] = {
    {15, 21.3, 2.8, {95, 14, 38, 4, 12, 65}, 25, 38, 25, {108, 130, 130, 130, 33}},
    {20, 26.9, 2.9, {105, 16, 40, 4, 12, 75}, 29, 38, 25, {117, 150, 150, 150, 33}},
    {25, 33.7, 3.2, {115, 16, 40, 4, 12, 85}, 38, 51, 38, {127, 160, 160, 160, 35}},
    {40, 48.3, 3.6, {150, 16, 45, 4, 16, 110}, 57, 64, 38, {165, 200, 200, 200, 40}},
    {50, 60.3, 3.9, {165, 18, 50, 4, 16, 125}, 64, 76, 38, {178, 230, 178, 203, 43}},
    {80, 88.9, 5.5, {200, 20, 52, 8, 16, 160}, 86, 89, 51, {203, 310, 203, 241, 46}},
    {100, 114.3, 6.0, {220, 20, 52, 8, 16, 180}, 105, 102, 64, {229, 350, 229, 292, 52}},
    {150, 168.3, 7.1, {285, 22, 55, 8, 20, 240}, 143, 140, 89, {267, 480, 394, 356, 56}},
    {200, 219.1, 8.2, {340, 24, 62, 12, 20, 295}, 178, 152, 102, {292, 600, 457, 495, 60}},
    {250, 273.0, 9.3, {405, 26, 70, 12, 24, 355}, 216, 178, 127, {330, 730, 533, 622, 68}},
    {300, 323.9, 9.5, {460, 28, 78, 12, 24, 410}, 254, 203, 152, {356, 850, 610, 698, 78}},
    {400, 406.4, 9.5, {580, 32, 85, 16, 27, 525}, 305, 356, 178, {406, 1100, 762, 864, 102}},
};

const PipingClass pipingClasses[classCount] = {
    {"A1B", "PN16", "20", "SCH30", false, 1.0},          {"A2B", "PN25", "20", "SCH40", false, 1.2},
    {"A3C", "PN40", "20G", "SCH60", false, 1.4},         {"G1B", "PN10", "Q235B", "SCH20", false, 0.8},
    {"S1B", "PN16", "06Cr19Ni10", "SCH10S", false, 0.7}, {"S2C", "PN40", "022Cr17Ni12Mo2", "SCH40S", false, 1.1},
    {"A2D", "PN16", "20", "SCH80", true, 1.3},           {"S2D", "PN25", "06Cr19Ni10", "SCH40S", true, 1.0},
};

const Service services[serviceCount] = {
    {"CWS", u8"循环水", 0, u8"常温", u8"0.6", nullptr, u8"", 0, 5},
    {"CWR", u8"循环回水", 0, u8"45", u8"0.5", nullptr, u8"", 0, 4},
    {"PW", u8"工艺水", 4, u8"60", u8"1.0", nullptr, u8"", 0, 3},
    {"LS", u8"低压蒸汽", 1, u8"200", u8"1.0", "HC", u8"岩棉", 50, 1},
    {"MS", u8"中压蒸汽", 2, u8"280", u8"2.5", "HC", u8"硅酸铝", 80, 1},
    {"SC", u8"凝结水", 1, u8"160", u8"0.8", "PP", u8"玻璃棉", 40, 6},
    {"FW", u8"消防水", 3, u8"常温", u8"1.2", nullptr, u8"", 0, 10},
    {"PL", u8"工艺物料", 5, u8"120", u8"2.0", "HT", u8"岩棉", 60, 30},
    {"OW", u8"含油污水", 3, u8"40", u8"常压", nullptr, u8"", 0, 34},
    {"IA", u8"仪表风", 6, u8"常温", u8"0.7", nullptr, u8"", 0, 7},
    {"N", u8"氮气", 7, u8"常温", u8"0.8", nullptr, u8"", 0, 8},
    {"FG", u8"燃料气", 1, u8"80", u8"0.4", nullptr, u8"", 0, 2},
};

const EndsRow endsRows[endsCount] = {
    {{"BW", "BW", "BW", "BW"}, 4},         {{"SW", "SW", "SW", "SW"}, 4},     {{"THD", "THD", "THD", "THD"}, 4},
    {{"FLRF", "FLRF", "FLRF", "FLRF"}, 4}, {{"FLRF", "BW", "", ""}, 2},       {{"FLRF", "NONE", "", ""}, 2},
    {{"BW", "NONE", "", ""}, 2},           {{"SW", "NONE", "", ""}, 2},       {{"THD", "NONE", "", ""}, 2},
    {{"BW", "BW", "SW", ""}, 3},           {{"BW", "BW", "THD", ""}, 3},      {{"BW", "SW", "", ""}, 2},
    {{"NONE", "FLRF", "", ""}, 2},         {{"NONE", "FLRF", "FLRF", ""}, 3},
};

namespace {

constexpr TypeAttributes fitting(const char* item, const char* itype, const char* smrtln) {
    return {item, itype, smrtln, "Piping", "fitting"};
}

constexpr TypeAttributes gasket(const char* itype) {
    return {"GASK", itype, "Normal", "Piping", "fitting", "1"};
}

constexpr TypeAttributes pipe(const char* itype, const char* smrtln = "Pipe") {
    return {"PIPE", itype, smrtln, "Piping", "pipe"};
}

constexpr TypeAttributes valve(const char* item, const char* itype, const char* smrtln) {
    return {item, itype, smrtln, "Piping", "valve"};
}

constexpr const char* pipeClass = "HxDbPipeSpec";
constexpr const char* partClass = "HxDbTubeModelSpec";

}  // namespace

const FamilyRow familyRows[familyCount] = {
    {pipeClass, PartKind::Default, "TPPE", pipe("SMLS"), "GB/T 17395", "I", u8"无缝钢管", 2, nullptr},
    {pipeClass, PartKind::Default, "TPPE", pipe("SPOOL"), "GB/T 17395", "I", u8"法兰短管", 2, nullptr},
    {partClass, PartKind::Bend, "BEND_BW", pipe("BEND", "Arc"), "SH/T 3418", "I", u8"弯管", 3, nullptr},
    {partClass, PartKind::Default, "ELBO_90", fitting("ELBOW", "90LR", "Arc"), "GB/T 12459", "A", u8"90°长半径弯头", 3,
     nullptr},
    {partClass, PartKind::Default, "ELBO_45", fitting("ELBOW", "45LR", "Arc"), "GB/T 12459", "A", u8"45°长半径弯头", 3,
     nullptr},
    {partClass, PartKind::Default, "ELBO_MITER", fitting("ELBOW", "MITER", "Angle"), "SH/T 3408", "B", u8"焊接斜弯头",
     3, nullptr},
    {partClass, PartKind::Default, "TEE", fitting("TEE", "EQ", "Tee"), "GB/T 12459", "A", u8"等径三通", 3, nullptr},
    {partClass, PartKind::Default, "TEE_RED", fitting("RTEE", "RED", "Tee"), "GB/T 12459", "A", u8"异径三通", 3,
     nullptr},
    {partClass, PartKind::Default, "LATERAL", fitting("LRTEE", "45", "Latera"), "HG/T 21635", "A", u8"斜三通", 3,
     nullptr},
    {partClass, PartKind::Default, "YTEE", fitting("YTEE", "Y", "Y"), "HG/T 21635", "A", u8"Y型三通", 4, nullptr},
    {partClass, PartKind::Default, "CROSS", fitting("CROSS", "EQ", "Cross"), "GB/T 12459", "A", u8"四通", 4, nullptr},
    {partClass, PartKind::Default, "CROSS_RED", fitting("RCROSS", "RED", "Cross"), "GB/T 12459", "A", u8"异径四通", 4,
     nullptr},
    {partClass, PartKind::Default, "OLET", fitting("OLET", "WELDOLET", "Normal"), "GB/T 19326", "A", u8"对焊支管台", 3,
     nullptr},
    {partClass, PartKind::Default, "OLET", fitting("OLET", "SOCKOLET", "Normal"), "GB/T 19326", "A", u8"承插支管台", 3,
     nullptr},
    {partClass, PartKind::Default, "BOSS", fitting("BOSS", "PRESS", "Normal"), "HG/T 21581", "A", u8"压力表管座", 3,
     nullptr},
    {partClass, PartKind::Default, "BOSS", fitting("BOSS", "THERMO", "Normal"), "HG/T 21581", "A", u8"温度计管座", 3,
     nullptr},
    {partClass, PartKind::Default, "CRED", fitting("CRED", "BW", "Normal"), "GB/T 12459", "A", u8"同心异径管", 2,
     nullptr},
    {partClass, PartKind::Default, "ERED", fitting("ERED", "BW", "Ecc"), "GB/T 12459", "A", u8"偏心异径管", 2, nullptr},
    {partClass, PartKind::Default, "SWAGE", fitting("CSWAGE", "BW", "Normal"), "SH/T 3419", "A", u8"同心异径短节", 2,
     nullptr},
    {partClass, PartKind::Default, "CAP", fitting("CAP", "HEAD", "Normal"), "GB/T 12459", "A", u8"管帽", 2, nullptr},
    {partClass, PartKind::Default, "COUPLING", fitting("COUPLING", "FULL", "Normal"), "GB/T 14383", "A", u8"管箍", 2,
     nullptr},
    {partClass, PartKind::Default, "UNION", fitting("UNION", "SW", "Normal"), "GB/T 14383", "A", u8"活接头", 2,
     nullptr},
    {partClass, PartKind::Default, "PLUG", fitting("PLUG", "HEX", "Normal"), "GB/T 14383", "A", u8"管堵", 2, nullptr},
    {partClass, PartKind::Flange, "FLAN_WN", fitting("FLANGE", "WN", "Normal"), "HG/T 20592", "B", u8"对焊法兰", 2,
     nullptr},
    {partClass, PartKind::Flange, "FLAN_BLIND", fitting("FLANGE", "BLIND", "Normal"), "HG/T 20592", "B", u8"法兰盖", 2,
     nullptr},
    {partClass, PartKind::Gasket, "GASK", gasket("SPIRAL"), "HG/T 20610", "B", u8"缠绕垫片", 2, nullptr},
    {partClass, PartKind::VirtualGasket, "GASK", gasket("VIRTUAL"), "HG/T 20610", "B", u8"虚拟垫片", 2, nullptr},
    {partClass, PartKind::Valve, "VALVE_GATE", valve("VALVE", "GATE", "Normal"), "GB/T 12234", "Z41H", u8"闸阀", 2,
     "V"},
    {partClass, PartKind::Valve, "VALVE_GLOBE", valve("VALVE", "GLOBE", "Normal"), "GB/T 12235", "J41H", u8"截止阀", 2,
     "V"},
    {partClass, PartKind::Valve, "VALVE_BALL", valve("VALVE", "BALL", "Normal"), "GB/T 12237", "Q41F", u8"球阀", 2,
     "V"},
    {partClass, PartKind::Valve, "VALVE_CHECK", valve("VALVE", "CHECK", "Normal"), "GB/T 12236", "H44H", u8"止回阀", 2,
     "V"},
    {partClass, PartKind::Valve, "VALVE_BFLY", valve("VALVE", "BUTTERFLY", "Normal"), "GB/T 12238", "D373H", u8"蝶阀",
     2, "V"},
    {partClass, PartKind::Valve, "VALVE_SAFETY", valve("VALVE", "SAFETY", "Angle"), "GB/T 12243", "A48Y",
     u8"弹簧式安全阀", 3, "PSV"},
    {partClass, PartKind::Valve, "CONTROL", valve("CONTROL", "GLOBE", "Normal"), "GB/T 4213", "ZMAP", u8"气动调节阀", 2,
     "CV"},
    {partClass, PartKind::Default, "ORIFICE", fitting("ORIFICEG", "PLATE", "Normal"), "GB/T 2624", "", u8"孔板", 2,
     "FE"},
    {partClass, PartKind::Default, "STRAINER", fitting("STRAINER", "Y", "Normal"), "HG/T 21637", "SRY", u8"Y型过滤器",
     2, "STR"},
    {partClass, PartKind::Default, "TRAP", fitting("TRAP", "FLOAT", "Normal"), "GB/T 12250", "S41H", u8"浮球式疏水阀",
     2, "ST"},
    {partClass, PartKind::Hose, "HOSE", fitting("HOSE", "METAL", "Hose"), "GB/T 14525", "JR", u8"金属软管", 2, nullptr},
    {"HxDbTubeWeld", PartKind::Default, "weld_shop", {"WELD", nullptr, "Weld"}, nullptr, "", u8"", 0, nullptr},
    {"HxDbTubeStop", PartKind::Default, "tube_stop", {"STOP", nullptr, "Normal"}, nullptr, "", u8"", 0, nullptr},
    {"HxDbBalloon",
     PartKind::Default,
     "balloon\\A-1",
     {nullptr, nullptr, nullptr, "Piping"},
     nullptr,
     "",
     u8"",
     0,
     "PI"},
};

}  // namespace plant::generator
