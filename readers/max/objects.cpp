#include "readers/max/objects.h"

#include "readers/max/events.h"

#include <algorithm>
#include <deque>

namespace readers::max {

namespace {

// The parser takes each byte for a character of its own; above 127 that makes two bytes of it.
std::string bytesOf(std::string_view text) {
    std::string bytes;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto lead = static_cast<unsigned char>(text[i]);
        const bool isPair = lead >= 0x80 && i + 1 < text.size();
        bytes +=
            isPair ? static_cast<char>((lead & 3U) << 6U | (static_cast<unsigned char>(text[i + 1]) & 0x3FU)) : text[i];
        i += isPair ? 1 : 0;
    }
    return bytes;
}

// "S1-Pump_5" in the station S1 under the id 5 is "Pump".
std::string plainName(const std::string& name, const std::string& station, const std::string& id) {
    const std::string front = station + "-";
    const std::string back = "_" + id;
    const bool isMarked = name.size() >= front.size() + back.size() && name.starts_with(front) && name.ends_with(back);
    return isMarked ? name.substr(front.size(), name.size() - front.size() - back.size()) : name;
}

// The objects of one file, each as soon as all of its own is read.
class ObjectStream final : public MaxFile {
public:
    ObjectStream(std::string_view bytes, ToUtf8 toUtf8) : toUtf8_(toUtf8) {
        if (!bytes.empty()) {
            open(bytes);
        }
    }

    std::optional<Object> next() {
        while (ready_.empty() && readPiece()) {
        }
        if (ready_.empty()) {
            return std::nullopt;
        }
        Object object = std::move(ready_.front());
        ready_.pop_front();
        return object;
    }

protected:
    void startObject(const Element& element) override {
        finish();
        object_ = {};
        object_.id = text(element, "id");
        object_.name = plainName(text(element, "Name"), text(element, "stationname"), object_.id);
        object_.place = atLine(line());
        for (const char* key : {"ProjectCode", "stationname"}) {
            if (element.has(key)) {
                object_.attributes.push_back({{}, key, text(element, key), {}, {}, {}});
            }
        }
        path_.push_back(object_.name);
        object_.path = path_;
        isBegun_ = true;
    }
    void endObject() override {
        finish();
        path_.pop_back();
    }
    void startInner(const Element& element, std::size_t level) override {
        if (!isBegun_) {
            if (level == 0) {
                add("a group behind the objects that stand beside it");
            }
        } else if (level == 0) {
            startGroup(element);
        } else if (level == 1) {
            readItem(element);
        }
    }

private:
    enum class Group { Mesh, Spline, Properties, Other };

    // An object is whole when its first child begins, or it ends.
    void finish() {
        if (isBegun_) {
            ready_.push_back(std::move(object_));
        }
        isBegun_ = false;
    }

    std::string text(const Element& element, std::string_view attribute) const {
        const std::string bytes = bytesOf(element.value(attribute));
        return toUtf8_ != nullptr ? toUtf8_(bytes) : bytes;
    }

    void startGroup(const Element& element) {
        const std::string_view name = element.name();
        group_ = name == "meshGroup"       ? Group::Mesh
                 : name == "splineGroup"   ? Group::Spline
                 : name == "propertyGroup" ? Group::Properties
                                           : Group::Other;
        if (group_ == Group::Properties) {
            groupName_ = text(element, "Name");
        } else if (group_ != Group::Other) {
            startSolid(element);
        }
    }
    void startSolid(const Element& element) {
        Solid& solid = object_.solids.emplace_back();
        solid.form = group_ == Group::Mesh ? SolidForm::Triangles : SolidForm::Lines;
        solid.place = atLine(line());
        solid.look.color = Point{part(element, "colorR"), part(element, "colorG"), part(element, "colorB")};
        if (element.has("insptX")) {
            solid.numbers = {number(element, "insptX"), number(element, "insptY"), number(element, "insptZ")};
        }
        if (group_ == Group::Spline) {
            solid.integers = {static_cast<std::int32_t>(std::clamp(number(element, "partNum"), 0.0, 1e9))};
            object_.attributes.push_back({"spline", "partSize", text(element, "partSize"), {}, {}, {}});
        }
    }
    double part(const Element& element, const char* name) { return number(element, name) / 255; }
    double number(const Element& element, const char* name) {
        double value = 0;
        if (!readNumber(element.value(name), value) || value < -1e15 || value > 1e15) {
            add(std::string(name) + " is no number");
            value = 0;
        }
        return value;
    }

    void readItem(const Element& element) {
        if (group_ == Group::Properties && element.name() == "key_value") {
            object_.attributes.push_back(
                {groupName_, text(element, "key"), text(element, "value"), {}, text(element, "description"), {}});
        } else if (group_ != Group::Properties && group_ != Group::Other) {
            element.name() == "face" ? addFace(element) : addPoint(element);
        }
    }
    void addPoint(const Element& element) {
        Solid& solid = object_.solids.back();
        const auto index = static_cast<std::uint32_t>(solid.points.size());
        solid.points.push_back({number(element, "pointX"), number(element, "pointY"), number(element, "pointZ")});
        if (group_ == Group::Spline && index > 0) {
            solid.indices.insert(solid.indices.end(), {index - 1, index});
        }
    }
    void addFace(const Element& element) {
        Solid& solid = object_.solids.back();
        std::uint32_t corners[3] = {};
        std::size_t count = 0;
        for (const char* name : {"pointX", "pointY", "pointZ"}) {
            std::size_t corner = 0;
            if (!readNumber(element.value(name), corner) || corner >= solid.points.size()) {
                return add(std::string(name) + " is the number of no point");
            }
            corners[count++] = static_cast<std::uint32_t>(corner);
        }
        solid.indices.insert(solid.indices.end(), std::begin(corners), std::end(corners));
    }

    ToUtf8 toUtf8_;
    std::deque<Object> ready_;
    std::vector<std::string> path_;
    Object object_;
    bool isBegun_ = false;  // object_ is the innermost open one, and nothing stands below it so far
    Group group_ = Group::Other;
    std::string groupName_;
};

void addShapes(Object& object, Object&& shapes) {
    object.solids = std::move(shapes.solids);
    object.attributes.insert(object.attributes.end(), std::make_move_iterator(shapes.attributes.begin()),
                             std::make_move_iterator(shapes.attributes.end()));
}

}  // namespace

void readObjects(std::string_view geometry, std::string_view properties, ToUtf8 toUtf8, const ObjectVisitor& visit,
                 Findings& findings) {
    ObjectStream shapes(geometry, toUtf8);
    ObjectStream rows(properties, toUtf8);
    std::optional<Object> shape = shapes.next();
    while (std::optional<Object> object = rows.next()) {
        if (shape && shape->id == object->id) {
            addShapes(*object, std::move(*shape));
            shape = shapes.next();
        }
        visit(*object);
    }
    for (; shape; shape = shapes.next()) {
        if (!properties.empty()) {
            note(findings, shape->place, "object " + shape->id + " is not in the property file");
        }
        visit(*shape);
    }
    for (const ObjectStream* stream : {&shapes, &rows}) {
        findings.insert(findings.end(), stream->findings().begin(), stream->findings().end());
    }
}

}  // namespace readers::max
