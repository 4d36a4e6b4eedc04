#include "sources/world.h"

namespace plant {

void tellWorld(std::string_view project, std::string_view database, ModelBuilder& builder, ObjectId& world) {
    if (world != 0) {
        return;
    }
    builder.project({.name = project});
    world = builder.newId();
    builder.database({.name = database, .root = world});
    builder.beginObject(world, "HextWorld");
    builder.name(project);
    builder.endObject();
}

}  // namespace plant
