// What a primitive consists of, by the table of its class.
#pragma once

#include "plant/shapes/primitive_table.h"

#include <memory>
#include <vector>

const plant::PrimitiveClass& classOf(const HextPrimary& primitive);

// Sizes, coordinates and directions, those of outlines among them.
std::vector<double*> numbersOf(HextPrimary& primitive);

// A primitive of each class with its defaults, and an outline of three vertices where the class has one.
std::vector<std::unique_ptr<HextPrimary>> oneOfEachClass();
