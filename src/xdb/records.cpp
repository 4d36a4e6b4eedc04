#include "xdb/records.h"

#include "platform/attribute_cache.h"
#include "platform/hxcom.h"
#include "platform/left_out.h"
#include "platform/model_tests.h"
#include "platform/smrtln.h"
#include "tolmar/text.h"
#include "xdb/pipeline.h"
#include "xdb/text.h"

#include <algorithm>
#include <cstdio>
#include <iterator>

namespace xdb {

namespace {

constexpr std::string_view bendName = "BEND_BW";
constexpr int bendInsNo = 1;
constexpr int bendRefNo = 3;
constexpr int pointMode = 3;
constexpr double shortestPipe = 1.0;

constexpr std::string_view fittingKeys[] = {"rating", "note", "material"};
constexpr std::string_view pipeKeys[] = {"size1", "material", "note", "pipelength", "rating", "thick", "specuser1"};

bool holds(std::span<const std::string_view> keys, std::string_view key) {
    return std::find(keys.begin(), keys.end(), key) != keys.end();
}

// What a "fitting" is, by its item.
struct FitRow {
    std::string_view item;
    std::string_view type;
};
constexpr FitRow fitRows[] = {{"CROSS", "Cross"},  {"RCROSS", "Cross"}, {"YTEE", "Tee"},    {"YRTEE", "Tee"},
                              {"TRTEE", "Tee"},    {"SUPTEE", "Tee"},   {"RTEE", "Tee"},    {"PTEE", "Tee"},
                              {"LTEE", "Tee"},     {"LRTEE", "Tee"},    {"TEE", "Tee"},     {"ELBOW", "Elbow"},
                              {"RELBOW", "Elbow"}, {"CRED", "Reduce"},  {"ERED", "Reduce"}, {"SCRED", "Reduce"}};

std::string_view fitType(std::string_view mtype, std::string_view item) {
    if (mtype == "valve") {
        return "Valve";
    }
    const auto* row =
        std::find_if(std::begin(fitRows), std::end(fitRows), [&](const FitRow& r) { return r.item == item; });
    return mtype == "fitting" && row != std::end(fitRows) ? row->type : "Other";
}

std::string linkPoints(const HxDbSmrtlnEntity& object) {
    std::vector<std::pair<short, HxGePoint3D>> points;
    object.getKeyPoints(points);
    std::string text = "linkpoints:";
    for (const auto& [number, point] : points) {
        appendLinkPoint(text, point);
    }
    return text += ';';
}

// Attributes of a fitting that are noted for later.
struct FittingNotes {
    std::string item;
    std::string mtype;
    std::string lineno;
    std::string objid;
    std::string roadno;

    void take(const KVParams& attribute) {
        const std::pair<std::string_view, std::string*> places[] = {
            {"item", &item}, {"mtype", &mtype}, {"lineno", &lineno}, {"objid", &objid}, {"roadno", &roadno}};
        for (const auto& [key, place] : places) {
            if (attribute.key == key) {
                *place = kvText(attribute);
            }
        }
    }
};

void appendPipeline(std::string& text, const PipelineNotes& pipeline, const std::string& ownRoad) {
    if (!pipeline.found) {
        return;
    }
    appendField(text, "roadno", ownRoad.empty() ? pipeline.roadno.value_or("") : ownRoad);
    appendField(text, "pipesegmenttype", pipeline.pipesegmenttype.value_or(""));
    appendField(text, "lineno", pipeline.lineno.value_or(""));
}

// The record of a pipe or bend while it is made.
class PipeRecord {
public:
    enum class Ends { Fine, TooShort, Missing };

    PipeRecord(const HxDbSmrtlnEntity& object, std::string& text)
        : object_(object), text_(text), isBend_(equalNoCase(objectName(), bendName)) {}

    Ends writeEnds() {
        const HxDbTubeModel* tube = HxDbTubeModel::cast(&object_);
        if (!isBend_ && tube == nullptr) {
            reportLeftOut(&object_, "ends of a pipe", "it is no tube model");
            return Ends::Fine;
        }
        const int insNo = isBend_ ? bendInsNo : tube->getInsNo();
        const int refNo = isBend_ ? bendRefNo : tube->getRefNo();
        const HxDbSmrtlnPoint* start = object_.getPointOfNo(insNo, pointMode);
        const HxDbSmrtlnPoint* end = object_.getPointOfNo(refNo, pointMode);
        if (start == nullptr || end == nullptr) {
            printMissing(start == nullptr ? "\n错误：对象的插入点序号为'%d'，该序号无对应的点对象"
                                          : "\n错误：对象的插入参考点序号为'%d'，该序号无对应的点对象",
                         start == nullptr ? insNo : refNo);
            return Ends::Missing;
        }
        return writeEnds(start->getCoord(), end->getCoord());
    }

