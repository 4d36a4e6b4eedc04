// Primitives rebuilt from the records of an EEM file, beside those of the model.
#pragma once

#include "platform/primitives.h"
#include "readers/eem/file.h"

#include <string>

// What differs between the primitive that a record stands for and `original`, beyond rounding; empty when nothing does.
std::string difference(const readers::eem::Record& record, const HextPrimary& original);
