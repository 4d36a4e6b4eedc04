// Review models on disk as plants in memory and as model files.
#include "plant/model.h"
#include "sources/rvm/rvm_writer.h"
#include "support/scratch_folder.h"

#include <gtest/gtest.h>

namespace {

std::string equipment(const std::string& name) {
    return RvmWriter()
        .group(name, 5)
        .primitive(2, {1, 2, 3})
        .primitive(8, {1, 0})
        .primitive(12, {1})
        .endGroup()
        .finish();
}

std::string text(const std::string& name, const std::string& value) {
    return "CADC_Attributes_File v1.0 , start: NEW , end: END , name_end: := , sep: &end&\nNEW " + name +
           "\nTYPE:=EQUI\nKEY:= " + value + "\nEND\n";
}

plant::LoadResult load(const std::vector<std::filesystem::path>& files) {
    return plant::loadPlant(files);
}

std::string treeOf(const plant::LoadResult& loaded) {
    return loaded ? plant::printTree(*loaded.model) : loaded.error;
}

std::size_t countOf(const std::string& text, std::string_view part) {
    std::size_t count = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) {
        ++count;
    }
    return count;
}

bool remarked(const plant::LoadResult& loaded, std::string_view code) {
    for (const plant::LoadRemark& remark : loaded.remarks) {
        if (remark.code == code) {
            return true;
        }
    }
    return false;
}

}  // namespace

TEST(ReviewPlant, TheTextBesideIsFoundInAnyCase) {
    for (const std::string name : {"review.txt", "REVIEW.ATT", "Review.Txt"}) {
        const ScratchFolder folder;
        folder.put("other.txt", text("/E", "wrong"));
        folder.put(name, text("/E", "right"));
        const plant::LoadResult loaded = load({folder.put("review.rvm", equipment("/E"))});
        EXPECT_EQ(countOf(treeOf(loaded), "HextEquipe"), 1U) << treeOf(loaded);
        EXPECT_TRUE(remarked(loaded, "rvm.kind-unknown"));
    }
    const ScratchFolder folder;
    folder.put("review.txt", "notes of somebody");
    const plant::LoadResult loaded = load({folder.put("review.rvm", equipment("/E"))});
    EXPECT_EQ(countOf(treeOf(loaded), "HextEquipe"), 0U) << "a text of another kind is none";
    EXPECT_TRUE(loaded);
}

TEST(ReviewPlant, FilesAndFoldersMakeOnePlant) {
    const ScratchFolder folder;
    folder.put("b.rvm", equipment("/B"));
    folder.put("b.att", text("/B", "b"));
    folder.put("a.dat", equipment("/A"));
    folder.put("readme", "no plant");
    const std::string other = folder.put("more/c.rvm", equipment("/C"));
    const std::string tree = treeOf(load({folder.path(), other}));
    EXPECT_EQ(countOf(tree, "HextWorld"), 1U) << tree;
    EXPECT_EQ(countOf(tree, "HextSite"), 3U);
    EXPECT_LT(tree.find(" a"), tree.find(" b"));
    const plant::LoadResult none = load({folder.put("empty/x", "x").substr(0, folder.path().string().size() + 6)});
    EXPECT_NE(none.error.find("empty: cannot be read"), std::string::npos) << none.error;
}

TEST(ReviewPlant, RefusalsNameTheFile) {
    const ScratchFolder folder;
    const std::string cut = equipment("/E").substr(0, 300);
    const plant::LoadResult loaded = load({folder.put("cut.rvm", cut)});
    EXPECT_FALSE(loaded);
    EXPECT_NE(loaded.error.find("cut.rvm: offset "), std::string::npos) << loaded.error;
    const plant::LoadResult alone = load({folder.put("alone.txt", text("/E", "x"))});
    EXPECT_NE(alone.error.find("name the RVM file"), std::string::npos) << alone.error;
    const plant::LoadResult missing = load({folder.path() / "missing.rvm"});
    EXPECT_FALSE(missing);
}

TEST(ReviewPlant, ConvertedItIsTheSamePlant) {
    const ScratchFolder folder;
    const std::string review = folder.put("review.rvm", equipment("/E\xF6"));
    folder.put("review.txt", text("/E\xF6", "W\xE4rme"));
    const std::vector<std::filesystem::path> files = {review};
    const plant::ConvertResult converted = plant::convertPlant(files, folder.file("plant.json"));
    ASSERT_EQ(converted.error, "");
    const plant::LoadResult direct = load(files);
    const plant::LoadResult again = load({folder.file("plant.json")});
    ASSERT_TRUE(again) << again.error;
    EXPECT_EQ(converted.remarks.size(), direct.remarks.size());
    EXPECT_EQ(plant::describeModel(*again.model), plant::describeModel(*direct.model));
    EXPECT_EQ(treeOf(again), treeOf(direct));
    EXPECT_NE(folder.get("plant.json").find("W\xC3\xA4rme"), std::string::npos);

    const plant::ConvertResult twice =
        plant::convertPlant(std::vector<std::filesystem::path>{folder.file("plant.json")}, folder.file("other.json"));
    EXPECT_TRUE(twice.isRefused);
    EXPECT_FALSE(std::filesystem::exists(folder.file("other.json")));
    const plant::ConvertResult nowhere = plant::convertPlant(files, folder.file("no/such/plant.json"));
    EXPECT_FALSE(nowhere.isRefused);
    EXPECT_NE(nowhere.error, "");
}
