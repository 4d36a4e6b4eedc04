#include "generator/generate.h"

#include "generator/odd.h"
#include "generator/plant_writer.h"
#include "plant/refusal.h"
#include "sources/json/text_file.h"
#include "sources/json/writer.h"

namespace plant {

namespace {

// True when the sink took everything.
bool generateThrough(const GenerateOptions& options, JsonModelWriter::Sink sink) {
    generator::OddPlant odd(options.seed);
    JsonModelWriter::Rewrite makeOdd;
    if (options.odd) {
        makeOdd = [&odd](std::string& object) { odd.disturb(object); };
    }
    JsonModelWriter writer(std::move(sink), std::move(makeOdd));
    generator::PlantWriter(options, writer).write([&writer] { return !writer.failed(); });
    return !writer.failed();
}

}  // namespace

bool generateModel(const GenerateOptions& options, const std::filesystem::path& file, std::string& error) {
    return writeTextFile(
        file,
        [&](const TextSink& sink) {
            generateThrough(options, sink);
            return true;
        },
        error);
}

std::string generateModelText(const GenerateOptions& options) {
    std::string json;
    generateThrough(options, [&json](std::string_view text) {
        json += text;
        return true;
    });
    return json;
}

void generateInto(const GenerateOptions& options, ModelBuilder& model) {
    if (options.odd) {
        refuse("an odd plant is made as a text, not told");
    }
    generator::PlantWriter(options, model).write([] { return true; });
}

}  // namespace plant
