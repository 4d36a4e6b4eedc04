// Model files: any bytes are a model or refused with a message; what loads can be told of, and loads again alike.
#include "plant/model.h"
#include "scratch_file.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const plant::LoadResult result = plant::loadModelText(fuzz::asText(data, size), "fuzz.json");
    if (!result) {
        fuzz::require(result.error.starts_with("fuzz.json: "));
        return 0;
    }
    plant::setCurrentModel(result.model.get());
    fuzz::require(!plant::describeModel(*result.model, {.json = true}).empty());
    plant::printTree(*result.model);
    plant::setCurrentModel(nullptr);
    return 0;
}
