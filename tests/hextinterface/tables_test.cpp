// The tables of specifications of whole runs: what they refer to, their values, and their bores against the model.
#include "fixture.h"
#include "generator/generate.h"
#include "spec_tables.h"

#include "hextinterface/hextbasemethod/macro_text.h"
#include "platform/hxcom.h"
#include "platform/model_tests.h"
#include "platform/smrtln.h"

#include <cstring>

namespace {

class Tables : public HextRunTest {
protected:
    void load(const std::string& json) {
        model.reset();
        model = std::make_unique<TestModel>(json);
    }
    static std::string joined(const std::vector<std::string>& findings) {
        std::string text;
        for (const std::string& finding : findings) {
            text += tolmar::toUtf8(finding) + "\n";
        }
        return text;
    }

    std::unique_ptr<TestModel> model;
};

// Ends whose sizes fill the columns of a component, from 1.
std::vector<int> endsOf(const HxDbObject* object, const std::vector<int>& sizes) {
    const std::string_view item = getBomValue(object, "item");
    const std::string_view family = getBomValue(object, "smrtln");
    if (item == "TESO" || item == "OLET" || item == "BOSS") {
        return {1, 2, 3};
    }
    if (family == "Arc") {
        return sizes[0] != sizes[1] ? std::vector{1, 3} : std::vector{1};
    }
    if (family == "Pipe") {
        return {1};
    }
    if (family == "Cross") {
        return {1, 2, 3, 4};
    }
    const bool two = family == "Normal" || family == "Ecc" || smrtln::isValve(HxDbSmrtlnEntity::cast(object)) ||
                     smrtln::isGaskVirtual(HxDbSmrtlnEntity::cast(object));
    return two ? std::vector{1, 2} : std::vector{1, 2, 3};
}

std::vector<int> sizesOf(const HxDbObject* object) {
    const auto* specification = openByAttribute<HxDbTubeSpecification>(object, "specid");
    std::vector<int> sizes;
    for (int end = 1; end <= 4; ++end) {
        const char* size = specification != nullptr ? specification->getSize(end) : nullptr;
        sizes.push_back(size != nullptr ? std::atoi(size) : 0);
    }
    return sizes;
}

// The references of the lines of components in pipe.txt, by position; a position with two of them tells nothing.
std::map<std::string, std::string> referencesByPosition(const std::string& pipes) {
    std::map<std::string, std::string> references;
    std::istringstream lines(pipes);
    for (std::string line; std::getline(lines, line);) {
        const std::size_t position = line.find("','E ") != std::string::npos ? line.find("','E ") : line.find("','W ");
        const std::size_t reference = line.find(",FALSE,'/", position);
        if (line.find("Comp") == std::string::npos || position == std::string::npos || reference == std::string::npos) {
            continue;
        }
        const std::string where = line.substr(position + 3, line.find('\'', position + 3) - position - 3);
        const std::string what = line.substr(reference + 9, line.find('\'', reference + 9) - reference - 9);
        const auto [at, isNew] = references.try_emplace(where, what);
        at->second = isNew || at->second == what ? what : "";
    }
    return references;
}

// The components that pipe.txt gives a row, with that row's name.
std::vector<std::pair<const HxDbObject*, std::string>> componentsWithRow(const std::string& pipes) {
    const auto references = referencesByPosition(pipes);
    std::vector<HxDbObject*> objects;
    getAllSubObjects(hxcom::getDataManTreeRoot(), objects);
    std::vector<std::pair<const HxDbObject*, std::string>> found;
    for (const HxDbObject* object : objects) {
        const HxDbTubeModelSpec* component = HxDbTubeModelSpec::cast(object);
        if (component == nullptr || component->isKindOf(HxDbNozzleModel::desc())) {
            continue;
        }
        const std::string_view family = getBomValue(component, "smrtln");
        const bool fromEnd =
            family == "Pipe" || family == "Ecc" || family == "Hose" || getBomValue(component, "item") == "CAP";
        const auto at = references.find(positionText(component->getCoordOfNo(fromEnd ? 1 : 0)));
        // A bend that the writer inserted stands where a plain pipe begins.
        if (at != references.end() && !at->second.empty() && !at->second.starts_with("BEND_FIX/")) {
            found.emplace_back(component, at->second);
        }
    }
    return found;
}

// Every row that a component stands behind has its sizes, in the order of the first row under the heading. Gives the
// number of components that were compared.
std::size_t compareBores(const SpecTables& tables, const std::string& pipes) {
    std::map<std::string, const SpecRow*> byName;
    std::map<std::size_t, std::string> firstOfBlock;
    for (const SpecRow& row : tables.rows) {
        byName[row.name] = &row;
        firstOfBlock.try_emplace(row.block, row.name);
    }
    const auto components = componentsWithRow(pipes);
    std::map<std::string, const HxDbObject*> owners;
    for (const auto& [object, name] : components) {
        owners.try_emplace(name, object);
    }
    std::size_t compared = 0;
    for (const auto& [object, name] : components) {
        const SpecRow* row = byName[name];
        if (row == nullptr) {
            ADD_FAILURE() << "no row " << name;
            continue;
        }
        const auto first = owners.find(firstOfBlock[row->block]);
        if (first == owners.end()) {
            continue;  // a plain pipe, which has no line of its own, tells the order
        }
        const std::vector<int> sizes = sizesOf(object);
        std::string expected;
        std::string written;
        const std::vector<int> ends = endsOf(first->second, sizesOf(first->second));
        for (std::size_t i = 0; i < 4; ++i) {
            expected += " " + std::to_string(i < ends.size() ? sizes[static_cast<std::size_t>(ends[i] - 1)] : 0);
            written += " " + row->cells.at("PBOR" + std::to_string(i));
        }
        EXPECT_EQ(written, expected) << row->place << " " << name << " " << object->objectId().toInt();
        ++compared;
    }
    return compared;
}

TEST_F(Tables, ReferToWhatIsThereWhateverIsSwitchedOn) {
    load(example());
    for (const char* key : {"", "supportSpec", "boltSpec", "eqnoName"}) {
        if (*key != '\0') {
            switchOn(key);
        }
        hextout();
        const SpecTables tables(files());
        EXPECT_EQ(joined(tables.findings), "") << key;
        EXPECT_GT(tables.rows.size(), 80U) << key;
        EXPECT_GT(compareBores(tables, root.read("temp/hext/pipe.txt")), 60U) << key;
    }
    for (const char* file : {"BoltSpec.txt", "SpecSupportSpec.pmlmac", "SpecAttachSpec.pmlmac"}) {
        EXPECT_NE(root.read(std::string("temp/hext/") + file).find("*/"), std::string::npos) << file;
    }
}

TEST_F(Tables, OfGeneratedPlantsReferToWhatIsThere) {
    for (const char* key : {"supportSpec", "boltSpec"}) {
        switchOn(key);
    }
    for (const std::uint64_t seed : {11, 12, 13}) {
        load(plant::generateModelText({.objects = 3000, .seed = seed}));
        hextout();
        const SpecTables tables(files());
        EXPECT_EQ(joined(tables.findings), "") << seed;
        EXPECT_GT(compareBores(tables, root.read("temp/hext/pipe.txt")), 300U) << seed;
        EXPECT_EQ(folderFindings(), "") << seed;
    }
}

// The specification of the bolts is that of the components, and they are known by another text in the catalogue.
TEST_F(Tables, OfBoltsFitBothTheCatalogueAndTheComponents) {
    std::string plant = example();
    const std::string own = R"("boltSpec": "M20x80")";
    const std::size_t at = plant.find(own);
    ASSERT_NE(at, std::string::npos);
    load(plant.replace(at, own.size(), R"("boltSpec": "A1B")"));
    switchOn("boltSpec");
    hextout();
    const SpecTables tables(files());
    EXPECT_EQ(joined(tables.findings), "");
    const std::string specs = root.read("temp/hext/PipeCompSpecGenerator.txt");
    EXPECT_NE(specs.find("BSPEC /BOLT_A1B\r\nBLTMETHOD 'NEW'\r\n"), std::string::npos);
    EXPECT_NE(root.read("temp/hext/BoltSpec.txt").find("NEW SPECIFICATION /BOLT_A1B"), std::string::npos);
}

// The reader finds what is wrong: a folder with one kind of fault each.
TEST_F(Tables, AreReadWithOpenEyes) {
    load(example());
    switchOn("boltSpec");
    hextout();
    const Files whole = files();
    const struct {
        const char* file;
        const char* from;
        const char* to;
        const char* finding;
    } faults[] = {
        {"cata.txt", "CreateScom('", "CreateNone('", "the catalogue has no CATREF /"},
        {"cata.txt", "CreateSdte('", "CreateNone('", "the catalogue has no DETAIL /"},
        {"cata.txt", "CreateSmte('", "CreateScom('", "the catalogue has no MATXT /"},
        {"cata.txt", "Sbol('", "None('", "the catalogue has no BLTREF /"},
        {"nozzleSpec.txt", "-SP  ", "-SP  1  ", " cells under 8 columns"},
        {"PipeCompSpecGenerator.txt", "_C-SP  ", "_B-SP  ", " already"},
        {"PipeSpcoUdaSet.txt", "OLD /", "OLD /x", "no row x"},
        {"PipeSpcoUdaSet.txt", "OLD /", "/", "no value of a row"},
        {"BoltSpcoUdaSet.txt", ":Standard ", ":Standing ", "no attribute of :Standing "},
    };
    for (const auto& fault : faults) {
        Files broken = whole;
        std::string& text = broken.at(fault.file);
        ASSERT_NE(text.find(fault.from), std::string::npos) << fault.file << fault.from;
        for (std::size_t at = 0; (at = text.find(fault.from, at)) != std::string::npos; at += std::strlen(fault.to)) {
            text.replace(at, std::strlen(fault.from), fault.to);
        }
        EXPECT_NE(joined(SpecTables(broken).findings).find(fault.finding), std::string::npos)
            << fault.file << ": " << fault.from;
    }
}

}  // namespace
