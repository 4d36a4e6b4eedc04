// Serialised host entities: any bytes are an entity or none, and what is one meshes, explodes or says why not.
#include "exportbase/mesher.h"
#include "platform/entities.h"
#include "scratch_file.h"

#include <memory>

namespace {

void useEntity(const TlDbEntity& entity, int depth) {
    Mesh mesh;
    meshVertices(entity, mesh);
    for (const std::uint32_t index : mesh.indices) {
        fuzz::require(index < mesh.vertexCount());
    }
    std::vector<TlDbEntity*> parts;
    entity.explode(parts);
    for (TlDbEntity* part : parts) {
        const std::unique_ptr<TlDbEntity> owned(part);
        if (depth < 2) {
            useEntity(*owned, depth + 1);
        }
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::unique_ptr<TlDbEntity> entity(hxcad::setEntitySerialString(fuzz::asText(data, size)));
    if (entity != nullptr) {
        useEntity(*entity, 0);
    }
    return 0;
}
