// What the tests of equipment, structures and supports share.
#pragma once

#include "frame/exceptions.h"
#include "hextinterface/manager/manager.h"
#include "hextinterface/ornatohextprocess/design/files.h"
#include "hextinterface/ornatohextprocess/solids/prim_convert.h"
#include "rebuilt_shape.h"
#include "support/test_support.h"

// Names and attributes of a run in an installation root of its own.
class EquipTest : public testing::Test {
protected:
    std::string headOf(const EquipRecord& record, ElementKind kind) {
        std::string text;
        writeHead(text, record, udas, kind);
        return text;
    }

    // What the receiver builds of a primitive that is an equipment's only one.
    Shape macroShape(const HextPrimary3D& primitive) {
        EquipRecord record;
        record.groups.push_back(convertPrimary(primitive));
        finishRecord(record);
        return rebuild(macro::readElements(headOf(record, ElementKind::Equipment)).at(0));
    }

    TestRoot root;
    TestUi ui;
    NameManager names;
    UdaWriter udas{(root.path() / "uda.txt").string(), names};
    ExportContext context{names, udas};
};
