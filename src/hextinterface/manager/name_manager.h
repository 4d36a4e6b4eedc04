// Names for every element of the macro files. No writer builds a name of its own.
//
// Sameness is decided by the name: objects with equal attributes get equal names, the writers see the name already
// created and write the element once. Every registered name stands in one register with its kind; the same text under
// another kind throws ExportException "%1% 存在命名冲突！".
//
// One instance serves one run. It is the register, and holds a maker of names for each topic. Texts are 8-bit in the
// code page, lengths are in bytes. A result that is a reference stays valid as long as the manager. Object arguments
// may be null where nothing else is said: all attributes then read as empty. Unless an operation says otherwise its
// result is registered.
#pragma once

#include "hextinterface/manager/names/attachments.h"
#include "hextinterface/manager/names/bolts.h"
#include "hextinterface/manager/names/branches.h"
#include "hextinterface/manager/names/components.h"
#include "hextinterface/manager/names/equipment.h"
#include "hextinterface/manager/names/insulation.h"
#include "hextinterface/manager/names/joints.h"
#include "hextinterface/manager/names/owners.h"
#include "hextinterface/manager/register/names.h"
#include "hextinterface/manager/register/type_names.h"

class NameManager : public NameRegister {
    naming::CodeTables codes_;

public:
    NameManager();
    NameManager(const NameManager&) = delete;
    NameManager& operator=(const NameManager&) = delete;

    TypeNames types;  // Skey and GType
    ComponentNames components{*this, codes_, types};
    AttachmentNames attachments{*this, codes_};
    BoltNames bolts{*this, codes_};
    JointNames joints{*this};  // welds and connections
    InsulationNames insulation{*this};
    OwnerNames owners;  // sites, zones, supports; colours
    BranchNames branches{*this, types, owners};
    EquipmentNames equipment;
};
