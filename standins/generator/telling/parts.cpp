#include "generator/telling/parts.h"

#include "generator/telling/facts.h"
#include "generator/telling/primitives.h"
#include "generator/telling/shapes.h"

#include <cmath>

namespace plant::generator {

namespace {

constexpr std::string_view endKeys[] = {"end1", "end2", "end3", "end4"};
constexpr std::string_view sizeKeys[] = {"size1", "size2", "size3", "size4"};

double wallText(const PipingClass& type, const PipeSize& size) {
    return std::round(size.wall * type.wallFactor * 10) / 10;
}

void tellPoints(ModelBuilder& model, const Part& part) {
    for (std::size_t i = 0; i < part.pointCount; ++i) {
        const PlanPoint& point = part.points[i];
        PointFacts facts{.no = static_cast<std::int16_t>(point.no), .at = triple(point.at), .flow = point.flow};
        if (point.to != 0) {
            facts.to = {&point.to, 1};
        }
        model.point(facts);
    }
}

void tellVectors(ModelBuilder& model, const Part& part, const Point& insertion) {
    model.vector(VectorMember::RefVec, triple(part.across));
    model.vector(VectorMember::InsVec, triple(part.along));
    model.vector(VectorMember::InsPoint, triple(insertion));
}

void tellType(ModelBuilder& model, const TypeAttributes& type) {
    const struct {
        std::string_view key;
        const char* text;
    } attributes[] = {{"item", type.item},     {"itype", type.itype}, {"smrtln", type.smrtln},
                      {"module", type.module}, {"mtype", type.mtype}, {"unit", type.unit}};
    for (const auto& one : attributes) {
        if (one.text != nullptr) {
            model.attribute(one.key, one.text);
        }
    }
}

// "tag": "V-12", where the family has tags.
void tellTag(ModelBuilder& model, const Part& part) {
    if (const char* letters = row(part.family).tag) {
        model.attribute("tag", TextLine(letters, "-", part.number));
    }
}

class PartTeller {
public:
    PartTeller(ModelBuilder& model, Library& library, const PipelinePlan& pipeline)
        : model_(&model), library_(&library), pipeline_(&pipeline) {}

    void tell(const Part& part) {
        switch (part.family) {
        case Family::Weld:
            return tellWeld(part);
        case Family::Stop:
            return tellStop(part);
        case Family::Balloon:
            return tellBalloon(part);
        default:
            tellComponent(part);
            tellBoltSet(part);
        }
    }

private:
    void begin(const Part& part) { beginObject(*model_, part.id, row(part.family).className, pipeline_->id); }

    void tellComponent(const Part& part) {
        const FamilyRow& family = row(part.family);
        const Id specification =
            library_->specification(pipeline_->pipingClass, part.ends, part.layout, part.size1, part.size2);
        begin(part);
        model_->kind(family.kind);
        model_->text(TextMember::ObjectName, family.objectName);
        model_->text(TextMember::Standard, family.standard);
        model_->reference(ReferenceMember::Spec, specification);
        if (part.bolts != 0) {
            model_->reference(ReferenceMember::Bolts, part.bolts);
        }
        if (family.tag != nullptr) {
            model_->vector(VectorMember::RefVec, triple(part.across));
        }
        tellInsulation();
        tellType(*model_, family.type);
        tellSpecAttributes(part, specification);
        tellOwnAttributes(part);
        finish(part);
    }

    void tellInsulation() {
        if (pipeline_->insulated) {
            const Service& service = pipeline_->carries();
            model_->insulation({.thickness = static_cast<double>(service.thickness),
                                .material = utf8(service.insulation),
                                .code = service.insulationCode});
        }
    }

    void tellSpecAttributes(const Part& part, Id specification) {
        const FamilyRow& family = row(part.family);
        const PipingClass& type = pipeline_->type();
        tellAttributes(*model_, {{"specname", type.name},
                                 {"specid", TextLine(specification)},
                                 {"stan", family.standard},
                                 {"serial", family.serial}});
        for (int end = 0; end < family.ends; ++end) {
            model_->attribute(endKeys[end], row(part.ends).ends[end]);
        }
        for (int end = 0; end < family.ends; ++end) {
            const PipeSize& size = pipeSizes[sizeAtEnd(part.layout, part.size1, part.size2, end)];
            model_->attribute(sizeKeys[end], TextLine(size.dn));
        }
        tellAttributes(*model_, {{"rating", type.rating},
                                 {"sch", type.schedule},
                                 {"thick", TextLine(wallText(type, pipeSizes[part.size1]))}});
    }

