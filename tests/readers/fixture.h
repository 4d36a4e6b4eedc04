// Outputs that the program itself wrote, for the readers to read.
#pragma once

#include "program/real_module.h"
#include "readers/opening/outputs.h"
#include "tolmar/code_page.h"

#include <map>

namespace readertest {

namespace fs = std::filesystem;
using readers::Findings;
using readers::Object;
using readers::Point;

inline constexpr const char* endings[] = {"rvm", "nwc", "pmodel", "eem", "orna"};

struct Read {
    std::vector<Object> objects;
    Findings findings;

    explicit Read(const fs::path& path) {
        readers::readOutput(
            path, tolmar::toUtf8, [this](const Object& object) { objects.push_back(object); }, findings);
    }
    std::string told() const {
        std::string text;
        for (const readers::Finding& finding : findings) {
            text += readers::sentence(finding) + "\n";
        }
        return text;
    }
    // The objects of a name that have solids, in their order.
    std::vector<const Object*> shapesOf(const std::string& name) const {
        std::vector<const Object*> found;
        for (const Object& object : objects) {
            if (object.name == name && !object.solids.empty()) {
                found.push_back(&object);
            }
        }
        return found;
    }
};

// A folder with an output of each kind.
class Outputs : public realmodule::RealModule {
protected:
    void exportAll(const fs::path& model) {
        for (const char* command : {"HEXTOUT", "RVMOUT", "NVOUT", "OBMOUT", "ORNAOUT", "MAXOUT"}) {
            const int status = tessaro(std::string("run ") + command + " --model '" + model.string() + "' --root '" +
                                       root().string() + "' --out '" + out().string() + "' --input GY --input S1");
            ASSERT_TRUE(status == 0 || status == 3) << command << ": " << said();
        }
    }
    fs::path output(const std::string& name, const std::string& ending) const { return out() / (name + "." + ending); }
    fs::path folder() const { return root() / "temp" / "hext"; }
};

}  // namespace readertest
