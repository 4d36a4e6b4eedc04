#include "generator/parts.h"

#include "generator/primitives.h"
#include "generator/shapes.h"

#include <cmath>

namespace plant::generator {

namespace {

double wallText(const PipingClass& type, const PipeSize& size) {
    return std::round(size.wall * type.wallFactor * 10) / 10;
}

void writePoints(Output& out, const Part& part) {
    out.text(",\"points\":[");
    for (std::size_t i = 0; i < part.pointCount; ++i) {
        const PlanPoint& point = part.points[i];
        out.text(i == 0 ? "{\"no\":" : ",{\"no\":").whole(point.no).text(",\"at\":").point(point.at);
        if (point.flow != 0) {
            out.member("flow", point.flow);
        }
        if (point.to != 0) {
            out.member("to", point.to);
        }
        out.text("}");
    }
    out.text("]");
}

void writeVectors(Output& out, const Part& part, const Point& insertion) {
    out.text(",\"refVec\":").direction(part.across).text(",\"insVec\":").direction(part.along);
    out.text(",\"insPoint\":").point(insertion);
}

// "tag":"V-12", where the family has tags.
void writeTag(Output& out, const Part& part) {
    if (const char* letters = row(part.family).tag) {
        out.text(",\"tag\":\"").text(letters).text("-").whole(part.number).text("\"");
    }
}

class PartWriter {
public:
    PartWriter(Output& out, Library& library, const PipelinePlan& pipeline)
        : out_(&out), library_(&library), pipeline_(&pipeline) {}

    void write(const Part& part) {
        switch (part.family) {
        case Family::Weld:
            return writeWeld(part);
        case Family::Stop:
            return writeStop(part);
        case Family::Balloon:
            return writeBalloon(part);
        default:
            writeComponent(part);
            writeBoltSet(part);
        }
    }

private:
    void begin(const Part& part) { beginObject(*out_, part.id, row(part.family).className, pipeline_->id); }

    void writeComponent(const Part& part) {
        const FamilyRow& family = row(part.family);
        const Id specification =
            library_->specification(pipeline_->pipingClass, part.ends, part.layout, part.size1, part.size2);
        begin(part);
        if (family.kind != nullptr) {
            out_->member("kind", family.kind);
        }
        out_->member("objectName", family.objectName).member("standard", family.standard).member("spec", specification);
        if (part.bolts != 0) {
            out_->member("bolts", part.bolts);
        }
        if (family.tag != nullptr) {
            out_->text(",\"refVec\":").direction(part.across);
        }
        writeInsulation();
        out_->text(",\"attrs\":{").text(family.attributes);
        writeSpecAttributes(part, specification);
        writeOwnAttributes(part);
        out_->text("}");
        writePoints(*out_, part);
        writeShape(*out_, part, *pipeline_);
        out_->text("}");
    }

    void writeInsulation() {
        if (!pipeline_->insulated) {
            return;
        }
        const Service& service = pipeline_->carries();
        out_->text(",\"insulation\":{\"thickness\":").whole(service.thickness);
        out_->member("material", utf8(service.insulation)).member("code", service.insulationCode).text("}");
    }

    void writeSpecAttributes(const Part& part, Id specification) {
        const FamilyRow& family = row(part.family);
        const PipingClass& type = pipeline_->type();
        out_->member("specname", type.name).memberAsText("specid", specification);
        out_->member("stan", family.standard).member("serial", family.serial);
        for (int end = 0; end < family.ends; ++end) {
            out_->text(",\"end").whole(end + 1).text("\":\"").text(row(part.ends).ends[end]).text("\"");
        }
        for (int end = 0; end < family.ends; ++end) {
            const PipeSize& size = pipeSizes[sizeAtEnd(part.layout, part.size1, part.size2, end)];
            out_->text(",\"size").whole(end + 1).text("\":\"").whole(size.dn).text("\"");
        }
        out_->member("rating", type.rating).member("sch", type.schedule);
        out_->text(",\"thick\":\"").number(wallText(type, pipeSizes[part.size1])).text("\"");
    }

