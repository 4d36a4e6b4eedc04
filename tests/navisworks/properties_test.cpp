// Property attributes and the JSON side file.
#include "navisworks/properties/file.h"
#include "support.h"

namespace {

class Properties : public NvTest {};

const char* const echo = "function getNodeName(t) return plant.displayName(t.objid) or 'X' end\n"
                         "function getReference(t) local r = {} "
                         "for _, a in ipairs(plant.attributes(t.objid) or {}) do r[#r + 1] = a end return r end\n";

TEST_F(Properties, StandInTheSceneAndInTheSideFile) {
    load(node(2, "HextSite", 1, "厂") + "," + node(3, "HextZone", 2) +
         R"(,{"id":4,"class":"HextPipeline","in":3,"name":"L","attrs":{"k":"管线"}},)" +
         item(5, "HxDbPipeSpec", 4, R"("name":"P1","attrs":{"管线号":"L-1","b":2.5,"c":"\"q\""})") + "," +
         item(6, "HxDbTubeModelSpec", 4, R"("name":"V1","attrs":{"管线号":"L-1"})") + "," +
         item(7, "HxDbTubeModelSpec", 4, R"("name":"none")"));
    script(echo);
    EXPECT_EQ(run(), "M\n  厂\n    ORNA_ZONE\n      L {k=管线}\n"
                     "        P1* {管线ID=L-1|管线ID, b=2.500000, c=\"q\"}\n          triangles 12 #FFFFFF\n"
                     "        V1* {管线号=L-1}\n          triangles 12 #FFFFFF\n"
                     "        none* {}\n          triangles 12 #FFFFFF\n");
    EXPECT_EQ(json(), "{\n\t\"W`厂`整个工厂`L`P1\":\t{\n\t\t\"管线ID\":\t\"L-1\",\n\t\t\"b\":\t\"2.500000\",\n"
                      "\t\t\"c\":\t\"\\\"q\\\"\"\n\t},\n\t\"W`厂`整个工厂`L`V1\":\t{\n\t\t\"管线号\":\t\"L-1\"\n\t},\n"
                      "\t\"W`厂`整个工厂`L`none\":\t{\n\t}\n}");
    for (const std::string& name : read().classNames()) {
        EXPECT_EQ(name, "Orna属性|OrnaProperty");
    }
    EXPECT_EQ(read().classNames().size(), 4U);
}

TEST_F(Properties, EqualPathsAreCounted) {
    load(
        equipment(item(5, "HxDbEquipment", 4) + "," + item(6, "HxDbEquipment", 4) + "," + item(7, "HxDbEquipment", 4)));
    nvout();
    EXPECT_EQ(json(),
              "{\n\t\"W`S`Z`E`Other\":\t{\n\t},\n\t\"W`S`Z`E`Other`1\":\t{\n\t},\n\t\"W`S`Z`E`Other`2\":\t{\n\t}\n}");
    nvout();
    EXPECT_EQ(json().find("Other`3"), std::string::npos) << "a second run counts anew";
}

TEST_F(Properties, BoltsHaveTheAttributeOfTheirFlangeAndNoMember) {
    load(node(2, "HextSite", 1, "S") + "," + node(3, "HextZone", 2, "Z") + "," + node(4, "HextPipeline", 3, "L") + "," +
         item(5, "HxDbTubeModelSpec", 4, R"("name":"flange","attrs":{"a":"1"},"bolts":9)") +
         R"(,{"id":9,"class":"HxDbBoltNutModel","name":"bolts","color":3,"attrs":{"a":"2"},"primitives":[)" + box() +
         "]}");
    script(echo);
    EXPECT_EQ(run(), "M\n  S\n    Z\n      L {}\n        flange* {a=1}\n          triangles 12 #FFFFFF\n"
                     "        bolts* {a=1}\n          triangles 12 #00FF00\n");
    EXPECT_EQ(json(), "{\n\t\"W`S`Z`L`flange\":\t{\n\t\t\"a\":\t\"1\"\n\t}\n}");
}

TEST_F(Properties, AScriptThatFailsCostsItsObjectAlone) {
    load(equipment(item(5, "HxDbEquipment", 4) + "," + item(6, "HxDbEquipment", 4)));
    script(std::string(namesById) +
           "function getReference(t) if t.objid == 5 then error('no') end return {{'k', 7}} end");
    EXPECT_EQ(run(), "M\n  S\n    Z\n      N4 {k=7}\n        N5* {}\n          triangles 12 #FFFFFF\n"
                     "        N6* {k=7}\n          triangles 12 #FFFFFF\n");
}

TEST_F(Properties, WithoutAScriptNothingIsAskedForEachObject) {
    load(equipment(item(5, "HxDbEquipment", 4)));
    nvout();
    EXPECT_EQ(ui.printed.find("global"), std::string::npos) << ui.printed;
    script("");
    ui.printed.clear();
    EXPECT_EQ(run(), "M\n  S\n    Z\n      Other {}\n        Other* {}\n          triangles 12 #FFFFFF\n");
    EXPECT_NE(ui.printed.find("attempt to call global `getNodeName'"), std::string::npos)
        << "a script that lacks its functions is told so";
}

}  // namespace
