// Names and sources are stored exactly as typed or refused with the reason.
#include "core/material/name_check.h"

#include <gtest/gtest.h>

#include "core/material/material_record_codec.h"
#include "core/platform/text.h"
#include "support/scripted_dialogs.h"

namespace ostrel::testing {
namespace {

// Kept as typed or refused with the reason; what is kept reads back from the field exactly,
// blanks at the ends aside.
TEST(NameRefusal, KeptAsTypedOrRefusedWithTheReason) {
    const std::string cp =
        ", is not one of the Western European (Windows-1252) characters that "
        "the glass files hold";
    const std::string control = ", which a name or source cannot hold";
    const std::pair<std::string, std::string> cases[] = {
        {"N-BK7", ""},
        {"  BK7  ", ""},                         // as typed and with blanks around
        {"Crown glass é ü € Œ", ""},             // Western European letters and signs
        {"ééééééééééééééééééééééééééééé€", ""},  // 30 characters in 59 bytes
        // quotes, semicolons, percent signs and SQL words are text like any other
        {"'; DROP TABLE GlassData;--%_", ""},
        {"Ωmega", "Character 1, \"Ω\" (U+03A9)" + cp},
        {"BK7 😀", "Character 5, \"😀\" (U+1F600)" + cp},
        {"123456789012345678901234567890123456",
         "It has 36 characters, 6 more than the 30 a name or source can hold"},
        {"A\tB", "Character 2 is a control character (tab)" + control},
        {"A\x7F", "Character 2 is a control character (U+007F)" + control},
        {"caf\xE9", "Character 4 (byte 0xE9) is no UTF-8 text"},
        {"A\xC1\x81", "Character 2 (byte 0xC1) is no UTF-8 text"}};  // overlong
    for (const auto& [typed, refusal] : cases) {
        EXPECT_EQ(NameRefusal(typed), refusal) << typed;
        EXPECT_TRUE(!refusal.empty() || FixedText<kNameWidth>(typed).Text() == VbTrimCopy(typed));
    }
}

TEST(NameRefusalBox, ShowsTheTypedTextAndTheReason) {
    ScriptedDialogs dialogs;
    ShowNameRefusal(dialogs, true, "A\tB", "Why");
    EXPECT_EQ(dialogs.boxes, (std::vector<ShownBox>{{"    'A?B\nWhy: try again.", MsgButtons::OK,
                                                     MsgIcon::Exclamation, "Invalid Source"}}));
}

}  // namespace
}  // namespace ostrel::testing
