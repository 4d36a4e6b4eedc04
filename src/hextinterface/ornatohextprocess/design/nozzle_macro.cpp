#include "hextinterface/ornatohextprocess/design/nozzle_macro.h"

#include "frame/exceptions.h"
#include "hextinterface/manager/name_manager.h"
#include "platform/attribute_cache.h"
#include "platform/hxcom.h"
#include "platform/model_tests.h"
#include "platform/smrtln.h"
#include "tolmar/text.h"

#include <array>

namespace {

// Key points by number, as far as nozzles use them. Of equal numbers the last one counts.
class KeyPoints {
public:
    explicit KeyPoints(const HxDbNozzleModel* nozzle) {
        std::vector<std::pair<short, HxGePoint3D>> all;
        nozzle->getKeyPoints(all);
        hasOrigin_ = false;
        for (const auto& [number, at] : all) {
            if (number >= 0 && number < static_cast<short>(points_.size())) {
                points_[static_cast<std::size_t>(number)] = at;
            }
            hasOrigin_ = hasOrigin_ || number == 0;
        }
    }

    const HxGePoint3D& operator[](std::size_t number) const { return points_[number]; }
    bool hasOrigin() const { return hasOrigin_; }

private:
    std::array<HxGePoint3D, 4> points_;
    bool hasOrigin_;
};

CoordFrame straightFrame(const HxGePoint3D& origin, const KeyPoints& points) {
    const HxGeVector3D along = (points[2] - points[0]).normal();
    const HxGeVector3D across = along.perpVector().normal();
    return CoordFrame(origin, along, across.crossProduct(along).normal(), across);
}

CoordFrame bentFrame(const HxGePoint3D& origin, const KeyPoints& points) {
    const HxGeVector3D in = (points[0] - points[1]).normal();
    const HxGeVector3D out = (points[3] - points[0]).normal();
    const HxGeVector3D across = in.crossProduct(out).normal();
    return CoordFrame(origin, out.crossProduct(across).normal(), out, across);
}

void appendText(std::string& out, const char* variable, std::string_view value) {
    out.append(variable).append(" = '").append(value).append("'\n");
}

void appendNumber(std::string& out, const char* variable, double value) {
    out.append(variable).append(" = ");
    appendFixed(out, value);
    out += '\n';
}

}  // namespace

std::map<std::string, int>& nozzleNames() {
    static std::map<std::string, int> names;
    return names;
}

void _PNozzle::clear() {
    *this = _PNozzle(equipmentId, *names_);
}

std::string _PNozzle::finalName(const std::string& equipName) const {
    std::string full = equipName + "_" + name;
    const auto [entry, isNew] = nozzleNames().emplace(full, 0);
    const int count = entry->second++;
    if (!isNew) {
        full += '_';
        appendInt(full, count);
    }
    if (full.size() > maxNameLength) {
        hxcad::hextPrintf("Error:create nozzle name<%s> too long", full.c_str());
        throw ExportException("命名错误");
    }
    return full;
}

void _PNozzle::write(std::string& out) const {
    const std::string& equipName = names_->equipment.getBoundEquipNo(equipmentId);
    if (equipName.empty()) {
        throw ExportException("管嘴设备关系错误");
    }
    const std::string full = finalName(equipName);
    const std::string orientation = orientationText(frame);
    appendText(out, "!owner", escapeQuotes(equipName));
    appendText(out, "!nozN", escapeQuotes(full));
    out += "var !pos POSITION ";
    appendPosition(out, frame.origin);
    out += '\n';
    appendText(out, "!ori", orientation);
    appendText(out, "!catref", catref);
    out.append("!height = ").append(height).append("\n");
    appendNumber(out, "!temp", temp);
    appendNumber(out, "!press", press);
    appendText(out, "!ispe", ispe);
    appendText(out, "!uNo", escapeQuotes(uNo));
    appendText(out, "!uName", escapeQuotes(uName));
    out += "call !!ORNAEquipCreateNozzle(!owner, !nozN, !pos, !ori, !catref, !height, !temp, !press, !ispe, !uNo, "
           "!uName)\n";
}

PrimGroup makeNozzle(const HxDbNozzleModel* nozzle, HxDbObjectId equipmentId, const HxGePoint3D& referencePoint,
                     const ExportContext& context) {
    const bool isStraight = isNormalType(nozzle);
    PrimGroup group;
    if (!smrtln::isNozzle(nozzle) || (!isStraight && !isBendType(nozzle))) {
        return group;
    }
    const KeyPoints points(nozzle);
    const HxGePoint3D at = points.hasOrigin() ? points[0] : nozzle->getInsPnt();
    const HxGePoint3D origin = HxGePoint3D() + (at - referencePoint);
    _PNozzle prim(equipmentId, context.names);
    prim.name = context.names.owners.getNozzleName(nozzle);
    prim.catref = context.names.components.getSpcoName(nozzle);
    prim.uNo = tolmar::textOrEmpty(nozzle->getNo());
    prim.uName = tolmar::textOrEmpty(nozzle->getSpecName());
    prim.height = getBomValue(nozzle, isStraight ? "P1" : "P2");
    prim.frame = isStraight ? straightFrame(origin, points) : bentFrame(origin, points);
    group._posPrimitive.push_back(ownPrim(std::move(prim)));
    return group;
}
