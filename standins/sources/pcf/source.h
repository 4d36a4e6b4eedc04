// Piping component files as plants: the way in.
//
//     pcf::Source source(settings, report);
//     source.read("lines/100.pcf", bytes);       // file after file
//     source.tell(world, builder);               // all of them as one network of pipelines
//
// The lines of all files are joined where their ends meet, so files of one plant are told together. A file that is no
// piping component file is refused by plant::Refusal; everything else that is not understood is told to the report.
#pragma once

#include "sources/pcf/parts.h"

#include <deque>
#include <string>
#include <string_view>
#include <vector>

namespace plant {
class ModelBuilder;
}

namespace plant::pcf {

// Whether the first bytes of a file (some hundreds are enough) are those of a piping component file.
bool recognises(std::string_view start);

class Source {
public:
    // Both outlive the source.
    Source(const standards::Settings& settings, SourceReport& report) : settings_(&settings), report_(&report) {}

    // `name` stands for the file in messages; its stem becomes the site's name. The bytes may go afterwards.
    void read(std::string_view name, std::string_view bytes);
    // The objects of all files, under an object that was told; to be called once.
    void tell(std::int64_t world, ModelBuilder& builder);

private:
    const standards::Settings* settings_;
    SourceReport* report_;
    Files files_;
};

}  // namespace plant::pcf
