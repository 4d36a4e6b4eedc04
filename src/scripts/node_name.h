// The name of an exported object, shared by the exports.
#pragma once

#include <string>

class HxDbObject;

// What the script function getNodeName gives, in the code page; "Other" when it gives nothing or there is no script. A
// null object is asked for by the id 0.
std::string nodeName(const HxDbObject* object, bool isPipelineObject);
