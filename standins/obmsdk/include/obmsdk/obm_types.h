// Values and numbers that the calls of the OBM SDK pass.
//
// Wide texts are UTF-16, ids are plain ASCII. Every `create` gives an object of its own that goes back by `destroy`,
// unless a call below takes it over. Calls give 0 when all went well and never throw but std::bad_alloc.
#pragma once

#include <string>
#include <string_view>

#define OBMSDK_API __attribute__((visibility("default")))

namespace obm {
using WideText = std::u16string;
using WideView = std::u16string_view;
using Id = std::string_view;
}  // namespace obm

// Results. obmStatusText gives a status as a sentence fragment in English that lives as long as the library.
enum OBMStatus : int {
    OBMOk = 0,
    OBMNotOpen = 1,          // a call that needs an open package
    OBMBadMode = 2,          // an open mode other than OBMXCREATE
    OBMNoFolder = 3,         // the folder does not exist or cannot be written to
    OBMNotWritten = 4,       // a file could not be written whole
    OBMBadMesh = 5,          // a coordinate that is not finite, a facet whose vertex does not exist
    OBMNoId = 6,             // an id that is missing or taken
    OBMUnknownGeometry = 7,  // an instance names a geometry that no mesh has
    OBMUnknownMaterial = 8,  // an instance names a material that is not there
    OBMTooLarge = 9,         // beyond what the format can hold
    OBMNotSupported = 10,
};
OBMSDK_API const char* obmStatusText(int status);

enum OBMXOPENMODE : int { OBMXREAD = 0, OBMXCREATE = 1 };

// A point or direction in single precision.
struct OBMFloat3 {
    OBMFloat3(float xValue, float yValue, float zValue) : x(xValue), y(yValue), z(zValue) {}
    float x;
    float y;
    float z;
};

// Three vertex numbers, from 0.
struct OBMInt3 {
    OBMInt3(int aValue, int bValue, int cValue) : a(aValue), b(bValue), c(cValue) {}
    int a;
    int b;
    int c;
};

// Parts from 0 to 1.
struct OBMColor {
    OBMColor(float red, float green, float blue, float alpha) : r(red), g(green), b(blue), a(alpha) {}
    float r;
    float g;
    float b;
    float a;
};
