#include "core/shell/ini_file.h"

#include <gtest/gtest.h>

#include <string>

#include "support/temp_dir.h"

namespace ostrel {
namespace {

using ostrel::testing::ReadFileBytes;
using ostrel::testing::TempDir;
using ostrel::testing::WriteFileBytes;

TEST(IniFile, WritesSectionsAndKeysAsWindowsText) {
    TempDir dir;
    IniFile ini(dir.path());
    EXPECT_TRUE(ini.IniPutText("FormPosNonChild_frm2Manage", "fTop", "10"));
    EXPECT_TRUE(ini.IniPutText("FormPosNonChild_frm2Manage", "fLeft", "20"));
    EXPECT_TRUE(ini.IniPutText("FormPosNonChild_frmMainMDI", "fTop", "0"));
    EXPECT_TRUE(ini.IniPutText("formposnonchild_FRM2MANAGE", "FTOP", "15"));  // any case
    EXPECT_EQ(ReadFileBytes(dir / "OstrelTD.INI"),
              "[FormPosNonChild_frm2Manage]\r\nfTop=15\r\nfLeft=20\r\n\r\n"
              "[FormPosNonChild_frmMainMDI]\r\nfTop=0\r\n");
}

TEST(IniFile, AddsAKeyAtTheEndOfItsSection) {
    TempDir dir;
    WriteFileBytes(dir / "OstrelTD.INI", "; positions\r\n[A]\r\nx=1\r\n\r\n[B]\r\ny=2\r\n");
    IniFile ini(dir.path());
    ASSERT_TRUE(ini.IniPutText("A", "z", "3"));
    EXPECT_EQ(ReadFileBytes(dir / "OstrelTD.INI"),
              "; positions\r\n[A]\r\nx=1\r\nz=3\r\n\r\n[B]\r\ny=2\r\n");
}

TEST(IniFile, ReadsValuesOfAHandWrittenFile) {
    TempDir dir;
    WriteFileBytes(dir / "OstrelTD.INI",
                   "[Pos]\nfTop = -12px\nfLeft=abc\nName=  two words  \nQuoted=\" q \"\n"
                   "[Other]\nfTop=99\n");
    IniFile ini(dir.path());
    EXPECT_EQ(ini.IniGetInt("Pos", "fTop"), -12);
    EXPECT_EQ(ini.IniGetInt("pos", "FLEFT"), 0);
    EXPECT_EQ(ini.IniGetInt("Pos", "missing"), 0);
    EXPECT_EQ(ini.IniGetInt("Other", "fTop"), 99);
    EXPECT_EQ(ini.IniGetText("Pos", "Name"), "two words");
    EXPECT_EQ(ini.IniGetText("Pos", "Quoted"), "q");
    EXPECT_EQ(ini.IniGetText("Pos", "missing"), "");
    EXPECT_EQ(ini.IniGetText("Missing", "fTop"), "");
}

TEST(IniFile, TextIsCutAt200CharactersAndNulsBecomeBlanks) {
    TempDir dir;
    std::string content = "[S]\nlong=" + std::string(250, 'x') + "\nnul=ab";
    content += std::string("\0c\0\0", 4);
    content += "\n";
    WriteFileBytes(dir / "OstrelTD.INI", content);
    IniFile ini(dir.path());
    EXPECT_EQ(ini.IniGetText("S", "long"), std::string(200, 'x'));
    EXPECT_EQ(ini.IniGetText("S", "nul"), "ab c");
}

TEST(IniFile, NoFileReadsAsEmpty) {
    TempDir dir;
    IniFile ini(dir.path() / "absent");
    EXPECT_EQ(ini.IniGetText("S", "k"), "");
    EXPECT_EQ(ini.IniGetInt("S", "k"), 0);
    EXPECT_FALSE(ini.IniPutText("S", "k", "v"));  // its folder does not exist
}

}  // namespace
}  // namespace ostrel
