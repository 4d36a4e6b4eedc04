#include "generator/generate.h"

#include "generator/odd.h"
#include "generator/plant_writer.h"
#include "plant/refusal.h"
#include "sources/json/writer.h"

#include <cerrno>
#include <cstdio>
#include <cstring>

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

// 0, or why the file could not be written.
int generateToFile(const GenerateOptions& options, std::FILE* file) {
    int reason = 0;
    generateThrough(options, [&](std::string_view text) {
        const bool whole = std::fwrite(text.data(), 1, text.size(), file) == text.size();
        reason = whole ? 0 : errno;
        return whole;
    });
    const bool closed = std::fclose(file) == 0;
    return reason == 0 && !closed ? errno : reason;
}

}  // namespace

bool generateModel(const GenerateOptions& options, const std::filesystem::path& file, std::string& error) {
    std::FILE* target = std::fopen(file.c_str(), "wb");
    const int reason = target != nullptr ? generateToFile(options, target) : errno;
    if (reason == 0) {
        return true;
    }
    std::error_code ignored;
    if (target != nullptr && std::filesystem::is_regular_file(file, ignored)) {
        std::filesystem::remove(file, ignored);
    }
    error = file.string() + ": cannot be written: " + std::strerror(reason);
    return false;
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
