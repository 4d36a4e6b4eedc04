// A command that the module registers.
#pragma once

struct CommandRow {
    const char* name;
    void (*handler)();
};

inline constexpr const char* commandGroup = "TESSARO";
