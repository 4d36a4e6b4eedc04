// The properties that a project's script shows of an object, shared by the exports.
#pragma once

#include "platform/objects.h"
#include "platform/param_list.h"

#include <string_view>

// What the script function getReference gives; empty without a script. The list is emptied first and owns its texts;
// hand in the same list again and again to reuse its storage.
void getObjectProperties(HxDbObjectId id, ParamList& list);

inline constexpr std::string_view pipelineIdKey = "管线ID";
// True for the key "管线号" on a HxDbPipeSpec, which goes out under pipelineIdKey.
bool isPipelineNumber(const HxDbObject* object, std::string_view key);
// The key under which a property goes out.
std::string_view propertyKey(const HxDbObject* object, std::string_view key);