    void tellOwnAttributes(const Part& part) {
        if (part.angle != 0) {
            if (part.bendRadius > 0) {
                model_->attribute("radius", TextLine(part.bendRadius));
            }
            model_->attribute("angle", TextLine(part.angle));
        }
        if (part.family == Family::Pipe || part.family == Family::FlangedPipe) {
            const TextLine length(part.length);
            tellAttributes(*model_, {{"length", length}, {"pipelength", length}});
        }
        tellAttributes(*model_, {{"material", pipeline_->type().material}, {"name", utf8(row(part.family).name)}});
        tellTag(*model_, part);
        tellLineAttributes(pipeline_->insulated);
    }

    void tellLineAttributes(bool insulated) {
        tellAttributes(*model_, {{"lineno", TextLine(pipeline_->id)},
                                 {"insul", insulated ? "1" : "0"},
                                 {"minsul", insulated ? utf8(pipeline_->carries().insulation) : "0"}});
    }

    void finish(const Part& part) {
        tellPoints(*model_, part);
        tellShape(*model_, part, *pipeline_);
        model_->endObject();
    }

    void tellWeld(const Part& part) {
        begin(part);
        model_->text(TextMember::ObjectName, part.fieldWeld ? "weld_field" : "weld_shop");
        tellVectors(*model_, part, part.at(1));
        tellTypeAndSize(part);
        tellAttributes(*model_, {{"stype", part.fieldWeld ? "FW" : "SW"}, {"tag", TextLine("W", part.number)}});
        tellLineAttributes(false);
        finish(part);
    }

    void tellStop(const Part& part) {
        begin(part);
        model_->text(TextMember::ObjectName, "tube_stop");
        tellVectors(*model_, part, part.at(1));
        tellTypeAndSize(part);
        tellLineAttributes(false);
        finish(part);
    }

    void tellTypeAndSize(const Part& part) {
        const TextLine size(pipeSizes[part.size1].dn);
        tellType(*model_, row(part.family).type);
        tellAttributes(*model_, {{"size", size}, {"size1", size}});
    }

    void tellBalloon(const Part& part) {
        begin(part);
        model_->text(TextMember::No, TextLine("PI-", part.number));
        model_->text(TextMember::ObjectName, row(part.family).objectName);
        tellVectors(*model_, part, balloonCenter(part));
        tellType(*model_, row(part.family).type);
        tellTag(*model_, part);
        model_->attribute("name", utf8(u8"压力表"));
        tellLineAttributes(false);
        finish(part);
    }

    void tellBoltSet(const Part& flange) {
        if (flange.bolts == 0) {
            return;
        }
        const Library::BoltIds ids = library_->bolts(pipeline_->pipingClass, flange.size1);
        model_->beginObject(flange.bolts, "HxDbBoltNutModel");
        model_->reference(ReferenceMember::Owner, pipeline_->id);
        model_->reference(ReferenceMember::Bolt, ids.bolt);
        model_->reference(ReferenceMember::Nut, ids.nut);
        model_->reference(ReferenceMember::Flange, ids.flange);
        tellBoltShape(*model_, flange);
        model_->endObject();
    }

