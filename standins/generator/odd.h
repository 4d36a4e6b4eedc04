// Makes a generated plant odd, object by object, and leaves it one that loads: extreme and degenerate numbers, texts
// that outputs must escape, what is optional left out, connections that lead elsewhere, and objects of any class with
// nothing in them.
#pragma once

#include "generator/odd_values.h"

#include <simdjson.h>

#include <array>
#include <set>
#include <string>
#include <string_view>

namespace plant::generator {

class OddPlant {
public:
    // Plants of an even seed keep the items and ends that tell what a component is.
    explicit OddPlant(std::uint64_t seed) : values_(seed ^ 0x0DD), keepsTypes_(seed % 2 == 0) {}

    // Replaces the JSON text of one object by that of one or more.
    void disturb(std::string& object);

private:
    using Value = simdjson::dom::element;

    void writeObject(const simdjson::dom::object& object);
    void member(std::string_view name, Value value);
    void any(Value value);
    void object(const simdjson::dom::object& members);
    void array(std::string_view name, const simdjson::dom::array& items);
    void attributes(const simdjson::dom::object& entries);
    void attributeList(const simdjson::dom::object& entries);
    void classOf(std::string_view name);
    void target(Value value);
    void hanger(std::int64_t in);

    OddValues values_;
    bool keepsTypes_;
    simdjson::dom::parser parser_;
    std::string out_;
    std::array<std::int64_t, 64> seen_{};  // ids of smart objects
    std::size_t seenCount_ = 0;
    std::set<std::int64_t> starts_;  // of pipelines: tube models, and they stay that
    std::int64_t id_ = 0;
    std::int64_t nextId_ = std::int64_t{1} << 44;
};

}  // namespace plant::generator
