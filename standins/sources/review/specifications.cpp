#include "sources/review/specifications.h"

namespace plant::review {

namespace {

std::string spelled(std::string_view name, const PartEnds& ends) {
    std::string text(name);
    for (std::size_t i = 0; i < ends.count; ++i) {
        text.append(i == 0 ? "-" : "x").append(ends.sizes[i]).append(" ").append(ends.types[i]);
    }
    return text;
}

}  // namespace

ObjectId Specifications::idOf(std::string_view name, const PartEnds& ends) {
    const auto [at, isNew] = ids_.try_emplace(spelled(name, ends), 0);
    if (!isNew) {
        return at->second;
    }
    at->second = builder_->newId();
    builder_->beginObject(at->second, "HxDbTubeSpecification");
    builder_->name(at->first);
    for (std::size_t i = 0; i < ends.count; ++i) {
        builder_->tubeEnd({.size = ends.sizes[i], .endType = ends.types[i]});
    }
    builder_->endObject();
    return at->second;
}

}  // namespace plant::review
