#include "core/shell/ini_file.h"

#include <gtest/gtest.h>

#include <string>

#include "support/temp_dir.h"

namespace ostrel {
namespace {

using ostrel::testing::ReadFileBytes;
using ostrel::testing::TempDir;
using ostrel::testing::WriteFileBytes;

class IniFileTest : public ::testing::Test {
  protected:
    std::string File() const { return ReadFileBytes(dir / "OstrelTD.INI"); }
    void Write(const std::string& bytes) const { WriteFileBytes(dir / "OstrelTD.INI", bytes); }

    TempDir dir;
    IniFile ini{dir.path()};
};

TEST_F(IniFileTest, WritesSectionsAndKeysAsWindowsText) {
    EXPECT_TRUE(ini.IniPutText("FormPosNonChild_frm2Manage", "fTop", "10"));
    EXPECT_TRUE(ini.IniPutText("FormPosNonChild_frm2Manage", "fLeft", "20"));
    EXPECT_TRUE(ini.IniPutText("FormPosNonChild_frmMainMDI", "fTop", "0"));
    EXPECT_TRUE(ini.IniPutText("formposnonchild_FRM2MANAGE", "FTOP", "15"));  // any case
    EXPECT_EQ(File(),
              "[FormPosNonChild_frm2Manage]\r\nfTop=15\r\nfLeft=20\r\n\r\n"
              "[FormPosNonChild_frmMainMDI]\r\nfTop=0\r\n");
}

TEST_F(IniFileTest, AddsAKeyAtTheEndOfItsSection) {
    Write("; positions\r\n[A]\r\nx=1\r\n\r\n[B]\r\ny=2\r\n");
    ASSERT_TRUE(ini.IniPutText("A", "z", "3"));
    EXPECT_EQ(File(), "; positions\r\n[A]\r\nx=1\r\nz=3\r\n\r\n[B]\r\ny=2\r\n");
}

TEST_F(IniFileTest, ReadsValuesOfAHandWrittenFile) {
    std::string content =
        "[Pos]\nfTop = -12px\nfLeft=abc\nName=  two words  \nQuoted=\" q \"\n[Other]\nfTop=99\n"
        "long=" +
        std::string(250, 'x') + "\nnul=ab";
    content += std::string("\0c\0\0", 4);
    Write(content + "\n");
    EXPECT_EQ(ini.IniGetInt("Pos", "fTop"), -12);
    EXPECT_EQ(ini.IniGetInt("pos", "FLEFT"), 0);
    EXPECT_EQ(ini.IniGetInt("Pos", "missing"), 0);
    EXPECT_EQ(ini.IniGetInt("Other", "fTop"), 99);
    EXPECT_EQ(ini.IniGetText("Pos", "Name"), "two words");
    EXPECT_EQ(ini.IniGetText("Pos", "Quoted"), "q");
    EXPECT_EQ(ini.IniGetText("Pos", "missing"), "");
    EXPECT_EQ(ini.IniGetText("Missing", "fTop"), "");
    // Text is cut at 200 characters and NULs become blanks.
    EXPECT_EQ(ini.IniGetText("Other", "long"), std::string(200, 'x'));
    EXPECT_EQ(ini.IniGetText("Other", "nul"), "ab c");
}

TEST_F(IniFileTest, NoFileReadsAsEmpty) {
    IniFile absent(dir.path() / "absent");
    EXPECT_EQ(absent.IniGetText("S", "k"), "");
    EXPECT_EQ(absent.IniGetInt("S", "k"), 0);
    EXPECT_FALSE(absent.IniPutText("S", "k", "v"));  // its folder does not exist
}

}  // namespace
}  // namespace ostrel