    ModelBuilder* model_;
    Library* library_;
    const PipelinePlan* pipeline_;
};

// ------------------------------------------------------------------------------------------------------------
// pipelines

TextLine coordinates(const Point& at) {
    return TextLine(at.x, ",", at.y, ",", at.z);
}

void tellServiceAttributes(ModelBuilder& model, const PipelinePlan& pipeline, Id zone) {
    const Service& service = pipeline.carries();
    tellAttributes(model, {{"lineno", pipeline.name},
                           {"specname", pipeline.type().name},
                           {"fluid", utf8(service.fluid)},
                           {"zoneid", TextLine(zone)},
                           {"insul", pipeline.insulated ? "1" : "0"}});
    if (pipeline.insulated) {
        model.attribute("insulcode", service.insulationCode);
    }
    tellAttributes(model, {{"destemp", utf8(service.temperature)},
                           {"oprtemp", utf8(service.temperature)},
                           {"despress", utf8(service.pressure)},
                           {"oprpress", utf8(service.pressure)}});
}

void tellManager(ModelBuilder& model, const PipelinePlan& pipeline, Id zone) {
    beginObject(model, pipeline.id, "HextPipeline", pipeline.in);
    model.name(pipeline.name);
    model.color(pipeline.carries().color);
    tellServiceAttributes(model, pipeline, zone);
    tellAttributes(model, {{"roadno", TextLine("R", pipeline.number % 9 + 1)},
                           {"pipesegmenttype", utf8(u8"工艺管道")},
                           {"linestart", coordinates(pipeline.start)},
                           {"lineend", coordinates(pipeline.end)}});
    for (const std::vector<Id>& branch : pipeline.branches) {
        model.branch(branch);
    }
    model.endObject();
}

// --------------------------------------------------------------------------------------------------------------
// nozzles

void tellNozzleAttributes(ModelBuilder& model, const NozzlePlan& nozzle, const NozzleOwner& owner, Id specification) {
    const PipingClass& type = pipingClasses[0];
    const PipeSize& size = pipeSizes[nozzle.size];
    const TextLine dn(size.dn);
    tellAttributes(model, {{"item", "NOZZLE"},
                           {"itype", "RF"},
                           {"smrtln", nozzle.bent ? "Arc" : "Normal"},
                           {"specname", type.name},
                           {"specid", TextLine(specification)},
                           {"skey", "NZFS"},
                           {"eqno", owner.name},
                           {"nozno", TextLine("N", nozzle.number)},
                           {"flanstd", "HG/T 20592"},
                           {"std_serial", "B"},
                           {"end", "FLRF"},
                           {"end1", "NONE"},
                           {"end2", "FLRF"},
                           {"size", dn},
                           {"size1", dn},
                           {"size2", dn}});
    if (nozzle.bent) {
        tellAttributes(model, {{"end3", "FLRF"},
                               {"size3", dn},
                               {"radius", "1.5"},
                               {"angle", "90"},
                               {"P2", TextLine(nozzle.corner.distanceTo(nozzle.face))}});
    }
    tellAttributes(model, {{"P1", TextLine(nozzle.inner.distanceTo(nozzle.bent ? nozzle.corner : nozzle.face))},
                           {"rating", type.rating},
                           {"thick", TextLine(size.wall)},
                           {"material", type.material},
                           {"owner", TextLine(owner.id)},
                           {"insul", "0"},
                           {"minsul", "0"}});
}

void tellNozzlePoints(ModelBuilder& model, const NozzlePlan& nozzle) {
    const int innerFlow = nozzle.faceFlow == 0 ? 0 : 3 - nozzle.faceFlow;
    const auto end = [&](int no, const Point& at, int flow) {
        return PointFacts{.no = static_cast<std::int16_t>(no),
                          .at = triple(at),
                          .flow = static_cast<std::int8_t>(flow),
                          .saysFlow = true};
    };
    PointFacts face = end(nozzle.bent ? 3 : 2, nozzle.face, nozzle.faceFlow);
    if (nozzle.to != 0) {
        face.to = {&nozzle.to, 1};
    }
    tellPoint(model, 0, nozzle.corner);
    model.point(end(1, nozzle.inner, innerFlow));
    model.point(face);
}

void tellNozzleShape(ModelBuilder& model, const NozzlePlan& nozzle) {
    const PipeSize& size = pipeSizes[nozzle.size];
    const Point neck = nozzle.face - nozzle.along * size.flange.thickness;
    Primitives shape(model);
    if (nozzle.bent) {
        const double radius = 1.5 * size.dn;
        const Point arcStart = nozzle.corner - (nozzle.corner - nozzle.inner).normal() * radius;
        const Point arcEnd = nozzle.corner + nozzle.along * radius;
        shape.cylinder(nozzle.inner, arcStart, size.outer);
        shape.arc(arcStart + nozzle.along * radius, arcStart, arcEnd, size.outer);
        shape.cylinder(arcEnd, neck, size.outer);
    } else {
        shape.cylinder(nozzle.inner, neck, size.outer);
    }
    shape.cylinder(neck, nozzle.face, size.flange.outer);
}

}  // namespace

void tellPipeline(ModelBuilder& model, Library& library, const PipelinePlan& pipeline, Id zone) {
    tellManager(model, pipeline, zone);
    PartTeller teller(model, library, pipeline);
    for (const Part& part : pipeline.parts) {
        teller.tell(part);
    }
}

void tellNozzle(ModelBuilder& model, Library& library, const NozzlePlan& nozzle, const NozzleOwner& owner) {
    const Ends ends = nozzle.bent ? Ends::NoneFlangeFlange : Ends::NoneFlange;
    const Id specification = library.specification(0, ends, Layout::Even, nozzle.size, nozzle.size);
    beginObject(model, nozzle.id, "HxDbNozzleModel", owner.id);
    model.name(TextLine(owner.name, "-N", nozzle.number));
    model.text(TextMember::No, TextLine("N", nozzle.number));
    model.color(owner.color);
    model.text(TextMember::Standard, "HG/T 20592");
    model.reference(ReferenceMember::Spec, specification);
    model.text(TextMember::ObjectName, "nozzle_rf");
    tellNozzleAttributes(model, nozzle, owner, specification);
    tellNozzlePoints(model, nozzle);
    tellNozzleShape(model, nozzle);
    model.endObject();
}

}  // namespace plant::generator
