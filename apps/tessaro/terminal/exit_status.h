// How the program ends.
#pragma once

enum class ExitStatus {
    Done = 0,
    WrongUsage = 1,
    InputRefused = 2,
    SomethingLeftOut = 3,
    Failed = 4,
    Cancelled = 130,
};
