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
    const plant::LoadResult loaded = plant::loadPlant(options.files);
    if (!loaded) {
        complain(loaded.error);
        return ExitStatus::InputRefused;
    }
    for (const plant::LoadRemark& remark : loaded.remarks) {
        std::fprintf(stderr, "%s\n", plant::textOf(remark).c_str());
    }
    return use(*loaded.model);
}

}  // namespace

ExitStatus checkModel(const ModelOptions& options) {
    return withModel(options, [&](const plant::Model&) {
        for (const std::filesystem::path& file : options.files) {
            std::fprintf(stderr, "%s: good\n", file.c_str());
        }
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

ExitStatus convertModel(const ModelOptions& options) {
    const plant::ConvertResult result = plant::convertPlant(options.files, options.file);
    for (const plant::LoadRemark& remark : result.remarks) {
        std::fprintf(stderr, "%s\n", plant::textOf(remark).c_str());
    }
    if (result.error.empty()) {
        return ExitStatus::Done;
    }
    complain(result.error);
    return result.isRefused ? ExitStatus::InputRefused : ExitStatus::Failed;
}

ExitStatus generateModelFile(const ModelOptions& options) {
    std::string error;
    if (plant::generateModel({options.objects, options.seed, options.odd}, options.file, error)) {
        return ExitStatus::Done;
    }
    complain(error);
    return ExitStatus::Failed;
}
