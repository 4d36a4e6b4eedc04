// What is in a model, counted for those who look at it.
#pragma once

#include "plant/model/data.h"

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace plant {

using Counts = std::map<std::string, std::size_t>;

struct DatabaseCounts {
    std::string name;
    std::string shortName;
    bool isMain = false;
    std::size_t objects = 0;  // in its tree
};

struct Bounds {
    HxGePoint3D low;
    HxGePoint3D high;
    bool isEmpty = true;
    void add(const HxGePoint3D& point);
    // Of the middle from the origin.
    double distance() const;
};

// Texts are in UTF-8.
struct ModelFacts {
    std::string project;
    std::vector<DatabaseCounts> databases;
    Counts objects;     // by class
    Counts primitives;  // by class
    Counts withoutShape;
    std::size_t pipelines = 0;
    std::size_t emptyPipelines = 0;  // without branches
    std::size_t branches = 0;
    std::size_t attributes = 0;
    std::size_t connections = 0;
    Bounds bounds;  // of connection points and the points of primitives
    std::size_t unnamedManagers = 0;
    Counts repeatedNames;                        // "class name" of managers, where more than one has it
    std::vector<std::string> missingAttributes;  // keys that exports read and no object has
};

ModelFacts factsOf(const Model& model);

}  // namespace plant
