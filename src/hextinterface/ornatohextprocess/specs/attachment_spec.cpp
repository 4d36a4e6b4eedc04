#include "hextinterface/ornatohextprocess/specs/attachment_spec.h"

#include "hextinterface/manager/name_manager.h"
#include "hextinterface/ornatohextprocess/specs/support_macro.h"
#include "platform/attribute_cache.h"

#include <set>

namespace {

class AttachSpecWriter {
public:
    AttachSpecWriter(const std::string& folder, NameManager& names);
    void write(const std::vector<const HxDbSmrtlnEntity*>& connected);

private:
    void writeRow(const HxDbSmrtlnEntity* object);

    SpecFile out_;
    NameManager& names_;
};

AttachSpecWriter::AttachSpecWriter(const std::string& folder, NameManager& names)
    : out_(openSpecMacro(folder, "AttachSpec.pmlmac", names)), names_(names) {}

void AttachSpecWriter::write(const std::vector<const HxDbSmrtlnEntity*>& connected) {
    std::set<std::string> met;
    writePipingHead(out_, names_, names_.attachments.getAttaSpecName());
    writeHeadingLines(out_, supportColumns, "-  -  -  ATTA");
    for (const HxDbSmrtlnEntity* object : connected) {
        if (met.insert(names_.attachments.getAttaSpcoName(object)).second) {
            writeRow(object);
        }
    }
    out_.close();
}

void AttachSpecWriter::writeRow(const HxDbSmrtlnEntity* object) {
    if (!names_.markIfNotCreated(names_.attachments.getAttaSpcoName(object))) {
        return;
    }
    const std::string shortName = names_.attachments.getAttaShortName(object);
    names_.markIfNotCreated(shortName);
    out_.line("ATTA  */", shortName, "  ", getBomValue(object, "size1"), "  ", names_.attachments.getAttaStype(object),
              "  /", names_.attachments.getPointSetScName(object), "  /", names_.attachments.getPointSetDtName(object),
              noReference, noReference, noReference);
}

}  // namespace

void writeAttachmentSpec(const std::string& folder, NameManager& names,
                         const std::vector<const HxDbSmrtlnEntity*>& connected) {
    AttachSpecWriter(folder, names).write(connected);
}
