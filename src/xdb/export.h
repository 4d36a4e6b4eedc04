// Shape and data of the objects under the current manager, for another module of the same process.
//
// The room: export sorts each object by its kind; records writes its text record, with the fields of its pipeline
// (pipeline); shape adds the triangles. text holds the forms of numbers and points.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace xdb {

// The caller's lists. All are filled by appending. `colors`, `positions`, `indices`, `normals` and `normalIndices` grow
// together, an entry for each geometry; `types` and `data` grow by rules of their own.
struct XdbArrays {
    std::vector<std::string>& types;              // the kind of an object
    std::vector<std::uint64_t>& colors;           // 0xFFFFFFFF, alpha 255, red, green, blue
    std::vector<std::vector<double>>& positions;  // x, y, z in millimetres
    std::vector<std::vector<int>>& indices;       // three vertex numbers a triangle
    std::vector<std::vector<double>>& normals;    // one for each vertex
    std::vector<std::vector<int>>& normalIndices;
    std::vector<std::string>& data;  // "key:value;" records
};

// False when there is no current manager, when a record has an error, or when the user cancels; the run report tells
// which, and the entries added so far stay. With `strict` 1 gaps in the data of a pipeline are errors.
bool exportXdb(const XdbArrays& arrays, int strict);

}  // namespace xdb
