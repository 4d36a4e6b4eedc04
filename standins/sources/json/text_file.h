// A text that is made piece by piece, into a file.
#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <string_view>

namespace plant {

// Takes a piece; false when it could not.
using TextSink = std::function<bool(std::string_view piece)>;

// Lets `make` put its text into the file. False when it could not be written, with a message in `error`, or when `make`
// says that the text is none; then no file is left.
bool writeTextFile(const std::filesystem::path& file, const std::function<bool(const TextSink& sink)>& make,
                   std::string& error);

}  // namespace plant
