#include "generator/structure.h"

#include "generator/parts.h"
#include "generator/primitives.h"

#include <algorithm>

namespace plant::generator {

namespace {

constexpr double rackSouth = 13600;
constexpr double rackNorth = 22400;
constexpr double rackTop = 5000;

constexpr OutlinePoint columnSection[] = {{-125, -125}, {125, -125}, {125, -111},  {4.5, -111},
                                          {4.5, 111},   {125, 111},  {125, 125},   {-125, 125},
                                          {-125, 111},  {-4.5, 111}, {-4.5, -111}, {-125, -111}};
constexpr OutlinePoint beamSection[] = {{-75, -150}, {75, -150}, {75, -141}, {3.5, -141}, {3.5, 141},   {75, 141},
                                        {75, 150},   {-75, 150}, {-75, 141}, {-3.5, 141}, {-3.5, -141}, {-75, -141}};

Output& beginManager(Output& out, Id id, std::string_view className, const Place& place, std::string_view letters) {
    beginObject(out, id, className, place.in);
    return out.text(",\"name\":\"").text(letters).text("-").whole(place.number).text("\"").member("color", 8);
}

struct StructureItem {
    const char* name;
    const char* library;
    std::u8string_view material;
};
constexpr StructureItem column{"column", "stcolumn_hxg", u8"Q235B"};
constexpr StructureItem beam{"beam", "stbeam_hxg", u8"Q235B"};
constexpr StructureItem plate{"slab", "plat_rect", u8"C30"};
constexpr StructureItem wall{"wall", "wall_rect", u8"砖"};
constexpr StructureItem window{"window", "window_rect", u8"铝合金"};

void typedPoint(Output& out, std::string_view key, const Point& at) {
    out.text(",{\"key\":\"").text(key).text("\",\"value\":").point(at).text(",\"type\":3}");
}

class StructureWriter {
public:
    StructureWriter(Output& out, Ids& ids, Id in, int most) : out_(&out), ids_(&ids), in_(in), left_(most) {}

    bool full() const { return left_ <= 0; }

    void addColumn(const Point& foot, double height) {
        if (begin(column, foot, foot + up * height)) {
            Primitives shape(*out_);
            shape.extrusion(foot, east, north, height, columnSection);
        }
        end();
    }
    void addBeam(const Point& from, const Point& to) {
        if (begin(beam, from, to)) {
            const Vector side = up.crossProduct((to - from).normal());
            Primitives shape(*out_);
            shape.extrusion(from, side, up, from.distanceTo(to), beamSection);
        }
        end();
    }
    void addPlate(const Point& corner, double x, double y, double thickness) {
        if (begin(plate, corner, corner + Vector(x, y, 0))) {
            const OutlinePoint outline[] = {{0, 0}, {x, 0}, {x, y}, {0, y}};
            const OutlinePoint hole[] = {{x / 4, y / 4}, {x / 3, y / 4}, {x / 3, y / 3}, {x / 4, y / 3}};
            Primitives shape(*out_);
            shape.extrusion(corner, east, north, thickness, outline, hole);
        }
        end();
    }
    void addBlock(const StructureItem& item, const Point& corner, const Vector& size) {
        if (begin(item, corner, corner + size)) {
            Primitives shape(*out_);
            shape.box(corner + size * 0.5, size);
        }
        end();
    }

private:
    bool begin(const StructureItem& item, const Point& from, const Point& to) {
        open_ = !full();
        if (!open_) {
            return false;
        }
        --left_;
        beginObject(*out_, ids_->next(), "HxDbStruct", in_).member("name", item.name);
        out_->member("objectName", item.library).member("color", &item == &window ? 140 : 8);
        out_->text(",\"attrs\":[{\"key\":\"item\",\"value\":\"STRUCT\"},{\"key\":\"owner\",\"value\":\"").whole(in_);
        out_->text("\"},{\"key\":\"material\",\"value\":\"").text(utf8(item.material)).text("\"}");
        typedPoint(*out_, "kpt_1", from);
        typedPoint(*out_, "kpt_2", to);
        typedPoint(*out_, "P2", to);
        out_->text("]");
        return true;
    }
    void end() {
        if (open_) {
            out_->text("}");
        }
    }

