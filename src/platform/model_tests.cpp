#include "platform/model_tests.h"

#include "platform/attribute_cache.h"
#include "platform/smrtln.h"

#include <algorithm>
#include <iterator>

namespace {

constexpr std::string_view elbowItems[] = {"ELBOW", "RELBOW", "RETURN"};
constexpr std::string_view bendTypes[] = {"Bend", "Arc", "Angle"};

template <typename Range>
bool contains(const Range& range, std::string_view text) {
    return std::find(std::begin(range), std::end(range), text) != std::end(range);
}

char lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

}  // namespace

bool equalNoCase(std::string_view a, std::string_view b) {
    return a.size() == b.size() &&
           std::equal(a.begin(), a.end(), b.begin(), [](char x, char y) { return lower(x) == lower(y); });
}

bool isBendType(const HxDbTubeModel* model) {
    return model != nullptr && contains(bendTypes, model->getSmrtlnType());
}

bool isNormalType(const HxDbTubeModel* model) {
    return model != nullptr && model->getSmrtlnType() == "Normal";
}

bool isUnset(std::string_view text) {
    return text.empty() || equalNoCase(text, "unset");
}

bool isCapItem(std::string_view item) {
    return item == "CAP";
}

bool isElbowItem(std::string_view item) {
    return contains(elbowItems, item);
}

bool isBendLikeItem(const HxDbObject* object) {
    const std::string_view item = getBomValue(object, "item");
    return isElbowItem(item) || (item == "PIPE" && getBomValue(object, "smrtln") == "Arc");
}

bool isBranchItem(std::string_view item) {
    return item == "OLET" || item == "BOSS";
}

bool isFlangedPipe(const HxDbObject* object) {
    return smrtln::isPipe(object) && getBomValue(object, "end1").substr(0, 2) == "FL";
}

bool isInsulated(const HxDbObject* object) {
    return getBomValue(object, "insul") != "0";
}
