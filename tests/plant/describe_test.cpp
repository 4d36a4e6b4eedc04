// What is told of a model: counts, bounds, and what is missing.
#include "loaded_model.h"

namespace {

const std::string plantFile = fileWith(
    R"({"id":2,"class":"HextSite","in":1,"name":"\u6cf5 \"1\""},{"id":3,"class":"HextPipeline","in":2,"name":"P",)"
    R"("branches":[[5],[6]]},{"id":4,"class":"HextPipeline","in":2,"name":"P"},)"
    R"({"id":5,"class":"HxDbPipeSpec","in":3,"attrs":{"item":"PIPE"},"points":[{"no":1,"at":[-10,0,4],"to":6}],)"
    R"("primitives":[{"type":"HextTorus3D","center":[0,30,0],"startPoint":[1,0,0],"thirdField":[900,900,900],)"
    R"("startDiameter":1,"endDiameter":1}]},{"id":6,"class":"HxDbPipeSpec","in":3},{"id":7,"class":"HextZone","in":2})");

TEST(DescribeModel, AsJson) {
    LoadedModel model(plantFile);
    const std::string text = plant::describeModel(model.model(), {.json = true});
    const auto has = [&](const std::string& part) { return text.find(part) != std::string::npos; };
    EXPECT_TRUE(has(R"("databases":[{"name":"MAIN","shortName":"M","main":true,"objects":7}])")) << text;
    EXPECT_TRUE(has(R"("objects":{"HextPipeline":2,"HextSite":1,"HextWorld":1,"HextZone":1,"HxDbPipeSpec":2})"))
        << text;
    EXPECT_TRUE(has(R"("primitives":{"HextTorus3D":1})")) << text;
    EXPECT_TRUE(has(R"("withoutShape":{"HxDbPipeSpec":1})")) << text;
    EXPECT_TRUE(has(R"("pipelines":2,"emptyPipelines":1,"branches":2)")) << text;
    EXPECT_TRUE(has(R"("unnamedManagers":1,"repeatedNames":{"HextPipeline P":2})")) << text;
    EXPECT_TRUE(has(R"("low":[-10,0,0],"high":[1,30,4])")) << "an axis is no point of the shape: " << text;
    EXPECT_TRUE(has(R"(["itype",)")) << text;
    EXPECT_FALSE(has(R"("item")")) << text;
}

TEST(DescribeModel, AsTable) {
    LoadedModel model(plantFile);
    const std::string text = plant::describeModel(model.model());
    EXPECT_NE(text.find("\n  HxDbPipeSpec                           2\n"), std::string::npos) << text;
    EXPECT_NE(text.find("names of several managers\n  HextPipeline P "), std::string::npos) << text;
    const LoadedModel empty(R"({"format":"tessaro-plant","version":1,"databases":[{"name":"A"}],"objects":[]})");
    EXPECT_EQ(plant::describeModel(*plant::currentModel()).find("bounds"), std::string::npos);
}

TEST(PrintTree, IndentsByDepth) {
    LoadedModel model(plantFile);
    EXPECT_EQ(plant::printTree(model.model()), "MAIN (main)\n"
                                               "  HextWorld 1 W\n"
                                               "    HextSite 2 \xE6\xB3\xB5 \"1\"\n"
                                               "      HextPipeline 3 P\n"
                                               "        HxDbPipeSpec 5\n"
                                               "        HxDbPipeSpec 6\n"
                                               "      HextPipeline 4 P\n"
                                               "      HextZone 7\n");
    EXPECT_EQ(plant::printTree(model.model(), 0), "MAIN (main)\n  HextWorld 1 W\n");
    EXPECT_NE(plant::printTree(model.model(), 1).find("HextSite"), std::string::npos);
    EXPECT_EQ(plant::printTree(model.model(), 1).find("HextPipeline"), std::string::npos);
}

}  // namespace
