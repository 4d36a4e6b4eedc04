// Services of the operating system that the module calls: profile files, processes, the working directory.
#pragma once

#include <string>
#include <string_view>

namespace tolmar {

// A value of an ini file, read anew at each call; `fallback` when file, section or key are missing. Section and key
// match without regard to case. At most `maxLength` bytes.
std::string getPrivateProfileString(const char* section, const char* key, const char* fallback, int maxLength,
                                    std::string_view codePagePath);
// An integer the way the system reads it: leading blanks and digits count, anything else ends it; `fallback` for a
// missing key, 0 for a value that does not begin with a number.
int getPrivateProfileInt(const char* section, const char* key, int fallback, std::string_view codePagePath);
// Writes one value, keeping the rest of the file with its comments; false when it could not. The run report is told of
// a file that cannot be read or written.
bool writePrivateProfileString(const char* section, const char* key, const char* value, std::string_view codePagePath);

bool setCurrentDirectory(std::string_view codePagePath);
// Starts a program without arguments and without waiting for it; what it prints goes to standard error. On this system
// a program "X.exe" that does not exist is looked for as "X.sh" and "X" in the same folder. False when nothing could be
// started; the run report is told.
bool startProgram(std::string_view codePagePath);
// Waits for everything that startProgram started; gives the number of programs that did not end with status 0, each of
// which the run report is told about.
int waitForStartedPrograms();

// The installation root in force, in the code page; set by the program before a module is loaded.
void setInstallationRoot(std::string_view codePagePath);
const std::string& installationRoot();
// The whole path of a file of the installation, in the code page. The relative path may begin with a slash or backslash
// and use either; existing names are matched without regard to case.
std::string installedPath(std::string_view relative);

// Name of the project in force, in the code page; empty when the platform has no model.
std::string currentProjectName();

// While on, the host leaves everything outside the process as it is: output files swallow what they get and are not
// reported, nothing is deleted or copied, no option is stored, no program started. Off at the start.
void setDryRun(bool on);
bool dryRun();

// While on, scripts may write, move and delete files, which docs/scripts.md tells about. Off at the start.
void setScriptsTrusted(bool on);
bool scriptsTrusted();

}  // namespace tolmar
