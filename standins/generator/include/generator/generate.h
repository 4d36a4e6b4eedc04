// Plausible plants of any size from a seed, for tests, benchmarks and trials: process units side by side, each with
// equipment, pipelines, structures, supports and a grid.
//
// The same options give the same plant on every machine, as the text of a model file to the byte. A plant is planned
// and told unit by unit, so memory does not grow with it.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

namespace plant {

class ModelBuilder;

struct GenerateOptions {
    std::uint64_t objects = 1000;  // smart objects, about
    std::uint64_t seed = 1;
    // Values at the edge of what a model file may hold, missing parts and objects with nothing in them: a plant that
    // loads and that no command may stumble over.
    bool odd = false;
};

// Streams the text of a model file to a file. False with a message in UTF-8 when it cannot be written; nothing of the
// file is left then.
bool generateModel(const GenerateOptions& options, const std::filesystem::path& file, std::string& error);
std::string generateModelText(const GenerateOptions& options);

// Tells the plant to a builder, finish included. An odd plant is odd as a text and cannot be told: it is refused
// (plant::Refusal), like whatever the builder refuses.
void generateInto(const GenerateOptions& options, ModelBuilder& model);

}  // namespace plant
