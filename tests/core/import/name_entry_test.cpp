// The material form refuses a typed name or source the files cannot hold as typed, says why,
// and keeps what it held (the import form's rename is checked with its other rules).
#include <gtest/gtest.h>

#include "core/materialform/frm3new_fixture.h"

namespace ostrel::testing {
namespace {

using GeneralTabEntry = Frm3NewFixture;

TEST_F(GeneralTabEntry, IsRefusedAndTheBoxKeepsItsText) {
    const struct {
        bool source;
        const char* typed;
        const char* reason;  // a part of the box's text
    } cases[] = {{false, "中文玻璃", "\"中\" (U+4E2D)"},
                 {true, "Lab\tB", "control character (tab)"}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.typed);
        dialogs.boxes.clear();
        form->DisplayNew();
        TypeName("BK7", "Lab");
        ASSERT_TRUE(dialogs.boxes.empty());
        TextBox& box = c.source ? form->txtGenSource : form->txtGenGlass;
        Enter(*form, box, c.typed,
              c.source ? &frm3New::txtGenSourceChange : &frm3New::txtGenGlassChange);
        ASSERT_EQ(dialogs.boxes.size(), 1u);
        EXPECT_EQ(dialogs.boxes[0].title, c.source ? "Invalid Source" : "Invalid Name");
        EXPECT_NE(dialogs.boxes[0].text.find(c.reason), std::string::npos) << dialogs.boxes[0].text;
        EXPECT_EQ(std::tuple(box.text.get(), form->Record().General.GlassName.Text(),
                             form->Record().General.Source.Text()),
                  std::tuple(c.source ? "Lab" : "BK7", "BK7", "Lab"));
        EXPECT_NE(form->Record().GeneralState.Ready, 0);
    }
}

}  // namespace
}  // namespace ostrel::testing
