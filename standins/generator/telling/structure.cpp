#include "generator/telling/structure.h"

#include "generator/telling/facts.h"
#include "generator/telling/primitives.h"

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

// A manager such as "GL-7"; it stays open.
void beginManager(ModelBuilder& model, Id id, std::string_view className, const Place& place,
                  std::string_view letters) {
    constexpr std::int16_t gray = 8;
    beginObject(model, id, className, place.in);
    model.name(TextLine(letters, "-", place.number));
    model.color(gray);
}

Id tellManager(const Target& to, std::string_view className, const Place& place, std::string_view letters) {
    const Id id = to.ids.next();
    beginManager(to.model, id, className, place, letters);
    to.model.endObject();
    return id;
}

struct StructureItem {
    const char* name;
    const char* library;
    std::u8string_view material;
    std::int16_t color = 8;
};
constexpr StructureItem column{"column", "stcolumn_hxg", u8"Q235B"};
constexpr StructureItem beam{"beam", "stbeam_hxg", u8"Q235B"};
constexpr StructureItem plate{"slab", "plat_rect", u8"C30"};
constexpr StructureItem wall{"wall", "wall_rect", u8"砖"};
constexpr StructureItem window{"window", "window_rect", u8"铝合金", 140};

void tellPointAttribute(ModelBuilder& model, std::string_view key, const Point& at) {
    model.attribute({.key = key, .form = AttributeFacts::Form::Point, .point = triple(at)});
}

// The members of one structure, until it has as many as it may have.
class StructureTeller {
public:
    StructureTeller(const Target& to, Id in, int most) : to_(&to), in_(in), left_(most) {}

    bool full() const { return left_ <= 0; }

    void addColumn(const Point& foot, double height) {
        add(column, foot, foot + up * height,
            [&](Primitives& shape) { shape.extrusion(foot, east, north, height, columnSection); });
    }
    void addBeam(const Point& from, const Point& to) {
        add(beam, from, to, [&](Primitives& shape) {
            const Vector side = up.crossProduct((to - from).normal());
            shape.extrusion(from, side, up, from.distanceTo(to), beamSection);
        });
    }
    // With a hole.
    void addPlate(const Point& corner, double x, double y, double thickness) {
        add(plate, corner, corner + Vector(x, y, 0), [&](Primitives& shape) {
            const OutlinePoint outline[] = {{0, 0}, {x, 0}, {x, y}, {0, y}};
            const OutlinePoint hole[] = {{x / 4, y / 4}, {x / 3, y / 4}, {x / 3, y / 3}, {x / 4, y / 3}};
            shape.extrusion(corner, east, north, thickness, outline, hole);
        });
    }
    void addBlock(const StructureItem& item, const Point& corner, const Vector& size) {
        add(item, corner, corner + size, [&](Primitives& shape) { shape.box(corner + size * 0.5, size); });
    }

private:
    template <typename Draw>
    void add(const StructureItem& item, const Point& from, const Point& to, Draw draw) {
        if (full()) {
            return;
        }
        --left_;
        ModelBuilder& model = to_->model;
        beginObject(model, to_->ids.next(), "HxDbStruct", in_);
        model.name(item.name);
        model.text(TextMember::ObjectName, item.library);
        model.color(item.color);
        tellAttributes(model, {{"item", "STRUCT"}, {"owner", TextLine(in_)}, {"material", utf8(item.material)}});
        tellPointAttribute(model, "kpt_1", from);
        tellPointAttribute(model, "kpt_2", to);
        tellPointAttribute(model, "P2", to);
        Primitives shape(model);
        draw(shape);
        model.endObject();
    }

    const Target* to_;
    Id in_;
    int left_;
};

}  // namespace

int tellRack(const Target& to, const Place& place, int count) {
    constexpr double bay = 6000;
    StructureTeller teller(to, tellManager(to, "HextStruct", place, "GL"), count);
    teller.addBlock(wall, place.origin + Vector(500, 1000, 0), {6000, 240, 3600});
    teller.addBlock(window, place.origin + Vector(2000, 1090, 1000), {1800, 60, 1500});
    teller.addPlate(place.origin + Vector(500, 1000, -150), 6000, 9000, 150);
    for (double x = 1000; !teller.full(); x += bay) {
        const Point south = place.origin + Vector(x, rackSouth, 0);
        const Point far = place.origin + Vector(x, rackNorth, 0);
        teller.addColumn(south, rackTop);
        teller.addColumn(far, rackTop);
        teller.addBeam(south + up * rackTop, far + up * rackTop);
        teller.addBeam(south + up * rackTop, south + Vector(bay, 0, rackTop));
        teller.addBeam(far + up * rackTop, far + Vector(bay, 0, rackTop));
    }
    return count;
}

int tellFoundations(const Target& to, const Place& place, std::span<const Point> under) {
    const int count = static_cast<int>(under.size());
    StructureTeller teller(to, tellManager(to, "HextStruct", place, "JC"), count);
    for (const Point& at : under) {
        teller.addBlock(plate, at + Vector(-900, -1500, -400), {1800, 3000, 400});
    }
    return count;
}

