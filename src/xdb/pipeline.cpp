#include "xdb/pipeline.h"

#include "platform/attribute_cache.h"
#include "platform/hxcom.h"
#include "platform/smrtln.h"
#include "tolmar/host_ui.h"
#include "tolmar/text.h"
#include "xdb/text.h"

#include <array>

namespace xdb {

namespace {

// Coordinates beyond these are finer than millimetres.
constexpr double largestX = 1e7;
constexpr double largestY = 1e8;
constexpr double finer = 1000;

// The three numbers between commas; a missing one is 0. False when there are fewer than three.
bool splitCoordinate(std::string_view text, HxGePoint3D& point) {
    double numbers[3] = {0, 0, 0};
    std::size_t count = 0;
    for (; count < 3; ++count) {
        const std::size_t comma = text.find(',');
        numbers[count] = numberOf(text.substr(0, comma));
        if (comma == std::string_view::npos) {
            ++count;
            break;
        }
        text.remove_prefix(comma + 1);
    }
    point = {numbers[0], numbers[1], numbers[2]};
    return count == 3;
}

HxGePoint3D scaled(HxGePoint3D point) {
    if (point.x > largestX) {
        point.x /= finer;
    }
    if (point.y > largestY) {
        point.y /= finer;
        point.z /= finer;
    }
    return point;
}

}  // namespace

bool PipelineFields::writeForPipe(std::string_view lineno) {
    notes_ = nullptr;
    return write(lineno);
}

bool PipelineFields::writeForFitting(std::string_view lineno, PipelineNotes& notes) {
    notes_ = &notes;
    return write(lineno);
}

bool PipelineFields::write(std::string_view lineno) {
    const HxDbObjectId id = idOf(lineno);
    std::vector<KVParams> attributes;
    if (!id.isValid() || hxdbOpenObject(id, pipeline_, 3) != Hext::eOk ||
        !smrtln::getObjectBomData(pipeline_, attributes)) {
        return true;
    }
    hasRoad_ = false;
    for (const KVParams& attribute : attributes) {
        if (!writeAttribute(attribute)) {
            return false;
        }
    }
    if (!hasRoad_ && isStrict_) {
        return noRoad();
    }
    if (notes_ != nullptr) {
        notes_->found = true;
    }
    return true;
}

bool PipelineFields::writeAttribute(const KVParams& attribute) {
    if (attribute.key == "roadno") {
        return writeRoad(attribute);
    }
    if (attribute.key == "linestart" || attribute.key == "lineend") {
        return writeLineEnd(attribute);
    }
    if (attribute.key == "pipesegmenttype") {
        take(attribute, &PipelineNotes::pipesegmenttype);
    } else if (attribute.key == "lineno") {
        take(attribute, &PipelineNotes::lineno);
    }
    return true;
}

void PipelineFields::take(const KVParams& attribute, std::optional<std::string> PipelineNotes::*note) {
    if (notes_ != nullptr) {
        notes_->*note = kvText(attribute);
    } else {
        appendField(record_, attribute);
    }
}

bool PipelineFields::writeRoad(const KVParams& attribute) {
    const bool isEmpty = kvText(attribute).empty();
    if (isEmpty && isStrict_) {
        return noRoad();
    }
    hasRoad_ = hasRoad_ || !isEmpty;
    take(attribute, &PipelineNotes::roadno);
    return true;
}

bool PipelineFields::writeLineEnd(const KVParams& attribute) {
    const std::string value = kvText(attribute);
    HxGePoint3D point;
    if (!splitCoordinate(value, point) && isStrict_) {
        tolmar::messageBox("提取错误,详细信息查看命令行提示");
        hxcad::hextPrintf("\n坐标值必须包含3个维度 :%s", value.c_str());
        return false;
    }
    record_.append(attribute.key).append(":");
    appendLineCoord(record_, scaled(point));
    record_ += ';';
    return true;
}

bool PipelineFields::noRoad() const {
    tolmar::messageBox("道路编号为空,具体信息显示在命令行");
    if (notes_ != nullptr) {
        hxcad::hextPrintf("\n%I64d道路编号为空", static_cast<long long>(object_.objectId().toInt()));
    } else {
        hxcad::hextPrintf("\n%s道路编号为空", tolmar::textOrEmpty(pipeline_->getDisplayName()));
    }
    return false;
}

}  // namespace xdb
