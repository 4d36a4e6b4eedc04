// Files that a run reads, or that the program itself writes: no export may write over them. The program names them
// before any command runs; OutputFile::open and deleteFile refuse them.
#pragma once

#include <filesystem>
#include <string>

namespace tolmar {

// Protects a file by its place, also one that does not exist yet, and by what it is on the disk, under whatever name.
// `role` is what the message calls it, in UTF-8, such as "the model". Devices and pipes are passed over.
void protectFile(const std::filesystem::path& file, const std::string& role);
// The files of a folder and of the folders in it.
void protectFilesBelow(const std::filesystem::path& folder, const std::string& role);
void forgetProtectedFiles();

// Why a file may not be written, in UTF-8: which of the protected files it is. Empty when it may.
std::string reasonNotToWrite(const std::filesystem::path& file);

}  // namespace tolmar
