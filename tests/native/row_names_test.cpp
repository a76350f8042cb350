#include <gtest/gtest.h>

#include "tests/simulated/simulated_desktop.h"
#include "tests/support/scene.h"
#include "widgets/window_list.h"

namespace sylvex {
namespace {

TEST(RowNames, FollowTheRowsOfAWindowThatDoesNotNumberThem)
{
    SimulatedDesktop desktop;
    SimulatedList window = desktop.windows.NewList();
    window.HideNumbers();
    WindowListView list(std::make_unique<SimulatedList>(window));
    const RowId pear = list.InsertRow(0, L"pear", -1, L"p");
    const RowId fig = list.InsertRow(0, L"fig", -1, {});
    const RowId apple = list.InsertRow(2, L"apple", -1, {});
    EXPECT_EQ(list.PlaceOf(pear), 1);
    list.SortBy(0);
    EXPECT_EQ(list.PlaceOf(apple), 0);
    EXPECT_EQ(list.PlaceOf(fig), 1);
    EXPECT_EQ(list.PlaceOf(std::wstring(L"p")), 2);
    list.RemoveRow(1);
    EXPECT_EQ(list.PlaceOf(pear), 1);
    EXPECT_EQ(ErrorOf([&] { list.PlaceOf(fig); }), 35605);
    EXPECT_EQ(list.IdAt(1), pear);
    list.ClearItems();
    EXPECT_NE(list.InsertRow(0, L"pear", -1, L"p"), pear);
    EXPECT_EQ(ErrorOf([&] { list.PlaceOf(pear); }), 35605);
}

}  // namespace
}  // namespace sylvex
