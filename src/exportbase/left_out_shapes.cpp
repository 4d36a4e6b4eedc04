#include "exportbase/left_out_shapes.h"

#include "platform/left_out.h"

#include <algorithm>
#include <string>
#include <string_view>

void reportNoSmartObject(const HxDbObject* object) {
    const bool isSmart = object != nullptr && object->isKindOf(HxDbSmrtlnEntity::desc());
    if (object != nullptr && !isSmart && !object->isKindOf(HextNameNode::desc())) {
        reportLeftOut(object, "object", "it is no smart object");
    }
}

void LeftOutPrimitives::add(const HextPrimary& primitive, const char* why) {
    const auto row = std::find_if(rows_.begin(), rows_.end(), [&primitive, why](const Row& r) {
        return r.type == primitive.isA() && std::string_view(r.why) == why;
    });
    if (row != rows_.end()) {
        ++row->count;
    } else {
        rows_.push_back({primitive.isA(), why, 1});
    }
}

void LeftOutPrimitives::report(const HxDbObject& object) {
    for (const Row& row : rows_) {
        std::string text = row.type->name();
        if (row.count > 1) {
            text += ", " + std::to_string(row.count) + " of them";
        }
        reportLeftOut(&object, "primitive", text + ": " + row.why);
    }
    rows_.clear();
}
