#include "tessaro/check/command.h"

#include "tessaro/check/eem.h"
#include "tessaro/check/hext.h"
#include "tessaro/check/max.h"
#include "tessaro/check/package.h"
#include "tessaro/check/rvm.h"
#include "tessaro/check/scene.h"

#include <cstdio>

namespace {

constexpr OutputChecker checkers[] = {
    {"hext", "The folder of HEXTOUT: is it whole, does every name exist when it is used", "install/temp/hext",
     checkHextFolder},
    {"rvm", "An RVM file with its attribute file, or a folder of them: are both whole, do they hold one tree",
     "exported/plant.rvm", checkRvmFiles, checkStrictRvmFiles},
    {"scene", "A scene of NVOUT with its buffer files, or a folder of them: can a viewer draw all of it",
     "exported/plant.nwc", checkSceneFiles},
    {"package", "A package of OBMOUT, or a folder of them: is it whole, do its parts fit together",
     "exported/plant.pmodel", checkPackages},
    {"eem", "An EEM file with its JSON file, or a folder of them: are both whole, do they tell of the same objects",
     "exported/plant.eem", checkEemFiles},
    {"max", "A geometry and a property file of MAXOUT, or a folder of them: are both whole, do they hold one tree",
     "exported/plant.orna", checkMaxFiles},
};

}  // namespace

std::span<const OutputChecker> outputCheckers() {
    return checkers;
}

ExitStatus checkOutput(const OutputChecker& checker, const std::filesystem::path& path, bool strictly) {
    std::error_code error;
    const Findings findings = std::filesystem::exists(path, error)
                                  ? (strictly ? checker.checkStrictly : checker.check)(path)
                                  : Findings{path.string() + ": no such file or folder"};
    for (const std::string& finding : findings) {
        std::fprintf(stderr, "tessaro: %s\n", finding.c_str());
    }
    if (!findings.empty()) {
        return ExitStatus::InputRefused;
    }
    std::fprintf(stderr, "%s: good\n", path.c_str());
    return ExitStatus::Done;
}
