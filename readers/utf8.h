// Whether bytes are UTF-8: what readers of formats that promise it ask.
#pragma once

#include <string_view>

namespace readers {

bool isUtf8(std::string_view text);

}  // namespace readers
