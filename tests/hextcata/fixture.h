// Models of a few components, a name manager that maps them all, and the catalogue that they give.
#pragma once

#include "cata_text.h"

#include "frame/exceptions.h"
#include "hextinterface/hextbasemethod/object_lists.h"
#include "hextinterface/hextcata/hextcata.h"
#include "hextinterface/manager/manager.h"
#include "support/failure.h"
#include "support/test_support.h"
#include "tolmar/code_page.h"

#include <cstdio>

struct At {
    int number;
    HxGePoint3D at;
    int flow = 0;
    int to = 0;
};

inline std::string json(const HxGePoint3D& p) {
    char text[128];
    std::snprintf(text, sizeof text, "[%.17g,%.17g,%.17g]", p.x, p.y, p.z);
    return text;
}

class CatalogueTest : public testing::Test {
protected:
    CatalogueTest() {
        configure(R"("skey":["##|##|##|##|##|##|XY","VALVE|##|##|##|##|##|7VA"],"type":{"X#":"PCOM","7#":"VALV"})");
    }

    void configure(const std::string& members) { root.write("temp/hext/config.json", "{" + members + "}"); }

    // `attributes` is the inside of the JSON object, `more` are further members. Points go through `place`.
    void add(int id, const std::string& objectClass, const std::string& attributes, const std::vector<At>& points = {},
             const std::string& more = "", const Placement& place = {}) {
        std::string text = R"({"id":)" + std::to_string(id) + R"(,"class":")" + objectClass + R"(","attrs":{)" +
                           tolmar::toUtf8(attributes) + R"(},"points":[)";
        for (std::size_t i = 0; i < points.size(); ++i) {
            const At& p = points[i];
            text += std::string(i > 0 ? "," : "") + R"({"no":)" + std::to_string(p.number) + R"(,"at":)" +
                    json(place.at(p.at)) + R"(,"flow":)" + std::to_string(p.flow) +
                    (p.to != 0 ? R"(,"to":)" + std::to_string(p.to) : "") + "}";
        }
        addJson(text + "]" + (more.empty() ? "" : "," + more) + "}");
    }
    void addJson(const std::string& object) { objects += (objects.empty() ? "" : ",") + object; }

    void load() {
        model.reset();
        names.emplace();
        model = std::make_unique<TestModel>(TestModel::withObjects(objects));
        names->types.loadSkeyTable();
        names->types.loadTypeTable();
    }
    template <typename Class = HxDbSmrtlnEntity>
    Class* at(int id) {
        if (model == nullptr) {
            load();
        }
        HxDbObject* found = nullptr;
        EXPECT_EQ(hxdbOpenObject(HxDbObjectId(id), found, 3), 0) << id;
        return Class::cast(found);
    }
    ComponentList list(std::initializer_list<int> ids) {
        ComponentList found;
        for (const int id : ids) {
            found.push_back(at(id));
        }
        return found;
    }
    // What one branch adds to the catalogue.
    std::string branchText(std::initializer_list<int> ids, const ObjectSet& skip = {}, bool whole = true) {
        const ComponentList components = list(ids);
        TextStream out;
        CataBuilder builder(std::move(out.stream()), *names);
        EXPECT_EQ(builder.writeBranch(components, skip), whole);
        insulated = builder.insulatedObjects();
        bolted = builder.boltedObjects();
        EXPECT_TRUE(builder.close());
        return out.text();
    }
    static bool wasPassedOver(int id, const std::string& why) {
        for (const tolmar::PassedOver& p : tolmar::runReport().passed()) {
            if (p.id == id && p.why == why) {
                return true;
            }
        }
        return false;
    }

    TestRoot root;
    TestUi ui;
    std::string objects;
    std::unique_ptr<TestModel> model;
    std::optional<NameManager> names;
    std::vector<HxDbSmrtlnEntity*> insulated;
    std::vector<HxDbBoltNutModel*> bolted;
};