    Output* out_;
    Ids* ids_;
    Id in_;
    int left_;
    bool open_ = false;
};

}  // namespace

int writeRack(Output& out, Ids& ids, const Place& place, int count) {
    constexpr double bay = 6000;
    const Id manager = ids.next();
    beginManager(out, manager, "HextStruct", place, "GL").text("}");
    StructureWriter writer(out, ids, manager, count);
    writer.addBlock(wall, place.origin + Vector(500, 1000, 0), {6000, 240, 3600});
    writer.addBlock(window, place.origin + Vector(2000, 1090, 1000), {1800, 60, 1500});
    writer.addPlate(place.origin + Vector(500, 1000, -150), 6000, 9000, 150);
    for (double x = 1000; !writer.full(); x += bay) {
        const Point south = place.origin + Vector(x, rackSouth, 0);
        const Point far = place.origin + Vector(x, rackNorth, 0);
        writer.addColumn(south, rackTop);
        writer.addColumn(far, rackTop);
        writer.addBeam(south + up * rackTop, far + up * rackTop);
        writer.addBeam(south + up * rackTop, south + Vector(bay, 0, rackTop));
        writer.addBeam(far + up * rackTop, far + Vector(bay, 0, rackTop));
    }
    return count;
}

int writeFoundations(Output& out, Ids& ids, const Place& place, const std::vector<Point>& under) {
    const Id manager = ids.next();
    beginManager(out, manager, "HextStruct", place, "JC").text("}");
    StructureWriter writer(out, ids, manager, static_cast<int>(under.size()));
    for (const Point& at : under) {
        writer.addBlock(plate, at + Vector(-900, -1500, -400), {1800, 3000, 400});
    }
    return static_cast<int>(under.size());
}

int writeGrid(Output& out, Ids& ids, const Place& place, int count) {
    constexpr double spacing = 6000;
    const Id manager = ids.next();
    beginManager(out, manager, "HextAxiss", place, "ZW").text("}");
    for (int i = 0; i < count; ++i) {
        const bool lettered = i % 3 == 2;
        const int index = lettered ? i / 3 : i - i / 3;
        const Point from = place.origin + (lettered ? Vector(-1500, rackSouth + index * spacing, 0)
                                                    : Vector(1000 + index * spacing, 0, 0));
        const Point to = from + (lettered ? east * 42000.0 : north * 25000.0);
        beginObject(out, ids.next(), "HxDbAxissLine", manager).text(",\"no\":\"");
        const char letter = static_cast<char>('A' + index);
        lettered ? out.text(std::string_view(&letter, 1)) : out.whole(index + 1);
        out.text("\"").member("objectName", "axiss_line").text(",\"attrs\":[{\"key\":\"item\",\"value\":\"AXIS\"}");
        typedPoint(out, "kpt_1", from);
        typedPoint(out, "kpt_2", to);
        out.text("],\"keyPoints\":[{\"no\":1,\"at\":").point(from).text("},{\"no\":2,\"at\":").point(to).text("}]");
        {
            Primitives shape(out);
            shape.line(from, to);
        }
        out.text("}");
    }
    return count;
}

// ----------------------------------------------------------------------------------------------------- ducts and trays

namespace {

// Objects of the modules "Hvac" and "Cable": components that no pipe takes.
class SpecialLine {
public:
    struct Kind {
        const char* item;
        const char* module;
        const char* size;
        std::u8string_view name;
    };
    SpecialLine(Output& out, Ids& ids, const Kind& kind, const Place& place, std::string_view letters)
        : out_(&out), kind_(&kind), pipeline_(ids.next()) {
        const Id first = ids.next();
        next_ = first;
        ids_ = &ids;
        beginManager(out, pipeline_, "HextPipeline", place, letters).member("start", first);
        out.text(",\"attrs\":{\"lineno\":\"").text(letters).text("-").whole(place.number).text("\",\"insul\":\"0\"");
        out.memberAsText("zoneid", place.in).member("destemp", utf8(u8"常温")).member("despress", utf8(u8"常压"));
        out.member("roadno", "R1").text("}}");
    }

