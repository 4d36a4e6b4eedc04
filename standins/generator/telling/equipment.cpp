#include "generator/telling/equipment.h"

#include "generator/telling/facts.h"
#include "generator/telling/primitives.h"

#include <algorithm>

namespace plant::generator {

namespace {

constexpr double neck = 250;

struct NozzlePlace {
    const EquipmentPlan* equipment;
    Ids* ids;
    std::vector<NozzlePlan>* nozzles;
    int count = 0;

    NozzlePlan& add(int size, const Point& face, const Vector& along) {
        NozzlePlan& nozzle = nozzles->emplace_back();
        nozzle.id = ids->next();
        nozzle.equipment = equipment->id;
        nozzle.number = ++count;
        nozzle.size = size;
        nozzle.face = rounded(face);
        nozzle.along = along;
        nozzle.inner = rounded(nozzle.face - along * neck);
        nozzle.corner = rounded(nozzle.face - along * (neck / 2));
        return nozzle;
    }
    // Out of the underside at `inner`, then to the north.
    void addBent(int size, const Point& inner, double faceY) {
        constexpr double drop = 370;
        const Point corner = inner - up * drop;
        NozzlePlan& nozzle = add(size, {corner.x, faceY, corner.z}, north);
        nozzle.bent = true;
        nozzle.inner = rounded(inner);
        nozzle.corner = rounded(corner);
    }
};

// ------------------------------------------------------------------------------------------------------------- nozzles

void pumpNozzles(Random& random, const EquipmentPlan& e, NozzlePlace& place) {
    const int size = random.between(5, 8);
    place.add(size, e.at + Vector(0, 700, 800), north);
    place.add(size - 1, e.at + Vector(0, 0, 1350), up);
}

void columnNozzles(Random& random, const EquipmentPlan& e, NozzlePlace& place) {
    const double radius = e.diameter / 2;
    const double top = 1600 + e.length + radius / 2;
    place.add(random.between(4, 8), e.at + Vector(0, 0, top + neck - 30), up);
    place.add(random.between(4, 7), e.at + Vector(0, radius + neck - 20, 1600 + e.length / 2), north);
    const Point bottom = e.at + Vector(0, 0, 1600 - radius / 2 + 20);
    place.addBent(random.between(4, 7), bottom, e.at.y + radius + 600);
}

void drumNozzles(Random& random, const EquipmentPlan& e, NozzlePlace& place) {
    const double top = 700 + e.diameter + neck - 20;
    place.add(random.between(4, 9), e.at + Vector(-e.length / 3, 0, top), up);
    place.add(random.between(4, 9), e.at + Vector(e.length / 3, 0, top), up);
    place.add(random.between(4, 6), e.at + Vector(0, e.diameter / 2 + neck - 20, 700 + e.diameter / 2), north);
}

void exchangerNozzles(Random& random, const EquipmentPlan& e, NozzlePlace& place) {
    const double top = 900 + e.diameter + neck - 20;
    const int size = random.between(5, 8);
    place.add(size, e.at + Vector(0, -e.length / 2 + 350, top), up);
    place.add(size, e.at + Vector(0, e.length / 2 - 350, top), up);
}

void tankNozzles(Random& random, const EquipmentPlan& e, NozzlePlace& place) {
    place.add(random.between(6, 9), e.at + Vector(0, e.diameter / 2 + neck - 20, 700), north);
    place.add(random.between(4, 7), e.at + Vector(0, -e.diameter / 4, e.length + 700), up);
}

void noNozzles(Random&, const EquipmentPlan&, NozzlePlace&) {}

// -------------------------------------------------------------------------------------------------------------- bodies

void drawPump(Primitives& shape, const EquipmentPlan& e) {
    const auto at = [&e](double y, double z) { return e.at + Vector(0, y, z); };
    shape.box(at(-700, 150), {700, 2200, 300});
    shape.cylinder(at(-150, 800), at(150, 800), 560);
    shape.ring(at(0, 800), 220, north, 150);
    shape.cylinder(at(0, 1000), at(0, 1120), 140);
    shape.cone(at(150, 800), at(460, 800), 320, 180);
    shape.cone(at(-150, 800), at(-400, 800), 300, 180);
    shape.saddle(e.at + Vector(-200, -620, 300), 400, 180, 420, 80);
    shape.cylinder(at(-400, 800), at(-820, 800), 110);
    shape.cylinder(at(-820, 800), at(-1620, 800), 460);
    shape.head(at(-1620, 800), -north, 90, 230);
    shape.prism(at(-1200, 1030), at(-1200, 1090), 30, 6);
    shape.wedge(e.at + Vector(-150, -1500, 300), {0, 550, 0}, {0, 0, 120}, 300);
}

void drawColumn(Primitives& shape, const EquipmentPlan& e) {
    const double radius = e.diameter / 2;
    const auto at = [&e](double z) { return e.at + up * z; };
    shape.cylinder(at(1600), at(1600 + e.length), e.diameter);
    shape.head(at(1600 + e.length), up, radius / 2, radius);
    shape.head(at(1600), -up, radius / 2, radius);
    for (const double x : {-1.0, 1.0}) {
        for (const double y : {-1.0, 1.0}) {
            const Point leg = e.at + Vector(x, y, 0) * (radius * 0.7);
            shape.box(leg + up * 800, {120, 120, 1600});
        }
    }
    shape.ring(at(1600 + e.length - 100), radius, up, 60);
    shape.cylinder(at(1900) - north * (radius - 20), at(1900) - north * (radius + 200), 500);
}

void drawDrum(Primitives& shape, const EquipmentPlan& e) {
    const double radius = e.diameter / 2;
    const double half = e.length / 2;
    const Point axis = e.at + up * (700 + radius);
    shape.cylinder(axis - east * half, axis + east * half, e.diameter);
    shape.head(axis + east * half, east, radius / 2, radius);
    shape.head(axis - east * half, -east, radius / 2, radius);
    for (const double side : {-1.0, 1.0}) {
        const Point foot = e.at + east * (side * half * 0.7);
        shape.box(foot + up * 200, {250, e.diameter * 0.8, 400});
        shape.saddle(foot + Vector(-125, -radius * 0.8, 400), 250, e.diameter * 0.8, 300 + radius, radius);
    }
    shape.slopedCylinder(axis - up * (radius - 50), axis - up * (radius + 400), 300, {0.259, 0, 0.966});
    shape.sphere(axis + east * (half + radius / 2), 100);
}

void drawExchanger(Primitives& shape, const EquipmentPlan& e) {
    const double radius = e.diameter / 2;
    const double half = e.length / 2;
    const Point axis = e.at + up * (900 + radius);
    shape.cylinder(axis - north * half, axis + north * half, e.diameter);
    shape.eccentricCone(axis + north * half, axis + north * (half + 400) + up * 100, e.diameter, e.diameter + 200, up);
    shape.head(axis + north * (half + 400) + up * 100, north, radius / 2, radius + 100);
    shape.cylinder(axis - north * half, axis - north * (half + 80), e.diameter + 140);
    shape.head(axis - north * (half + 80), -north, radius / 2, radius);
    for (const double side : {-1.0, 1.0}) {
        shape.box(e.at + Vector(0, side * half * 0.6, 450), {e.diameter * 0.9, 250, 900});
    }
}

void drawTank(Primitives& shape, const EquipmentPlan& e) {
    const auto at = [&e](double z) { return e.at + up * z; };
    shape.disc(at(0), 300, e.diameter / 2 + 300, e.diameter / 4);
    shape.cylinder(at(300), at(300 + e.length), e.diameter);
    shape.cone(at(300 + e.length), at(300 + e.length + 300), e.diameter, 200);
    shape.ring(at(300 + e.length), e.diameter / 2, up, 80);
    shape.cover(at(300 + e.length + 300), 300, 60);
    shape.frustum(e.at - east * (e.diameter / 2 + 700), {700, 700, 0}, {450, 450, 0}, 450);
}

void drawCooler(Primitives& shape, const EquipmentPlan& e) {
    const auto at = [&e](double x, double z) { return e.at + Vector(x, 0, z); };
    shape.box(at(0, 100), {2400, 1800, 200});
    shape.box(at(0, 900), {2200, 1600, 1400});
    shape.frustum(at(0, 1600), {1400, 1000, 0}, {900, 700, 0}, 400);
    shape.squareToRound(at(1100, 900), at(1500, 900), north, {900, 800}, 350);
    shape.squareBend(at(-1500, 1300), at(-1500, 900), at(-1900, 1300), {300, 500});
    shape.cylinder(at(1500, 900), at(1900, 900), 700);
}

struct EquipmentKind {
    const char* letter;
    std::u8string_view name;
    const char* leaf;
    std::int16_t color;
    int diameters[2];
    int lengths[2];
    void (*nozzles)(Random&, const EquipmentPlan&, NozzlePlace&);
    void (*draw)(Primitives&, const EquipmentPlan&);
};

const EquipmentKind kinds[] = {
    {"P", u8"离心泵", "CENTRIFUGAL_PUMP", 3, {500, 500}, {1000, 1000}, pumpNozzles, drawPump},
    {"V", u8"立式容器", "VERTICAL_VESSEL", 6, {1000, 2200}, {1000, 1400}, columnNozzles, drawColumn},
    {"D", u8"卧式容器", "HORIZONTAL_VESSEL", 6, {1000, 1600}, {2600, 3600}, drumNozzles, drawDrum},
    {"E", u8"换热器", "SHELL_TUBE_EXCHANGER", 4, {600, 1000}, {2800, 3600}, exchangerNozzles, drawExchanger},
    {"P", u8"离心泵", "CENTRIFUGAL_PUMP", 3, {500, 500}, {1000, 1000}, pumpNozzles, drawPump},
    {"T", u8"拱顶储罐", "FIXED_ROOF_TANK", 5, {3000, 4400}, {1800, 2200}, tankNozzles, drawTank},
    {"K", u8"空冷机组", "AIR_COOLER", 30, {2200, 2200}, {2200, 2200}, noNozzles, drawCooler},
};

void tellDesignAttributes(ModelBuilder& model, const EquipmentPlan& plan) {
    const EquipmentKind& kind = kinds[plan.kind];
    tellAttributes(model, {{"item", "EQUIP"},
                           {"eqno", plan.name},
                           {"eqname", utf8(kind.name)},
                           {"leafnode", kind.leaf},
                           {"dtemp", TextLine(60 + plan.number % 5 * 20)},
                           {"otemp", "40"},
                           {"dpress", "1.6"},
                           {"opress", "0.6"}});
}

void tellManager(ModelBuilder& model, const EquipmentPlan& plan, Id zone) {
    beginObject(model, plan.id, "HextEquipe", zone);
    model.name(plan.name);
    model.color(kinds[plan.kind].color);
    tellDesignAttributes(model, plan);
    model.endObject();
}

void tellBody(ModelBuilder& model, const EquipmentPlan& plan) {
    const EquipmentKind& kind = kinds[plan.kind];
    beginObject(model, plan.body, "HxDbEquipment", plan.id);
    model.name(plan.name);
    model.color(kind.color);
    model.text(TextMember::ObjectName, kind.leaf);
    tellDesignAttributes(model, plan);
    model.attribute("owner", TextLine(plan.id));
    Primitives shape(model);
    kind.draw(shape, plan);
    model.endObject();
}

}  // namespace

EquipmentPlan planEquipment(Random& random, Ids& ids, const Point& at, int number, std::vector<NozzlePlan>& nozzles) {
    constexpr int step = 200;
    EquipmentPlan plan;
    plan.kind = random.below(static_cast<int>(std::size(kinds)));
    const EquipmentKind& kind = kinds[plan.kind];
    plan.number = number;
    plan.id = ids.next();
    plan.body = ids.next();
    plan.at = at;
    plan.diameter = random.between(kind.diameters[0], kind.diameters[1], step);
    plan.length = random.between(kind.lengths[0], kind.lengths[1], step);
    plan.name = std::string(kind.letter) + "-" + std::to_string(number);
    NozzlePlace place{&plan, &ids, &nozzles};
    kind.nozzles(random, plan, place);
    return plan;
}

void tellEquipment(ModelBuilder& model, Library& library, const EquipmentPlan& plan, Id zone,
                   std::span<const NozzlePlan> nozzles) {
    tellManager(model, plan, zone);
    tellBody(model, plan);
    for (const NozzlePlan& nozzle : nozzles) {
        tellNozzle(model, library, nozzle, {plan.id, plan.name, kinds[plan.kind].color});
    }
}

}  // namespace plant::generator
