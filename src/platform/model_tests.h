// Small tests on top of the attributes, used by all exports.
#pragma once

#include "platform/objects.h"

#include <string_view>

bool isBendType(const HxDbTubeModel* model);    // geometric family "Bend", "Arc" or "Angle"
bool isNormalType(const HxDbTubeModel* model);  // geometric family "Normal"
bool isUnset(std::string_view text);            // empty, or "unset" in any case of letters
bool isCapItem(std::string_view item);
bool isElbowItem(std::string_view item);
bool isBendLikeItem(const HxDbObject* object);  // elbow item, or "PIPE" of family "Arc"
bool isBranchItem(std::string_view item);       // "OLET" or "BOSS"
bool isFlangedPipe(const HxDbObject* object);   // a pipe whose end1 begins with "FL"
bool isInsulated(const HxDbObject* object);     // "insul" is not "0"

// Equal without regard to the case of ASCII letters.
bool equalNoCase(std::string_view a, std::string_view b);