    void writeOwnAttributes(const Part& part) {
        if (part.angle != 0) {
            if (part.bendRadius > 0) {
                out_->text(",\"radius\":\"").number(part.bendRadius).text("\"");
            }
            out_->memberAsText("angle", part.angle);
        }
        if (part.family == Family::Pipe || part.family == Family::FlangedPipe) {
            out_->text(",\"length\":\"")
                .number(part.length)
                .text("\",\"pipelength\":\"")
                .number(part.length)
                .text("\"");
        }
        out_->member("material", pipeline_->type().material).member("name", utf8(row(part.family).name));
        writeTag(*out_, part);
        writeLineAttributes(pipeline_->insulated);
    }

    void writeLineAttributes(bool insulated) {
        out_->memberAsText("lineno", pipeline_->id).member("insul", insulated ? "1" : "0");
        out_->member("minsul", insulated ? utf8(pipeline_->carries().insulation) : "0");
    }

    void writeWeld(const Part& part) {
        begin(part);
        out_->member("objectName", part.fieldWeld ? "weld_field" : "weld_shop");
        writeVectors(*out_, part, part.at(1));
        writeSmall(part);
        out_->member("stype", part.fieldWeld ? "FW" : "SW").text(",\"tag\":\"W").whole(part.number).text("\"");
        finishSmall(part);
    }

    void writeStop(const Part& part) {
        begin(part);
        out_->member("objectName", "tube_stop");
        writeVectors(*out_, part, part.at(1));
        writeSmall(part);
        finishSmall(part);
    }

    void writeSmall(const Part& part) {
        out_->text(",\"attrs\":{").text(row(part.family).attributes);
        out_->memberAsText("size", pipeSizes[part.size1].dn).memberAsText("size1", pipeSizes[part.size1].dn);
    }

    void finishSmall(const Part& part) {
        writeLineAttributes(false);
        out_->text("}");
        writePoints(*out_, part);
        writeShape(*out_, part, *pipeline_);
        out_->text("}");
    }

    void writeBalloon(const Part& part) {
        begin(part);
        out_->text(",\"no\":\"PI-").whole(part.number).text("\"").member("objectName", row(part.family).objectName);
        writeVectors(*out_, part, balloonCenter(part));
        out_->text(",\"attrs\":{").text(row(part.family).attributes);
        writeTag(*out_, part);
        out_->member("name", utf8(u8"压力表"));
        finishSmall(part);
    }

    void writeBoltSet(const Part& flange) {
        if (flange.bolts == 0) {
            return;
        }
        const Library::BoltIds ids = library_->bolts(pipeline_->pipingClass, flange.size1);
        out_->beginObject();
        out_->text("{\"id\":").whole(flange.bolts).text(",\"class\":\"HxDbBoltNutModel\"");
        out_->member("owner", pipeline_->id).member("bolt", ids.bolt).member("nut", ids.nut);
        out_->member("flange", ids.flange);
        writeBoltShape(*out_, flange);
        out_->text("}");
    }

