#include "plant/shapes/primitive_table.h"

#include <limits>
#include <tsl/robin_map.h>
#include <type_traits>

namespace plant {

namespace {

template <typename Value>
constexpr FieldType fieldType() {
    if constexpr (std::is_same_v<Value, double>) {
        return FieldType::Double;
    } else if constexpr (std::is_same_v<Value, HxGePoint3D>) {
        return FieldType::Point;
    } else if constexpr (std::is_same_v<Value, HxGeVector3D>) {
        return FieldType::Vector;
    } else if constexpr (std::is_same_v<Value, std::int32_t>) {
        return FieldType::Int32;
    } else if constexpr (std::is_same_v<Value, std::int16_t>) {
        return FieldType::Int16;
    } else if constexpr (std::is_same_v<Value, const char*>) {
        return FieldType::PlatformText;
    } else if constexpr (std::is_same_v<Value, std::string>) {
        return FieldType::OwnText;
    } else if constexpr (std::is_same_v<Value, HextOwned<HextVertexList>>) {
        return FieldType::Outline;
    } else {
        static_assert(std::is_same_v<Value, HextOwned<std::vector<HextVertexList>>>);
        return FieldType::Outlines;
    }
}

template <typename Member>
struct MemberPointer;
template <typename C, typename V>
struct MemberPointer<V C::*> {
    using Class = C;
    using Value = V;
};

template <auto member>
void* placeOf(HextPrimary& primitive) {
    return &(static_cast<typename MemberPointer<decltype(member)>::Class&>(primitive).*member);
}

template <auto member>
FieldRow field(std::string_view name) {
    return {name, fieldType<typename MemberPointer<decltype(member)>::Value>(), placeOf<member>};
}
template <auto member>
FieldRow needed(std::string_view name) {
    FieldRow row = field<member>(name);
    row.required = true;
    return row;
}
template <auto member>
FieldRow between(std::string_view name, std::int64_t low, std::int64_t high) {
    FieldRow row = field<member>(name);
    row.low = low;
    row.high = high;
    return row;
}
template <auto member>
FieldRow entity() {
    return {"entity", FieldType::Entity, placeOf<member>, true};
}

template <typename Class>
HextPrimary* construct(Arena& arena) {
    return ::new (arena.allocate(sizeof(Class), alignof(Class))) Class;
}

template <typename Class>
HextPrimary* copy(Arena& arena, const HextPrimary& other) {
    return ::new (arena.allocate(sizeof(Class), alignof(Class))) Class(static_cast<const Class&>(other));
}

HextPrimary* constructText(Arena& arena) {
    constexpr double usualHeight = 100;
    auto* text = static_cast<HextPrimaryText*>(construct<HextPrimaryText>(arena));
    text->height = usualHeight;
    return text;
}

std::vector<FieldRow> commonFields(const TlRxClass& record) {
    std::vector<FieldRow> fields{
        {"type", FieldType::ClassName, nullptr, true},
        between<&HextPrimary::color>("color", std::numeric_limits<std::int16_t>::min(),
                                     std::numeric_limits<std::int16_t>::max()),
    };
    if (record.isDerivedFrom(HextPrimary3D::desc())) {
        fields.push_back(between<&HextPrimary3D::handedness>("handedness", 0, 1));
        fields.push_back(field<&HextPrimary3D::material>("material"));
    }
    return fields;
}

bool ownsMemory(const FieldRow& row) {
    return row.type == FieldType::OwnText || row.type == FieldType::Outline || row.type == FieldType::Outlines ||
           row.type == FieldType::Entity;
}

template <typename Class>
PrimitiveClass row(const std::vector<FieldRow>& own) {
    std::vector<FieldRow> fields = commonFields(Class::classRecord);
    bool owns = false;
    for (const FieldRow& one : own) {
        fields.push_back(one);
        owns = owns || ownsMemory(one);
    }
    std::vector<NameRows::Name> names;
    for (const FieldRow& one : fields) {
        names.push_back({one.name, one.required});
    }
    const char* name = Class::classRecord.name();
    return {&Class::classRecord, construct<Class>,
            copy<Class>,         owns,
            std::move(fields),   NameRows(std::string("a ") + name, std::move(names))};
}

constexpr std::int64_t mostSides = 10000;
constexpr std::int64_t lastArcKind = 3;

std::vector<PrimitiveClass> roundSolids() {
    using Cylinder = HextCylinder3D;
    using Scylinder = HextScylinder3D;
    using Concone = HextConcone3D;
    using Econe = HextEcone3D;
    using Oval = HextOval3D;
    using Sphere = HextSphere3D;
    using Torus = HextTorus3D;
    return {
        row<Cylinder>({needed<&Cylinder::startPoint>("startPoint"), needed<&Cylinder::endPoint>("endPoint"),
                       needed<&Cylinder::diameter>("diameter")}),
        row<Scylinder>({needed<&Cylinder::startPoint>("startPoint"), needed<&Cylinder::endPoint>("endPoint"),
                        needed<&Cylinder::diameter>("diameter"), needed<&Scylinder::vect>("vect")}),
        row<Concone>({needed<&Concone::startPoint>("startPoint"), needed<&Concone::endPoint>("endPoint"),
                      needed<&Concone::startDiameter>("startDiameter"), needed<&Concone::endDiameter>("endDiameter")}),
        row<Econe>({needed<&Econe::startPoint>("startPoint"), needed<&Econe::endPoint>("endPoint"),
                    needed<&Econe::startDiameter>("startDiameter"), needed<&Econe::endDiameter>("endDiameter"),
                    needed<&Econe::vect>("vect")}),
        row<Oval>({needed<&Oval::point>("point"), needed<&Oval::vect>("vect"),
                   needed<&Oval::axialRadius>("axialRadius"), needed<&Oval::radialRadius>("radialRadius"),
                   needed<&Oval::baseRadius>("baseRadius"), between<&Oval::segments>("segments", 1, mostSides)}),
        row<Sphere>({needed<&Sphere::center>("center"), needed<&Sphere::radius>("radius")}),
        row<Torus>({needed<&Torus::center>("center"), needed<&Torus::startPoint>("startPoint"),
                    needed<&Torus::thirdField>("thirdField"), needed<&Torus::startDiameter>("startDiameter"),
                    needed<&Torus::endDiameter>("endDiameter"), between<&Torus::arcKind>("arcKind", 0, lastArcKind),
                    between<&Torus::form>("form", 0, 1), field<&Torus::angle>("angle")}),
    };
}

std::vector<PrimitiveClass> flatSolids() {
    using Box = HextBox3D;
    using Squcone = HextSqucone3D;
    using Wedge = HextWedge3D;
    using Prism = HextPrism3D;
    FieldRow sides = between<&Prism::sides>("sides", 3, mostSides);
    sides.required = true;
    return {
        row<Box>({needed<&Box::point>("point"), needed<&Box::xLength>("xLength"), needed<&Box::yLength>("yLength"),
                  needed<&Box::zLength>("zLength"), field<&Box::xAxis>("xAxis"), field<&Box::yAxis>("yAxis"),
                  between<&Box::pointKind>("pointKind", 0, 1)}),
        row<Squcone>(
            {needed<&Squcone::point>("point"), needed<&Squcone::bottomX>("bottomX"),
             needed<&Squcone::bottomY>("bottomY"), needed<&Squcone::topX>("topX"), needed<&Squcone::topY>("topY"),
             needed<&Squcone::height>("height"), field<&Squcone::zAxis>("zAxis"), field<&Squcone::xAxis>("xAxis"),
             field<&Squcone::offsetDirection>("offsetDirection"), field<&Squcone::offsetLength>("offsetLength")}),
        row<Wedge>({needed<&Wedge::point1>("point1"), needed<&Wedge::point2>("point2"),
                    needed<&Wedge::point3>("point3"), needed<&Wedge::wedgeSize>("wedgeSize")}),
        row<Prism>({needed<&Prism::startPoint>("startPoint"), needed<&Prism::endPoint>("endPoint"),
                    needed<&Prism::vertexPoint>("vertexPoint"), sides,
                    between<&Prism::sideMode>("sideMode", std::numeric_limits<std::int32_t>::min(),
                                              std::numeric_limits<std::int32_t>::max())}),
    };
}

std::vector<PrimitiveClass> otherSolids() {
    using Squtorus = HextSqutorus3D;
    using Saddle = HextSaddle3D;
    using Squcir = HextSqucir3D;
    using Polygon = HextSpolygon;
    using Revolve = HextRevolve;
    return {
        row<Squtorus>({needed<&Squtorus::center>("center"), needed<&Squtorus::startPoint>("startPoint"),
                       field<&Squtorus::thirdField>("thirdField"), needed<&Squtorus::startWidth>("startWidth"),
                       needed<&Squtorus::startHeight>("startHeight"), needed<&Squtorus::endWidth>("endWidth"),
                       needed<&Squtorus::endHeight>("endHeight"),
                       between<&Squtorus::arcKind>("arcKind", 0, lastArcKind), between<&Squtorus::form>("form", 0, 1),
                       field<&Squtorus::angle>("angle"), field<&Squtorus::normal>("normal")}),
        row<Saddle>({needed<&Saddle::point>("point"), needed<&Saddle::axis>("axis"),
                     needed<&Saddle::sectionAxis>("sectionAxis"), needed<&Saddle::length>("length"),
                     needed<&Saddle::sectionLength>("sectionLength"), needed<&Saddle::sectionHeight>("sectionHeight"),
                     needed<&Saddle::circleRadius>("circleRadius")}),
        row<Squcir>({needed<&Squcir::basePoint>("basePoint"), needed<&Squcir::topCenter>("topCenter"),
                     needed<&Squcir::xAxis>("xAxis"), needed<&Squcir::baseNormal>("baseNormal"),
                     needed<&Squcir::xLength>("xLength"), needed<&Squcir::yLength>("yLength"),
                     needed<&Squcir::topRadius>("topRadius")}),
        row<Polygon>({needed<&Polygon::origin>("origin"), field<&Polygon::xAxis>("xAxis"),
                      field<&Polygon::yAxis>("yAxis"), field<&Polygon::direction>("direction"),
                      needed<&Polygon::height>("height"), field<&Polygon::outline>("outline"),
                      field<&Polygon::holes>("holes")}),
        row<Revolve>({needed<&Revolve::center>("center"), needed<&Revolve::axis>("axis"),
                      needed<&Revolve::angle>("angle"), field<&Revolve::profile>("profile")}),
    };
}

std::vector<PrimitiveClass> otherItems() {
    using Line = HextPrimaryLine;
    using Text = HextPrimaryText;
    PrimitiveClass text =
        row<Text>({needed<&Text::text>("text"), needed<&Text::position>("position"), field<&Text::normal>("normal"),
                   field<&Text::rotation>("rotation"), field<&Text::height>("height"), field<&Text::style>("style")});
    text.construct = constructText;
    return {
        row<Line>({needed<&Line::startPoint>("startPoint"), needed<&Line::endPoint>("endPoint")}),
        std::move(text),
        row<HextPrimaryAcad>({entity<&HextPrimaryAcad::serial>()}),
        row<HextPrimaryAcadEntity>({entity<&HextPrimaryAcad::serial>()}),
        row<HextPrimaryAcadSolid3D>({entity<&HextPrimaryAcad::serial>()}),
        row<HextAcadBlockReference>({entity<&HextAcadBlockReference::serial>()}),
    };
}

std::vector<PrimitiveClass> makeClasses() {
    std::vector<PrimitiveClass> classes;
    for (auto part : {roundSolids, flatSolids, otherSolids, otherItems}) {
        for (PrimitiveClass& one : part()) {
            classes.push_back(std::move(one));
        }
    }
    return classes;
}

NameRows makeNames() {
    std::vector<NameRows::Name> names;
    for (const PrimitiveClass& one : primitiveClasses()) {
        names.push_back({one.record->name()});
    }
    return {"the primitives", std::move(names)};
}

}  // namespace

std::span<const PrimitiveClass> primitiveClasses() {
    static const std::vector<PrimitiveClass> classes = makeClasses();
    return classes;
}

const NameRows& primitiveNames() {
    static const NameRows names = makeNames();
    return names;
}

const PrimitiveClass* primitiveClassOf(const HextPrimary& primitive) {
    static const auto byRecord = [] {
        tsl::robin_map<std::string_view, const PrimitiveClass*> classes;
        for (const PrimitiveClass& one : primitiveClasses()) {
            classes.emplace(one.record->name(), &one);
        }
        return classes;
    }();
    const auto at = byRecord.find(primitive.isA()->name());
    return at == byRecord.end() || at->second->record != primitive.isA() ? nullptr : at->second;
}

const NameRows& typeNames() {
    static const NameRows names("a primitive before \"type\", which stands first", {{"type", true}});
    return names;
}

}  // namespace plant
