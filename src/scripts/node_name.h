// The name of an exported object, shared by the exports.
#pragma once

#include <string>

class HxDbObject;

// The name of an object without one.
inline constexpr const char* namelessName = "Other";

// What the script function getNodeName gives, in the code page; namelessName when it gives nothing or there is no
// script. A null object is asked for by the id 0.
std::string nodeName(const HxDbObject* object, bool isPipelineObject);
