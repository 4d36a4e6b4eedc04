// The schema beside the format's description says what the reader takes. After a change of the reader's tables, run
// with TESSARO_REBASE=1 to write it anew.
#include "plant/model.h"
#include "schema_text.h"
#include "support/files.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <iterator>

namespace {

const std::string schemaFile = TESSARO_SOURCE_DIR "/docs/model.schema.json";

TEST(Schema, SaysWhatTheReaderTakes) {
    const std::string text = SchemaText().text();
    if (std::getenv("TESSARO_REBASE") != nullptr) {
        std::ofstream(schemaFile, std::ios::binary) << text;
    }
    EXPECT_EQ(fileBytes(schemaFile), text);
}

// Every member and class name of the format is told on the page for those who write files by hand.
TEST(Schema, ThePageNamesEveryMember) {
    const std::string page = fileBytes(TESSARO_SOURCE_DIR "/docs/model-format.md");
    const auto expectNames = [&](const plant::NameRows& names) {
        for (const plant::NameRows::Name& name : names.names()) {
            EXPECT_NE(page.find("`" + std::string(name.text) + "`"), std::string::npos)
                << names.title() << ": " << name.text;
        }
    };
    for (std::size_t i = 0; i < plant::familyCount; ++i) {
        expectNames(plant::familyTable(static_cast<plant::Family>(i)).names);
    }
    for (const plant::PrimitiveClass& type : plant::primitiveClasses()) {
        expectNames(type.names);
    }
    namespace rows = plant::rows;
    for (const plant::NameRows* names :
         {&plant::classNames(), &plant::primitiveNames(), &plant::kindNames(), &rows::top(), &rows::project(),
          &rows::database(), &rows::attribute(), &rows::point(), &rows::keyPoint(), &rows::insulation(), &rows::end(),
          &rows::run()}) {
        expectNames(*names);
    }
}

TEST(Schema, ThePagesExampleLoads) {
    const std::string page = fileBytes(TESSARO_SOURCE_DIR "/docs/model-format.md");
    const std::string fence = "```json\n";
    const std::size_t start = page.find(fence) + fence.size();
    const plant::LoadResult result = plant::loadModelText(page.substr(start, page.find("```", start) - start));
    ASSERT_TRUE(result) << result.error;
    EXPECT_EQ(plant::objectCount(*result.model), 6U);
}

}  // namespace
