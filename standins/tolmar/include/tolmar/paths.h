// The one place that knows how the system's paths become paths of this machine.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace tolmar {

// The file system path of a path in the code page: slashes and backslashes separate alike, every part that exists is
// matched without regard to case (an exact match wins, then the first in byte order), the rest stands as it is.
std::filesystem::path resolvePath(std::string_view codePagePath);

// The path of a file as the run report names it: whole, in the code page.
std::string reportedPath(std::string_view codePagePath);

// Folder and file name parts at the last backslash, or, if there is none, the last slash.
std::string folderOf(std::string_view codePagePath);
std::string fileNameOf(std::string_view codePagePath);

// Deletes a file by a path of the code page; false when there was none, or when the run must not touch it.
bool deleteFile(std::string_view codePagePath);
// Copies a file over an existing one; false when it could not.
bool copyFile(std::string_view from, std::string_view to);

}  // namespace tolmar
