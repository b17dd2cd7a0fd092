// Names and sources are stored exactly as typed or refused with the reason.
#include "core/material/name_check.h"

#include <gtest/gtest.h>

#include "core/material/material_record_codec.h"
#include "core/platform/text.h"
#include "support/scripted_dialogs.h"

namespace ostrel::testing {
namespace {

struct NameCase {
    const char* typed;
    const char* refusal;  // "" when the name is kept
};

class NameRefusalTest : public ::testing::TestWithParam<NameCase> {};

TEST_P(NameRefusalTest, KeptAsTypedOrRefusedWithTheReason) {
    const std::string typed = GetParam().typed;
    EXPECT_EQ(NameRefusal(typed), GetParam().refusal);
    if (*GetParam().refusal == '\0') {
        // What is kept reads back from the field exactly, blanks at the ends aside.
        FixedText<kNameWidth> field(typed);
        EXPECT_EQ(field.Text(), VbTrimCopy(typed));
    }
}

INSTANTIATE_TEST_SUITE_P(
    Cases, NameRefusalTest,
    ::testing::Values(
        NameCase{"N-BK7", ""}, NameCase{"  BK7  ", ""},
        NameCase{"Crown glass é ü € Œ", ""},  // Western European letters and signs
        NameCase{"123456789012345678901234567890", ""},
        NameCase{"ééééééééééééééééééééééééééééé€", ""},  // 30 characters in 59 bytes
        // quotes, semicolons, percent signs and SQL words are text like any other
        NameCase{"O'Hara \"K5\"", ""}, NameCase{"A;B;C", ""}, NameCase{"100% SiO2 _", ""},
        NameCase{"'; DROP TABLE GlassData;--", ""},
        NameCase{"Ωmega",
                 "Character 1, \"Ω\" (U+03A9), is not one of the Western European "
                 "(Windows-1252) characters that the glass files hold"},
        NameCase{"中文玻璃",
                 "Character 1, \"中\" (U+4E2D), is not one of the Western European "
                 "(Windows-1252) characters that the glass files hold"},
        NameCase{"BK7 😀",
                 "Character 5, \"😀\" (U+1F600), is not one of the Western European "
                 "(Windows-1252) characters that the glass files hold"},
        NameCase{"123456789012345678901234567890123456",
                 "It has 36 characters, 6 more than the 30 a name or source can hold"},
        NameCase{"A\tB",
                 "Character 2 is a control character (tab), which a name or source "
                 "cannot hold"},
        NameCase{"A\nB",
                 "Character 2 is a control character (line break), which a name or "
                 "source cannot hold"},
        NameCase{"A\x7F",
                 "Character 2 is a control character (U+007F), which a name or "
                 "source cannot hold"},
        NameCase{"A\xC2\x81",
                 "Character 2 is a control character (U+0081), which a name or "
                 "source cannot hold"},
        NameCase{"caf\xE9", "Character 4 (byte 0xE9) is no UTF-8 text"},
        NameCase{"A\xC1\x81", "Character 2 (byte 0xC1) is no UTF-8 text"}));  // overlong

TEST(NameRefusalBox, ShowsTheTypedTextAndTheReason) {
    ScriptedDialogs dialogs;
    ShowNameRefusal(dialogs, true, "A\tB", "Why");
    ASSERT_EQ(dialogs.boxes.size(), 1u);
    EXPECT_EQ(dialogs.boxes[0].text, "    'A?B\nWhy: try again.");
    EXPECT_EQ(dialogs.boxes[0].title, "Invalid Source");
    EXPECT_EQ(dialogs.boxes[0].icon, MsgIcon::Exclamation);
}

}  // namespace
}  // namespace ostrel::testing
