#include "core/platform/controls.h"

#include <gtest/gtest.h>

namespace ostrel {
namespace {

// A property tells its observers of real changes only, until their subscription ends; an
// observer may end its own while it is called, and a subscription may outlive its control.
TEST(Controls, ObserversHearRealChangesUntilTheirSubscriptionEnds) {
    int once = 0, calls = 0;
    Subscription outlived;
    {
        Button com("&Edit", "Edit the data for the selected glass");
        Subscription first;
        first = com.Observe([&] {
            ++once;
            first.Reset();
        });
        auto sub = com.Observe([&] { ++calls; });
        com.enabled = true;  // unchanged
        com.caption = std::string("&Edit");
        EXPECT_EQ(calls, 0);
        com.enabled = false;
        com.caption = std::string("&Close");
        EXPECT_EQ(std::tuple(once, calls), std::tuple(1, 2));
        sub.Reset();
        com.enabled = true;
        EXPECT_EQ(calls, 2);
        outlived = com.Observe([&] { ++calls; });
    }
    outlived.Reset();  // control already gone: nothing happens
}

TEST(ListControl, ItemsDataAndCurrentItem) {
    ListControl cmb;
    int calls = 0;
    auto sub = cmb.Observe([&] { ++calls; });
    cmb.AddItem("Schott", 1);
    cmb.AddItem("Sellmeier", 2);
    cmb.AddItem("Cauchy", 4);
    EXPECT_EQ(std::tuple(cmb.ListCount(), cmb.listIndex(), cmb.Text()), std::tuple(3, -1, ""));
    cmb.SetListIndex(2);
    EXPECT_EQ(std::tuple(cmb.Text(), cmb.ItemData(2)), std::tuple("Cauchy", 4));
    cmb.RemoveItem(0);  // the current item moves up with the list
    EXPECT_EQ(std::tuple(cmb.listIndex(), cmb.Text()), std::tuple(1, "Cauchy"));
    cmb.SetListIndex(7);
    EXPECT_EQ(std::tuple(cmb.listIndex(), cmb.List(9), cmb.ItemData(-1), calls),
              std::tuple(-1, "", 0, 6));
    cmb.Clear();
    EXPECT_EQ(cmb.ListCount(), 0);
}

// A multi-select list keeps each item's selection; in a single-select list the selection is
// the current item.
TEST(ListControl, Selections) {
    ListControl multi(true), single;
    multi.SetItems({"BK7/SCHOTT", "F2/SCHOTT", "SF11/SCHOTT"});
    multi.SetSelected(0, true);
    multi.SetSelected(2, true);
    EXPECT_EQ(multi.SelCount(), 2);
    EXPECT_EQ(multi.SelectedIndexes(), (std::vector<int>{0, 2}));
    multi.RemoveItem(1);
    EXPECT_EQ(multi.SelectedIndexes(), (std::vector<int>{0, 1}));

    single.SetItems({"a", "b"});
    single.SetSelected(1, true);
    EXPECT_EQ(single.listIndex(), 1);
    single.SetSelected(0, true);
    EXPECT_EQ(single.SelectedIndexes(), (std::vector<int>{0}));
    single.SetSelected(0, false);
    EXPECT_EQ(single.listIndex(), -1);
}

TEST(StripAccelerator, RemovesTheMarker) {
    const std::pair<const char*, const char*> cases[] = {{"&Close", "Close"},
                                                         {"De&lete", "Delete"},
                                                         {"Name && source", "Name & source"},
                                                         {"trailing&", "trailing"},
                                                         {"", ""}};
    for (const auto& [caption, plain] : cases) EXPECT_EQ(StripAccelerator(caption), plain);
}

}  // namespace
}  // namespace ostrel
