#include "readers/object.h"

namespace readers {

Point Placement::along(const Point& local) const {
    Point image{};
    for (std::size_t axis = 0; axis < 3; ++axis) {
        for (std::size_t i = 0; i < 3; ++i) {
            image[i] += axes[axis][i] * local[axis];
        }
    }
    return image;
}

Point Placement::at(const Point& local) const {
    Point image = along(local);
    for (std::size_t i = 0; i < 3; ++i) {
        image[i] += origin[i];
    }
    return image;
}

std::string Object::pathText() const {
    std::string text;
    for (const std::string& part : path) {
        text += (text.empty() ? "" : "/") + part;
    }
    return text;
}

}  // namespace readers
