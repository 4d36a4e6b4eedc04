#include "hextinterface/manager/names/attachments.h"

#include "hextinterface/manager/register/cleaned_texts.h"
#include "platform/attribute_cache.h"

using naming::stemWith;

namespace {

const std::string attaSpec = "ATTA_SPEC";

}  // namespace

const std::string& AttachmentNames::getPointSetBaseName(const HxDbObject* object) {
    std::string name(naming::namePrefix);
    name += codes_.end.code(getBomValue(object, "end1"));
    (name += '_') += codes_.size.code(getBomValue(object, "size1"));
    return names_.put(name, NameKind::Component);
}

const std::string& AttachmentNames::getPointSetScName(const HxDbObject* object) {
    return names_.put(stemWith(getPointSetBaseName(object), "-SC"), NameKind::Scom);
}

const std::string& AttachmentNames::getPointSetDtName(const HxDbObject* object) {
    return names_.put(stemWith(getPointSetBaseName(object), "-DT", naming::stemLength - 1), NameKind::Dtset);
}

const std::string& AttachmentNames::getAttaSpecName() const {
    return attaSpec;
}

const std::string& AttachmentNames::getAttaShortName(const HxDbObject* object) {
    return names_.put(stemWith(naming::withoutPrefix(getPointSetBaseName(object)), "-SP"), NameKind::Short);
}

std::string AttachmentNames::getAttaStype(const HxDbObject* object) {
    return std::string("ATTA").append(codes_.end.code(getBomValue(object, "end1")));
}

const std::string& AttachmentNames::getAttaSpcoName(const HxDbObject* object) {
    return names_.put(attaSpec + "/" + getAttaShortName(object), NameKind::Spco);
}