    // A piece from one point to the next; the caller draws it and calls end.
    void begin(const char* itype, const Point& from, const Point& to) {
        beginObject(*out_, next_, "HxDbTubeModelSpec", pipeline_).member("objectName", kind_->item);
        out_->text(",\"attrs\":{\"item\":\"").text(kind_->item).text("\"").member("itype", itype);
        out_->member("smrtln", "Normal").member("module", kind_->module).member("size1", kind_->size);
        out_->member("size2", kind_->size).member("name", utf8(kind_->name)).member("mtype", "duct");
        out_->memberAsText("lineno", pipeline_).member("insul", "0").member("minsul", "0").text("}");
        out_->text(",\"points\":[{\"no\":0,\"at\":").point(from + (to - from) * 0.5);
        out_->text("},{\"no\":1,\"at\":").point(from).text("},{\"no\":2,\"at\":").point(to).text("}]");
        next_ = ids_->next();
        ++count_;
    }
    void end() { out_->text("}"); }
    int count() const { return count_; }

private:
    Output* out_;
    Ids* ids_ = nullptr;
    const Kind* kind_;
    Id pipeline_;
    Id next_ = 0;
    int count_ = 0;
};

constexpr SpecialLine::Kind ductKind{"DUCT", "Hvac", "600*400", u8"矩形风管"};
constexpr SpecialLine::Kind trayKind{"TRAY", "Cable", "400*100", u8"梯级式桥架"};

}  // namespace

int writeDucts(Output& out, Ids& ids, const Place& place) {
    SpecialLine line(out, ids, ductKind, place, "HV");
    const Point start = place.origin + Vector(2000, 11500, 3200);
    const auto along = [&start](double x) { return start + east * x; };
    const auto piece = [&](const char* itype, const Point& from, const Point& to, auto draw) {
        line.begin(itype, from, to);
        {
            Primitives shape(out);
            draw(shape);
        }
        line.end();
    };
    piece("SQCIR", along(0), along(-300), [&](Primitives& shape) {
        shape.squareToRound(along(0), along(-300), north, {600, 400}, 200);
    });
    for (const double x : {0.0, 3000.0, 6000.0}) {
        piece("STRAIGHT", along(x), along(x + 3000), [&](Primitives& shape) {
            shape.box(along(x + 1500), {3000, 600, 400});
        });
    }
    const Point turned = along(9500) + up * 500;
    piece("ELBOW", along(9000), turned, [&](Primitives& shape) {
        shape.squareBend(along(9000) + up * 500, along(9000), turned, {400, 600});
    });
    piece("TRANS", turned, turned + up * 400, [&](Primitives& shape) {
        shape.frustum(turned, {400, 600, 0}, {300, 500, 0}, 400);
    });
    return line.count();
}

int writeTrays(Output& out, Ids& ids, const Place& place) {
    constexpr double length = 6000;
    SpecialLine line(out, ids, trayKind, place, "CT");
    for (int i = 0; i < 5; ++i) {
        const Point from = place.origin + Vector(2000 + i * length, rackNorth + 600, 4200);
        const Point to = from + east * length;
        line.begin("LADDER", from, to);
        {
            Primitives shape(out);
            for (const double side : {-200.0, 200.0}) {
                shape.box(from + Vector(length / 2, side, 0), {length, 4, 100});
            }
            shape.box(from + Vector(length / 2, 0, -40), {length, 400, 20});
        }
        line.end();
    }
    return line.count();
}

int writeDrawing(Output& out, Ids& ids, const Place& place) {
    const Point pit = place.origin + Vector(38000, 3000, 400);
    const Id manager = ids.next();
    beginManager(out, manager, "HextPIDPaperManager", place, "TZ").text("}");
    beginObject(out, ids.next(), "HxDbAcadSerialObject", manager).member("objectName", "acad_serial");
    out.text(",\"attrs\":{\"item\":\"ACAD\"}");
    {
        Primitives shape(out);
        shape.hostBox("HextPrimaryAcad", pit, {1600, 1200, 800});
        shape.hostBox("HextPrimaryAcadSolid3D", pit + up * 425.0, {800, 800, 50});
        shape.hostBox("HextAcadBlockReference", pit + east * 1000.0, {200, 200, 400});
    }
    out.text("}");
    beginObject(out, ids.next(), "HextAcadEntitySer", manager).text(",\"attrs\":{\"item\":\"ACAD\"}");
    {
        Primitives shape(out);
        shape.hostLine(pit - east * 800.0, pit + east * 800.0);
    }
    out.text("}");
    return 2;
}

// ------------------------------------------------------------------------------------------------------------ supports

namespace {

void drawSupport(Output& out, int kind, const SupportPoint& point) {
    const PipeSize& size = pipeSizes[point.size];
    const Vector side = up.crossProduct(point.along);
    const double radius = size.outer / 2;
    Primitives shape(out);
    if (kind == 1) {
        const Point top = point.at + up * (radius + 6);
        shape.ring(point.at, radius + 6, point.along, 12);
        shape.cylinder(top, top + up * 800, 12);
        return;
    }
    const Vector plateSize(200, size.dn * 0.6 + 20, 100);
    shape.box(point.at - up * (radius + 50), plateSize, point.along, side);
    if (kind == 2) {
        for (const double edge : {-1.0, 1.0}) {
            const Point guide = point.at + side * (edge * (size.dn * 0.3 + 60)) - up * (radius + 40);
            shape.box(guide, {200, 12, 120}, point.along, side);
        }
    }
}

void writeSupportModel(Output& out, Id item, Id owner, int kind, const SupportPoint& point) {
    const PipeSize& size = pipeSizes[point.size];
    out.member("supItem", item).member("standard", supportStandard).member("objectName", "support");
    out.text(",\"attrs\":{\"item\":\"SUPPORT\"").member("itype", supportKindName(kind)).member("smrtln", "Normal");
    out.memberAsText("size", size.dn).memberAsText("size1", size.dn).member("material", "Q235B");
    out.memberAsText("owner", owner).member("insul", "0").member("minsul", "0");
    out.text("},\"points\":[{\"no\":1,\"at\":").point(point.at);
    if (point.pipe != 0) {
        out.member("to", point.pipe);
    }
    out.text("}]");
    drawSupport(out, kind, point);
    out.text("}");
}

constexpr int hanger = 1;
bool hasBeam(int i) {
    return i % 10 == hanger;
}

}  // namespace

// Every tenth support hangs from a beam, a support of its own that is nested in it.
int writeSupports(Output& out, Ids& ids, Library& library, const Place& place, std::span<const SupportPoint> points) {
    const int count = static_cast<int>(points.size());
    const Id manager = ids.next();
    const Id first = ids.next();
    beginManager(out, manager, "HextSupport", place, "ZJ").text(",\"members\":[");
    int objects = 0;
    for (int i = 0; i < count; ++i) {
        for (int j = 0; j < (hasBeam(i) ? 2 : 1); ++j) {
            out.text(objects == 0 ? "" : ",").whole(first + objects);
            ++objects;
        }
    }
    out.text("]}");
    Id id = first;
    for (int i = 0; i < count; ++i) {
        const int kind = hasBeam(i) ? hanger : i % Library::supportKinds;
        const SupportPoint& point = points[static_cast<std::size_t>(i)];
        const Id item = library.supportItem(kind);
        const Id support = id++;
        beginObject(out, support, "HxDbSupportModel", manager).memberAsText("no", i + 1);
        writeSupportModel(out, item, manager, kind, point);
        if (hasBeam(i)) {
            beginObject(out, id++, "HxDbSupportModel", support).text(",\"no\":\"").whole(i + 1).text("A\"");
            writeSupportModel(out, item, manager, 0, {0, point.at + up * 1000.0, point.along, point.size});
        }
    }
    ids.skipTo(id);
    return objects;
}

}  // namespace plant::generator