    Output* out_;
    Library* library_;
    const PipelinePlan* pipeline_;
};

void writeBranches(Output& out, const PipelinePlan& pipeline) {
    out.text(",\"branches\":[");
    bool firstBranch = true;
    for (const std::vector<Id>& branch : pipeline.branches) {
        out.text(firstBranch ? "[" : ",[");
        firstBranch = false;
        for (std::size_t i = 0; i < branch.size(); ++i) {
            out.text(i == 0 ? "" : ",").whole(branch[i]);
        }
        out.text("]");
    }
    out.text("]");
}

void writeCoordinates(Output& out, std::string_view name, const Point& at) {
    out.text(",\"").text(name).text("\":\"").number(at.x).text(",").number(at.y).text(",").number(at.z).text("\"");
}

void writeManager(Output& out, const PipelinePlan& pipeline, Id zone) {
    const Service& service = pipeline.carries();
    beginObject(out, pipeline.id, "HextPipeline", pipeline.in);
    out.member("name", pipeline.name).member("color", service.color);
    out.text(",\"attrs\":{\"lineno\":\"").text(pipeline.name).text("\"");
    out.member("specname", pipeline.type().name).member("fluid", utf8(service.fluid)).memberAsText("zoneid", zone);
    out.member("insul", pipeline.insulated ? "1" : "0");
    if (pipeline.insulated) {
        out.member("insulcode", service.insulationCode);
    }
    out.member("destemp", utf8(service.temperature)).member("oprtemp", utf8(service.temperature));
    out.member("despress", utf8(service.pressure)).member("oprpress", utf8(service.pressure));
    out.text(",\"roadno\":\"R").whole(pipeline.number % 9 + 1).text("\"");
    out.member("pipesegmenttype", utf8(u8"工艺管道"));
    writeCoordinates(out, "linestart", pipeline.start);
    writeCoordinates(out, "lineend", pipeline.end);
    out.text("}");
    writeBranches(out, pipeline);
    out.text("}");
}

void writeNozzleAttributes(Output& out, const NozzlePlan& nozzle, const NozzleOwner& owner, Id specification) {
    const PipingClass& type = pipingClasses[0];
    const PipeSize& size = pipeSizes[nozzle.size];
    out.text(",\"attrs\":{\"item\":\"NOZZLE\",\"itype\":\"RF\"").member("smrtln", nozzle.bent ? "Arc" : "Normal");
    out.member("specname", type.name).memberAsText("specid", specification).member("skey", "NZFS");
    out.member("eqno", owner.name).text(",\"nozno\":\"N").whole(nozzle.number).text("\"");
    out.member("flanstd", "HG/T 20592").member("std_serial", "B").member("end", "FLRF").member("end1", "NONE");
    out.member("end2", "FLRF")
        .memberAsText("size", size.dn)
        .memberAsText("size1", size.dn)
        .memberAsText("size2", size.dn);
    if (nozzle.bent) {
        out.member("end3", "FLRF").memberAsText("size3", size.dn).member("radius", "1.5").member("angle", "90");
        out.text(",\"P2\":\"").number(nozzle.corner.distanceTo(nozzle.face)).text("\"");
    }
    out.text(",\"P1\":\"").number(nozzle.inner.distanceTo(nozzle.bent ? nozzle.corner : nozzle.face)).text("\"");
    out.member("rating", type.rating)
        .text(",\"thick\":\"")
        .number(size.wall)
        .text("\"")
        .member("material", type.material);
    out.memberAsText("owner", owner.id).member("insul", "0").member("minsul", "0").text("}");
}

void writeNozzlePoints(Output& out, const NozzlePlan& nozzle) {
    const int faceNo = nozzle.bent ? 3 : 2;
    const int innerFlow = nozzle.faceFlow == 0 ? 0 : 3 - nozzle.faceFlow;
    out.text(",\"points\":[{\"no\":0,\"at\":").point(nozzle.corner).text("},{\"no\":1,\"at\":").point(nozzle.inner);
    out.member("flow", innerFlow).text("},{\"no\":").whole(faceNo).text(",\"at\":").point(nozzle.face);
    out.member("flow", nozzle.faceFlow);
    if (nozzle.to != 0) {
        out.member("to", nozzle.to);
    }
    out.text("}]");
}

void writeNozzleShape(Output& out, const NozzlePlan& nozzle) {
    const PipeSize& size = pipeSizes[nozzle.size];
    const Point neck = nozzle.face - nozzle.along * size.flange.thickness;
    Primitives shape(out);
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

Output& beginObject(Output& out, Id id, std::string_view className, Id in) {
    out.beginObject();
    out.text("{\"id\":").whole(id).text(",\"class\":\"").text(className).text("\"");
    return out.member("in", in);
}

void writePipeline(Output& out, Library& library, const PipelinePlan& pipeline, Id zone) {
    writeManager(out, pipeline, zone);
    PartWriter writer(out, library, pipeline);
    for (const Part& part : pipeline.parts) {
        writer.write(part);
    }
}

void writeNozzle(Output& out, Library& library, const NozzlePlan& nozzle, const NozzleOwner& owner) {
    const Ends ends = nozzle.bent ? Ends::NoneFlangeFlange : Ends::NoneFlange;
    const Id specification = library.specification(0, ends, Layout::Even, nozzle.size, nozzle.size);
    beginObject(out, nozzle.id, "HxDbNozzleModel", owner.id);
    out.text(",\"name\":\"").text(owner.name).text("-N").whole(nozzle.number).text("\"");
    out.text(",\"no\":\"N").whole(nozzle.number).text("\"").member("color", owner.color);
    out.member("standard", "HG/T 20592").member("spec", specification).member("objectName", "nozzle_rf");
    writeNozzleAttributes(out, nozzle, owner, specification);
    writeNozzlePoints(out, nozzle);
    writeNozzleShape(out, nozzle);
    out.text("}");
}

}  // namespace plant::generator
