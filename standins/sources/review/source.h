// Review models (an RVM file, mostly with an attribute text beside it) as plants.
//
// Groups become sites, zones, managers and objects: by the TYPE that their attributes tell, else by their names, else
// by their depth. docs/sources.md says how in full.
#pragma once

#include "plant/model_builder.h"
#include "sources/report.h"

#include <filesystem>
#include <string>
#include <string_view>

namespace plant::review {

struct Input {
    std::string_view rvm;         // bytes of the RVM file
    std::string name;             // for places, and its stem for a site that the file lacks
    std::string_view attributes;  // bytes of its attribute text; empty without one
    std::string attributesName;
};

// The attribute text beside an RVM file: the same name with .txt or .att, in letters of any case, that begins as such
// a text does. An empty path without one.
std::filesystem::path attributesBeside(const std::filesystem::path& rvm);

// Tells one review model, but for finish. The world that its sites stand in is `world`; when that is 0, project,
// database and world are told first and `world` is set, so that the files of one plant share it. Throws a Refusal with
// the offset or line.
void tellReview(const Input& input, ModelBuilder& builder, ObjectId& world, SourceReport& report);

}  // namespace plant::review
