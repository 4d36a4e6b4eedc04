#include "tolmar/paths.h"

#include "platform/hxcom.h"
#include "support/scratch_folder.h"
#include "tolmar/code_page.h"
#include "tolmar/system.h"

#include <gtest/gtest.h>

namespace {

using namespace tolmar;

std::string resolved(const std::string& path) {
    return resolvePath(path).string();
}

TEST(Paths, ExistingPartsMatchWithoutCaseAndTheRestStands) {
    const ScratchFolder folder;
    folder.put("Temp/Hext/ConnTable.txt", "");
    const std::string root = folder.path().string();
    EXPECT_EQ(resolved(root + "\\temp\\HEXT\\conntable.txt"), root + "/Temp/Hext/ConnTable.txt");
    EXPECT_EQ(resolved(root + "/TEMP//hext\\New.TXT"), root + "/Temp/Hext/New.TXT");
    EXPECT_EQ(resolved(root + "\\TEMP\\none\\hext"), root + "/Temp/none/hext");
    EXPECT_EQ(resolved(""), "");
}

TEST(Paths, ExactMatchWinsThenByteOrder) {
    const ScratchFolder folder;
    for (const char* name : {"abcd", "abcD", "abCd", "aBcd", "Abcd", "ABcd", "AbCd", "AbcD", "ABcD", "aBCD", "abCD"}) {
        folder.put(name, "");
    }
    EXPECT_EQ(resolved(folder.file("aBCD")), folder.file("aBCD"));
    EXPECT_EQ(resolved(folder.file("ABCD")), folder.file("ABcD"));
}

TEST(Paths, NamesBeyondAscii) {
    const ScratchFolder folder;
    folder.put(toUtf8("Ärger/É北区.txt"), "x");
    const std::string root = folder.path().string();
    EXPECT_EQ(resolved(root + "\\äRGER\\é北区.TXT"), root + "/" + toUtf8("Ärger/É北区.txt"));
}

// The second byte of the first character is a backslash in the Chinese code page.
TEST(Paths, FolderAndNameSplitAtTheLastBackslashOfTheText) {
    EXPECT_EQ(folderOf("誠\\b\\c/d"), "誠\\b");
    EXPECT_EQ(fileNameOf("誠\\b\\c/d"), "c/d");
    EXPECT_EQ(fileNameOf("a/誠"), "誠");
    EXPECT_EQ(folderOf("a/誠"), "a");
    EXPECT_EQ(folderOf("誠"), "");
    EXPECT_EQ(fileNameOf("誠"), "誠");
    EXPECT_EQ(resolved("誠\\x"), toUtf8("誠/x"));
}

TEST(Paths, DeletesFilesOnlyAndCopiesOverExisting) {
    const ScratchFolder folder;
    folder.put("A.txt", "new");
    folder.put("b.txt", "old text");
    EXPECT_TRUE(copyFile(folder.file("a.TXT"), folder.file("B.txt")));
    EXPECT_EQ(folder.get("b.txt"), "new");
    EXPECT_FALSE(copyFile(folder.file("none"), folder.file("c.txt")));
    EXPECT_FALSE(copyFile(folder.file("A.txt"), folder.file("none/c.txt")));
    EXPECT_TRUE(deleteFile(folder.file("a.txt")));
    EXPECT_FALSE(deleteFile(folder.file("a.txt")));
    EXPECT_FALSE(deleteFile(folder.path().string()));
}

TEST(Paths, NamesBelowTheInstallationRoot) {
    const ScratchFolder folder;
    folder.put("Sys/hextProfile.ini", "");
    setInstallationRoot(folder.path().string());
    EXPECT_EQ(HextSystem::getFullHextName("\\sys\\HEXTPROFILE.ini"), folder.file("Sys/hextProfile.ini"));
    EXPECT_EQ(HextSystem::getFullHextName("temp/x"), folder.file("temp/x"));
    EXPECT_EQ(std::string(HextSystem::hextEnv()), folder.path().string());
    char small[5] = "....";
    HextSystem::getFullHextName("temp", small, sizeof small);
    EXPECT_EQ(std::string(small), folder.path().string().substr(0, 4));
    setInstallationRoot(".");
}

}  // namespace