// ----------------------------------------------------------------------------------------------------------------
// grids

namespace {

// Two lines with numbers run north, then one with a letter runs east.
void tellGridLine(const Target& to, Id manager, const Point& origin, int i) {
    constexpr double spacing = 6000;
    const bool lettered = i % 3 == 2;
    const int index = lettered ? i / 3 : i - i / 3;
    const char letter = static_cast<char>('A' + index);
    const Point from =
        origin + (lettered ? Vector(-1500, rackSouth + index * spacing, 0) : Vector(1000 + index * spacing, 0, 0));
    const Point end = from + (lettered ? east * 42000.0 : north * 25000.0);
    beginObject(to.model, to.ids.next(), "HxDbAxissLine", manager);
    to.model.text(TextMember::No, lettered ? TextLine(std::string_view(&letter, 1)) : TextLine(index + 1));
    to.model.text(TextMember::ObjectName, "axiss_line");
    to.model.attribute("item", "AXIS");
    tellPointAttribute(to.model, "kpt_1", from);
    tellPointAttribute(to.model, "kpt_2", end);
    to.model.keyPoint(1, triple(from));
    to.model.keyPoint(2, triple(end));
    Primitives(to.model).line(from, end);
    to.model.endObject();
}

}  // namespace

int tellGrid(const Target& to, const Place& place, int count) {
    const Id manager = tellManager(to, "HextAxiss", place, "ZW");
    for (int i = 0; i < count; ++i) {
        tellGridLine(to, manager, place.origin, i);
    }
    return count;
}

// ------------------------------------------------------------------------------------------------------ ducts and
// trays

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
    SpecialLine(const Target& to, const Kind& kind, const Place& place, std::string_view letters)
        : to_(&to), kind_(&kind), pipeline_(to.ids.next()), next_(to.ids.next()) {
        ModelBuilder& model = to.model;
        beginManager(model, pipeline_, "HextPipeline", place, letters);
        model.reference(ReferenceMember::Start, next_);
        tellAttributes(model, {{"lineno", TextLine(letters, "-", place.number)},
                               {"insul", "0"},
                               {"zoneid", TextLine(place.in)},
                               {"destemp", utf8(u8"常温")},
                               {"despress", utf8(u8"常压")},
                               {"roadno", "R1"}});
        model.endObject();
    }

    // A piece from one point to another, with the shape that `draw` gives it.
    template <typename Draw>
    void add(const char* itype, const Point& from, const Point& to, Draw draw) {
        ModelBuilder& model = to_->model;
        beginObject(model, next_, "HxDbTubeModelSpec", pipeline_);
        model.text(TextMember::ObjectName, kind_->item);
        tellPieceAttributes(itype);
        tellPoint(model, 0, from + (to - from) * 0.5);
        tellPoint(model, 1, from);
        tellPoint(model, 2, to);
        Primitives shape(model);
        draw(shape);
        model.endObject();
        next_ = to_->ids.next();
        ++count_;
    }
    int count() const { return count_; }

private:
    void tellPieceAttributes(const char* itype) {
        tellAttributes(to_->model, {{"item", kind_->item},
                                    {"itype", itype},
                                    {"smrtln", "Normal"},
                                    {"module", kind_->module},
                                    {"size1", kind_->size},
                                    {"size2", kind_->size},
                                    {"name", utf8(kind_->name)},
                                    {"mtype", "duct"},
                                    {"lineno", TextLine(pipeline_)},
                                    {"insul", "0"},
                                    {"minsul", "0"}});
    }

    const Target* to_;
    const Kind* kind_;
    Id pipeline_;
    Id next_;
    int count_ = 0;
};

constexpr SpecialLine::Kind ductKind{"DUCT", "Hvac", "600*400", u8"矩形风管"};
constexpr SpecialLine::Kind trayKind{"TRAY", "Cable", "400*100", u8"梯级式桥架"};

}  // namespace

int tellDucts(const Target& to, const Place& place) {
    SpecialLine line(to, ductKind, place, "HV");
    const Point start = place.origin + Vector(2000, 11500, 3200);
    const auto along = [&start](double x) { return start + east * x; };
    line.add("SQCIR", along(0), along(-300), [&](Primitives& shape) {
        shape.squareToRound(along(0), along(-300), north, {600, 400}, 200);
    });
    for (const double x : {0.0, 3000.0, 6000.0}) {
        line.add("STRAIGHT", along(x), along(x + 3000), [&](Primitives& shape) {
            shape.box(along(x + 1500), {3000, 600, 400});
        });
    }
    const Point turned = along(9500) + up * 500;
    line.add("ELBOW", along(9000), turned, [&](Primitives& shape) {
        shape.squareBend(along(9000) + up * 500, along(9000), turned, {400, 600});
    });
    line.add("TRANS", turned, turned + up * 400, [&](Primitives& shape) {
        shape.frustum(turned, {400, 600, 0}, {300, 500, 0}, 400);
    });
    return line.count();
}

