#include "plant/model/refusal.h"

#include <utility>

namespace plant {

void Refusal::within(std::string_view member) {
    if (!member.empty()) {
        path_.insert(0, member).insert(0, 1, '.');
    }
}

void Refusal::within(std::size_t index) {
    path_.insert(0, 1, ']').insert(0, std::to_string(index)).insert(0, 1, '[');
}

std::string Refusal::text() const {
    if (path_.empty()) {
        return what_;
    }
    return path_.substr(path_.front() == '.' ? 1 : 0).append(": ").append(what_);
}

void refuse(std::string what) {
    throw Refusal(std::move(what));
}

}  // namespace plant
