#include "core/material/list_operations.h"

#include <gtest/gtest.h>

#include "list_fixture.h"

namespace ostrel::testing {
namespace {

namespace fs = std::filesystem;

class ListOperationsTest : public ListFixture {
  protected:
    GlassesList& WithThree() {
        return Loaded(
            Image({MakeRecord("A", "S", 1), MakeRecord("B", "S", 2), MakeRecord("C", "T", 3)}));
    }
};

// Out of range nothing is asked; a No changes nothing; a Yes removes, saves and refreshes.
TEST_F(ListOperationsTest, DeleteAsksThenRemovesSavesAndRefreshes) {
    GlassesList& l = WithThree();
    const std::string before = ReadFileBytes(Current());
    EXPECT_FALSE(DeleteMaterial(l, dialogs, 4));
    EXPECT_TRUE(dialogs.boxes.empty()) << "out of range: nothing asked";
    dialogs.answers.push_back(MsgAnswer::No);
    EXPECT_FALSE(DeleteMaterial(l, dialogs, 1));
    EXPECT_EQ(std::tuple(l.CustomCount(), fs::exists(Backup()), refreshes),
              std::tuple(3, false, 0));
    EXPECT_TRUE(ReadFileBytes(Current()) == before);

    dialogs.boxes.clear();
    ASSERT_TRUE(DeleteMaterial(l, dialogs, 2));
    EXPECT_EQ(dialogs.boxes, (std::vector<ShownBox>{{"Are you sure that you wish to delete B - S?",
                                                     MsgButtons::YesNo, MsgIcon::Question, ""}}));
    EXPECT_EQ(std::tuple(Names(), refreshes), std::tuple(std::vector<std::string>{"A", "C"}, 1));
    EXPECT_TRUE(ReadFileBytes(Current()) == Image(l.CustomList()));
}

// A taken name is asked again without a word; a name the file cannot hold is explained first.
TEST_F(ListOperationsTest, DuplicateKeepsAskingUntilTheNameIsFreeAndUsable) {
    GlassesList& l = WithThree();
    // C is taken under source T only, so free under S.
    dialogs.inputs = {"b", "Ωmega", std::string(31, 'x'), "a ", "  C "};
    ASSERT_TRUE(DuplicateMaterial(l, dialogs, 2));
    EXPECT_EQ(dialogs.proposals,
              (std::vector<std::string>{"B", "b", "Ωmega", std::string(31, 'x'), "a "}));
    ASSERT_EQ(dialogs.boxes.size(), 2u);
    EXPECT_EQ(dialogs.boxes[0].title, "Invalid Name");
    EXPECT_EQ(dialogs.boxes[0].text.rfind("    'Ωmega\nCharacter 1", 0), 0u);
    EXPECT_NE(dialogs.boxes[1].text.find("1 more than the 30"), std::string::npos);
    EXPECT_EQ(Names(), (std::vector<std::string>{"A", "B", "C", "C"}));
    const GeneralData& copy = l.CustomList()[2].General;
    EXPECT_EQ(std::tuple(copy.GlassName.Raw(), copy.Source.Text()),
              std::tuple("C" + std::string(29, ' '), "S"));
    EXPECT_TRUE(ReadFileBytes(Current()) == Image(l.CustomList()));
}

TEST_F(ListOperationsTest, DuplicateWithAnEmptyOrCancelledAnswerChangesNothing) {
    GlassesList& l = WithThree();
    const std::string before = ReadFileBytes(Current());
    for (const auto& answer : {std::optional<std::string>(), std::optional<std::string>("   ")}) {
        dialogs.prompts.clear();
        dialogs.inputs = {"B", answer};
        EXPECT_FALSE(DuplicateMaterial(l, dialogs, 1));
        EXPECT_EQ(std::tuple(dialogs.prompts.size(), l.CustomCount(), refreshes),
                  std::tuple(2u, 3, 0));
        EXPECT_TRUE(ReadFileBytes(Current()) == before);
    }
}

}  // namespace
}  // namespace ostrel::testing
