#include "plant/model.h"
#include "plant/model/refusal.h"
#include "sources/json/byte_source.h"
#include "sources/json/model_reader.h"

#include <new>

namespace plant {

namespace {

template <typename Open>
LoadResult load(std::string_view name, Open open) {
    LoadResult result;
    try {
        const std::unique_ptr<ByteSource> source = open();
        ModelPtr model(new Model);
        ModelReader(*model).read(*source);
        result.model = std::move(model);
    } catch (const Refusal& refusal) {
        result.error = std::string(name).append(": ").append(refusal.text());
    } catch (const std::bad_alloc&) {
        result.error = std::string(name).append(": not enough memory");
    }
    return result;
}

}  // namespace

LoadResult loadModel(const std::filesystem::path& file) {
    return load(file.string(), [&] { return openSource(file); });
}

LoadResult loadModelText(std::string_view json, std::string_view name) {
    return load(name, [&] { return sourceOf(json); });
}

}  // namespace plant
