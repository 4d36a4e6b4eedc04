// Strict reading of a small JSON tree.
#pragma once

#include "platform/primitives.h"

#include <cstdint>
#include <simdjson.h>
#include <string>
#include <string_view>
#include <vector>

namespace plant {

// Thrown where a text is not what it should be.
class Unreadable {};

double numberOf(simdjson::dom::element value);
std::int64_t wholeOf(simdjson::dom::element value, std::int64_t low, std::int64_t high);
HxGePoint3D pointOf(simdjson::dom::element value);
// In the code page, without zero characters.
std::string textOf(simdjson::dom::element value);
simdjson::dom::array arrayOf(simdjson::dom::element value);

// The members of an object, each of which has to be asked for once.
class Members {
public:
    explicit Members(simdjson::dom::element value);

    // Null when there is no such member.
    const simdjson::dom::element* find(std::string_view name);
    simdjson::dom::element required(std::string_view name);
    double number(std::string_view name, double otherwise);
    HxGeVector3D vector(std::string_view name, const HxGeVector3D& otherwise);
    std::string text(std::string_view name, std::string_view otherwise);
    std::int64_t whole(std::string_view name, std::int64_t low, std::int64_t high, std::int64_t otherwise);
    // Throws when a member was not asked for, or stands twice.
    void finish() const;

private:
    struct Member {
        std::string_view name;
        simdjson::dom::element value;
        bool used;
    };
    std::vector<Member> members_;
};

}  // namespace plant
