// Texts and names that a macro line cannot carry as they are. They go out all the same; the run report has each text
// under the kind "text", with the attribute and the reason.
#pragma once

#include "platform/ids.h"

#include <string_view>

// A text in quotes that nothing escapes: a quote or a line break in it is told.
void reportPlainText(HxDbObjectId owner, std::string_view attribute, std::string_view text);
// A text whose quotes are doubled: a line break in it is told.
void reportEscapedText(HxDbObjectId owner, std::string_view attribute, std::string_view text);
// A text that goes through limitedText: it is told when that cuts it.
void reportLimitedText(HxDbObjectId owner, std::string_view attribute, std::string_view text);
// A name that stands without quotes, under the kind "name": it is told when it is too long, or holds a blank or a line
// break.
void reportName(HxDbObjectId owner, std::string_view name);
