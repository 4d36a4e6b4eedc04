#include "hextinterface/manager/names/joints.h"

#include "hextinterface/manager/register/cleaned_texts.h"

#include <algorithm>

namespace {

const std::string connTable = "CCTA_1";
const std::string weldSpecs[] = {"SPWL_COMP", "SPWL_NOZZLE", "SPWL_SUPPORT"};

}  // namespace

const std::string& JointNames::getWeldSpecName(int which) const {
    return weldSpecs[which == 1 || which == 2 ? which : 0];
}

const std::string& JointNames::getConnTableName() const {
    return connTable;
}

const std::string& JointNames::getCocoName(std::string_view end1, std::string_view end2) {
    const auto [first, second] = std::minmax(end1, end2);
    std::string name(naming::namePrefix);
    ((name += first) += '_') += second;
    return names_.put(name, NameKind::Coco);
}
