// Numbers and points as they stand in the records of XDBOUT.
#pragma once

#include "platform/geometry.h"
#include "platform/kvparams.h"

#include <string>
#include <string_view>

namespace xdb {

// At most 10, or 5, significant digits, no trailing zeros.
void appendNumber10(std::string& text, double value);
void appendNumber5(std::string& text, double value);
// x, y and z, each with a tab behind it.
void appendPointText(std::string& text, const HxGePoint3D& point);
// x, y and z in metres with six decimals, and the mark that ends a link point.
void appendLinkPoint(std::string& text, const HxGePoint3D& point);
// x, y and z with commas between them.
void appendLineCoord(std::string& text, const HxGePoint3D& point);

void appendField(std::string& text, std::string_view key, std::string_view value);
// The attribute under its own key.
void appendField(std::string& text, const KVParams& attribute);

}  // namespace xdb
