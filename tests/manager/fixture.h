// Models of single objects for the tests of names.
#pragma once

#include "frame/easy_log.h"
#include "frame/exceptions.h"
#include "hextinterface/manager/name_manager.h"
#include "platform/hxcom.h"
#include "support/failure.h"
#include "support/test_support.h"
#include "tolmar/code_page.h"

#include <initializer_list>
#include <memory>
#include <string>
#include <utility>

using Attributes = std::initializer_list<std::pair<const char*, const char*>>;

// A model of the objects added so far, in an installation root with a configuration that maps everything.
class NameTest : public testing::Test {
protected:
    NameTest() {
        root.write("temp/hext/config.json", R"({"skey":["##|##|##|##|##|##|X"],"type":{"X":"PCOM"}})");
        hextlog::exportLog().setTarget((root.path() / "export.log").string().c_str(), true);
    }
    ~NameTest() override { hextlog::exportLog().setTarget("", false); }

    // Texts are in the code page. `more` is JSON that follows the attributes.
    void add(int id, const std::string& objectClass, Attributes attributes, const std::string& more = "") {
        std::string json = R"({"id":)" + std::to_string(id) + R"(,"class":")" + objectClass + R"(","attrs":{)";
        const char* comma = "";
        for (const auto& [key, value] : attributes) {
            json += comma + ('"' + tolmar::toUtf8(key)) + "\":\"" + tolmar::toUtf8(value) + '"';
            comma = ",";
        }
        objects += (objects.empty() ? "" : ",") + json + "}" + (more.empty() ? "" : "," + more) + "}";
    }
    HxDbSmrtlnEntity* at(int id) { return HxDbSmrtlnEntity::cast(object(id)); }
    HxDbObject* object(int id) {
        if (model == nullptr) {
            model = std::make_unique<TestModel>(TestModel::withObjects(objects));
            names.types.loadSkeyTable();
            names.types.loadTypeTable();
        }
        HxDbObject* found = nullptr;
        EXPECT_EQ(hxdbOpenObject(HxDbObjectId(id), found, 3), 0) << id;
        return found;
    }
    std::vector<HxDbSmrtlnEntity*> list(std::initializer_list<int> ids) {
        std::vector<HxDbSmrtlnEntity*> found;
        for (const int id : ids) {
            found.push_back(at(id));
        }
        return found;
    }

    TestRoot root;
    TestUi ui;
    std::string objects;
    std::unique_ptr<TestModel> model;
    NameManager names;
};
