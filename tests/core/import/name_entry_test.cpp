// The material form refuses a typed name or source the files cannot hold as typed, says why,
// and keeps what it held (the import form's rename is checked with its other rules).
#include <gtest/gtest.h>

#include "core/materialform/frm3new_fixture.h"

namespace ostrel::testing {
namespace {

struct EntryCase {
    bool source;
    const char* typed;
    const char* reason;  // a part of the box's text
};

class GeneralTabEntry : public Frm3NewFixture, public ::testing::WithParamInterface<EntryCase> {};

TEST_P(GeneralTabEntry, IsRefusedAndTheBoxKeepsItsText) {
    form->DisplayNew();
    TypeName("BK7", "Lab");
    ASSERT_TRUE(dialogs.boxes.empty());
    TextBox& box = GetParam().source ? form->txtGenSource : form->txtGenGlass;
    box.text = GetParam().typed;
    GetParam().source ? form->txtGenSourceChange() : form->txtGenGlassChange();
    ASSERT_EQ(dialogs.boxes.size(), 1u);
    EXPECT_EQ(dialogs.boxes[0].title, GetParam().source ? "Invalid Source" : "Invalid Name");
    EXPECT_NE(dialogs.boxes[0].text.find(GetParam().reason), std::string::npos)
        << dialogs.boxes[0].text;
    EXPECT_EQ(box.text.get(), GetParam().source ? "Lab" : "BK7");
    EXPECT_EQ(form->Record().General.GlassName.Text(), "BK7");
    EXPECT_EQ(form->Record().General.Source.Text(), "Lab");
    EXPECT_NE(form->Record().GeneralState.Ready, 0);
}

INSTANTIATE_TEST_SUITE_P(Cases, GeneralTabEntry,
                         ::testing::Values(EntryCase{false, "中文玻璃", "\"中\" (U+4E2D)"},
                                           EntryCase{true, "Lab\tB", "control character (tab)"}));

}  // namespace
}  // namespace ostrel::testing
