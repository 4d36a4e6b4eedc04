// Primitives rebuilt from the records of an EEM file, beside those of the model.
#pragma once

#include "../../apps/tessaro/checkers/eem_reader.h"
#include "platform/primitives.h"

#include <string>

// What differs between the primitive that a record stands for and `original`, beyond rounding; empty when nothing does.
std::string difference(const eemcheck::Record& record, const HextPrimary& original);
