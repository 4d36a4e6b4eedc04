// A piping component file, read alone and again beside itself: told to a writer of model files, twice alike.
#include "plant/refusal.h"
#include "scratch_file.h"
#include "sources/json/writer.h"
#include "sources/pcf/source.h"

#include <string>

namespace {

std::string convert(std::string_view bytes, int copies) {
    std::string text;
    const plant::standards::Settings settings;
    plant::SourceReport report;
    plant::pcf::Source source(settings, report);
    plant::JsonModelWriter writer([&](std::string_view piece) {
        text += piece;
        return true;
    });
    try {
        for (int i = 0; i < copies; ++i) {
            source.read("line" + std::to_string(i) + ".pcf", bytes);
        }
        const plant::ObjectId world = writer.newId();
        writer.database({.name = "PLANT", .root = world});
        writer.beginObject(world, "HextWorld");
        writer.endObject();
        source.tell(world, writer);
        writer.finish();
    } catch (const plant::Refusal& refusal) {
        return refusal.text();
    }
    fuzz::require(report.isBalanced());
    return text;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes = fuzz::asText(data, size);
    fuzz::require(convert(bytes, 1) == convert(bytes, 1));
    convert(bytes, 2);
    return 0;
}