    void writeAttributes(std::span<const KVParams> attributes) {
        for (const KVParams& attribute : attributes) {
            if (holds(pipeKeys, attribute.key) || (isBend_ && attribute.key == "angle")) {
                appendField(text_, attribute);
            }
            if (attribute.key == "size1") {
                size_ = kvText(attribute);
            } else if (attribute.key == "lineno") {
                lineno_ = kvText(attribute);
            } else if (isBend_ && attribute.key == "radius") {
                radius_ = kvText(attribute);
            }
        }
    }

    // The arc of a bend: centre, start angle and radius. Point 0 is the corner, 2 and 3 are the ends.
    void writeArc() {
        if (!isBend_) {
            return;
        }
        const HxDbSmrtlnPoint* p0 = object_.getPointOfNo(0, pointMode);
        const HxDbSmrtlnPoint* p2 = object_.getPointOfNo(2, pointMode);
        const HxDbSmrtlnPoint* p3 = object_.getPointOfNo(3, pointMode);
        if (p0 == nullptr || p2 == nullptr || p3 == nullptr) {
            reportLeftOut(&object_, "arc of a bend", "it lacks one of the points 0, 2 and 3");
            return;
        }
        const double radius = numberOf(radius_) * numberOf(size_);
        const HxGeVector3D u = (p0->getCoord() - p2->getCoord()).normal();
        const HxGeVector3D w = (p3->getCoord() - p2->getCoord()).normal();
        const HxGePoint3D center = p2->getCoord() + u.crossProduct(w).normal().crossProduct(u).normal() * radius;
        text_ += "pcenter:";
        appendPointText(text_, center);
        text_ += ";sa:";
        appendNumber5(text_, std::min((p2->getCoord() - center).angleTo(HxGeVector3D::kXAxis),
                                      (p3->getCoord() - center).angleTo(HxGeVector3D::kXAxis)));
        text_ += ";radius:";
        appendNumber5(text_, radius);
        text_ += ';';
    }

    const std::string& lineno() const { return lineno_; }

private:
    std::string_view objectName() const { return tolmar::textOrEmpty(object_.getObjectName()); }

    static void printMissing(const char* format, int number) {
        char text[256];
        std::snprintf(text, sizeof text, hextGetText_callbk(format), number);
        hxcom::printMsg(text);
    }

    Ends writeEnds(const HxGePoint3D& start, const HxGePoint3D& end) {
        if (start.distanceTo(end) < shortestPipe) {
            hxcad::hextPrintf("\nerror point: %lf,%lf,%lf", start.x, start.y, start.z);
            reportLeftOut(&object_, "record", "its ends are closer than 1 mm");
            return Ends::TooShort;
        }
        text_ += "pstart:";
        appendPointText(text_, start);
        text_ += ";pend:";
        appendPointText(text_, end);
        text_ += ';';
        return Ends::Fine;
    }

    const HxDbSmrtlnEntity& object_;
    std::string& text_;
    bool isBend_;
    std::string size_;
    std::string radius_;
    std::string lineno_;
};

constexpr const char* noAttributes = "its attributes cannot be read";

}  // namespace

void RecordWriter::writeFields(const HxDbSmrtlnEntity& object, std::span<const std::string_view> keys) {
    if (!smrtln::getObjectBomData(&object, params_)) {
        reportLeftOut(&object, "record", noAttributes);
        return;
    }
    std::string text;
    for (const KVParams& attribute : params_) {
        if (holds(keys, attribute.key)) {
            appendField(text, attribute);
        }
    }
    data_.push_back(std::move(text));
}

bool RecordWriter::writeFittingData(const HxDbSmrtlnEntity& object) {
    std::string text = linkPoints(object);
    if (!smrtln::getObjectBomData(&object, params_)) {
        reportLeftOut(&object, "record", noAttributes);
        return true;
    }
    FittingNotes notes;
    for (const KVParams& attribute : params_) {
        if (holds(fittingKeys, attribute.key)) {
            appendField(text, attribute);
        }
        notes.take(attribute);
    }
    appendField(text, "fittype", fitType(notes.mtype, notes.item));
    PipelineNotes pipeline;
    if (!PipelineFields(object, isStrict_, text).writeForFitting(notes.lineno, pipeline)) {
        return false;
    }
    appendPipeline(text, pipeline, notes.roadno);
    data_.push_back(text + notes.objid);
    return true;
}

bool RecordWriter::writePipeData(const HxDbSmrtlnEntity* object) {
    if (object == nullptr) {
        return false;
    }
    if (!smrtln::getObjectBomData(object, params_)) {
        reportLeftOut(object, "record", noAttributes);
        return true;
    }
    std::string text;
    PipeRecord record(*object, text);
    const PipeRecord::Ends ends = smrtln::isHose(object) ? PipeRecord::Ends::Fine : record.writeEnds();
    if (ends != PipeRecord::Ends::Fine) {
        if (ends == PipeRecord::Ends::TooShort) {
            data_.emplace_back();
        }
        return ends == PipeRecord::Ends::TooShort;
    }
    record.writeAttributes(params_);
    record.writeArc();
    if (!PipelineFields(*object, isStrict_, text).writeForPipe(record.lineno())) {
        return false;
    }
    data_.push_back(std::move(text));
    return true;
}

}  // namespace xdb
