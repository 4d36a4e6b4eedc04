#include "tessaro/model/command.h"

#include "generator/generate.h"
#include "plant/model.h"

#include <cstdio>
#include <string>

namespace {

void complain(const std::string& utf8) {
    std::fprintf(stderr, "tessaro: %s\n", utf8.c_str());
}

ExitStatus printResult(const std::string& text) {
    if (std::fwrite(text.data(), 1, text.size(), stdout) == text.size() && std::fflush(stdout) == 0) {
        return ExitStatus::Done;
    }
    complain("standard output: not all of it could be written");
    return ExitStatus::Failed;
}

// Loads the file and hands the model on; a refused file ends the command.
template <typename Use>
ExitStatus withModel(const ModelOptions& options, Use&& use) {
    const plant::LoadResult loaded = plant::loadModel(options.file);
    if (!loaded) {
        complain(loaded.error);
        return ExitStatus::InputRefused;
    }
    return use(*loaded.model);
}

}  // namespace

ExitStatus checkModel(const ModelOptions& options) {
    return withModel(options, [&](const plant::Model&) {
        std::fprintf(stderr, "%s: good\n", options.file.c_str());
        return ExitStatus::Done;
    });
}

ExitStatus describeModelFile(const ModelOptions& options) {
    return withModel(
        options, [&](const plant::Model& model) { return printResult(plant::describeModel(model, {options.json})); });
}

ExitStatus printModelTree(const ModelOptions& options) {
    return withModel(options,
                     [&](const plant::Model& model) { return printResult(plant::printTree(model, options.depth)); });
}

ExitStatus generateModelFile(const ModelOptions& options) {
    std::string error;
    if (plant::generateModel({options.objects, options.seed, options.odd}, options.file, error)) {
        return ExitStatus::Done;
    }
    complain(error);
    return ExitStatus::Failed;
}
