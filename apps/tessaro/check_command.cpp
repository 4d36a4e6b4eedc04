#include "check_command.h"

#include "check_eem.h"
#include "check_hext.h"
#include "check_max.h"
#include "check_package.h"
#include "check_rvm.h"
#include "check_scene.h"

#include <cstdio>

namespace {

constexpr OutputChecker checkers[] = {
    {"hext", "the folder of HEXTOUT: is it whole, does every name exist when it is used", checkHextFolder},
    {"rvm", "an RVM file with its attribute file, or a folder of them: are both whole, do they hold one tree",
     checkRvmFiles, checkStrictRvmFiles},
    {"max", "a geometry and a property file of MAXOUT, or a folder of them: are both whole, do they hold one tree",
     checkMaxFiles},
    {"eem", "an EEM file with its JSON file, or a folder of them: are both whole, do they tell of the same objects",
     checkEemFiles},
    {"scene", "a scene of NVOUT with its buffer files, or a folder of scenes: can a viewer draw all of it",
     checkSceneFiles},
    {"package", "a PModel package: is it whole, do trees, scenes, materials and properties fit together", checkPackage},
};

}  // namespace

std::span<const OutputChecker> outputCheckers() {
    return checkers;
}

ExitStatus checkOutput(const OutputChecker& checker, const std::filesystem::path& path, bool strictly) {
    const Findings findings = (strictly ? checker.checkStrictly : checker.check)(path);
    for (const std::string& finding : findings) {
        std::fprintf(stderr, "tessaro: %s\n", finding.c_str());
    }
    if (!findings.empty()) {
        return ExitStatus::InputRefused;
    }
    std::fprintf(stderr, "%s: good\n", path.c_str());
    return ExitStatus::Done;
}
