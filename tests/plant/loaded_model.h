// A model from JSON text as the platform's current one, for the tests of the plant platform.
#pragma once

#include "plant/model.h"
#include "platform/hxcom.h"
#include "platform/objects.h"
#include "platform/smrtln.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

// A file with one database whose tree hangs under object 1, a HextWorld; `objects` stand behind it.
inline std::string fileWith(const std::string& objects, const std::string& members = "") {
    return R"({"format":"tessaro-plant","version":1,)" + members +
           R"("databases":[{"name":"MAIN","shortName":"M","root":1}],"objects":[{"id":1,"class":"HextWorld","name":"W"})" +
           (objects.empty() ? "" : ",") + objects + "]}";
}

class LoadedModel {
public:
    explicit LoadedModel(const std::string& json) : result_(plant::loadModelText(json, "m.json")) {
        if (!result_) {
            throw std::runtime_error(result_.error);
        }
        plant::setCurrentModel(result_.model.get());
    }
    ~LoadedModel() { plant::setCurrentModel(nullptr); }
    LoadedModel(const LoadedModel&) = delete;
    LoadedModel& operator=(const LoadedModel&) = delete;

    plant::Model& model() { return *result_.model; }
    template <typename T>
    T& get(std::int64_t id) {
        T* object = openAs<T>(HxDbObjectId(id));
        if (object == nullptr) {
            throw std::runtime_error("object " + std::to_string(id) + " does not open as wanted");
        }
        return *object;
    }
    HxDbTreeNode& node(std::int64_t id) { return get<HxDbTreeNode>(id + (std::int64_t{1} << 46)); }

private:
    plant::LoadResult result_;
};

inline std::vector<std::int64_t> numbersOf(const std::vector<HxDbObjectId>& ids) {
    std::vector<std::int64_t> numbers;
    for (const HxDbObjectId id : ids) {
        numbers.push_back(id.toInt());
    }
    return numbers;
}
template <typename Object>
std::vector<std::int64_t> numbersOf(const std::vector<Object*>& objects) {
    std::vector<std::int64_t> numbers;
    for (const Object* object : objects) {
        numbers.push_back(object->objectId().toInt());
    }
    return numbers;
}
using Numbers = std::vector<std::int64_t>;
