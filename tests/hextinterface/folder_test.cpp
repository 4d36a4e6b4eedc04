// The reader of the folder finds what is wrong with one: the example's folder with one fault each.
#include "fixture.h"

namespace {

using FolderReader = HextRunTest;

TEST_F(FolderReader, FindsEachKindOfFault) {
    const TestModel model(example());
    hextout();
    tolmar::waitForStartedPrograms();  // the files change below
    ASSERT_EQ(folderFindings(), "");
    const std::string longName(52, 'q');
    const struct {
        const char* file;
        std::string from;
        std::string to;
        std::string finding;
    } faults[] = {
        {"uda.txt", "NEW UDA /Sch", "NEW UDA /Sche", "the attribute Sch is not defined"},
        {"uda.txt", "NEW UDA /Sch ", "NEW UDA /Rating ", "the name Rating was created at uda.txt:"},
        {"cata.txt", "CreateSec('/CATA_FIX_BEND', '/SEC", "CreateSec('/CATA_FIX_BENT', '/SEC",
         "cata.txt:2: no element CATA_FIX_BENT so far"},
        {"cata.txt", "OLD /FIX_BEND-GM", "OLD /FIX_BEND-GX", "cata.txt:9: no element FIX_BEND-GX so far"},
        {"cata.txt", "'/FIX_BEND-PT', '1'", "'/FIX_BEND-PX', '1'", "cata.txt:10: no element FIX_BEND-PX so far"},
        {"cata.txt", "'/FIX_BEND-MT', 'D1222')", "'/FIX_BEND-MT', D1222')", "cata.txt:7: quotes do not balance"},
        {"PipeCompSpecGenerator.txt", "/FIX_BEND-DT", "/FIX_BEND-DX",
         "PipeCompSpecGenerator.txt:11: no element FIX_BEND-DX so far"},
        {"PipeCompSpecGenerator.txt", "*/BEND_FIX-SP", "*/BEND_FUX-SP", "no specification row BEND_FIX/BEND_FIX-SP"},
        {"PipeCompSpecGenerator.txt", "/BEND_FIX\r", "/" + longName + "\r", "the name " + longName + " has 52 bytes"},
        {"PipeSpcoUdaSet.txt", "OLD /", "OLD /x", "PipeSpcoUdaSet.txt:1: no element x"},
        {"sitezone.txt", "CreateZone('", "CreateZone('x", "sitezone.txt:"},
        {"equip.txt", "EquipCreateEquip(", "EquipCreateEquip", "a macro call without arguments"},
        {"pipe.txt", "OLD /ORNA_ZONE", "OLD /ORNA_ZUNE", "pipe.txt:1: no element ORNA_ZUNE"},
        {"pipe.txt", ",'/HR')", ",'/HX')", "pipe.txt:4: no element HX so far"},
        {"pipe.txt", "',200,1.0,'", "',200,'", "pipe.txt:4: the call CreatePipe has 4 arguments"},
        {"pipe.txt", "-B2',", "-B1',", "was created at pipe.txt:"},
    };
    for (const auto& fault : faults) {
        const std::string file = std::string("temp/hext/") + fault.file;
        const std::string whole = root.read(file);
        std::string text = whole;
        const std::size_t at = text.find(fault.from);
        ASSERT_NE(at, std::string::npos) << fault.file << ": " << fault.from;
        root.write(file, text.replace(at, fault.from.size(), fault.to));
        EXPECT_NE(folderFindings().find(fault.finding), std::string::npos) << fault.from << "\n" << folderFindings();
        root.write(file, whole);
    }
}

// Names stand as they are behind OLD and NEW, and escaped in quotes.
TEST_F(FolderReader, TakesNamesWithQuotesAndBlanks) {
    root.write("temp/hext/struct.txt", "!owner = '*'\n!self = 'a''b'\n"
                                       "call !!ORNAEquipCreateStruct(!owner, !self, !pos, !ori)\nOLD /a'b\n");
    root.write("temp/hext/PipeCompSpecGenerator.txt",
               "NEW SPECIFICATION /two words \n    PIPE  */P-SP  50\nOLD /two words /P-SP\n");
    EXPECT_EQ(folderFindings(), "");
}

}  // namespace
