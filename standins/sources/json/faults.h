// Why the JSON reader takes nothing of a document.
#pragma once

#include <simdjson.h>
#include <string_view>

namespace plant {

// Throws the Refusal for an error that the reader met before it read the first value.
[[noreturn]] void refuseDocument(std::string_view text, simdjson::error_code error);

}  // namespace plant
