#include "max/names.h"

#include "tolmar/text.h"

namespace maxfile {

namespace {

using Text = const char* (*)(const HxDbObject&);

const char* displayName(const HxDbObject& object) {
    return object.getDisplayName();
}
const char* libraryName(const HxDbObject& object) {
    return HxDbSmrtlnEntity::cast(&object)->getObjectName();
}
template <typename Class>
const char* number(const HxDbObject& object) {
    return Class::cast(&object)->getNo();
}
const char* partName(const HxDbObject& object) {
    return HextStanParts::cast(&object)->getCname();
}

struct NameRow {
    const HxRxClass* type;
    Text text;
};

const NameRow nameRows[] = {
    {HextPipeline::desc(), displayName},
    {HextEquipe::desc(), displayName},
    {HxDbNozzleModel::desc(), number<HxDbNozzleModel>},
    {HextStruct::desc(), displayName},
    {HxDbStruct::desc(), libraryName},
    {HextAxiss::desc(), displayName},
    {HxDbAxissLine::desc(), libraryName},
    {HextSupport::desc(), displayName},
    {HextStanParts::desc(), partName},
    {HxDbBalloon::desc(), number<HxDbBalloon>},
    {HxDbPipeSpec::desc(), [](const HxDbObject&) { return "Pipe"; }},
    {HxDbTubeModelSpec::desc(), libraryName},
    {HxDbTubeWeld::desc(), [](const HxDbObject&) { return "Weld"; }},
};

}  // namespace

const char* objectName(const HxDbObject& object) {
    for (const NameRow& row : nameRows) {
        if (object.isKindOf(row.type)) {
            return tolmar::textOrEmpty(row.text(object));
        }
    }
    return "Other";
}

}  // namespace maxfile
