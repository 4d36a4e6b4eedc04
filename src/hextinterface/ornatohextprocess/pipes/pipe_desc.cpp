#include "hextinterface/ornatohextprocess/pipes/pipe_desc.h"

#include "frame/exceptions.h"
#include "hextinterface/hextbasemethod/macro_text.h"
#include "hextinterface/ornatohextprocess/specs/created.h"
#include "platform/hxcom.h"

namespace {

constexpr const char* attributeFault = "属性错误";
constexpr std::string_view pipeBanner = "\n-----------------------------PIPE--------------------------------\n";
constexpr std::string_view branchBanner = "\n-----------------------------BRANCH------------------------------\n";

const std::string& orZero(const std::string& value) {
    static const std::string zero = "0";
    return value.empty() ? zero : value;
}

void refuseValue(const std::string& pipe, const char* attribute, const std::string& value) {
    hxcad::hextPrintf("Error:createpipe <%s> %s attr value <%s> invalid", pipe.c_str(), attribute, value.c_str());
    throw ExportException(attributeFault);
}

void testNumber(const std::string& pipe, const char* attribute, const std::string& value) {
    if (!isNumericText(value) && value != "unset") {
        refuseValue(pipe, attribute, value);
    }
}

}  // namespace

void testNameLength(std::string_view name, const char* kind) {
    if (name.size() > maxNameLength) {
        hxcad::hextPrintf("Error:create %s name<%s> too long", kind, std::string(name).c_str());
        throw ExportException("命名错误");
    }
}

void _HextPipeDesc::test() const {
    testNameLength(name, "pipe");
    if (name.find(' ') != std::string::npos) {
        hxcad::hextPrintf("Error:createpipe <%s> _name attr value not allow space", name.c_str());
        throw ExportException(attributeFault);
    }
    testNumber(name, "temp", temp);
    testNumber(name, "press", press);
    if (ispec != "unset" && createdIspecs().count(ispec) == 0) {
        refuseValue(name, "ispec", ispec);
    }
}

void _HextPipeDesc::write(std::string& out, bool) const {
    test();
    out.append("OLD /").append(zone).append("\n").append(pipeBanner);
    out += "!!ORNAPipeCreatePipe(";
    appendRef(out, name);
    out.append(",").append(orZero(temp)).append(",").append(orZero(press)).append(",");
    appendRef(out, pspec);
    out += ',';
    appendRef(out, ispec);
    out += ")\n";
    out.append(":OpePress 0\n:OpeTemp 0\nFUNC '").append(func).append("'\n");
}

void _HextBranchDesc::setPoint(End end, const HxGePoint3D& point) {
    (end == End::Head ? headPoint : tailPoint) = point;
    (end == End::Head ? headPosition : tailPosition) = positionText(point);
}

void _HextBranchDesc::setDirection(End end, const HxGeVector3D& direction) {
    (end == End::Head ? headDirVector : tailDirVector) = direction.normal();
    (end == End::Head ? headDirection : tailDirection) = directionText(direction);
}

void _HextBranchDesc::setBore(End end, std::string bore) {
    if (bore.find('*') != std::string::npos) {
        throw ExportException("");
    }
    (end == End::Head ? headBore : tailBore) = std::move(bore);
}

void _HextBranchDesc::write(std::string& out, bool alreadyCreated) const {
    if (alreadyCreated) {
        out.append("OLD /").append(name).append("\n");
    } else {
        testNameLength(name, "branch");
        out.append(branchBanner).append("!!ORNAPipeCreateBranch(");
        appendRef(out, name);
        out.append(",").append(temp).append(",0,");
        appendRef(out, ispec);
        out += ',';
        appendValue(out, colour);
        out += ")\n";
    }
    out += "!!ORNAPipeSetBranchProp(";
    for (const std::string* value : {&headPosition, &tailPosition, &headDirection, &tailDirection, &headBore, &tailBore,
                                     &headConnection, &tailConnection}) {
        appendValue(out, *value);
        out += ',';
    }
    appendRef(out, lstube);
    out += ")\n";
    if (endKind == 2 && alreadyCreated) {
        out.append("TREF /").append(linkName).append("\nOLD /").append(linkName);
        out.append("\nHREF /").append(name).append("\nOLD /").append(name).append("\n");
    }
    if (endKind == 0 || endKind == 2) {
        out += "LAST MEM\nhandle (2,113)\nendhandle\n";
    }
}
