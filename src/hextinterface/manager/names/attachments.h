// Names of the points where supports hang on components: point sets in the catalogue, rows of the attachment
// specification. `object` is always the component attached to, of which the first end and size count.
#pragma once

#include "hextinterface/manager/register/letter_codes.h"
#include "hextinterface/manager/register/names.h"
#include "platform/objects.h"

#include <string>

class AttachmentNames {
public:
    AttachmentNames(NameRegister& names, naming::CodeTables& codes) : names_(names), codes_(codes) {}

    const std::string& getPointSetBaseName(const HxDbObject* object);
    const std::string& getPointSetScName(const HxDbObject* object);
    const std::string& getPointSetDtName(const HxDbObject* object);
    const std::string& getAttaSpecName() const;
    const std::string& getAttaShortName(const HxDbObject* object);
    std::string getAttaStype(const HxDbObject* object);  // not registered
    // Specification, "/", short name.
    const std::string& getAttaSpcoName(const HxDbObject* object);

private:
    NameRegister& names_;
    naming::CodeTables& codes_;
};
