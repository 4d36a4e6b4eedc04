// What the export leaves out, told to the run report.
#pragma once

#include <string>

class HxDbObject;

namespace nv {

// A null object is told with the id 0.
void reportPassedOver(const HxDbObject* object, const char* what, const std::string& why);

}  // namespace nv
