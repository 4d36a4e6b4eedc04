#include "plant/refusal.h"

#include <utility>

namespace plant {

std::string placeInModelFile(RecordNumber record) {
    const char* list = record.kind == RecordNumber::Kind::Object ? "objects[" : "databases[";
    return list + std::to_string(record.number) + "]";
}

void Refusal::within(std::string_view member) {
    if (!member.empty() && !record_) {
        path_.insert(0, member).insert(0, 1, '.');
    }
}

void Refusal::within(std::size_t index) {
    if (!record_) {
        path_.insert(0, 1, ']').insert(0, std::to_string(index)).insert(0, 1, '[');
    }
}

std::string Refusal::text(const PlaceOfRecord& placeOf) const {
    std::string place = path_.substr(!record_ && path_.starts_with('.') ? 1 : 0);
    if (record_) {
        place.insert(0, placeOf(*record_));
    }
    return place.append(place.empty() ? "" : ": ").append(what_).append(named_ ? placeOf(*named_) : "");
}

void refuse(std::string what) {
    throw Refusal(std::move(what));
}

}  // namespace plant