int tellTrays(const Target& to, const Place& place) {
    constexpr double length = 6000;
    SpecialLine line(to, trayKind, place, "CT");
    for (int i = 0; i < 5; ++i) {
        const Point from = place.origin + Vector(2000 + i * length, rackNorth + 600, 4200);
        line.add("LADDER", from, from + east * length, [&](Primitives& shape) {
            for (const double side : {-200.0, 200.0}) {
                shape.box(from + Vector(length / 2, side, 0), {length, 4, 100});
            }
            shape.box(from + Vector(length / 2, 0, -40), {length, 400, 20});
        });
    }
    return line.count();
}

int tellDrawing(const Target& to, const Place& place) {
    const Point pit = place.origin + Vector(38000, 3000, 400);
    const Id manager = tellManager(to, "HextPIDPaperManager", place, "TZ");
    beginObject(to.model, to.ids.next(), "HxDbAcadSerialObject", manager);
    to.model.text(TextMember::ObjectName, "acad_serial");
    to.model.attribute("item", "ACAD");
    Primitives solids(to.model);
    solids.hostBox(pit, {1600, 1200, 800});
    solids.hostSolid(pit + up * 425.0, {800, 800, 50});
    solids.hostBlock(pit + east * 1000.0, {200, 200, 400});
    to.model.endObject();
    beginObject(to.model, to.ids.next(), "HextAcadEntitySer", manager);
    to.model.attribute("item", "ACAD");
    Primitives(to.model).hostLine(pit - east * 800.0, pit + east * 800.0);
    to.model.endObject();
    return 2;
}

// ------------------------------------------------------------------------------------------------------------ supports

namespace {

constexpr int hanger = 1;
constexpr int guide = 2;

void drawSupport(Primitives& shape, int kind, const SupportPoint& point) {
    const PipeSize& size = pipeSizes[point.size];
    const Vector side = up.crossProduct(point.along);
    const double radius = size.outer / 2;
    if (kind == hanger) {
        const Point top = point.at + up * (radius + 6);
        shape.ring(point.at, radius + 6, point.along, 12);
        return shape.cylinder(top, top + up * 800, 12);
    }
    const Vector plateSize(200, size.dn * 0.6 + 20, 100);
    shape.box(point.at - up * (radius + 50), plateSize, point.along, side);
    if (kind == guide) {
        for (const double edge : {-1.0, 1.0}) {
            const Point at = point.at + side * (edge * (size.dn * 0.3 + 60)) - up * (radius + 40);
            shape.box(at, {200, 12, 120}, point.along, side);
        }
    }
}

struct SupportNaming {
    Id item;
    Id manager;
    std::string_view no;
};

void tellSupport(ModelBuilder& model, const SupportNaming& naming, int kind, const SupportPoint& point) {
    const TextLine dn(pipeSizes[point.size].dn);
    model.text(TextMember::No, naming.no);
    model.reference(ReferenceMember::SupItem, naming.item);
    model.text(TextMember::Standard, supportStandard);
    model.text(TextMember::ObjectName, "support");
    tellAttributes(model, {{"item", "SUPPORT"},
                           {"itype", supportKindName(kind)},
                           {"smrtln", "Normal"},
                           {"size", dn},
                           {"size1", dn},
                           {"material", "Q235B"},
                           {"owner", TextLine(naming.manager)},
                           {"insul", "0"},
                           {"minsul", "0"}});
    tellPoint(model, 1, point.at, point.pipe);
    Primitives shape(model);
    drawSupport(shape, kind, point);
    model.endObject();
}

bool hasBeam(int i) {
    return i % 10 == hanger;
}

// The ids of `count` supports with their beams, from `first` on.
std::vector<Id> supportIds(Id first, int count) {
    std::vector<Id> ids;
    for (int i = 0; i < count; ++i) {
        for (int j = 0; j < (hasBeam(i) ? 2 : 1); ++j) {
            ids.push_back(first + static_cast<Id>(ids.size()));
        }
    }
    return ids;
}

}  // namespace

// Every tenth support hangs from a beam, a support of its own that is nested in it.
int tellSupports(const Target& to, const Place& place, std::span<const SupportPoint> points) {
    const int count = static_cast<int>(points.size());
    const Id manager = to.ids.next();
    const std::vector<Id> members = supportIds(to.ids.next(), count);
    beginManager(to.model, manager, "HextSupport", place, "ZJ");
    to.model.references(ListMember::Members, members);
    to.model.endObject();
    Id id = members.front();
    for (int i = 0; i < count; ++i) {
        const SupportPoint& point = points[static_cast<std::size_t>(i)];
        const int kind = hasBeam(i) ? hanger : i % Library::supportKinds;
        const Id item = to.library.supportItem(kind);
        const Id support = id++;
        beginObject(to.model, support, "HxDbSupportModel", manager);
        tellSupport(to.model, {item, manager, TextLine(i + 1)}, kind, point);
        if (hasBeam(i)) {
            const SupportPoint above{0, point.at + up * 1000.0, point.along, point.size};
            beginObject(to.model, id++, "HxDbSupportModel", support);
            tellSupport(to.model, {item, manager, TextLine(i + 1, "A")}, 0, above);
        }
    }
    to.ids.skipTo(id);
    return static_cast<int>(members.size());
}

}  // namespace plant::generator
