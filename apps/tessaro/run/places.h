// Where a run reads and writes, looked at before any work is done.
#pragma once

#include "tessaro/run/command.h"

#include <string>

// Each gives what is wrong and what to do about it, in UTF-8; empty when nothing is. Paths are absolute.

// The report and the log: a folder that is there, a file that may be written, and neither an input nor each other.
std::string faultOfOwnFiles(const RunOptions& options);
// The target folder: one that is there and may be written, or that can be made. A dry run writes nothing.
std::string faultOfTarget(const RunOptions& options);

// Names everything that a run reads, its report and its log to the host, which lets no export write over them.
void protectPlaces(const RunOptions& options);
